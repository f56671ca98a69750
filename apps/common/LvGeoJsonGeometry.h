#pragma once

#include <QDateTime>
#include <QList>

/// A position on its way into a GeoJSON file.
struct LvGeoJsonVertex {
    double x = 0.0; ///< longitude in degrees; beyond ±180 where a line goes on around the globe
    double y = 0.0; ///< latitude in degrees
    double elevation = 0.0; ///< metres
    QDateTime time; ///< invalid for none

    /// Whether both are the same place on the map, whatever their elevation and time.
    [[nodiscard]] bool isAt(const LvGeoJsonVertex& other) const { return x == other.x && y == other.y; }
};

/// A line, or a ring: then the first vertex is not repeated at the end.
using LvGeoJsonPath = QList<LvGeoJsonVertex>;

/// An outer ring against the clock, followed by its holes with the clock.
using LvGeoJsonPolygon = QList<LvGeoJsonPath>;

/**
 * Cutting of lines and areas at the 180° meridian.
 *
 * Longitudes come as they are measured; a step of more than 180° is taken for the short way round. Results
 * lie between 180° west and 180° east.
 */
namespace LvGeoJsonGeometry
{

/// The parts of a line, each with at least two vertices. None for an empty line; a single vertex gives a part
/// that has it twice.
QList<LvGeoJsonPath> cutLine(const LvGeoJsonPath& line);

/// The parts of an area with holes. The rings may be closed or not, and turn either way. A ring around a pole
/// takes in that pole that is nearer. None when the outer ring has fewer than three different vertices or
/// goes around the globe more than once.
QList<LvGeoJsonPolygon> cutArea(const LvGeoJsonPath& outer, const QList<LvGeoJsonPath>& holes);

} // namespace LvGeoJsonGeometry
