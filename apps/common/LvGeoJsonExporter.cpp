#include "LvGeoJsonExporter.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoJsonGeometry.h"
#include "LvTrackXml.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr double coordinateSteps = 1e7; // in a degree: seven decimals, about a centimetre

QList<LvGeoJsonPath> pathsOf(const LvGPXTrack& track)
{
    QList<LvGeoJsonPath> paths;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        LvGeoJsonPath path;
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (const LvGPXTrackPoint& point : points) {
            const LvGeoPosition position = point.position();
            if (position.isValid()) {
                path.append({position.longitude().decimalDegrees(), position.latitude().decimalDegrees(),
                             static_cast<double>(point.elevation()), point.timeStamp()});
            }
        }
        if (!path.isEmpty()) {
            paths.append(path);
        }
    }
    return paths;
}

LvGeoJsonPath ringOf(const LvGPXTrack& track)
{
    LvGeoJsonPath ring;
    const QList<LvGeoJsonPath> paths = pathsOf(track);
    for (const LvGeoJsonPath& path : paths) {
        ring += path;
    }
    return ring;
}

/// The area of the track, and the islands that lie in its holes.
QList<LvGeoJsonPolygon> polygonsOf(const LvGPXTrack& track)
{
    QList<LvGeoJsonPolygon> polygons;
    QList<LvGPXTrack> pending{track}; // a list instead of recursion: enclaves may be nested deeply
    while (!pending.isEmpty()) {
        const LvGPXTrack area = pending.takeFirst();
        QList<LvGeoJsonPath> holes;
        const QList<LvGPXTrack> enclaves = area.enclaves();
        for (const LvGPXTrack& enclave : enclaves) {
            holes.append(ringOf(enclave));
            pending += enclave.enclaves();
        }
        polygons += LvGeoJsonGeometry::cutArea(ringOf(area), holes);
    }
    return polygons;
}

/// The lines of the track and of everything in it: an area that is drawn as a line has its outlines.
QList<LvGeoJsonPath> linesOf(const LvGPXTrack& track)
{
    QList<LvGeoJsonPath> lines;
    QList<LvGPXTrack> pending{track};
    while (!pending.isEmpty()) {
        const LvGPXTrack current = pending.takeFirst();
        const QList<LvGeoJsonPath> paths = pathsOf(current);
        for (const LvGeoJsonPath& path : paths) {
            lines += LvGeoJsonGeometry::cutLine(path);
        }
        pending += current.enclaves();
    }
    return lines;
}

double rounded(double degrees)
{
    return std::round(degrees * coordinateSteps) / coordinateSteps + 0.0; // no "-0"
}

/// Writes a geometry twice in the same nesting: as coordinates, and as the times of these.
class FeatureWriter
{
public:
    explicit FeatureWriter(LvGPXTrack track)
        : myTrack(std::move(track))
    {
    }

    void setPoint(const LvGeoJsonVertex& vertex)
    {
        look({vertex});
        setGeometry("Point", position(vertex), time(vertex));
    }

    void setLines(const QList<LvGeoJsonPath>& lines)
    {
        for (const LvGeoJsonPath& line : lines) {
            look(line);
        }
        const Nested nested = nest(lines);
        if (lines.size() == 1) {
            setGeometry("LineString", nested.coordinates.first(), nested.times.first());
        } else {
            setGeometry("MultiLineString", nested.coordinates, nested.times);
        }
    }

    void setPolygons(const QList<LvGeoJsonPolygon>& polygons)
    {
        Nested nested;
        for (const LvGeoJsonPolygon& polygon : polygons) {
            for (const LvGeoJsonPath& ring : polygon) {
                look(ring);
            }
        }
        for (const LvGeoJsonPolygon& polygon : polygons) {
            QList<LvGeoJsonPath> rings = polygon;
            for (LvGeoJsonPath& ring : rings) {
                ring.append(LvGeoJsonVertex(ring.first()));
            }
            const Nested nestedRings = nest(rings);
            nested.coordinates.append(nestedRings.coordinates);
            nested.times.append(nestedRings.times);
        }
        if (polygons.size() == 1) {
            setGeometry("Polygon", nested.coordinates.first(), nested.times.first());
        } else {
            setGeometry("MultiPolygon", nested.coordinates, nested.times);
        }
    }

    [[nodiscard]] QByteArray toJson() const
    {
        QJsonObject properties{{QStringLiteral("name"), myTrack.name()}};
        if (!myTrack.description().isEmpty()) {
            properties.insert(QStringLiteral("desc"), myTrack.description());
        }
        if (myHasTimes) {
            properties.insert(QStringLiteral("coordTimes"), myTimes);
        }
        const QJsonObject feature{{QStringLiteral("type"), QStringLiteral("Feature")},
                                  {QStringLiteral("properties"), properties},
                                  {QStringLiteral("geometry"), myGeometry}};
        return QJsonDocument(feature).toJson(QJsonDocument::Compact);
    }

private:
    struct Nested {
        QJsonArray coordinates;
        QJsonArray times;
    };

    void look(const LvGeoJsonPath& path)
    {
        for (const LvGeoJsonVertex& vertex : path) {
            myHasElevations = myHasElevations || vertex.elevation != 0.0;
            myHasTimes = myHasTimes || !LvTrackXml::timeText(vertex.time).isEmpty();
        }
    }

    [[nodiscard]] QJsonArray position(const LvGeoJsonVertex& vertex) const
    {
        QJsonArray result{rounded(vertex.x), rounded(vertex.y)};
        if (myHasElevations) {
            result.append(std::round(vertex.elevation));
        }
        return result;
    }

    [[nodiscard]] static QJsonValue time(const LvGeoJsonVertex& vertex)
    {
        const QString text = LvTrackXml::timeText(vertex.time);
        return text.isEmpty() ? QJsonValue() : QJsonValue(text);
    }

    [[nodiscard]] Nested nest(const QList<LvGeoJsonPath>& paths) const
    {
        Nested nested;
        for (const LvGeoJsonPath& path : paths) {
            QJsonArray coordinates;
            QJsonArray times;
            for (const LvGeoJsonVertex& vertex : path) {
                coordinates.append(position(vertex));
                times.append(time(vertex));
            }
            nested.coordinates.append(coordinates);
            nested.times.append(times);
        }
        return nested;
    }

    void setGeometry(const char* type, const QJsonValue& coordinates, const QJsonValue& times)
    {
        myGeometry = {{QStringLiteral("type"), QString::fromLatin1(type)},
                      {QStringLiteral("coordinates"), coordinates}};
        myTimes = times;
    }

    LvGPXTrack myTrack;
    QJsonObject myGeometry;
    QJsonValue myTimes;
    bool myHasElevations = false;
    bool myHasTimes = false;
};

/// One feature in one line; empty for a track without points.
QByteArray featureOf(const LvGPXConfiguredTrack& configuredTrack)
{
    const LvGPXTrack track = configuredTrack.track();
    FeatureWriter writer(track);
    if (configuredTrack.effectiveShape() == LvGPXTrackShapeEnum::polygon) {
        const QList<LvGeoJsonPolygon> polygons = polygonsOf(track);
        if (!polygons.isEmpty()) {
            writer.setPolygons(polygons);
            return writer.toJson();
        }
    }
    const LvGeoJsonPath all = ringOf(track);
    if (all.size() == 1 && track.enclaves().isEmpty()) {
        writer.setPoint(all.first());
        return writer.toJson();
    }
    const QList<LvGeoJsonPath> lines = linesOf(track);
    if (lines.isEmpty()) {
        return {};
    }
    writer.setLines(lines);
    return writer.toJson();
}

} // namespace

QByteArray LvGeoJsonExporter::encode(const LvGPXConfiguredTrackList& tracks)
{
    QByteArrayList features;
    for (const LvGPXConfiguredTrack& track : tracks) {
        const QByteArray feature = featureOf(track);
        if (!feature.isEmpty()) {
            features.append(feature);
        }
    }
    if (features.isEmpty()) {
        return {};
    }
    return "{\"type\":\"FeatureCollection\",\"features\":[\n" + features.join(",\n") + "\n]}\n";
}
