#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QSize>

#include <memory>

/// The same lines drawn by Mapnik, from degrees on.
class LvMapnikPeer
{
public:
    enum class Way {
        Default,
        Simplifying, ///< leaves out points that do not show
        Clipping ///< cuts the lines at the image, before they are projected
    };

    /// @param lines x is the longitude, y the latitude, in degrees
    /// @param width of the lines, in pixels
    LvMapnikPeer(const QList<QList<QPointF>>& lines, const QSize& size, double width, Way way);
    ~LvMapnikPeer();

    /// Draws the part of the world from the lower left to the upper right corner, both in degrees. Returns
    /// how many pixels are covered.
    [[nodiscard]] qint64 draw(const QPointF& southWest, const QPointF& northEast) const;

private:
    Q_DISABLE_COPY_MOVE(LvMapnikPeer)

    class Private;
    std::unique_ptr<Private> myPrivate;
};
