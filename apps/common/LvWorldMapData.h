#pragma once

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>

/**
 * The land areas, coasts and borders of the world in normalised Mercator coordinates: x = 0 at 180° west and
 * 1 at 180° east, y = 0 and y = 1 at the upper and lower edge of the square world map.
 *
 * Rings are closed and run on beyond 0 or 1 where they cross the 180° meridian, so each of them is in one
 * piece. Immutable once read.
 */
class LvWorldMapData
{
public:
    /// A polyline or a ring with the rectangle around it.
    struct Line {
        QPolygonF points;
        QRectF bounds;
    };

    /// Reads a TopoJSON topology with the objects "land" and "countries". Empty when the text is no such
    /// topology.
    explicit LvWorldMapData(const QByteArray& topology);

    /// The map that is built into the program; it is read on first use. Thread-safe.
    static const LvWorldMapData& builtIn();

    /// Rings of all land areas and of the holes in them; to be filled together by the odd-even rule.
    [[nodiscard]] const QList<Line>& landRings() const { return myLandRings; }

    [[nodiscard]] const QList<Line>& coasts() const { return myCoasts; }

    [[nodiscard]] const QList<Line>& borders() const { return myBorders; }

private:
    QList<Line> myLandRings;
    QList<Line> myCoasts;
    QList<Line> myBorders;
};
