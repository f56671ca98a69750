#include "LvGeoJsonGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace
{

constexpr double halfTurn = 180.0;
constexpr double fullTurn = 360.0;
constexpr double poleLatitude = 90.0;
constexpr qsizetype fewestRingVertices = 3;

/// The copy of the world that a longitude lies in: 0 from 180° west to 180° east.
double worldOf(double x)
{
    return std::floor((x + halfTurn) / fullTurn);
}

/// The eastern edge of a copy of the world.
double easternEdge(double world)
{
    return world * fullTurn + halfTurn;
}

/// The step from one longitude to the next, the short way round.
double shortStep(double from, double to)
{
    const double step = to - from;
    if (step > halfTurn) {
        return step - fullTurn;
    }
    return step < -halfTurn ? step + fullTurn : step;
}

/// The path with longitudes that go on beyond 180° instead of jumping.
LvGeoJsonPath unwrapped(const LvGeoJsonPath& path)
{
    LvGeoJsonPath result;
    result.reserve(path.size());
    double measured = 0.0;
    for (const LvGeoJsonVertex& vertex : path) {
        LvGeoJsonVertex next = vertex;
        if (!result.isEmpty()) {
            next.x = result.last().x + shortStep(measured, vertex.x);
        }
        measured = vertex.x;
        result.append(next);
    }
    return result;
}

/// The vertex of an edge at the longitude. Nobody measured it, so it has no time.
LvGeoJsonVertex between(const LvGeoJsonVertex& a, const LvGeoJsonVertex& b, double x)
{
    const double share = (x - a.x) / (b.x - a.x);
    return {x, std::lerp(a.y, b.y, share), std::lerp(a.elevation, b.elevation, share), {}};
}

/// The edges of copies of the world that lie between two longitudes, from west to east, without these.
QList<double> edgesBetween(double west, double east)
{
    QList<double> edges;
    double edge = easternEdge(worldOf(west));
    while (edge < east) {
        if (edge > west) {
            edges.append(edge);
        }
        edge += fullTurn;
    }
    return edges;
}

/// Appends the vertices at which the edge crosses edges of the world, without its ends.
void appendCrossings(LvGeoJsonPath& path, const LvGeoJsonVertex& a, const LvGeoJsonVertex& b)
{
    const double lowest = std::min(a.x, b.x);
    const double highest = std::max(a.x, b.x);
    QList<double> edges = edgesBetween(lowest, highest);
    if (a.x > b.x) {
        std::reverse(edges.begin(), edges.end());
    }
    for (const double edge : edges) {
        path.append(between(a, b, edge));
    }
}

LvGeoJsonPath shifted(LvGeoJsonPath path, double offset)
{
    for (LvGeoJsonVertex& vertex : path) {
        vertex.x += offset;
    }
    return path;
}

/// Whether both ends of the edge lie on one edge of the world.
bool runsAlongEdge(const LvGeoJsonVertex& a, const LvGeoJsonVertex& b)
{
    return a.x == b.x && easternEdge(worldOf(a.x) - 1.0) == a.x;
}

double signedArea(const LvGeoJsonPath& ring)
{
    double area = 0.0;
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const LvGeoJsonVertex& a = ring.at(i);
        const LvGeoJsonVertex& b = ring.at((i + 1) % ring.size());
        // Relative to the first vertex, to keep the digits of small rings.
        area +=
            (a.x - ring.first().x) * (b.y - ring.first().y) - (b.x - ring.first().x) * (a.y - ring.first().y);
    }
    return area / 2.0;
}

bool contains(const LvGeoJsonPath& ring, const LvGeoJsonVertex& vertex)
{
    bool isInside = false;
    for (qsizetype i = 0; i < ring.size(); ++i) {
        const LvGeoJsonVertex& a = ring.at(i);
        const LvGeoJsonVertex& b = ring.at((i + 1) % ring.size());
        if ((a.y > vertex.y) != (b.y > vertex.y)
            && vertex.x < a.x + (b.x - a.x) * (vertex.y - a.y) / (b.y - a.y)) {
            isInside = !isInside;
        }
    }
    return isInside;
}

qsizetype countInside(const LvGeoJsonPath& ring, const LvGeoJsonPath& vertices)
{
    return std::count_if(vertices.cbegin(), vertices.cend(),
                         [&ring](const LvGeoJsonVertex& vertex) { return contains(ring, vertex); });
}

void removeRepetitions(LvGeoJsonPath& ring)
{
    const auto isSamePlace = [](const LvGeoJsonVertex& a, const LvGeoJsonVertex& b) { return a.isAt(b); };
    ring.resize(std::unique(ring.begin(), ring.end(), isSamePlace) - ring.begin());
    while (ring.size() > 1 && ring.first().isAt(ring.last())) {
        ring.removeLast();
    }
}

/// Removes the vertices at which a ring turns back along the meridian: a border that ran along it leaves a
/// needle without width there.
void removeNeedles(LvGeoJsonPath& ring, double meridian)
{
    const auto isNeedle = [&ring, meridian](qsizetype i) {
        const LvGeoJsonVertex& a = ring.at((i + ring.size() - 1) % ring.size());
        const LvGeoJsonVertex& b = ring.at(i);
        const LvGeoJsonVertex& c = ring.at((i + 1) % ring.size());
        return a.x == meridian && b.x == meridian && c.x == meridian && (b.y > a.y) != (c.y > b.y);
    };
    qsizetype i = 0;
    while (i < ring.size() && ring.size() >= fewestRingVertices) {
        if (!isNeedle(i)) {
            ++i;
            continue;
        }
        ring.removeAt(i);
        removeRepetitions(ring);
        i = 0; // the neighbours may be needles now; there are few
    }
}

/// The ring from one of its crossings of the edge of the world on, closed by way of the nearer pole.
LvGeoJsonPath closedAroundPole(const LvGeoJsonPath& ring, double turn)
{
    LvGeoJsonPath cut;
    double latitudes = 0.0;
    for (qsizetype i = 0; i < ring.size(); ++i) {
        LvGeoJsonVertex next = ring.at((i + 1) % ring.size());
        next.x += i + 1 == ring.size() ? turn : 0.0;
        cut.append(ring.at(i));
        appendCrossings(cut, ring.at(i), next);
        latitudes += ring.at(i).y;
    }
    const auto isOnEdge = [](const LvGeoJsonVertex& vertex) { return runsAlongEdge(vertex, vertex); };
    const auto start = std::find_if(cut.begin(), cut.end(), isOnEdge);
    LvGeoJsonPath result(start, cut.end());
    for (auto vertex = cut.begin(); vertex != start; ++vertex) {
        LvGeoJsonVertex moved = *vertex;
        moved.x += turn;
        result.append(moved);
    }
    LvGeoJsonVertex corner = result.first();
    corner.time = QDateTime();
    corner.x += turn;
    result.append(corner);
    corner.y = latitudes >= 0.0 ? poleLatitude : -poleLatitude;
    result.append(corner);
    corner.x -= turn;
    result.append(corner);
    return result;
}

/// The ring, unwrapped, without repetitions and turning as wanted; empty when it is none.
LvGeoJsonPath preparedRing(const LvGeoJsonPath& measured, bool isAgainstClock)
{
    LvGeoJsonPath closed = measured;
    removeRepetitions(closed);
    if (closed.size() < fewestRingVertices) {
        return {};
    }
    closed.append(closed.first());
    LvGeoJsonPath ring = unwrapped(closed);
    const double turn = ring.last().x - ring.first().x;
    ring.removeLast();
    removeRepetitions(ring);
    if (turn != 0.0) {
        // Rounding leaves next to nothing; a way around the globe is a whole turn.
        if (std::abs(turn) > 1.5 * fullTurn) {
            return {};
        }
        if (std::abs(turn) > halfTurn) {
            ring = closedAroundPole(ring, std::copysign(fullTurn, turn));
        }
    }
    if (ring.size() < fewestRingVertices) {
        return {};
    }
    if ((signedArea(ring) > 0.0) != isAgainstClock) {
        std::reverse(ring.begin(), ring.end());
    }
    return ring;
}

/// Moves the hole by whole turns to where it lies in the outer ring.
LvGeoJsonPath movedInto(const LvGeoJsonPath& outer, const LvGeoJsonPath& hole)
{
    LvGeoJsonPath best = hole;
    qsizetype mostInside = countInside(outer, hole);
    for (const double turns : {-2.0, -1.0, 1.0, 2.0}) {
        const LvGeoJsonPath moved = shifted(hole, turns * fullTurn);
        const qsizetype inside = countInside(outer, moved);
        if (inside > mostInside) {
            mostInside = inside;
            best = moved;
        }
    }
    return best;
}

/// Cuts areas along one meridian. Holes may be cut as well: then their edges become outer ones.
class MeridianCutter
{
public:
    explicit MeridianCutter(double meridian)
        : myMeridian(meridian)
    {
    }

    void add(const LvGeoJsonPath& ring);

    /// The rings on either side, turning as the ones that were added did.
    [[nodiscard]] QList<LvGeoJsonPath> westernRings() const
    {
        return linked(myWesternChains, myWesternRings);
    }

    [[nodiscard]] QList<LvGeoJsonPath> easternRings() const
    {
        return linked(myEasternChains, myEasternRings);
    }

    /// To be called when all rings are there.
    void pairCrossings();

private:
    /// A part of a ring on one side, from one crossing of the meridian to the next.
    struct Chain {
        LvGeoJsonPath vertices; // the crossings included
        qsizetype start = 0; // index of the crossing
        qsizetype end = 0;
    };

    [[nodiscard]] bool isWest(const LvGeoJsonVertex& vertex) const { return vertex.x < myMeridian; }

    [[nodiscard]] QList<LvGeoJsonPath> linked(const QList<Chain>& chains,
                                              const QList<LvGeoJsonPath>& wholeRings) const;

    double myMeridian;
    LvGeoJsonPath myCrossings;
    QList<qsizetype> myPartners; // of the crossings: the other end of the stretch of meridian inside the area
    QList<Chain> myWesternChains;
    QList<Chain> myEasternChains;
    QList<LvGeoJsonPath> myWesternRings;
    QList<LvGeoJsonPath> myEasternRings;
};

void MeridianCutter::add(const LvGeoJsonPath& ring)
{
    qsizetype first = -1; // the first vertex behind a crossing
    for (qsizetype i = 0; i < ring.size() && first < 0; ++i) {
        if (isWest(ring.at(i)) != isWest(ring.at((i + ring.size() - 1) % ring.size()))) {
            first = i;
        }
    }
    if (first < 0) {
        (isWest(ring.first()) ? myWesternRings : myEasternRings).append(ring);
        return;
    }
    const qsizetype firstCrossing = myCrossings.size();
    Chain chain;
    for (qsizetype step = 0; step < ring.size(); ++step) {
        const LvGeoJsonVertex& previous = ring.at((first + step + ring.size() - 1) % ring.size());
        const LvGeoJsonVertex& vertex = ring.at((first + step) % ring.size());
        if (isWest(previous) != isWest(vertex)) {
            const LvGeoJsonVertex crossing = between(previous, vertex, myMeridian);
            if (step > 0) {
                chain.vertices.append(crossing);
                chain.end = myCrossings.size();
                (isWest(previous) ? myWesternChains : myEasternChains).append(chain);
            }
            chain = {{crossing}, myCrossings.size(), 0};
            myCrossings.append(crossing);
        }
        chain.vertices.append(vertex);
    }
    chain.vertices.append(myCrossings.at(firstCrossing));
    chain.end = firstCrossing;
    (isWest(chain.vertices.at(1)) ? myWesternChains : myEasternChains).append(chain);
}

void MeridianCutter::pairCrossings()
{
    // From south to north the meridian enters the area at every other crossing and leaves it at the next.
    QList<qsizetype> order(myCrossings.size());
    for (qsizetype i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(),
                     [this](qsizetype a, qsizetype b) { return myCrossings.at(a).y < myCrossings.at(b).y; });
    myPartners = QList<qsizetype>(order.size(), -1);
    for (qsizetype i = 0; i + 1 < order.size(); i += 2) {
        myPartners[order.at(i)] = order.at(i + 1);
        myPartners[order.at(i + 1)] = order.at(i);
    }
}

QList<LvGeoJsonPath> MeridianCutter::linked(const QList<Chain>& chains,
                                            const QList<LvGeoJsonPath>& wholeRings) const
{
    QList<qsizetype> chainAt(myCrossings.size(), -1); // which chain starts at a crossing
    for (qsizetype i = 0; i < chains.size(); ++i) {
        chainAt[chains.at(i).start] = i;
    }
    QList<LvGeoJsonPath> rings = wholeRings;
    QList<bool> isUsed(chains.size(), false);
    for (qsizetype i = 0; i < chains.size(); ++i) {
        LvGeoJsonPath ring;
        // Where rings cross each other no chain may start at the partner; the part is closed straight then.
        for (qsizetype next = i; next >= 0 && !isUsed.at(next);
             next = chainAt.at(myPartners.at(chains.at(next).end))) {
            isUsed[next] = true;
            ring += chains.at(next).vertices;
        }
        removeRepetitions(ring);
        removeNeedles(ring, myMeridian);
        if (ring.size() >= fewestRingVertices && signedArea(ring) != 0.0) {
            rings.append(ring);
        }
    }
    return rings;
}

/// Sorts rings of one copy of the world into areas with holes, and moves them between 180° west and east.
QList<LvGeoJsonPolygon> assembled(const QList<LvGeoJsonPath>& rings)
{
    QList<LvGeoJsonPolygon> polygons;
    for (const LvGeoJsonPath& ring : rings) {
        if (signedArea(ring) > 0.0) {
            polygons.append({ring});
        }
    }
    for (const LvGeoJsonPath& ring : rings) {
        if (signedArea(ring) > 0.0 || polygons.isEmpty()) {
            continue;
        }
        const auto owner =
            std::max_element(polygons.begin(), polygons.end(), [&ring](const auto& a, const auto& b) {
                return countInside(a.first(), ring) < countInside(b.first(), ring);
            });
        owner->append(ring);
    }
    for (LvGeoJsonPolygon& polygon : polygons) {
        const auto [west, east] =
            std::minmax_element(polygon.first().cbegin(), polygon.first().cend(),
                                [](const LvGeoJsonVertex& a, const LvGeoJsonVertex& b) { return a.x < b.x; });
        const double offset = -worldOf((west->x + east->x) / 2.0) * fullTurn;
        for (LvGeoJsonPath& ring : polygon) {
            ring = shifted(ring, offset);
        }
    }
    return polygons;
}

} // namespace

QList<LvGeoJsonPath> LvGeoJsonGeometry::cutLine(const LvGeoJsonPath& line)
{
    if (line.isEmpty()) {
        return {};
    }
    if (line.size() == 1) {
        return {{line.first(), line.first()}};
    }
    const LvGeoJsonPath whole = unwrapped(line);
    LvGeoJsonPath cut;
    for (qsizetype i = 0; i + 1 < whole.size(); ++i) {
        cut.append(whole.at(i));
        appendCrossings(cut, whole.at(i), whole.at(i + 1));
    }
    cut.append(whole.last());

    QList<LvGeoJsonPath> parts;
    double world = 0.0;
    for (qsizetype i = 0; i + 1 < cut.size(); ++i) {
        const LvGeoJsonVertex& a = cut.at(i);
        const LvGeoJsonVertex& b = cut.at(i + 1);
        // A way along the edge of the world stays on the side it came from.
        const double edgeWorld = runsAlongEdge(a, b) && !parts.isEmpty() ? world : worldOf((a.x + b.x) / 2.0);
        if (parts.isEmpty() || edgeWorld != world) {
            parts.append({a});
            world = edgeWorld;
            parts.last().first().x -= world * fullTurn;
        }
        parts.last().append(b);
        parts.last().last().x -= world * fullTurn;
    }
    return parts;
}

QList<LvGeoJsonPolygon> LvGeoJsonGeometry::cutArea(const LvGeoJsonPath& outer,
                                                   const QList<LvGeoJsonPath>& holes)
{
    QList<LvGeoJsonPath> rings{preparedRing(outer, true)};
    if (rings.first().isEmpty()) {
        return {};
    }
    for (const LvGeoJsonPath& hole : holes) {
        const LvGeoJsonPath ring = preparedRing(hole, false);
        if (!ring.isEmpty()) {
            rings.append(movedInto(rings.first(), ring));
        }
    }
    double west = std::numeric_limits<double>::max();
    double east = std::numeric_limits<double>::lowest();
    for (const LvGeoJsonVertex& vertex : std::as_const(rings.first())) {
        west = std::min(west, vertex.x);
        east = std::max(east, vertex.x);
    }
    QList<LvGeoJsonPolygon> polygons;
    const QList<double> edges = edgesBetween(west, east);
    for (const double edge : edges) {
        MeridianCutter cutter(edge);
        for (const LvGeoJsonPath& ring : std::as_const(rings)) {
            cutter.add(ring);
        }
        cutter.pairCrossings();
        polygons += assembled(cutter.westernRings());
        rings = cutter.easternRings();
    }
    return polygons + assembled(rings);
}
