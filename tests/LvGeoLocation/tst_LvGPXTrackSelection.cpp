#include "LvGPXMarkerShape.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoLocationSettings.h"
#include "LvGeoPositionRect.h"
#include "LvTest.h"

#include <QDir>
#include <QDomDocument>

#include <limits>
#include <utility>

namespace
{

LvGPXTrackPoint point(double latitude, double longitude, const QDateTime& time = QDateTime())
{
    return {LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), 0, time, QString()};
}

LvGPXConfiguredTrack track(const QString& name, const QList<LvGPXTrackPoint>& points)
{
    QList<LvGPXTrackSegment> segments;
    if (!points.isEmpty()) {
        segments.append(LvGPXTrackSegment(points));
    }
    return {LvGPXTrack(name, QString(), segments, LvGPXTrackShapeEnum::linestring),
            LvGPXTrackConfiguration::defaultValue()};
}

LvGPXConfiguredTrack named(const QString& name)
{
    return track(name, {point(50, 8), point(51, 9)});
}

LvGPXTrackSelection selectionOf(const QStringList& names)
{
    LvGPXTrackSelection selection;
    for (const QString& name : names) {
        selection.addTrack(named(name));
    }
    return selection;
}

QString namesOf(const LvGPXTrackSelection& selection)
{
    QString names;
    const LvGPXConfiguredTrackList tracks = selection.tracks();
    for (const LvGPXConfiguredTrack& each : tracks) {
        names += each.name();
    }
    return names;
}

QString describe(const LvGeoPosition& position)
{
    return QStringLiteral("%1/%2").arg(QString::number(position.latitude().decimalDegrees()),
                                       QString::number(position.longitude().decimalDegrees()));
}

QString describe(const LvGeoPositionList& positions)
{
    QStringList texts;
    for (const LvGeoPosition& position : positions) {
        texts.append(describe(position));
    }
    return texts.join(QLatin1Char(' '));
}

/// A default style other than the built-in one.
LvGPXTrackConfiguration setUserDefault()
{
    LvGPXTrackConfiguration ofTheUser = LvGPXTrackConfiguration::defaultValue();
    ofTheUser.setLineColor(QColor(1, 2, 3));
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(ofTheUser);
    return ofTheUser;
}

} // namespace

class tst_LvGPXTrackSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void empty();
    void fromList();
    void elementOperations();
    void isSinglePoint();
    void firstPointDoesNotSearch();
    void lastPointSearches();
    void rows_data();
    void rows();
    void equality();
    void addTracks();
    void addTrackTakesTheDefaultOfTheUser();
    void changes();
    void moveTrack_data();
    void moveTrack();
    void outOfRange();
    void setConfigurationOfRow();
    void setConfigurationUnknownShapeKeepsCurrent();
    void setConfigurationOfAll();
    void croppingOpacity();
    void compareDoubles();
    void compareCounts();
    void halo();
    void overrideColor_data();
    void overrideColor();
    void overrideColorKeepsAlpha();
    void overrideColorOutOfRange();
    void reduceToTrackNumber();
    void xmlForm();
    void xmlRoundTrip();
    void xmlLocationTracksFirst();
    void xmlPrefix();
    void xmlMissing();
};

void tst_LvGPXTrackSelection::cleanup()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_LvGPXTrackSelection::empty()
{
    const LvGPXTrackSelection selection;
    QVERIFY(selection.isEmpty());
    QVERIFY(!selection.isValid());
    QVERIFY(!selection.containsAnyMarking());
    QCOMPARE(selection.count(), 0);
    QCOMPARE(selection.nominalCroppingOpacity(), 255);
    QVERIFY(selection.allPoints().isEmpty());
    QVERIFY(selection.chunkedPoints().isEmpty());
    QVERIFY(!selection.isSinglePoint());
    QCOMPARE(describe(selection.firstPoint()), QStringLiteral("720/720"));
    QCOMPARE(describe(selection.lastPoint()), QStringLiteral("720/720"));
    QVERIFY(selection.allTimeStamps().isEmpty());
}

void tst_LvGPXTrackSelection::fromList()
{
    const LvGPXTrackSelection selection(LvGPXConfiguredTrackList({named("A"), named("B")}));
    QCOMPARE(namesOf(selection), QStringLiteral("AB"));
    QCOMPARE(selection.nominalCroppingOpacity(), 255);
    QVERIFY(selection.isValid());
    QVERIFY(selection.containsAnyMarking());
    QVERIFY(!selection.isEmpty());
}

void tst_LvGPXTrackSelection::elementOperations()
{
    const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);
    LvGPXTrackSelection selection;
    selection.addTrack(track("A", {point(50, 1, noon), point(51, 2)}));
    selection.addTrack(track("B", {point(52, 3, noon.addSecs(5))}));
    QCOMPARE(describe(selection.allPoints()), QStringLiteral("50/1 51/2 52/3"));
    const QList<LvGeoPositionList> chunks = selection.chunkedPoints();
    QCOMPARE(chunks.count(),
             selection.value(0).chunkedPoints().count() + selection.value(1).chunkedPoints().count());
    QCOMPARE(describe(chunks.last()), QStringLiteral("52/3"));
    QCOMPARE(describe(selection.firstPoint()), QStringLiteral("50/1"));
    QCOMPARE(describe(selection.lastPoint()), QStringLiteral("52/3"));
    QCOMPARE(selection.allTimeStamps(), QList<QDateTime>({noon, QDateTime(), noon.addSecs(5)}));
    const LvGPXTrackElement& element = selection;
    QVERIFY(element.boundingBox() == selection.allPoints().boundingBox());
}

void tst_LvGPXTrackSelection::isSinglePoint()
{
    LvGPXTrackSelection selection;
    selection.addTrack(track("P", {point(50, 1)}));
    QVERIFY(selection.isSinglePoint());
    selection.addTrack(track("empty", {}));
    QVERIFY(!selection.isSinglePoint()); // two tracks, although there is one point only
    QVERIFY(!selectionOf({"A"}).isSinglePoint());
}

void tst_LvGPXTrackSelection::firstPointDoesNotSearch()
{
    LvGPXTrackSelection selection;
    selection.addTrack(track("empty", {}));
    selection.addTrack(named("A"));
    QCOMPARE(describe(selection.firstPoint()), QStringLiteral("720/720"));
}

void tst_LvGPXTrackSelection::lastPointSearches()
{
    LvGPXTrackSelection selection;
    selection.addTrack(track("A", {point(50, 1), point(51, 2)}));
    selection.addTrack(track("ends nowhere", {point(52, 3), point(0, 0)}));
    selection.addTrack(track("empty", {}));
    QCOMPARE(describe(selection.lastPoint()), QStringLiteral("51/2"));
    selection.removeAt(0);
    QCOMPARE(describe(selection.lastPoint()), QStringLiteral("720/720"));
}

void tst_LvGPXTrackSelection::rows_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("inside");

    QTest::newRow("before the first") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 1 << true;
    QTest::newRow("behind the last") << 2 << false;
}

void tst_LvGPXTrackSelection::rows()
{
    QFETCH(const int, row);
    QFETCH(const bool, inside);

    const LvGPXTrackSelection selection = selectionOf({"A", "B"});
    QCOMPARE(selection.isValidRow(row), inside);
    QCOMPARE(selection.checkRange(row), inside);
}

void tst_LvGPXTrackSelection::equality()
{
    LvGPXTrackSelection other = selectionOf({"A", "B"});
    const LvGPXTrackSelection selection = other;
    QVERIFY(selection == other);
    QVERIFY(!(selection != other));
    other.setCroppingOpacity(7);
    QVERIFY(selection != other);
    QVERIFY(!(selection == other));
    QVERIFY(selection != selectionOf({"A"}));
    QVERIFY(selection != selectionOf({"B", "A"}));
    other = selection;
    LvGPXTrackConfiguration changed = other.configuration(1);
    changed.setSmoothingSteps(9);
    other.setConfiguration(1, changed);
    QVERIFY(selection != other);
}

void tst_LvGPXTrackSelection::addTracks()
{
    LvGPXTrackSelection selection = selectionOf({"A"});
    selection.setCroppingOpacity(10);
    selection.addTracks(LvGPXConfiguredTrackList({named("B"), named("C")}));
    LvGPXTrackSelection more = selectionOf({"D", "E"});
    more.setCroppingOpacity(99);
    selection.addSelection(more);
    QCOMPARE(namesOf(selection), QStringLiteral("ABCDE"));
    QCOMPARE(selection.nominalCroppingOpacity(), 10);
    const LvGPXTrackSelection& same = selection;
    selection.addSelection(same);
    QCOMPARE(namesOf(selection), QStringLiteral("ABCDEABCDE"));
}

void tst_LvGPXTrackSelection::addTrackTakesTheDefaultOfTheUser()
{
    setUserDefault();
    LvGPXTrackSelection selection;
    selection.addTrack(named("A").track());
    QCOMPARE(selection.configuration(0).lineColor().rgba(), qRgb(1, 2, 3));
    QVERIFY(selection.configuration(0).trackShape()
            == LvGPXTrackShapeEnum::linestring); // automatic is resolved
}

void tst_LvGPXTrackSelection::changes()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B", "C"});
    const LvGPXTrackSelection copy = selection;
    selection.removeAt(1);
    QCOMPARE(namesOf(selection), QStringLiteral("AC"));
    selection.setCroppingOpacity(3);
    selection.setTracks(named("X"));
    QCOMPARE(namesOf(selection), QStringLiteral("X"));
    QCOMPARE(selection.nominalCroppingOpacity(), 3);
    QCOMPARE(namesOf(copy), QStringLiteral("ABC"));
}

void tst_LvGPXTrackSelection::moveTrack_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("names");

    QTest::newRow("down") << 0 << 2 << "BCAD";
    QTest::newRow("up") << 3 << 1 << "ADBC";
    QTest::newRow("to itself") << 1 << 1 << "ABCD";
    QTest::newRow("from before the first") << -1 << 1 << "ABCD";
    QTest::newRow("from behind the last") << 4 << 1 << "ABCD";
    QTest::newRow("to before the first") << 1 << -1 << "ABCD";
    QTest::newRow("to behind the last") << 1 << 4 << "ABCD";
}

void tst_LvGPXTrackSelection::moveTrack()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, names);

    LvGPXTrackSelection selection = selectionOf({"A", "B", "C", "D"});
    selection.moveTrack(from, to);
    QCOMPARE(namesOf(selection), names);
}

void tst_LvGPXTrackSelection::outOfRange()
{
    const LvGPXTrackConfiguration ofTheUser = setUserDefault();
    const LvGPXTrackSelection selection = selectionOf({"A"});
    QCOMPARE(selection.value(0).name(), QStringLiteral("A"));
    QCOMPARE(selection.configuration(0).lineColor().rgba(),
             LvGPXTrackConfiguration::defaultValue().lineColor().rgba());
    for (const int row : {-1, 1}) {
        QVERIFY(!selection.value(row).track().isValid());
        QVERIFY(selection.value(row).configuration() == ofTheUser);
        QVERIFY(selection.configuration(row) == ofTheUser);
    }
}

void tst_LvGPXTrackSelection::setConfigurationOfRow()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B"});
    LvGPXTrackConfiguration wanted = selection.configuration(1);
    QVERIFY(!selection.setConfiguration(1, wanted));
    wanted.setLineWidth(4.0);
    QVERIFY(!selection.setConfiguration(-1, wanted));
    QVERIFY(!selection.setConfiguration(2, wanted));
    QVERIFY(selection == selectionOf({"A", "B"}));
    QVERIFY(selection.setConfiguration(1, wanted));
    QVERIFY(selection.configuration(1) == wanted);
    QCOMPARE(selection.configuration(0).lineWidth().value(), 10.0);
}

void tst_LvGPXTrackSelection::setConfigurationUnknownShapeKeepsCurrent()
{
    LvGPXTrackSelection selection = selectionOf({"A"});
    LvGPXTrackConfiguration wanted = selection.configuration(0);
    wanted.setTrackShape(LvGPXTrackShapeEnum::unknown);
    // Unlike the list, which would store automatic. The wish differs, so the answer is yes although nothing
    // changes.
    QVERIFY(selection.setConfiguration(0, wanted));
    QVERIFY(selection.configuration(0).trackShape() == LvGPXTrackShapeEnum::linestring);
}

void tst_LvGPXTrackSelection::setConfigurationOfAll()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B", "C"});
    LvGPXTrackConfiguration wanted = selection.configuration(0);
    QVERIFY(!selection.setConfiguration(wanted));
    wanted.setLineWidth(4.0);
    selection.setConfiguration(2, wanted); // the last row does not change any more
    QVERIFY(selection.setConfiguration(wanted));
    for (int row = 0; row < 3; ++row) {
        QVERIFY(selection.configuration(row) == wanted);
    }
    QVERIFY(!LvGPXTrackSelection().setConfiguration(wanted));
}

void tst_LvGPXTrackSelection::croppingOpacity()
{
    LvGPXTrackSelection selection;
    QVERIFY(selection.setCroppingOpacity(40));
    QVERIFY(!selection.setCroppingOpacity(40));
    QCOMPARE(selection.nominalCroppingOpacity(), 40);
    QCOMPARE(selection.effectiveCroppingOpacity(), 255);
    selection.addTrack(named("A"));
    QCOMPARE(selection.effectiveCroppingOpacity(), 40);
}

void tst_LvGPXTrackSelection::compareDoubles()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B", "C", "D"});
    const LvGPXTrackSelection previous = selection;
    QVERIFY(selection.compare(previous).changingTracks().isEmpty());
    LvGPXTrackConfiguration wide = selection.configuration(1);
    wide.setLineWidth(1.0);
    selection.setConfiguration(1, wide);
    LvGPXTrackConfiguration red = selection.configuration(3);
    red.setLineColor(Qt::red);
    selection.setConfiguration(3, red);
    const LvGPXTrackSelectionComparisonResult result = selection.compare(previous);
    QCOMPARE(result.changingTracks(), QList<int>({1, 3, 1, 3}));
    QCOMPARE(result.changingAspects(), LvGPXTrackAspect(3));
    QVERIFY(!result.trackCountChanges());
}

void tst_LvGPXTrackSelection::compareCounts()
{
    const LvGPXTrackSelectionComparisonResult grown = selectionOf({"A", "B"}).compare(selectionOf({"X"}));
    QVERIFY(grown.trackCountChanges());
    QCOMPARE(grown.changingTracks(), QList<int>({0, 0}));
    QCOMPARE(grown.changingAspects(), LvGPXTrackAspect(4));
    QVERIFY(selectionOf({"A"}).compare(selectionOf({"A", "B"})).trackCountChanges());
    QVERIFY(!selectionOf({"A"}).compare(selectionOf({"B"})).trackCountChanges());
}

void tst_LvGPXTrackSelection::halo()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B"});
    const LvGPXTrackSelection previous = selection;
    QVERIFY(!selection.wouldChangeHaloToVisibleAgainst(previous));
    LvGPXTrackConfiguration withHalo = selection.configuration(1);
    withHalo.setHaloWidth(2.0);
    selection.setConfiguration(1, withHalo);
    QVERIFY(selection.wouldChangeHaloToVisibleAgainst(previous));
    QVERIFY(!previous.wouldChangeHaloToVisibleAgainst(selection));
    QVERIFY(!selection.wouldChangeHaloToVisibleAgainst(LvGPXTrackSelection()));
}

void tst_LvGPXTrackSelection::overrideColor_data()
{
    QTest::addColumn<int>("factor");
    QTest::addColumn<QColor>("line"); // of 201, 100, 3, 90
    QTest::addColumn<QColor>("fill"); // of 255, 1, 0, 255
    QTest::addColumn<double>("width"); // of 10

    QTest::newRow("neutral: three times as wide")
        << 128 << QColor(201, 100, 3, 90) << QColor(255, 1, 0) << 10.0 * 256 / 85.0;
    QTest::newRow("half, rounded down")
        << 64 << QColor(100, 50, 1, 90) << QColor(127, 0, 0) << 10.0 * 192 / 85.0;
    QTest::newRow("black, yet wider") << 0 << QColor(0, 0, 0, 90) << QColor(0, 0, 0) << 10.0 * 128 / 85.0;
    QTest::newRow("brighter, limited")
        << 256 << QColor(255, 200, 6, 90) << QColor(255, 2, 0) << 10.0 * 384 / 85.0;
    QTest::newRow("product of 255 and 128 once more")
        << 163 << QColor(255, 127, 3, 90) << QColor(255, 1, 0) << 10.0 * 291 / 85.0;
    QTest::newRow("negative: black and never narrower")
        << -128 << QColor(0, 0, 0, 90) << QColor(0, 0, 0) << 10.0;
    QTest::newRow("width just kept") << -43 << QColor(0, 0, 0, 90) << QColor(0, 0, 0) << 10.0;
    QTest::newRow("width just grows") << -42 << QColor(0, 0, 0, 90) << QColor(0, 0, 0) << 10.0 * 86 / 85.0;
    QTest::newRow("largest factor") << std::numeric_limits<int>::max() << QColor(255, 255, 255, 90)
                                    << QColor(255, 255, 0) << 10.0 * (2147483647.0 + 128.0) / 85.0;
    QTest::newRow("smallest factor") << std::numeric_limits<int>::min() << QColor(0, 0, 0, 90)
                                     << QColor(0, 0, 0) << 10.0;
}

void tst_LvGPXTrackSelection::overrideColor()
{
    QFETCH(const int, factor);
    QFETCH(const QColor, line);
    QFETCH(const QColor, fill);
    QFETCH(const double, width);

    LvGPXTrackSelection selection = selectionOf({"A", "B"});
    LvGPXTrackConfiguration configuration = selection.configuration(1);
    configuration.setLineColor(QColor(201, 100, 3, 90));
    configuration.setFillColor(QColor(255, 1, 0));
    selection.setConfiguration(1, configuration);
    selection.overrideColorOfTrack(1, factor);
    QCOMPARE(selection.value(1).lineColor().rgba(), line.rgba());
    QCOMPARE(selection.value(1).fillColor().rgba(), fill.rgba());
    QVERIFY(selection.value(1).lineWidth().value() == width);
    QVERIFY(selection.value(0) == named("A"));
}

void tst_LvGPXTrackSelection::overrideColorKeepsAlpha()
{
    LvGPXTrackSelection selection = selectionOf({"A"});
    LvGPXTrackConfiguration configuration = selection.configuration(0);
    QColor translucent(200, 100, 50);
    translucent.setAlphaF(0.123F); // not a multiple of 1/255
    configuration.setFillColor(translucent);
    selection.setConfiguration(0, configuration);
    selection.overrideColorOfTrack(0, 128);
    QVERIFY(selection.value(0).fillColor() == translucent);
}

void tst_LvGPXTrackSelection::overrideColorOutOfRange()
{
    LvGPXTrackSelection selection = selectionOf({"A"});
    selection.overrideColorOfTrack(-1, 64);
    selection.overrideColorOfTrack(1, 64);
    QVERIFY(selection == selectionOf({"A"}));
}

void tst_LvGPXTrackSelection::reduceToTrackNumber()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B", "C"});
    selection.setCroppingOpacity(44);
    const LvGPXTrackSelection reduced = selection.reduceToTrackNumber(1);
    QCOMPARE(namesOf(reduced), QStringLiteral("B"));
    QCOMPARE(reduced.nominalCroppingOpacity(), 44);
    QVERIFY(selection.reduceToTrackNumber(-1) == selection);
    QVERIFY(selection.reduceToTrackNumber(3) == selection);
    QCOMPARE(namesOf(selection), QStringLiteral("ABC"));
}

void tst_LvGPXTrackSelection::xmlForm()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B"});
    selection.setCroppingOpacity(17);
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("view"));
    selection.toXml(element, QDir(QString()));
    QCOMPARE(element.attribute(QStringLiteral("croppingOpacity")), QStringLiteral("17"));
    QCOMPARE(element.childNodes().count(), 1);
    const QDomElement gpx = element.firstChildElement();
    QCOMPARE(gpx.tagName(), QStringLiteral("gpxtrack"));
    QCOMPARE(gpx.childNodes().count(), 2);
    QCOMPARE(gpx.firstChildElement().tagName(), QStringLiteral("configuredTrack"));
    QCOMPARE(gpx.lastChildElement().tagName(), QStringLiteral("configuredTrack"));
    QCOMPARE(gpx.firstChildElement().firstChildElement().tagName(), QStringLiteral("trk"));
}

void tst_LvGPXTrackSelection::xmlRoundTrip()
{
    LvGPXTrackSelection selection = selectionOf({"A", "B"});
    selection.setCroppingOpacity(17);
    QDomDocument document;
    QDomElement element = document.createElement(QStringLiteral("view"));
    selection.toXml(element, QDir(QString()));
    QVERIFY(LvGPXTrackSelection(element, QDir(QString()), QString()) == selection);
    QVERIFY(LvGPXTrackSelection(element, QDir(QString())) == selection);
}

void tst_LvGPXTrackSelection::xmlLocationTracksFirst()
{
    QDomDocument document;
    QVERIFY(document.setContent(QStringLiteral("<view croppingOpacity='9'><gpxtrack croppingOpacity='8'>"
                                               "<locationTrack><trk><name>A</name></trk></locationTrack>"
                                               "<configuredTrack><trk><name>C</name></trk></configuredTrack>"
                                               "<locationTrack><trk><name>B</name></trk></locationTrack>"
                                               "</gpxtrack><gpxtrack><configuredTrack/></gpxtrack></view>")));
    const LvGPXTrackSelection selection(document.documentElement(), QDir(QString()), QString());
    QCOMPARE(namesOf(selection), QStringLiteral("ABC")); // and only those of the first "gpxtrack"
    QCOMPARE(selection.count(), 3);
    QCOMPARE(selection.nominalCroppingOpacity(), 9); // that of the outer element
}

void tst_LvGPXTrackSelection::xmlPrefix()
{
    QDomDocument document;
    QVERIFY(
        document.setContent(QStringLiteral("<view p:croppingOpacity='9' croppingOpacity='1'><p:gpxtrack>"
                                           "<p:configuredTrack><trk><name>C</name></trk></p:configuredTrack>"
                                           "<p:locationTrack><trk><name>A</name></trk></p:locationTrack>"
                                           "<configuredTrack><trk><name>plain</name></trk></configuredTrack>"
                                           "</p:gpxtrack></view>")));
    const LvGPXTrackSelection prefixed(document.documentElement(), QDir(QString()), QStringLiteral("p:"));
    QCOMPARE(namesOf(prefixed), QStringLiteral("AC"));
    QCOMPARE(prefixed.nominalCroppingOpacity(), 9);
    const LvGPXTrackSelection plain(document.documentElement(), QDir(QString()), QString());
    QVERIFY(plain.isEmpty());
    QCOMPARE(plain.nominalCroppingOpacity(), 1);
}

void tst_LvGPXTrackSelection::xmlMissing()
{
    QDomDocument document;
    QVERIFY(document.setContent(QStringLiteral("<view/>")));
    const LvGPXTrackSelection selection(document.documentElement(), QDir(QString()), QString());
    QVERIFY(selection.isEmpty());
    QCOMPARE(selection.nominalCroppingOpacity(), 255);
    QVERIFY(LvGPXTrackSelection(QDomElement(), QDir(QString()), QString()) == LvGPXTrackSelection());
}

LV_TEST_MAIN(tst_LvGPXTrackSelection)
#include "tst_LvGPXTrackSelection.moc"
