#pragma once

#include "LvMapView.h"
#include "LvTiledMapSource.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QPainter>

/// Map tiles for the tests of the tile sources.
namespace LvTestTiles
{

/// A colour of its own for each tile of the lower zoom levels.
inline QColor color(int zoom, int column, int row)
{
    return {40 + (50 * zoom), 20 + (60 * column), 20 + (60 * row)};
}

/// A tile of one colour as a file of the given kind.
inline QByteArray tile(const QColor& color, const char* format = "PNG", int side = 256)
{
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

/// A tile whose quarters have these colours: upper left, upper right, lower left, lower right.
inline QByteArray quarters(const QColor& upperLeft, const QColor& upperRight, const QColor& lowerLeft,
                           const QColor& lowerRight)
{
    QImage image(256, 256, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(0, 0, 128, 128, upperLeft);
    painter.fillRect(128, 0, 128, 128, upperRight);
    painter.fillRect(0, 128, 128, 128, lowerLeft);
    painter.fillRect(128, 128, 128, 128, lowerRight);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

inline QImage draw(LvMapSource& source, const LvMapView& view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    source.draw(painter, view, 1.0);
    painter.end();
    return image;
}

} // namespace LvTestTiles
