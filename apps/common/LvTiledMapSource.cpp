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
    const auto corner = [&view, count](qint64 column, qint64 row) {
        return view.pixelOfNormalized({static_cast<double>(column) / count, static_cast<double>(row) / count})
            .toPoint();
    };
    for (qint64 row = firstRow; row <= lastRow; ++row) {
        for (qint64 column = firstColumn; column <= lastColumn; ++column) {
            const QPoint upperLeft = corner(column, row);
            const QPoint lowerRight = corner(column + 1, row + 1);
            const auto columnInWorld = static_cast<int>(((column % count) + count) % count);
            drawTile(painter, QRect(upperLeft, lowerRight - QPoint(1, 1)),
                     {zoom, columnInWorld, static_cast<int>(row)});
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
    myCache.insert(key, new QImage(image),
                   cost(image)); // NOLINT(cppcoreguidelines-owning-memory) the cache owns it
}

void LvTiledMapSource::drawTile(QPainter& painter, const QRect& target, const LvTileKey& key)
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
        painter.drawImage(QRectF(target), image,
                          QRectF(QPointF(column * size.width(), row * size.height()), size));
        return;
    }
}
