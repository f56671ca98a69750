#include "LvWorldMapData.h"

#include "LvMapProjection.h"
#include "LvMapView.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

// The resource lies in a static library, where nothing else would pull it in. The macro wants no namespace
// around it.
static void initializeWorldMapResource()
{
    Q_INIT_RESOURCE(worldmap);
}

namespace
{

using Arc = QList<QPointF>; // x = longitude, y = latitude, in degrees

constexpr double meridianTolerance = 1e-6;
constexpr double southernmostDrawn = -LvMapView::squareLatitude;

/// The arcs of a quantised topology: each point but the first is given as the step from the one before it.
QList<Arc> decodeArcs(const QJsonObject& topology)
{
    const QJsonObject transform = topology.value(QLatin1String("transform")).toObject();
    const QJsonArray scale = transform.value(QLatin1String("scale")).toArray();
    const QJsonArray translate = transform.value(QLatin1String("translate")).toArray();
    const QPointF factor(scale.at(0).toDouble(1.0), scale.at(1).toDouble(1.0));
    const QPointF origin(translate.at(0).toDouble(), translate.at(1).toDouble());

    QList<Arc> arcs;
    const QJsonArray encodedArcs = topology.value(QLatin1String("arcs")).toArray();
    arcs.reserve(encodedArcs.size());
    for (const QJsonValue& encoded : encodedArcs) {
        const QJsonArray steps = encoded.toArray();
        Arc arc;
        arc.reserve(steps.size());
        double x = 0.0;
        double y = 0.0;
        for (const QJsonValue& step : steps) {
            const QJsonArray pair = step.toArray();
            x += pair.at(0).toDouble();
            y += pair.at(1).toDouble();
            arc.append(QPointF((x * factor.x()) + origin.x(), (y * factor.y()) + origin.y()));
        }
        arcs.append(arc);
    }
    return arcs;
}

/// The points of a ring; a negative number names the arc that is its complement, backwards.
Arc joinArcs(const QJsonArray& numbers, const QList<Arc>& arcs)
{
    Arc ring;
    for (const QJsonValue& value : numbers) {
        const int number = value.toInt();
        const qsizetype index = number < 0 ? ~number : number;
        if (index >= arcs.size()) {
            return {};
        }
        Arc arc = arcs.at(index);
        if (number < 0) {
            std::reverse(arc.begin(), arc.end());
        }
        ring.append(ring.isEmpty() ? arc : arc.mid(1)); // the ends of neighbouring arcs are the same point
    }
    return ring;
}

/// Makes the longitudes run on across the 180° meridian instead of jumping to the other edge of the map.
void unwrap(Arc& points)
{
    double turn = 0.0;
    for (qsizetype i = 1; i < points.size(); ++i) {
        QPointF& point = points[i];
        point.rx() += turn;
        const double step = point.x() - points.at(i - 1).x();
        if (std::abs(step) > 180.0) {
            const double correction = step > 0.0 ? -360.0 : 360.0;
            turn += correction;
            point.rx() += correction;
        }
    }
}

/// Closes a ring. One that ends a whole turn off its beginning runs around a pole: it is led along the edge
/// of the map.
void closeRing(Arc& ring)
{
    if (ring.isEmpty()) {
        return;
    }
    const QPointF first = ring.first();
    const QPointF last = ring.last();
    if (std::abs(last.x() - first.x()) > 180.0) {
        const double pole = first.y() < 0.0 ? -90.0 : 90.0;
        ring.append(QPointF(last.x(), pole));
        ring.append(QPointF(first.x(), pole));
    }
    ring.append(first);
}

LvWorldMapData::Line normalized(const Arc& points)
{
    QPolygonF line;
    line.reserve(points.size());
    for (const QPointF& point : points) {
        line.append(
            QPointF(LvMapProjection::longitudeToNormalized(point.x()), LvMapView::normalizedY(point.y())));
    }
    return {line, line.boundingRect()};
}

/// The arc lists of all rings of a geometry, of whatever kind it is.
void collectRings(const QJsonObject& geometry, QList<QJsonArray>& rings)
{
    const QJsonArray members = geometry.value(QLatin1String("geometries")).toArray();
    for (const QJsonValue& member : members) {
        collectRings(member.toObject(), rings);
    }
    const QJsonArray arcs = geometry.value(QLatin1String("arcs")).toArray();
    const QString type = geometry.value(QLatin1String("type")).toString();
    const auto appendPolygon = [&rings](const QJsonArray& polygon) {
        for (const QJsonValue& ring : polygon) {
            rings.append(ring.toArray());
        }
    };
    if (type == QLatin1String("Polygon")) {
        appendPolygon(arcs);
    } else if (type == QLatin1String("MultiPolygon")) {
        for (const QJsonValue& polygon : arcs) {
            appendPolygon(polygon.toArray());
        }
    }
}

/// Whether a step is no shore but a cut: along the 180° meridian, or south of what the map shows.
bool isCut(const QPointF& from, const QPointF& to)
{
    const auto onMeridian = [](double longitude) {
        return std::abs(std::abs(longitude) - 180.0) < meridianTolerance;
    };
    return (onMeridian(from.x()) && onMeridian(to.x()))
        || (from.y() <= southernmostDrawn && to.y() <= southernmostDrawn);
}

/// The pieces of an arc between the cuts.
void appendOutline(Arc arc, QList<LvWorldMapData::Line>& lines)
{
    unwrap(arc);
    Arc piece;
    const auto finish = [&piece, &lines] {
        if (piece.size() > 1) {
            lines.append(normalized(piece));
        }
        piece.clear();
    };
    for (qsizetype i = 0; i < arc.size(); ++i) {
        if (i > 0 && isCut(arc.at(i - 1), arc.at(i))) {
            finish();
        }
        piece.append(arc.at(i));
    }
    finish();
}

} // namespace

LvWorldMapData::LvWorldMapData(const QByteArray& topology)
{
    const QJsonObject root = QJsonDocument::fromJson(topology).object();
    const QJsonObject objects = root.value(QLatin1String("objects")).toObject();
    const QList<Arc> arcs = decodeArcs(root);

    QList<QJsonArray> land;
    collectRings(objects.value(QLatin1String("land")).toObject(), land);
    for (const QJsonArray& numbers : std::as_const(land)) {
        Arc ring = joinArcs(numbers, arcs);
        unwrap(ring);
        closeRing(ring);
        if (ring.size() > 3) {
            myLandRings.append(normalized(ring));
        }
    }

    // An arc that two countries share is a border between them, one of a single country lies at the sea.
    QList<QJsonArray> countries;
    collectRings(objects.value(QLatin1String("countries")).toObject(), countries);
    QList<int> uses(arcs.size(), 0);
    for (const QJsonArray& numbers : std::as_const(countries)) {
        for (const QJsonValue& value : numbers) {
            const int number = value.toInt();
            const qsizetype index = number < 0 ? ~number : number;
            if (index < uses.size()) {
                ++uses[index];
            }
        }
    }
    for (qsizetype i = 0; i < arcs.size(); ++i) {
        if (uses.at(i) > 0) {
            appendOutline(arcs.at(i), uses.at(i) == 1 ? myCoasts : myBorders);
        }
    }
}

const LvWorldMapData& LvWorldMapData::builtIn()
{
    static const LvWorldMapData myData = [] {
        initializeWorldMapResource();
        QFile file(QStringLiteral(":/lv/worldmap/countries-50m.json.qz"));
        return LvWorldMapData(file.open(QIODevice::ReadOnly) ? qUncompress(file.readAll()) : QByteArray());
    }();
    return myData;
}
