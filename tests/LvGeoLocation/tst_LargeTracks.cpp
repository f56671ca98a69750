#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvGPXTrackListModel.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPositionList.h"
#include "LvGeoPositionRect.h"
#include "LvTest.h"

#include <array>
#include <bit>
#include <cmath>
#include <ctime>
#include <limits>
#include <random>

namespace
{

// A track gathers its positions with room for a million, which the address sanitizer watches at a price.
constexpr int oddRounds = LvTest::generatedCases(1000);

QDateTime utc(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

LvGPXTrackPoint point(double latitude, double longitude, const QDateTime& time = QDateTime())
{
    return {LvGeoPosition(latitude, longitude), 100, time, QString()};
}

QList<LvGPXTrackPoint> line(int count)
{
    QList<LvGPXTrackPoint> points;
    points.reserve(count);
    for (int index = 0; index < count; ++index) {
        points.append(point(50.0 + index * 1e-6, 8.0, utc(1700000000 + index)));
    }
    return points;
}

LvGPXTrack track(const QList<LvGPXTrackSegment>& segments, const QString& name = QString())
{
    return {name, QString(), segments, LvGPXTrackShapeEnum::linestring};
}

/// Positions and times as no reader makes them, mixed with usual ones.
QList<LvGPXTrackPoint> oddPoints(std::mt19937& random, int count)
{
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    static constexpr std::array<double, 22> degrees{
        0.0,   -0.0,   nan,    infinity, -infinity, 720.0, 720.0000005, -720.0, 360.0,  -360.0, 360.0000001,
        180.0, -180.0, 179.99, -179.99,  90.0,      -90.0, 1e-7,        -1e-7,  5e-324, 53.14,  8.8};
    const auto oneOf = [&random](const auto& values) { return values[random() % std::size(values)]; };
    const std::array<QDateTime, 6> times{QDateTime(),
                                         utc(0),
                                         utc(-5),
                                         utc(1700000000),
                                         QDateTime(QDate(2023, 1, 1), QTime(1, 2), Qt::OffsetFromUTC, 7200),
                                         QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC)};
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < count; ++index) {
        if (!points.isEmpty() && random() % 5 == 0) {
            points.append(points.at(static_cast<qsizetype>(random()) % points.size())); // a shared payload
        } else {
            points.append(point(oneOf(degrees), oneOf(degrees), oneOf(times)));
        }
    }
    return points;
}

LvGPXTrack oddTrack(std::mt19937& random)
{
    QList<LvGPXTrackSegment> segments;
    const auto count = random() % 5;
    for (unsigned index = 0; index < count; ++index) {
        segments.append(LvGPXTrackSegment(oddPoints(random, static_cast<int>(random() % 6))));
    }
    return track(segments);
}

// The plain ways, as the results are defined.

LvGeoPositionRect plainBox(const LvGeoPositionList& positions)
{
    LvGeoPositionRect box;
    for (const LvGeoPosition& position : positions) {
        box.expandTo(position);
    }
    return box;
}

LvRange<QDateTime> plainFrame(const QList<QDateTime>& times)
{
    LvRange<QDateTime> frame{QDateTime(), QDateTime()};
    for (const QDateTime& time : times) {
        frame.expandTo(time);
    }
    return frame;
}

LvGeoPositionList plainPoints(const LvGPXTrack& track)
{
    LvGeoPositionList positions;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (const LvGPXTrackPoint& each : points) {
            positions.append(each.position());
        }
    }
    return positions;
}

QList<QDateTime> plainTimes(const LvGPXTrack& track)
{
    QList<QDateTime> times;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        times += segment.allTimeStamps();
    }
    return times;
}

LvGeoPosition plainRelative(const LvGPXConfiguredTrack& configured, double fraction)
{
    const LvGeoPositionList points = configured.allPoints();
    const LvGPXTrackShape effective = configured.effectiveShape();
    if (configured.naturalShape() != LvGPXTrackShapeEnum::point
        && (effective == LvGPXTrackShapeEnum::hop || effective == LvGPXTrackShapeEnum::polygon)) {
        return plainBox(points).center();
    }
    const double index = std::round((static_cast<double>(points.size()) - 1.0) * fraction);
    return index >= 0.0 && index < static_cast<double>(points.size())
        ? points.at(static_cast<qsizetype>(index))
        : LvGeoPosition();
}

bool sameBits(double a, double b)
{
    return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b);
}

bool same(const LvGeoPosition& a, const LvGeoPosition& b)
{
    return sameBits(a.latitude().decimalDegrees(), b.latitude().decimalDegrees())
        && sameBits(a.longitude().decimalDegrees(), b.longitude().decimalDegrees());
}

bool same(const LvGeoPositionList& a, const LvGeoPositionList& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const LvGeoPosition& x, const LvGeoPosition& y) { return same(x, y); });
}

bool same(const LvGeoPositionRect& a, const LvGeoPositionRect& b)
{
    return same(LvGeoPosition(a.south(), a.west()), LvGeoPosition(b.south(), b.west()))
        && same(LvGeoPosition(a.north(), a.east()), LvGeoPosition(b.north(), b.east()));
}

bool same(const LvRange<QDateTime>& a, const LvRange<QDateTime>& b)
{
    return a.min() == b.min() && a.max() == b.max() && a.min().isNull() == b.min().isNull()
        && a.max().isNull() == b.max().isNull();
}

LvGeoPositionList joined(const QList<LvGeoPositionList>& chunks)
{
    LvGeoPositionList positions;
    for (const LvGeoPositionList& chunk : chunks) {
        positions.append(chunk);
    }
    return positions;
}

/// Measures processor time, which does not depend on what else the machine does.
class ProcessorTime
{
public:
    /// Far more than what is tested takes, far less than what it would take to walk through all points.
    [[nodiscard]] bool isGenerous() const
    {
        return static_cast<double>(std::clock() - myStart) / CLOCKS_PER_SEC < 20.0;
    }

private:
    std::clock_t myStart = std::clock();
};

} // namespace

/// Tracks of very many points, segments or neighbours: the quick ways find what the plain ways find, and what
/// needs no look at the points takes none.
class tst_LargeTracks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sameAsPlainWay();
    void ownElementIsGathered();
    void equalityOfOddTracks();
    void shortSegmentsAreOneBlockEach();
    void comparisonsDoNotWalk();
    void shapesDoNotWalk();
    void manyTracks();
};

void tst_LargeTracks::sameAsPlainWay()
{
    std::mt19937 random(7);
    constexpr std::array<double, 9> fractions{
        0.0, 0.25, 0.5, 1.0, -0.1, -1.0, 1.5, 1e300, std::numeric_limits<double>::quiet_NaN()};
    for (int round = 0; round < oddRounds; ++round) {
        LvGPXTrackSelection selection;
        LvGeoPositionList allPositions;
        QList<QDateTime> allTimes;
        for (int index = 0; index < 2; ++index) {
            const LvGPXTrack each = oddTrack(random);
            const LvGeoPositionList positions = plainPoints(each);
            const QList<QDateTime> times = plainTimes(each);
            QCOMPARE(each.countPoints(), static_cast<int>(positions.size()));
            QVERIFY(same(each.allPoints(), positions));
            QVERIFY(same(joined(each.chunkedPoints()), positions));
            QCOMPARE(each.allTimeStamps(), times);
            QVERIFY(same(each.boundingBox(), plainBox(positions)));
            QVERIFY(same(positions.boundingBox(), plainBox(positions)));
            QVERIFY(same(each.timeFrame(), plainFrame(times)));
            for (const LvGPXTrackShapeEnum shape :
                 {LvGPXTrackShapeEnum::point, LvGPXTrackShapeEnum::hop, LvGPXTrackShapeEnum::linestring,
                  LvGPXTrackShapeEnum::polygon}) {
                LvGPXTrackConfiguration configuration;
                configuration.setTrackShape(shape);
                const LvGPXConfiguredTrack configured(each, configuration);
                for (const double fraction : fractions) {
                    QVERIFY(same(configured.positionRelativeFromStart(fraction),
                                 plainRelative(configured, fraction)));
                }
                if (configured.drawingPoints().size() != positions.size()) {
                    const LvGeoPosition shown = configured.naturalShape() == LvGPXTrackShapeEnum::polygon
                        ? plainBox(positions).center()
                        : plainRelative(configured, 0.5);
                    QVERIFY(same(configured.drawingPoints(), {shown}));
                }
            }
            selection.addTrack(each);
            allPositions.append(positions);
            allTimes += times;
        }
        QVERIFY(same(selection.allPoints(), allPositions));
        QVERIFY(same(joined(selection.chunkedPoints()), allPositions));
        QCOMPARE(selection.allTimeStamps(), allTimes);
        QVERIFY(same(selection.boundingBox(), plainBox(allPositions)));
        QVERIFY(same(selection.timeFrame(), plainFrame(allTimes)));
    }
}

void tst_LargeTracks::ownElementIsGathered()
{
    /// An element of an application, which knows only the old functions.
    class TwoPlaces : public LvGPXTrackElement
    {
    public:
        [[nodiscard]] LvGeoPositionList allPoints() const override
        {
            return {LvGeoPosition(1, 2), LvGeoPosition(3, 4)};
        }

        [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override { return {allPoints()}; }

        [[nodiscard]] LvGeoPosition firstPoint() const override { return allPoints().first(); }

        [[nodiscard]] LvGeoPosition lastPoint() const override { return allPoints().last(); }

        [[nodiscard]] QList<QDateTime> allTimeStamps() const override { return {utc(5), utc(9)}; }
    };

    const TwoPlaces element;
    QVERIFY(!element.visitTrackPoints([](const QList<LvGPXTrackPoint>&) { QFAIL("nothing to visit"); }));
    QVERIFY(same(element.boundingBox(), plainBox(element.allPoints())));
    QCOMPARE(element.timeFrame().min(), utc(5));
    QCOMPARE(element.timeFrame().max(), utc(9));
    // Points are elements, too.
    QVERIFY(same(point(3, 4).boundingBox(), plainBox({LvGeoPosition(3, 4)})));
    QCOMPARE(point(3, 4, utc(6)).timeFrame().max(), utc(6));
}

void tst_LargeTracks::equalityOfOddTracks()
{
    std::mt19937 random(8);
    LvGPXTrackConfiguration red;
    red.setLineColor(Qt::red);
    LvGPXTrackConfiguration blue;
    blue.setLineColor(Qt::blue);
    for (int round = 0; round < oddRounds; ++round) {
        const LvGPXTrack first = oddTrack(random);
        const LvGPXTrack second = random() % 3 == 0 ? first : oddTrack(random);
        for (const LvGPXTrackConfiguration& configuration : {red, blue}) {
            const LvGPXConfiguredTrack a(first, red);
            const LvGPXConfiguredTrack b(second, configuration);
            QCOMPARE(a == b, a.track() == b.track() && a.configuration() == b.configuration());
        }
        const auto count = plainPoints(first).size();
        const auto otherCount = plainPoints(second).size();
        if (count == 0 || count != otherCount) {
            QCOMPARE(first < second, count < otherCount);
            QCOMPARE(first > second, count > otherCount);
        } else {
            QCOMPARE(first < second, plainPoints(first).first() < plainPoints(second).first());
            QCOMPARE(first > second, plainPoints(first).first() > plainPoints(second).first());
        }
    }
}

void tst_LargeTracks::shortSegmentsAreOneBlockEach()
{
    QList<LvGPXTrackSegment> segments;
    for (int index = 0; index < 10000; ++index) {
        segments.append(LvGPXTrackSegment(line(1 + index % 2)));
    }
    const LvGPXTrack many = track(segments);
    const ProcessorTime time;
    for (int round = 0; round < 10; ++round) {
        const QList<LvGeoPositionList> chunks = many.chunkedPoints();
        QCOMPARE(chunks.size(), 10000);
        QCOMPARE(chunks.at(1).size(), 2);
    }
    QVERIFY(time.isGenerous());
}

void tst_LargeTracks::comparisonsDoNotWalk()
{
    constexpr int count = 300000;
    const LvGPXTrack first = track({LvGPXTrackSegment(line(count))}, QStringLiteral("first"));
    const LvGPXTrack second = track({LvGPXTrackSegment(line(count))}, QStringLiteral("second"));
    LvGPXTrackConfiguration red;
    red.setLineColor(Qt::red);
    LvGPXTrackConfiguration blue;
    blue.setLineColor(Qt::blue);
    LvGPXTrack twin = track({LvGPXTrackSegment(line(count))}, QStringLiteral("first"));
    const LvGPXConfiguredTrack redTrack(first, red);
    const LvGPXConfiguredTrack blueTwin(twin, blue);
    const LvGPXTrack copy = first;
    const ProcessorTime time;
    for (int round = 0; round < 20000; ++round) {
        QVERIFY(!(first < second));
        QVERIFY(!(first > second));
        QVERIFY(first != second);
        QVERIFY(first == copy);
        QVERIFY(!(redTrack == blueTwin));
        QCOMPARE(first.countPoints(), count);
        QCOMPARE(LvGPXTrackFileRegistryKey(first, QDir()).hash(), ::qHash(count, 0));
    }
    QVERIFY(time.isGenerous());
}

void tst_LargeTracks::shapesDoNotWalk()
{
    constexpr int count = 300000;
    LvGPXTrackConfiguration asPoint;
    asPoint.setTrackShape(LvGPXTrackShapeEnum::point);
    const LvGPXConfiguredTrack configured(track({LvGPXTrackSegment(line(count))}), asPoint);
    const LvGeoPosition middle = configured.allPoints().at(count / 2);
    const ProcessorTime time;
    for (int round = 0; round < 20000; ++round) {
        QVERIFY(configured.effectiveShape() == LvGPXTrackShapeEnum::point);
        QVERIFY(configured.naturalShape() == LvGPXTrackShapeEnum::linestring);
        QVERIFY(!configured.isSinglePoint());
        QVERIFY(configured.positionRelativeFromStart(0.5) == middle);
        QCOMPARE(configured.drawingPoints().size(), 1);
        QVERIFY(configured.firstPoint() != configured.lastPoint());
    }
    QVERIFY(time.isGenerous());
}

void tst_LargeTracks::manyTracks()
{
    constexpr int count = 5500;
    LvGPXTrackSelection selection;
    LvGPXTrackSelection other;
    for (int index = 0; index < count; ++index) {
        const QString name = QString::number(index);
        selection.addTrack(track({LvGPXTrackSegment(line(20))}, name));
        other.addTrack(track({LvGPXTrackSegment(line(20))}, name));
    }
    const ProcessorTime time;
    for (int round = 0; round < 20; ++round) {
        QVERIFY(selection == other);
        QVERIFY(selection.compare(other).changingTracks().isEmpty());
        QCOMPARE(selection.allPoints().size(), qsizetype{count} * 20);
        QVERIFY(selection.boundingBox().isValid());
        QCOMPARE(selection.timeFrame().max(), utc(1700000019));
        LvGPXTrackListModel model;
        model.setSelection(selection);
        model.setSelection(other);
        QCOMPARE(model.rowCount(), count);
        QCOMPARE(model.data(model.index(count - 1, 0), Qt::DisplayRole).toString(),
                 QString::number(count - 1));
    }
    QVERIFY(time.isGenerous());
}

LV_TEST_MAIN(tst_LargeTracks)
#include "tst_LargeTracks.moc"
