#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvGPXTrackImpl.h"
#include "LvTest.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <functional>
#include <memory>
#include <sys/stat.h>
#include <type_traits>
#include <utility>

namespace
{

const QDir noDirectory{QString()};

QDomElement parsed(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document.documentElement();
}

LvGPXTrack read(const QString& xml)
{
    return {parsed(xml), noDirectory};
}

/// A polygon or line through the given corners, latitude first.
LvGPXTrack track(const QList<std::pair<double, double>>& corners,
                 LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::linestring,
                 const QString& name = QStringLiteral("a"))
{
    QList<LvGPXTrackPoint> points;
    for (const auto& [latitude, longitude] : corners) {
        points.append(LvGPXTrackPoint(LvGeoPosition(latitude, longitude), 0, {}, {}));
    }
    return {name, QString(), {LvGPXTrackSegment(points)}, shape};
}

LvGPXTrack square(double size, LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::polygon)
{
    return track({{50 - size, 8 - size},
                  {50 + size, 8 - size},
                  {50 + size, 8 + size},
                  {50 - size, 8 + size},
                  {50 - size, 8 - size}},
                 shape);
}

QStringList childNames(const QDomElement& element)
{
    QStringList names;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        names.append(child.tagName());
    }
    return names;
}

QDomElement child(const QDomElement& element, const char* name)
{
    return element.firstChildElement(QLatin1String(name));
}

/// The "trk" element that the track writes with the directory.
QDomElement written(const LvGPXTrack& track, const QDir& dir = noDirectory)
{
    QDomElement parent = parsed(QStringLiteral("<parent/>"));
    track.toXml(parent, dir);
    return parent.firstChildElement();
}

bool writeFile(const QString& path, const QByteArray& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QByteArray included(const QByteArray& body)
{
    return "<includedTrack><trk>" + body + "</trk></includedTrack>";
}

const QByteArray oneSegment = "<trkseg><compressedPoints>8,50 9,51</compressedPoints></trkseg>";

static_assert(std::is_base_of_v<LvGPXTrackElement, LvGPXTrack>);
static_assert(std::is_base_of_v<LvGPXTrackElement, LvGPXTrackImpl>);
static_assert(std::is_base_of_v<QSharedData, LvGPXTrackImpl>);
static_assert(std::is_nothrow_move_constructible_v<LvGPXTrack>);
static_assert(std::is_nothrow_move_assignable_v<LvGPXTrack>);

} // namespace

class tst_LvGPXTrack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void fields();
    void fromPoint();
    void copyOnWrite();
    void setters();
    void autoDetectShape_data();
    void autoDetectShape();
    void elementOperations();
    void enclaveOfItself();
    void isEnclave_data();
    void isEnclave();
    void equality_data();
    void equality();
    void ordering_data();
    void ordering();
    void decodeKml_data();
    void decodeKml();
    void fromXml_data();
    void fromXml();
    void fromXmlAddsToWhatIsThere();
    void readsEnclaves();
    void buildXmlBody();
    void toXmlInline();
    void losesDescriptions();
    void saveAsGpxFile();
    void savedBytesAreThoseOfTheTree();
    void include();
    void includeGoesOneLevelDeep();
    void includeIsIgnoredWithoutDirectory();
    void includeOfWhatCannotBeRead_data();
    void includeOfWhatCannotBeRead();
    void includeReadsRegularFilesOnly();
    void lastIncludeIsRegistered();
    void toXmlWithDirectory();
    void savesDeepEnclaves();
    void deepEnclaves();
    void impl();
};

void tst_LvGPXTrack::defaults()
{
    const LvGPXTrack track;
    QVERIFY(track.name().isEmpty());
    QVERIFY(track.description().isEmpty());
    QVERIFY(track.shape() == LvGPXTrackShapeEnum::linestring);
    QVERIFY(track.segments().isEmpty());
    QVERIFY(track.enclaves().isEmpty());
    QVERIFY(!track.isValid());
    QCOMPARE(track.countPoints(), 0);
    QVERIFY(!track.isSinglePoint());
    QVERIFY(track.allPoints().isEmpty());
    QVERIFY(track.chunkedPoints().isEmpty());
    QVERIFY(track.allTimeStamps().isEmpty());
    QCOMPARE(track.firstPoint().latitude().decimalDegrees(), 720.0);
    QCOMPARE(track.lastPoint().longitude().decimalDegrees(), 720.0);
    QVERIFY(track.naturalShape() == LvGPXTrackShapeEnum::unknown);
}

void tst_LvGPXTrack::fields()
{
    const QList<LvGPXTrackSegment> segments{LvGPXTrackSegment(), LvGPXTrackSegment(LvGPXTrackPoint())};
    const LvGPXTrack track(QStringLiteral("name"), QStringLiteral("text"), segments,
                           LvGPXTrackShapeEnum::hop);
    QCOMPARE(track.name(), QStringLiteral("name"));
    QCOMPARE(track.description(), QStringLiteral("text"));
    QCOMPARE(track.segments(), segments);
    QVERIFY(track.enclaves().isEmpty());
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::hop));
    // The whole value counts, not its flags.
    const LvGPXTrack combined(QString(), QString(), {}, LvGPXTrackShape(12));
    QVERIFY(!combined.hasShape(LvGPXTrackShapeEnum::polygon));
    QVERIFY(combined.hasShape(LvGPXTrackShape(12)));
    // Only exactly "automatic" is resolved.
    QVERIFY(LvGPXTrack(QString(), QString(), {}, LvGPXTrackShape(256)).hasShape(LvGPXTrackShape(0)));
    QVERIFY(LvGPXTrack(QString(), QString(), {}, LvGPXTrackShape(257)).hasShape(LvGPXTrackShape(257)));
}

void tst_LvGPXTrack::fromPoint()
{
    const LvGPXTrack track(LvGPXTrackPoint(LvGeoPosition(50, 8), 12, {}, QStringLiteral("Hütte")));
    QCOMPARE(track.name(), QStringLiteral("Hütte"));
    QVERIFY(track.description().isEmpty());
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::point));
    QVERIFY(track.isValid());
    QVERIFY(track.isSinglePoint());
    QCOMPARE(track.segments().first().trackPoints().first().elevation(), 12);
    for (const LvGeoPosition& position : {LvGeoPosition(), LvGeoPosition(0, 0)}) {
        const LvGPXTrack invalid(LvGPXTrackPoint(position, 12, {}, QStringLiteral("a")));
        QVERIFY(!invalid.isValid());
        QCOMPARE(invalid.name(), QStringLiteral("a"));
        QVERIFY(invalid.hasShape(LvGPXTrackShapeEnum::point));
    }
}

void tst_LvGPXTrack::copyOnWrite()
{
    const LvGPXTrack original = square(1);
    LvGPXTrack copy(original);
    QVERIFY(copy == original);
    copy.setName(QStringLiteral("b"));
    QCOMPARE(original.name(), QStringLiteral("a"));
    copy = original;
    copy.setShape(LvGPXTrackShapeEnum::hop);
    QVERIFY(original.hasShape(LvGPXTrackShapeEnum::polygon));
    copy = original;
    copy.addEnclave(LvGPXTrack());
    QVERIFY(original.enclaves().isEmpty());
    copy = original;
    copy.setEnclaves({LvGPXTrack()});
    QVERIFY(original.enclaves().isEmpty());
    copy = original;
    copy.fromXml(parsed(QStringLiteral("<trk><desc>c</desc></trk>")), noDirectory);
    QVERIFY(original.description().isEmpty());
    QCOMPARE(copy.description(), QStringLiteral("c"));

    LvGPXTrack moved(std::move(copy));
    QCOMPARE(moved.description(), QStringLiteral("c"));
    copy = original;
    QVERIFY(copy == original);
    moved = std::move(copy);
    QVERIFY(moved == original);
    LvGPXTrack other;
    other.swap(moved);
    QVERIFY(other == original);
    QVERIFY(!moved.isValid());
}

void tst_LvGPXTrack::setters()
{
    LvGPXTrack track;
    track.setName(QStringLiteral("b"));
    QCOMPARE(track.name(), QStringLiteral("b"));
    track.setName(QString());
    QVERIFY(track.name().isEmpty());
    track.setShape(LvGPXTrackShape(256));
    // Only the constructor and the reader resolve it.
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::automatic));
    track.setEnclaves({square(1), square(2)});
    QCOMPARE(track.enclaves(), (QList<LvGPXTrack>{square(1), square(2)}));
    track.addEnclave(track.enclaves().first());
    QCOMPARE(track.enclaves().size(), 3);
    QVERIFY(track.enclaves().last() == square(1));
    track.setEnclaves({});
    QVERIFY(track.enclaves().isEmpty());
}

void tst_LvGPXTrack::autoDetectShape_data()
{
    QTest::addColumn<QList<LvGPXTrackSegment>>("segments");
    QTest::addColumn<LvGPXTrackShape>("expected");
    const LvGPXTrackPoint a(LvGeoPosition(1, 2), 1, {}, {});
    const LvGPXTrackPoint b(LvGeoPosition(3, 4), 2, {}, {});
    const LvGPXTrackPoint nearA(LvGeoPosition(1.0000005, 2), 3, {}, {});
    using Points = QList<LvGPXTrackPoint>;
    using Segments = QList<LvGPXTrackSegment>;
    const LvGPXTrackShape point(1);
    const LvGPXTrackShape linestring(4);
    const LvGPXTrackShape polygon(8);
    QTest::newRow("none") << Segments{} << LvGPXTrackShape(0);
    QTest::newRow("one point") << Segments{LvGPXTrackSegment(a)} << point;
    QTest::newRow("two points") << Segments{LvGPXTrackSegment(Points{a, b})} << linestring;
    QTest::newRow("closed") << Segments{LvGPXTrackSegment(Points{a, b, a})} << polygon;
    QTest::newRow("closed within the tolerance")
        << Segments{LvGPXTrackSegment(Points{a, b, nearA})} << polygon;
    QTest::newRow("closed over two segments")
        << Segments{LvGPXTrackSegment(Points{a, b}), LvGPXTrackSegment(Points{b, a})} << polygon;
    QTest::newRow("open over two segments")
        << Segments{LvGPXTrackSegment(Points{a, b, a}), LvGPXTrackSegment(Points{a, b})} << linestring;
    QTest::newRow("two segments of the same point")
        << Segments{LvGPXTrackSegment(a), LvGPXTrackSegment(a)} << polygon;
    QTest::newRow("one empty segment: two default positions") << Segments{LvGPXTrackSegment()} << polygon;
}

void tst_LvGPXTrack::autoDetectShape()
{
    QFETCH(QList<LvGPXTrackSegment>, segments);
    QFETCH(LvGPXTrackShape, expected);
    QVERIFY(LvGPXTrack::autoDetectShape(segments) == expected);
    const LvGPXTrack automatic(QString(), QString(), segments, LvGPXTrackShapeEnum::automatic);
    QVERIFY(automatic.shape() == expected);
    // The natural shape ignores the one that is set.
    const LvGPXTrack hop(QString(), QString(), segments, LvGPXTrackShapeEnum::hop);
    QVERIFY(hop.hasShape(LvGPXTrackShapeEnum::hop));
    QVERIFY(hop.naturalShape() == expected);
}

void tst_LvGPXTrack::elementOperations()
{
    const QDateTime time(QDate(2024, 5, 17), QTime(9, 0), Qt::UTC);
    const LvGPXTrackPoint a(LvGeoPosition(1, 2), 1, time, {});
    const LvGPXTrackPoint b(LvGeoPosition(3, 4), 2, {}, {});
    LvGPXTrack track(QString(), QString(), {LvGPXTrackSegment({a, b}), LvGPXTrackSegment(b)},
                     LvGPXTrackShapeEnum::linestring);
    track.addEnclave(square(1));
    const LvGPXTrackElement& element = track;
    QCOMPARE(element.allPoints().size(), 3);
    QVERIFY(element.allPoints().capacity() >= 1000000);
    QVERIFY(element.allPoints().at(2) == LvGeoPosition(3, 4));
    QCOMPARE(element.chunkedPoints().size(), 2);
    QCOMPARE(element.chunkedPoints().first().size(), 2);
    QVERIFY(!element.isSinglePoint());
    QVERIFY(element.firstPoint() == LvGeoPosition(1, 2));
    QVERIFY(element.lastPoint() == LvGeoPosition(3, 4));
    QCOMPARE(element.allTimeStamps(), (QList<QDateTime>{time, {}, {}}));
    QCOMPARE(track.countPoints(), 3);
    QVERIFY(element.boundingBox() == LvGeoPositionRect(LvGeoPosition(1, 2), LvGeoPosition(3, 4)));

    const LvGPXTrack reversed(QString(), QString(), {LvGPXTrackSegment(b), LvGPXTrackSegment({b, a})},
                              LvGPXTrackShapeEnum::linestring);
    QVERIFY(reversed.firstPoint() == LvGeoPosition(3, 4));
    QVERIFY(reversed.lastPoint() == LvGeoPosition(1, 2)); // of the last segment

    // One point in each of two segments is no single point.
    const LvGPXTrack twice(QString(), QString(), {LvGPXTrackSegment(a), LvGPXTrackSegment(a)},
                           LvGPXTrackShapeEnum::point);
    QVERIFY(!twice.isSinglePoint());
    QVERIFY(LvGPXTrack(a).isSinglePoint());
}

void tst_LvGPXTrack::enclaveOfItself()
{
    LvGPXTrack track = square(1);
    track.addEnclave(track);
    QCOMPARE(track.enclaves().size(), 1);
    QVERIFY(track.enclaves().first() == square(1));
    track.addEnclave(track);
    QCOMPARE(track.enclaves().size(), 2);
    QVERIFY(track.enclaves().last().enclaves().size() == 1);
    track.setEnclaves({track});
    QCOMPARE(track.enclaves().size(), 1);
    QCOMPARE(track.enclaves().first().enclaves().size(), 2);
}

void tst_LvGPXTrack::isEnclave_data()
{
    QTest::addColumn<LvGPXTrack>("outer");
    QTest::addColumn<LvGPXTrack>("inner");
    QTest::addColumn<bool>("expected");
    const LvGPXTrack beside = track({{60, 8}, {61, 8}, {61, 9}, {60, 8}}, LvGPXTrackShapeEnum::polygon);
    const LvGPXTrack across = track({{50, 8}, {50, 20}, {51, 20}, {50, 8}}, LvGPXTrackShapeEnum::polygon);
    QTest::newRow("inside") << square(4) << square(1) << true;
    QTest::newRow("outside") << square(1) << square(4) << false;
    QTest::newRow("beside") << square(4) << beside << false;
    QTest::newRow("across the edge") << square(4) << across << false;
    QTest::newRow("outer line") << square(4, LvGPXTrackShapeEnum::linestring) << square(1) << false;
    QTest::newRow("inner line") << square(4) << square(1, LvGPXTrackShapeEnum::linestring) << false;
    QTest::newRow("polygon among other flags")
        << square(4) << square(1, static_cast<LvGPXTrackShapeEnum>(9)) << false;
    QTest::newRow("nothing inside") << square(4)
                                    << LvGPXTrack(QString(), QString(), {}, LvGPXTrackShapeEnum::polygon)
                                    << false;
}

void tst_LvGPXTrack::isEnclave()
{
    QFETCH(LvGPXTrack, outer);
    QFETCH(LvGPXTrack, inner);
    QFETCH(bool, expected);
    QCOMPARE(outer.isEnclave(inner), expected);
}

void tst_LvGPXTrack::equality_data()
{
    QTest::addColumn<LvGPXTrack>("other");
    QTest::addColumn<bool>("expected");
    const auto make = [](const QString& name, const QString& description,
                         const QList<LvGPXTrackSegment>& segments, LvGPXTrackShapeEnum shape,
                         const QList<LvGPXTrack>& enclaves) {
        LvGPXTrack made(name, description, segments, shape);
        made.setEnclaves(enclaves);
        return made;
    };
    const QList<LvGPXTrackSegment> segments = square(1).segments();
    const auto polygon = LvGPXTrackShapeEnum::polygon;
    LvGPXTrack nested = square(0.5);
    nested.addEnclave(square(0.25));
    LvGPXTrack differentlyNested = square(0.5);
    differentlyNested.addEnclave(square(0.2));
    QTest::newRow("equal") << make("n", "d", segments, polygon, {nested}) << true;
    QTest::newRow("name") << make("m", "d", segments, polygon, {nested}) << false;
    QTest::newRow("description") << make("n", "", segments, polygon, {nested}) << false;
    QTest::newRow("shape") << make("n", "d", segments, LvGPXTrackShapeEnum::linestring, {nested}) << false;
    QTest::newRow("points") << make("n", "d", square(2).segments(), polygon, {nested}) << false;
    QTest::newRow("more segments") << make("n", "d", segments + segments, polygon, {nested}) << false;
    QTest::newRow("no enclave") << make("n", "d", segments, polygon, {}) << false;
    QTest::newRow("more enclaves") << make("n", "d", segments, polygon, {nested, nested}) << false;
    QTest::newRow("enclave") << make("n", "d", segments, polygon, {square(0.5)}) << false;
    QTest::newRow("enclave of the enclave")
        << make("n", "d", segments, polygon, {differentlyNested}) << false;
}

void tst_LvGPXTrack::equality()
{
    QFETCH(LvGPXTrack, other);
    QFETCH(bool, expected);
    LvGPXTrack enclave = square(0.5);
    enclave.addEnclave(square(0.25));
    LvGPXTrack track(QStringLiteral("n"), QStringLiteral("d"), square(1).segments(),
                     LvGPXTrackShapeEnum::polygon);
    track.addEnclave(enclave);
    QCOMPARE(track == other, expected);
    QCOMPARE(track != other, !expected);
    QCOMPARE(other == track, expected);
    const LvGPXTrack copy = track;
    QVERIFY(copy == track);
    QVERIFY(!(copy != track));
}

void tst_LvGPXTrack::ordering_data()
{
    QTest::addColumn<LvGPXTrack>("a");
    QTest::addColumn<LvGPXTrack>("b");
    QTest::addColumn<bool>("less");
    QTest::addColumn<bool>("greater");
    const LvGPXTrack four = track({{1, 1}, {2, 2}, {3, 3}, {4, 4}});
    const LvGPXTrack five = track({{-50, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}});
    const LvGPXTrack north = track({{10, 1}, {2, 2}});
    const LvGPXTrack south = track({{5, 90}, {80, 2}});
    const LvGPXTrack east = track({{5, 91}, {2, 2}});
    QTest::newRow("fewer points") << four << five << true << false;
    QTest::newRow("more points") << five << four << false << true;
    QTest::newRow("farther south") << south << north << true << false;
    QTest::newRow("farther north") << north << south << false << true;
    QTest::newRow("farther west") << south << east << true << false;
    QTest::newRow("farther east") << east << south << false << true;
    QTest::newRow("equal start") << four << four << false << false;
    QTest::newRow("only the start counts") << track({{5, 90}, {-80, 2}}) << south << false << false;
    QTest::newRow("none and some") << LvGPXTrack() << four << true << false;
    QTest::newRow("some and none") << four << LvGPXTrack() << false << true;
    QTest::newRow("both none") << LvGPXTrack() << LvGPXTrack() << false << false;
    const LvGPXTrack behindEmpty(QString(), QString(), {LvGPXTrackSegment(), south.segments().first()},
                                 LvGPXTrackShapeEnum::linestring);
    QTest::newRow("behind an empty segment") << behindEmpty << north << true << false;
}

void tst_LvGPXTrack::ordering()
{
    QFETCH(LvGPXTrack, a);
    QFETCH(LvGPXTrack, b);
    QFETCH(bool, less);
    QFETCH(bool, greater);
    QCOMPARE(a < b, less);
    QCOMPARE(a > b, greater);
}

void tst_LvGPXTrack::decodeKml_data()
{
    QTest::addColumn<QString>("coordinates");
    QTest::addColumn<LvGPXTrackShape>("shape");
    QTest::addColumn<int>("points");
    QTest::addColumn<LvGPXTrackShape>("expectedShape");
    QTest::newRow("line") << " \n8,50 9,51\n " << LvGPXTrackShape(256) << 2 << LvGPXTrackShape(4);
    QTest::newRow("point") << "8,50,12" << LvGPXTrackShape(256) << 1 << LvGPXTrackShape(1);
    QTest::newRow("ring") << "8,50 9,51 8,51 8,50" << LvGPXTrackShape(256) << 4 << LvGPXTrackShape(8);
    QTest::newRow("given shape") << "8,50 9,51 8,51 8,50" << LvGPXTrackShape(4) << 4 << LvGPXTrackShape(4);
    QTest::newRow("nothing") << " " << LvGPXTrackShape(256) << 0 << LvGPXTrackShape(0);
    QTest::newRow("nothing but 0/0") << "0,0,0" << LvGPXTrackShape(8) << 0 << LvGPXTrackShape(8);
}

void tst_LvGPXTrack::decodeKml()
{
    QFETCH(QString, coordinates);
    QFETCH(LvGPXTrackShape, shape);
    QFETCH(int, points);
    QFETCH(LvGPXTrackShape, expectedShape);
    const LvGPXTrack track =
        LvGPXTrack::decodeKml(QStringLiteral("n"), QStringLiteral("d"), coordinates, shape);
    QCOMPARE(track.name(), QStringLiteral("n"));
    QCOMPARE(track.description(), QStringLiteral("d"));
    QCOMPARE(track.countPoints(), points);
    QCOMPARE(track.segments().size(), points > 0 ? 1 : 0);
    QCOMPARE(track.isValid(), points > 0);
    QVERIFY(track.shape() == expectedShape);
}

void tst_LvGPXTrack::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("description");
    QTest::addColumn<LvGPXTrackShape>("shape");
    QTest::addColumn<QList<int>>("segmentSizes");
    const QString closed =
        QStringLiteral("<trkseg><compressedPoints>8,50 9,51 8,50</compressedPoints></trkseg>");
    const QString point = QStringLiteral("<trkseg><trkpt lat='1' lon='2'/></trkseg>");
    const LvGPXTrackShape linestring(4);
    QTest::newRow("no children") << "<trk/>"
                                 << ""
                                 << "" << linestring << QList<int>{};
    QTest::newRow("texts stay untrimmed") << "<trk><name> a </name><desc>\nb </desc></trk>"
                                          << " a "
                                          << "\nb " << linestring << QList<int>{};
    QTest::newRow("the last name wins") << "<trk><name>a</name><name>b</name></trk>"
                                        << "b"
                                        << "" << linestring << QList<int>{};
    QTest::newRow("CDATA and elements in the text") << "<trk><name>a<![CDATA[<b>]]><i>c</i></name></trk>"
                                                    << "a<b>c"
                                                    << "" << linestring << QList<int>{};
    QTest::newRow("closed without a shape") << "<trk>" + closed + "</trk>"
                                            << ""
                                            << "" << linestring << QList<int>{3};
    QTest::newRow("closed and automatic") << "<trk>" + closed + "<shape>auto</shape></trk>"
                                          << ""
                                          << "" << LvGPXTrackShape(8) << QList<int>{3};
    QTest::newRow("automatic before the points") << "<trk><shape> AUTO </shape>" + closed + "</trk>"
                                                 << ""
                                                 << "" << LvGPXTrackShape(8) << QList<int>{3};
    QTest::newRow("one point and automatic") << "<trk><shape>auto</shape>" + point + "</trk>"
                                             << ""
                                             << "" << LvGPXTrackShape(1) << QList<int>{1};
    QTest::newRow("no points and automatic") << "<trk><shape>auto</shape></trk>"
                                             << ""
                                             << "" << LvGPXTrackShape(0) << QList<int>{};
    QTest::newRow("shape of its own") << "<trk><shape>hop</shape></trk>"
                                      << ""
                                      << "" << LvGPXTrackShape(2) << QList<int>{};
    QTest::newRow("two shapes in one") << "<trk><shape>point, polygon</shape></trk>"
                                       << ""
                                       << "" << LvGPXTrackShape(9) << QList<int>{};
    QTest::newRow("empty shape") << "<trk><shape/></trk>"
                                 << ""
                                 << "" << LvGPXTrackShape(0) << QList<int>{};
    QTest::newRow("unreadable shape") << "<trk><shape>circle</shape></trk>"
                                      << ""
                                      << "" << LvGPXTrackShape(0) << QList<int>{};
    QTest::newRow("empty segments drop out") << "<trk><trkseg/>" + closed + "<trkseg/>" + point + "</trk>"
                                             << ""
                                             << "" << linestring << QList<int>{3, 1};
    QTest::newRow("only empty segments") << "<trk><trkseg/><trkseg><x/></trkseg></trk>"
                                         << ""
                                         << "" << linestring << QList<int>{};
    QTest::newRow("route points")
        << "<rte><rtept lat='1' lon='2'><extensions><gpxx:RoutePointExtension><gpxx:rpt lat='3' lon='4'/>"
           "<gpxx:rpt lat='5' lon='6'/></gpxx:RoutePointExtension></extensions></rtept><rtept lat='7' "
           "lon='8'/></rte>"
        << ""
        << "" << linestring << QList<int>{2};
    QTest::newRow("route points without an extension") << "<rte><name>r</name><rtept lat='1' lon='2'/></rte>"
                                                       << "r"
                                                       << "" << linestring << QList<int>{};
    QTest::newRow("names are compared exactly")
        << "<trk><Name>a</Name><x:desc>b</x:desc><TRKSEG><trkpt/></TRKSEG>"
           "<extensions><name>c</name></extensions></trk>"
        << ""
        << "" << linestring << QList<int>{};
}

void tst_LvGPXTrack::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(QString, name);
    QFETCH(QString, description);
    QFETCH(LvGPXTrackShape, shape);
    QFETCH(QList<int>, segmentSizes);
    const LvGPXTrack track = read(xml);
    QCOMPARE(track.name(), name);
    QCOMPARE(track.description(), description);
    QVERIFY(track.shape() == shape);
    QList<int> sizes;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        sizes.append(segment.count());
    }
    QCOMPARE(sizes, segmentSizes);
    QCOMPARE(track.isValid(), !segmentSizes.isEmpty());
}

void tst_LvGPXTrack::fromXmlAddsToWhatIsThere()
{
    LvGPXTrack track = square(1);
    track.addEnclave(square(0.5));
    track.fromXml(parsed(QStringLiteral("<trk><desc>d</desc><trkseg><trkpt/></trkseg>"
                                        "<enclaves><trk><name>e</name></trk></enclaves></trk>")),
                  noDirectory);
    QCOMPARE(track.name(), QStringLiteral("a"));
    QCOMPARE(track.description(), QStringLiteral("d"));
    QCOMPARE(track.segments().size(), 2);
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::polygon));
    QCOMPARE(track.enclaves().size(), 2);
    QCOMPARE(track.enclaves().last().name(), QStringLiteral("e"));
    // A null element changes nothing.
    const LvGPXTrack before = track;
    track.fromXml(QDomElement(), noDirectory);
    QVERIFY(track == before);
}

void tst_LvGPXTrack::readsEnclaves()
{
    const LvGPXTrack track = read(QStringLiteral(
        "<trk><enclaves><trk><name>1</name><trkseg><trkpt/></trkseg><enclaves><trk><name>1a</name></trk>"
        "<trk><name>1b</name><enclaves><trk><name>1b1</name></trk></enclaves></trk></enclaves>"
        "<desc>d</desc></trk><anything><name>2</name><shape>auto</shape></anything>text</enclaves>"
        "<name>0</name><enclaves/><enclaves><trk><name>3</name></trk></enclaves></trk>"));
    QCOMPARE(track.name(), QStringLiteral("0"));
    const QList<LvGPXTrack> enclaves = track.enclaves();
    QCOMPARE(enclaves.size(), 3);
    QCOMPARE(enclaves.at(0).name(), QStringLiteral("1"));
    QCOMPARE(enclaves.at(0).description(), QStringLiteral("d"));
    QVERIFY(enclaves.at(0).isValid());
    QCOMPARE(enclaves.at(0).enclaves().size(), 2);
    QCOMPARE(enclaves.at(0).enclaves().at(0).name(), QStringLiteral("1a"));
    QCOMPARE(enclaves.at(0).enclaves().at(1).name(), QStringLiteral("1b"));
    QCOMPARE(enclaves.at(0).enclaves().at(1).enclaves().size(), 1);
    QCOMPARE(enclaves.at(0).enclaves().at(1).enclaves().at(0).name(), QStringLiteral("1b1"));
    QCOMPARE(enclaves.at(1).name(), QStringLiteral("2"));
    QVERIFY(!enclaves.at(1).isValid());
    QVERIFY(enclaves.at(1).hasShape(LvGPXTrackShapeEnum::unknown));
    QVERIFY(enclaves.at(2).hasShape(LvGPXTrackShapeEnum::linestring));
    QCOMPARE(enclaves.at(2).name(), QStringLiteral("3"));
    // The points of enclaves are not the track's own.
    QCOMPARE(track.countPoints(), 0);
}

void tst_LvGPXTrack::buildXmlBody()
{
    QDomElement parent = parsed(QStringLiteral("<parent/>"));
    QDomElement trk = square(1).buildTrackElement(parent);
    QCOMPARE(trk.tagName(), QStringLiteral("trk"));
    QVERIFY(!trk.hasChildNodes());
    QCOMPARE(parent.childNodes().size(), 1);

    LvGPXTrack track(QStringLiteral("n & m"), QStringLiteral("d"),
                     square(1).segments() + square(2).segments(), LvGPXTrackShape(9));
    LvGPXTrack enclave(QStringLiteral("e"), QString(), {}, LvGPXTrackShape(0));
    enclave.addEnclave(LvGPXTrack());
    track.setEnclaves({enclave, LvGPXTrack()});
    track.buildXmlBody(trk);
    QCOMPARE(childNames(trk), (QStringList{"name", "shape", "trkseg", "trkseg", "enclaves"}));
    QCOMPARE(child(trk, "name").text(), QStringLiteral("n & m"));
    QCOMPARE(child(trk, "shape").text(), QStringLiteral("point, polygon"));
    QCOMPARE(childNames(child(trk, "trkseg")), QStringList{"compressedPoints"});
    QCOMPARE(child(trk, "trkseg").text(), square(1).segments().first().toKml());
    const QDomElement enclaves = child(trk, "enclaves");
    QCOMPARE(childNames(enclaves), (QStringList{"trk", "trk"}));
    QCOMPARE(childNames(child(enclaves, "trk")), (QStringList{"name", "shape", "enclaves"}));
    QCOMPARE(child(child(enclaves, "trk"), "name").text(), QStringLiteral("e"));
    QCOMPARE(child(child(enclaves, "trk"), "shape").text(), QString());
    QCOMPARE(childNames(enclaves.lastChildElement()), (QStringList{"name", "shape"}));
    QCOMPARE(enclaves.lastChildElement().text(), QStringLiteral("linestring"));

    QDomElement empty = parsed(QStringLiteral("<trk/>"));
    LvGPXTrack().buildXmlBody(empty);
    QCOMPARE(childNames(empty), (QStringList{"name", "shape"}));
    QCOMPARE(child(empty, "name").text(), QString());
}

void tst_LvGPXTrack::toXmlInline()
{
    const QTemporaryDir directory;
    const QDir missing(directory.filePath(QStringLiteral("missing")));
    for (const QDir& dir : {noDirectory, missing, QDir::current()}) {
        QCOMPARE(written(square(1), dir).tagName(), QStringLiteral("trk"));
        QCOMPARE(childNames(written(square(1), dir)), (QStringList{"name", "shape", "trkseg"}));
    }
    QVERIFY(!missing.exists());
    LvGPXTrack nested = square(2);
    nested.addEnclave(square(1));
    nested.addEnclave(square(0.5));
    QVERIFY(LvGPXTrack(written(nested), noDirectory) == nested);
}

void tst_LvGPXTrack::losesDescriptions()
{
    const LvGPXTrack track(
        QStringLiteral("n"), QStringLiteral("d"),
        {LvGPXTrackSegment(LvGPXTrackPoint(LvGeoPosition(1, 2), 3, {}, QStringLiteral("p")))},
        LvGPXTrackShapeEnum::point);
    const LvGPXTrack back(written(track), noDirectory);
    QCOMPARE(back.name(), QStringLiteral("n"));
    QVERIFY(back.description().isEmpty());
    const LvGPXTrackPoint point = back.segments().first().trackPoints().first();
    QVERIFY(point.description().isEmpty());
    QCOMPARE(point.elevation(), 3);
}

void tst_LvGPXTrack::saveAsGpxFile()
{
    const QTemporaryDir directory;
    const QFileInfo file(directory.filePath(QStringLiteral("saved.gpx")));
    LvGPXTrack track = square(2);
    track.setName(QStringLiteral("Größe <1>"));
    track.addEnclave(square(1));
    track.saveAsGpxFile(file);
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
    QCOMPARE(root.tagName(), QStringLiteral("gpx"));
    QCOMPARE(childNames(root), QStringList{"trk"});
    QCOMPARE(childNames(child(root, "trk")), (QStringList{"name", "shape", "trkseg", "enclaves"}));
    QCOMPARE(LvGPXTrackFile(file).tracks(), QList<LvGPXTrack>{track});
    // Saved again it replaces what was there; without the folder nothing happens.
    square(1).saveAsGpxFile(file);
    QCOMPARE(LvGPXTrackFile(file).tracks(), QList<LvGPXTrack>{square(1)});
    square(1).saveAsGpxFile(QFileInfo(directory.filePath(QStringLiteral("missing/saved.gpx"))));
    QVERIFY(!QFileInfo::exists(directory.filePath(QStringLiteral("missing"))));
}

void tst_LvGPXTrack::savedBytesAreThoseOfTheTree()
{
    // Points go past the tree when a track is saved: enclaves inside enclaves, segments with and without any.
    LvGPXTrack inner = square(1);
    inner.addEnclave(square(3));
    inner.addEnclave(LvGPXTrack());
    LvGPXTrack track(QStringLiteral("Größe <1>"), QString(),
                     square(2).segments() + QList<LvGPXTrackSegment>{LvGPXTrackSegment()}
                         + square(5).segments(),
                     LvGPXTrackShapeEnum::polygon);
    track.addEnclave(inner);
    track.addEnclave(square(4));

    const QTemporaryDir directory;
    const QFileInfo saved(directory.filePath(QStringLiteral("saved.gpx")));
    track.saveAsGpxFile(saved);
    const QFileInfo built(directory.filePath(QStringLiteral("built.gpx")));
    QDomDocument document;
    QDomElement gpx = LvXMLBuilder::buildRootElement(document, QStringLiteral("gpx"));
    QDomElement trk = LvGPXTrack::buildTrackElement(gpx);
    track.buildXmlBody(trk);
    QVERIFY(LvXMLBuilder::saveUTF8(document, built));
    const auto bytes = [](const QFileInfo& info) {
        QFile file(info.filePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QVERIFY(bytes(saved).contains("compressedPoints"));
    QCOMPARE(bytes(saved), bytes(built));
}

void tst_LvGPXTrack::include()
{
    const QTemporaryDir directory;
    const QDir dir(directory.path());
    QVERIFY(writeFile(directory.filePath(QStringLiteral("a.gps")),
                      included("<name>inner</name><desc>text</desc><shape>auto</shape>" + oneSegment
                               + "<enclaves><trk><name>e</name></trk></enclaves>")
                          .replace("</includedTrack>", "<trk><name>second</name></trk></includedTrack>")));
    const QDomElement element = parsed(
        QStringLiteral("<trk><name>outer</name><include>a.gps</include><trkseg><trkpt/></trkseg></trk>"));
    const LvGPXTrack track(element, dir);
    // The included file takes the place of the element in the walk.
    QCOMPARE(track.name(), QStringLiteral("inner"));
    QCOMPARE(track.description(), QStringLiteral("text"));
    QCOMPARE(track.segments().size(), 2);
    QCOMPARE(track.segments().first().count(), 2);
    // Its shape is decided when its own children are read.
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::linestring));
    QCOMPARE(track.enclaves().size(), 1);
    QCOMPARE(track.enclaves().first().name(), QStringLiteral("e"));
    const LvGPXTrackFileRegistryKey key(track, dir);
    QCOMPARE(LvGPXTrackFileRegistry::instance()->fileName(key), QStringLiteral("a.gps"));
    // Written back unchanged it refers to that file, which stays as it is.
    QFile file(directory.filePath(QStringLiteral("a.gps")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    const QDomElement back = written(track, dir);
    QCOMPARE(childNames(back), QStringList{"include"});
    QCOMPARE(back.text(), QStringLiteral("a.gps"));
    QVERIFY(file.seek(0));
    QCOMPARE(file.readAll(), before);
    QCOMPARE(dir.entryList(QDir::Files), QStringList{"a.gps"});
}

void tst_LvGPXTrack::includeGoesOneLevelDeep()
{
    const QTemporaryDir directory;
    QVERIFY(writeFile(directory.filePath(QStringLiteral("a.gps")),
                      included("<include>b.gps</include>" + oneSegment
                               + "<enclaves><trk><name>e</name><include>b.gps</include></trk></enclaves>")));
    QVERIFY(writeFile(directory.filePath(QStringLiteral("b.gps")), included("<name>b</name>" + oneSegment)));
    const QDir dir(directory.path());
    const LvGPXTrack track(parsed(QStringLiteral("<trk><include>a.gps</include></trk>")), dir);
    QVERIFY(track.name().isEmpty());
    QCOMPARE(track.segments().size(), 1);
    QCOMPARE(track.enclaves().first().name(), QStringLiteral("e"));
    QVERIFY(!track.enclaves().first().isValid());
    // Nor do enclaves include anything, though their owner may.
    const LvGPXTrack enclosing(
        parsed(QStringLiteral("<trk><enclaves><trk><include>b.gps</include></trk></enclaves></trk>")), dir);
    QCOMPARE(enclosing.enclaves().size(), 1);
    QVERIFY(!enclosing.enclaves().first().isValid());
    // A file that includes itself ends at once.
    QVERIFY(writeFile(directory.filePath(QStringLiteral("loop.gps")),
                      included("<include>loop.gps</include>" + oneSegment)));
    QCOMPARE(
        LvGPXTrack(parsed(QStringLiteral("<trk><include>loop.gps</include></trk>")), dir).segments().size(),
        1);
}

void tst_LvGPXTrack::includeIsIgnoredWithoutDirectory()
{
    const QTemporaryDir directory;
    QVERIFY(writeFile(directory.filePath(QStringLiteral("a.gps")), included(oneSegment)));
    const QDomElement element = parsed(QStringLiteral("<trk><include>a.gps</include></trk>"));
    QVERIFY(LvGPXTrack(element, QDir(directory.path())).isValid());
    // The empty directory equals the current one, even where the current one is given by its path.
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(directory.path()));
    const bool emptyDirectory = LvGPXTrack(element, noDirectory).isValid();
    const bool currentDirectory = LvGPXTrack(element, QDir(directory.path())).isValid();
    const QString registered =
        LvGPXTrackFileRegistry::instance()->fileName(LvGPXTrackFileRegistryKey(LvGPXTrack(), noDirectory));
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(!emptyDirectory);
    QVERIFY(!currentDirectory);
    QVERIFY(registered.isEmpty());
}

void tst_LvGPXTrack::includeOfWhatCannotBeRead_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<bool>("registered");
    QTest::newRow("missing") << "missing.gps" << true;
    QTest::newRow("not XML") << "text.gps" << true;
    QTest::newRow("cut off") << "cut.gps" << true;
    QTest::newRow("without a track") << "waypoints.gps" << true;
    QTest::newRow("a directory") << "." << true;
    QTest::newRow("no name") << "" << false;
}

void tst_LvGPXTrack::includeOfWhatCannotBeRead()
{
    QFETCH(QString, fileName);
    QFETCH(bool, registered);
    const QTemporaryDir directory;
    QVERIFY(writeFile(directory.filePath(QStringLiteral("text.gps")), "no markup"));
    QVERIFY(writeFile(directory.filePath(QStringLiteral("cut.gps")), included(oneSegment).chopped(3)));
    QVERIFY(
        writeFile(directory.filePath(QStringLiteral("waypoints.gps")), "<gpx><wpt lat='1' lon='2'/></gpx>"));
    const QDir dir(directory.path());
    const LvGPXTrack track(
        parsed(QStringLiteral("<trk><include>%1</include><name>n</name></trk>").arg(fileName)), dir);
    QCOMPARE(track.name(), QStringLiteral("n"));
    QVERIFY(!track.isValid());
    // The name is remembered all the same: the document goes on referring to its file.
    QCOMPARE(LvGPXTrackFileRegistry::instance()->fileName(LvGPXTrackFileRegistryKey(track, dir)),
             registered ? fileName : QString());
}

void tst_LvGPXTrack::includeReadsRegularFilesOnly()
{
    const QTemporaryDir directory;
    const QString pipe = directory.filePath(QStringLiteral("pipe.gps"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QDir dir(directory.path());
    // Reading the pipe would wait for a writer for ever, reading the device would never end.
    QVERIFY(!LvGPXTrack(parsed(QStringLiteral("<trk><include>pipe.gps</include></trk>")), dir).isValid());
    QVERIFY(!LvGPXTrack(parsed(QStringLiteral("<trk><include>/dev/zero</include></trk>")), dir).isValid());
    // A regular file may lie anywhere.
    QVERIFY(dir.mkdir(QStringLiteral("sub")));
    QVERIFY(writeFile(directory.filePath(QStringLiteral("a.gps")), included(oneSegment)));
    const QDir sub(directory.filePath(QStringLiteral("sub")));
    QVERIFY(LvGPXTrack(parsed(QStringLiteral("<trk><include>../a.gps</include></trk>")), sub).isValid());
    const QString absolute = QStringLiteral("<trk><include>%1</include></trk>");
    QVERIFY(LvGPXTrack(parsed(absolute.arg(directory.filePath(QStringLiteral("a.gps")))), sub).isValid());
}

void tst_LvGPXTrack::lastIncludeIsRegistered()
{
    const QTemporaryDir directory;
    QVERIFY(writeFile(directory.filePath(QStringLiteral("a.gps")), included(oneSegment)));
    QVERIFY(writeFile(directory.filePath(QStringLiteral("b.gps")), included(oneSegment)));
    const QDir dir(directory.path());
    const LvGPXTrack track(
        parsed(QStringLiteral("<trk><include>a.gps</include><include>b.gps</include></trk>")), dir);
    QCOMPARE(track.segments().size(), 2);
    QCOMPARE(LvGPXTrackFileRegistry::instance()->fileName(LvGPXTrackFileRegistryKey(track, dir)),
             QStringLiteral("b.gps"));
}

void tst_LvGPXTrack::toXmlWithDirectory()
{
    const QTemporaryDir directory;
    const QDir dir(directory.path());
    LvGPXTrack track = square(2);
    track.addEnclave(square(1));
    const QDomElement first = written(track, dir);
    QCOMPARE(first.tagName(), QStringLiteral("trk"));
    QCOMPARE(childNames(first), QStringList{"include"});
    QVERIFY(!first.text().isEmpty());
    QVERIFY(dir.exists(first.text()));
    QVERIFY(LvGPXTrack(first, dir) == track);
    QCOMPARE(written(track, dir).text(), first.text());
    QCOMPARE(dir.entryList(QDir::Files).size(), 1);
    track.setName(QStringLiteral("renamed"));
    QVERIFY(written(track, dir).text() != first.text());
    QCOMPARE(dir.entryList(QDir::Files).size(), 2);
}

void tst_LvGPXTrack::savesDeepEnclaves()
{
    // Deeper than a writer gets that goes down by recursion. The toolkit takes the square of it in time.
    LvGPXTrack track = square(1);
    for (int level = 0; level < 1500; ++level) {
        LvGPXTrack outer = square(1);
        outer.addEnclave(track);
        track = outer;
    }
    const QTemporaryDir directory;
    const QFileInfo file(directory.filePath(QStringLiteral("deep.gpx")));
    track.saveAsGpxFile(file);
    const QDomElement saved = LvXMLLoader::loadDocumentElement(file);
    QVERIFY(LvGPXTrack(saved.firstChildElement(), noDirectory) == track);
}

void tst_LvGPXTrack::deepEnclaves()
{
    // As deep as documents get: each level is one "trk" and one "enclaves" around the next.
    constexpr int levels = LvXMLLoader::maximumDepth / 2 - 2;
    QByteArray text = "<gpx>";
    for (int level = 0; level < levels; ++level) {
        text += "<trk><name>a</name>" + oneSegment + "<enclaves>";
    }
    for (int level = 0; level < levels; ++level) {
        text += "</enclaves></trk>";
    }
    text += "</gpx>";
    QDomDocument document;
    QVERIFY(LvXMLLoader::parse(text, document));
    const QDomElement trk = document.documentElement().firstChildElement();
    QDomElement back = parsed(QStringLiteral("<parent/>"));

    // A stack that has no room for one frame per level.
    constexpr uint stackBytes = 256 * 1024;
    int depth = 0;
    bool equal = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        LvGPXTrack track(trk, noDirectory);
        const LvGPXTrack again(trk, noDirectory);
        equal = track == again;
        track.buildXmlBody(back);
        while (track.isValid()) {
            ++depth;
            const QList<LvGPXTrack> enclaves = track.enclaves();
            track = enclaves.isEmpty() ? LvGPXTrack() : enclaves.first();
        }
    }));
    thread->setStackSize(stackBytes);
    thread->start();
    thread->wait();
    QVERIFY(equal);
    QCOMPARE(depth, levels);

    int writtenDepth = 0;
    for (QDomElement element = back; !element.isNull(); element = child(child(element, "enclaves"), "trk")) {
        ++writtenDepth;
    }
    QCOMPARE(writtenDepth, levels);

    // A shared part outlives the track around it.
    LvGPXTrack outer = square(3);
    LvGPXTrack inner = square(2);
    inner.addEnclave(square(1));
    outer.addEnclave(inner);
    const QList<LvGPXTrack> kept = outer.enclaves();
    const LvGPXTrack innermost = kept.first().enclaves().first();
    outer = LvGPXTrack();
    QVERIFY(kept.first() == inner);
    QVERIFY(kept.first().enclaves().first() == square(1));
    QVERIFY(innermost == square(1));
}

void tst_LvGPXTrack::impl()
{
    LvGPXTrackImpl impl;
    QVERIFY(impl.shape() == LvGPXTrackShapeEnum::linestring);
    impl.setName(QStringLiteral("n"));
    impl.setDescription(QStringLiteral("d"));
    impl.setShape(LvGPXTrackShapeEnum::hop);
    impl.addSegment(LvGPXTrackSegment());
    QVERIFY(!impl.isValid());
    impl.addSegment(square(1).segments().first());
    QVERIFY(impl.isValid());
    QCOMPARE(impl.countPoints(), 5);
    impl.addEnclave(square(1));
    const LvGPXTrackImpl copy(impl);
    QVERIFY(copy == impl);
    impl.setSegments({LvGPXTrackSegment(), LvGPXTrackSegment()});
    QCOMPARE(impl.segments().size(), 2);
    QVERIFY(!(copy == impl));
    impl.setEnclaves({});
    QCOMPARE(copy.enclaves().size(), 1);
    QCOMPARE(copy.name(), QStringLiteral("n"));
    QCOMPARE(copy.description(), QStringLiteral("d"));
    QVERIFY(copy.firstPoint() == copy.lastPoint());
    QVERIFY(!copy.isSinglePoint());
    QCOMPARE(copy.allTimeStamps().size(), 5);
    QCOMPARE(copy.chunkedPoints().size(), 1);
    QCOMPARE(copy.allPoints().size(), 5);
}

LV_TEST_MAIN(tst_LvGPXTrack)
#include "tst_LvGPXTrack.moc"
