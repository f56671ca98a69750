#include "LvTiledMapSource.h"

#include "LvMapView.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace
{

constexpr QColor missingColor(236, 240, 242);
constexpr int maximumTileSide = 4096; // pixels
constexpr double largestTarget = 8192.0; // pixels
constexpr double smallestPiece = 1.0 / 256.0; // pixels of a tile; less is of one colour
constexpr int cacheCost = 256; // megabytes
constexpr double maximumTileCount = 40000.0; // more of them would be smaller than a pixel or two

int cost(const QImage& image)
{
    return static_cast<int>(std::max<qsizetype>(1, image.sizeInBytes() >> 20));
}

} // namespace

size_t qHash(const LvTileKey& key, size_t seed) noexcept
{
    return qHashMulti(seed, key.zoom, key.column, key.row);
}

LvTiledMapSource::LvTiledMapSource()
    : myCache(cacheCost)
{
}

int LvTiledMapSource::zoomFor(const LvMapView& view) const
{
    // Tiles with more pixels serve a picture of the same scale from fewer levels down.
    const double zoom = view.zoom() - std::log2(tilePixelRatio());
    return std::clamp(static_cast<int>(std::lround(zoom)), minimumZoom(), maximumZoom());
}

int LvTiledMapSource::tilePixelRatio() const
{
    return 1;
}

bool LvTiledMapSource::isMissingForever(const LvTileKey& /*key*/) const
{
    return true;
}

void LvTiledMapSource::draw(QPainter& painter, const LvMapView& view, double /*paintFactor*/)
{
    const QRect picture(QPoint(0, 0), view.size());
    painter.fillRect(picture, missingColor);
    if (!isValid()) {
        return;
    }
    const int zoom = zoomFor(view);
    const int count = 1 << zoom;
    const QRectF visible = view.normalizedRect();
    const auto firstColumn = static_cast<qint64>(std::floor(visible.left() * count));
    const auto lastColumn = static_cast<qint64>(std::ceil(visible.right() * count)) - 1;
    const auto firstRow =
        static_cast<qint64>(std::clamp<double>(std::floor(visible.top() * count), 0, count));
    const auto lastRow =
        static_cast<qint64>(std::clamp<double>(std::ceil(visible.bottom() * count), 0, count)) - 1;
    const double tiles = static_cast<double>(lastColumn - firstColumn + 1)
        * static_cast<double>(std::max<qint64>(0, lastRow - firstRow + 1));
    if (tiles > maximumTileCount) {
        return;
    }

    painter.save();
    painter.setClipRect(picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    // Whole pixels: neighbouring tiles share the rounded edge, so no background shines through between them.
    // They may lie far beyond what a whole number of 32 bits holds.
    const auto corner = [&view, count](qint64 column, qint64 row) {
        const QPointF pixel =
            view.pixelOfNormalized({static_cast<double>(column) / count, static_cast<double>(row) / count});
        return QPointF(std::round(pixel.x()), std::round(pixel.y()));
    };
    for (qint64 row = firstRow; row <= lastRow; ++row) {
        for (qint64 column = firstColumn; column <= lastColumn; ++column) {
            const QRectF target(corner(column, row), corner(column + 1, row + 1));
            const auto columnInWorld = static_cast<int>(((column % count) + count) % count);
            drawTile(painter, target, QRectF(picture), {zoom, columnInWorld, static_cast<int>(row)});
        }
    }
    painter.restore();
}

QImage LvTiledMapSource::decodeTile(const QByteArray& bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly)) {
        return {};
    }
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    // The toolkit reads many more kinds, some of which are documents that take for ever to be drawn.
    static const QList<QByteArray> myKinds{"png", "jpeg", "jpg", "webp"};
    if (!myKinds.contains(reader.format())) {
        return {};
    }
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > maximumTileSide || size.height() > maximumTileSide) {
        return {};
    }
    return reader.read();
}

QImage LvTiledMapSource::cachedTile(const LvTileKey& key) const
{
    const QImage* cached = myCache.object(key);
    return cached != nullptr ? *cached : QImage();
}

QImage LvTiledMapSource::tile(const LvTileKey& key)
{
    if (const QImage* cached = myCache.object(key)) {
        return *cached;
    }
    QImage image = loadTile(key);
    if (!image.isNull() || isMissingForever(key)) {
        storeTile(key, image);
    }
    return image;
}

void LvTiledMapSource::storeTile(const LvTileKey& key, const QImage& image)
{
    myCache.insert(key, new QImage(image), cost(image)); // the cache owns it
}

void LvTiledMapSource::drawTile(QPainter& painter, const QRectF& target, const QRectF& picture,
                                const LvTileKey& key)
{
    // A tile that may still come is not worth loading all those above it, but one of them may be at hand.
    bool isLoadable = true;
    for (int up = 0; key.zoom - up >= minimumZoom(); ++up) {
        const LvTileKey above = {key.zoom - up, key.column >> up, key.row >> up};
        const QImage image = isLoadable ? tile(above) : cachedTile(above);
        if (image.isNull()) {
            isLoadable = isLoadable && isMissingForever(above);
            continue;
        }
        const double pieces = std::exp2(up);
        const QSizeF size(image.width() / pieces, image.height() / pieces);
        const double column = key.column - std::ldexp(key.column >> up, up);
        const double row = key.row - std::ldexp(key.row >> up, up);
        drawPart(painter, target, picture, image,
                 QRectF(QPointF(column * size.width(), row * size.height()), size));
        return;
    }
}

void LvTiledMapSource::drawPart(QPainter& painter, const QRectF& target, const QRectF& picture,
                                const QImage& image, const QRectF& part)
{
    if (target.width() <= largestTarget && target.height() <= largestTarget) {
        painter.drawImage(target, image, part);
        return;
    }
    // Of a tile that is enlarged so much only some pixels are seen: the painter computes with less digits.
    const QRectF seen = target.intersected(picture);
    const auto place = [&target, &part](const QPointF& pixel) {
        return QPointF(part.left() + ((pixel.x() - target.left()) / target.width() * part.width()),
                       part.top() + ((pixel.y() - target.top()) / target.height() * part.height()));
    };
    const QRectF piece(place(seen.topLeft()), place(seen.bottomRight()));
    if (piece.width() < smallestPiece || piece.height() < smallestPiece) {
        const QPoint middle(std::clamp(static_cast<int>(piece.center().x()), 0, image.width() - 1),
                            std::clamp(static_cast<int>(piece.center().y()), 0, image.height() - 1));
        painter.fillRect(seen, image.pixelColor(middle));
        return;
    }
    painter.drawImage(seen, image, piece);
}
