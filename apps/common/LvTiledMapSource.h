#pragma once

#include "LvMapSource.h"

#include <QCache>
#include <QImage>
#include <QRectF>

/// The place of a tile in the scheme of web maps: 2^zoom columns from 180° west on and as many rows from the
/// north on.
struct LvTileKey {
    int zoom = 0;
    int column = 0;
    int row = 0;

    bool operator==(const LvTileKey& other) const = default;
};

/// Hash of a tile key.
size_t qHash(const LvTileKey& key, size_t seed = 0) noexcept;

/**
 * A map made of square pictures in the scheme of web maps.
 *
 * The zoom level whose tiles come nearest to the picture's scale is drawn; where a tile is missing, the part
 * of the next tile above it that exists is enlarged in its place. The tiles of one picture are kept in a
 * bounded cache, and so is the knowledge that a tile is missing, unless the derived class keeps it itself.
 */
class LvTiledMapSource : public LvMapSource
{
public:
    LvTiledMapSource();

    /// The zoom level of which tiles are drawn for a view.
    [[nodiscard]] int zoomFor(const LvMapView& view) const;

    void draw(QPainter& painter, const LvMapView& view, double paintFactor) override;

protected:
    [[nodiscard]] virtual int minimumZoom() const = 0;
    [[nodiscard]] virtual int maximumZoom() const = 0;

    /// Reads a tile; a null picture where there is none.
    [[nodiscard]] virtual QImage loadTile(const LvTileKey& key) = 0;

    /// Pixels of a tile for each pixel of an ordinary one of 256 × 256.
    [[nodiscard]] virtual int tilePixelRatio() const;

    /// Whether a null picture of loadTile() is final. Otherwise it asks again at every drawing.
    [[nodiscard]] virtual bool isMissingForever(const LvTileKey& key) const;

    /// Puts a tile that came later into the cache.
    void storeTile(const LvTileKey& key, const QImage& image);

    /// Decodes a tile picture. Null when the bytes are no PNG, JPEG or WebP picture, or when it is larger
    /// than any tile needs to be: a damaged or hostile file must not make us allocate gigabytes.
    static QImage decodeTile(const QByteArray& bytes);

private:
    [[nodiscard]] QImage tile(const LvTileKey& key);
    [[nodiscard]] QImage cachedTile(const LvTileKey& key) const;
    void drawTile(QPainter& painter, const QRectF& target, const QRectF& picture, const LvTileKey& key);

    /// Draws a part of a tile into the target, of which only what lies in the picture is seen.
    static void drawPart(QPainter& painter, const QRectF& target, const QRectF& picture, const QImage& image,
                         const QRectF& part);

    QCache<LvTileKey, QImage> myCache;
};
