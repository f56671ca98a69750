#include "LvGPXConfiguredTrackList.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoLocationSettings.h"
#include "LvRequestDiskAccess.h"
#include "LvTest.h"

#include <QDir>
#include <QDomDocument>
#include <QTemporaryDir>

#include <utility>

namespace
{

LvGPXTrackPoint point(double latitude, double longitude)
{
    return {LvGeoPosition(LvLatitude(latitude), LvLongitude(longitude)), 0, QDateTime(), QString()};
}

LvGPXConfiguredTrack named(const QString& name)
{
    const LvGPXTrackSegment segment(QList<LvGPXTrackPoint>{point(50, 8), point(51, 9)});
    const LvGPXTrack track(name, QString(), {segment}, LvGPXTrackShapeEnum::linestring);
    return {track, LvGPXTrackConfiguration::defaultValue()};
}

LvGPXConfiguredTrack single(const QString& name)
{
    const LvGPXTrack track(name, QString(), {LvGPXTrackSegment(point(53, 8))}, LvGPXTrackShapeEnum::point);
    return {track, LvGPXTrackConfiguration::defaultValue()};
}

LvGPXConfiguredTrackList listOf(const QStringList& names)
{
    LvGPXConfiguredTrackList list;
    for (const QString& name : names) {
        list.append(named(name));
    }
    return list;
}

QString namesOf(const LvGPXConfiguredTrackList& list)
{
    QString names;
    for (const LvGPXConfiguredTrack& track : list) {
        names += track.name();
    }
    return names;
}

LvGPXConfiguredTrack withHalo(double width)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setHaloWidth(width);
    return {named(QStringLiteral("T")).track(), configuration};
}

} // namespace

class tst_LvGPXConfiguredTrackList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void constructors();
    void access();
    void copiesAreIndependent();
    void appendList();
    void equality();
    void checkRange_data();
    void checkRange();
    void configurationOutOfRange();
    void setConfiguration();
    void setConfigurationOutOfRange_data();
    void setConfigurationOutOfRange();
    void setConfigurationUnknownShape();
    void setConfigurationOfPoint();
    void moveTrack_data();
    void moveTrack();
    void compare();
    void compareIgnoresLength();
    void halo_data();
    void halo();
    void xmlForm();
    void xmlReading();
    void fromFile();
};

void tst_LvGPXConfiguredTrackList::cleanup()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
    LvRequestDiskAccess::instance()->setAsker({});
}

void tst_LvGPXConfiguredTrackList::constructors()
{
    QVERIFY(!LvGPXConfiguredTrackList().isValid());
    QVERIFY(LvGPXConfiguredTrackList().isEmpty());
    QCOMPARE(namesOf(LvGPXConfiguredTrackList(named("A"))), QStringLiteral("A"));
    const QList<LvGPXConfiguredTrack> plain{named("A"), named("B")};
    const LvGPXConfiguredTrackList list(plain);
    QCOMPARE(namesOf(list), QStringLiteral("AB"));
    QVERIFY(list.isValid());
    QVERIFY(!list.isEmpty());

    const LvGPXConfiguredTrackList listed{named("A"), named("B"), named("C")};
    QCOMPARE(namesOf(listed), QStringLiteral("ABC"));
    QCOMPARE(namesOf(LvGPXConfiguredTrackList({named("A"), named("B")})), QStringLiteral("AB"));
    QVERIFY(LvGPXConfiguredTrackList({}).isEmpty());
    const LvGPXConfiguredTrackList copy{listed}; // a list of the same tracks, not one of a list
    QCOMPARE(namesOf(copy), QStringLiteral("ABC"));
}

void tst_LvGPXConfiguredTrackList::access()
{
    LvGPXConfiguredTrackList list = listOf({"A", "B", "C"});
    QCOMPARE(list.count(), 3);
    QCOMPARE(std::as_const(list).at(1).name(), QStringLiteral("B"));
    QCOMPARE(std::as_const(list)[2].name(), QStringLiteral("C"));
    list[1].setLineWidth(2.0);
    QCOMPARE(list.at(1).lineWidth().value(), 2.0);
    for (LvGPXConfiguredTrack& track : list) {
        track.setLineWidth(3.0);
    }
    QCOMPARE(list.at(0).lineWidth().value(), 3.0);
    QCOMPARE(std::as_const(list).end() - std::as_const(list).begin(), 3);
    list.removeAt(1);
    QCOMPARE(namesOf(list), QStringLiteral("AC"));
}

void tst_LvGPXConfiguredTrackList::copiesAreIndependent()
{
    const LvGPXConfiguredTrackList original = listOf({"A", "B"});
    LvGPXConfiguredTrackList copy = original;
    copy[0].setLineWidth(1.0);
    copy.append(named("C"));
    QCOMPARE(original.count(), 2);
    QCOMPARE(original.at(0).lineWidth().value(), 10.0);
    const LvGPXConfiguredTrackList moved = std::move(copy);
    QCOMPARE(namesOf(moved), QStringLiteral("ABC"));
}

void tst_LvGPXConfiguredTrackList::appendList()
{
    LvGPXConfiguredTrackList list = listOf({"A", "B"});
    list.append(listOf({"C"}));
    QCOMPARE(namesOf(list), QStringLiteral("ABC"));
    list.append(LvGPXConfiguredTrackList());
    QCOMPARE(namesOf(list), QStringLiteral("ABC"));
    const LvGPXConfiguredTrackList& same = list;
    list.append(same);
    QCOMPARE(namesOf(list), QStringLiteral("ABCABC"));
}

void tst_LvGPXConfiguredTrackList::equality()
{
    QVERIFY(listOf({"A", "B"}) == listOf({"A", "B"}));
    QVERIFY(listOf({"A", "B"}) != listOf({"B", "A"}));
    QVERIFY(listOf({"A", "B"}) != listOf({"A"}));
}

void tst_LvGPXConfiguredTrackList::checkRange_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("inside");

    QTest::newRow("before the first") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 1 << true;
    QTest::newRow("behind the last") << 2 << false;
}

void tst_LvGPXConfiguredTrackList::checkRange()
{
    QFETCH(const int, row);
    QFETCH(const bool, inside);

    QCOMPARE(listOf({"A", "B"}).checkRange(row), inside);
    QVERIFY(!LvGPXConfiguredTrackList().checkRange(row));
}

void tst_LvGPXConfiguredTrackList::configurationOutOfRange()
{
    LvGPXTrackConfiguration ofTheUser = LvGPXTrackConfiguration::defaultValue();
    ofTheUser.setLineColor(QColor(1, 2, 3));
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(ofTheUser);

    LvGPXConfiguredTrackList list = listOf({"A", "B"});
    list[1].setLineWidth(4.0);
    QCOMPARE(list.configuration(1).lineWidth().value(), 4.0);
    QCOMPARE(list.configuration(0).lineColor().rgba(),
             LvGPXTrackConfiguration::defaultValue().lineColor().rgba());
    for (const int row : {-1, 2}) {
        QCOMPARE(list.configuration(row).lineColor().rgba(), qRgb(1, 2, 3));
        QVERIFY(list.configuration(row).trackShape() == LvGPXTrackShapeEnum::automatic);
    }
}

void tst_LvGPXConfiguredTrackList::setConfiguration()
{
    LvGPXConfiguredTrackList list = listOf({"A", "B"});
    LvGPXTrackConfiguration wanted = list.configuration(1);
    QVERIFY(!list.setConfiguration(1, wanted));
    wanted.setLineWidth(4.0);
    QVERIFY(list.setConfiguration(1, wanted));
    QVERIFY(list.configuration(1) == wanted);
    QCOMPARE(list.configuration(0).lineWidth().value(), 10.0);
    QVERIFY(!list.setConfiguration(1, wanted));
}

void tst_LvGPXConfiguredTrackList::setConfigurationOutOfRange_data()
{
    QTest::addColumn<int>("row");

    QTest::newRow("before the first") << -1;
    QTest::newRow("behind the last") << 2;
}

void tst_LvGPXConfiguredTrackList::setConfigurationOutOfRange()
{
    QFETCH(const int, row);

    LvGPXConfiguredTrackList list = listOf({"A", "B"});
    LvGPXTrackConfiguration wanted = LvGPXTrackConfiguration::defaultValue();
    wanted.setLineWidth(4.0);
    QVERIFY(!list.setConfiguration(row, wanted));
    QVERIFY(list == listOf({"A", "B"}));
}

void tst_LvGPXConfiguredTrackList::setConfigurationUnknownShape()
{
    LvGPXConfiguredTrackList list = listOf({"A"});
    QVERIFY(list.configuration(0).trackShape() == LvGPXTrackShapeEnum::linestring);
    LvGPXTrackConfiguration wanted = list.configuration(0);
    wanted.setTrackShape(LvGPXTrackShapeEnum::unknown);
    // The list makes it automatic before the rule of the single track could keep the current shape.
    QVERIFY(list.setConfiguration(0, wanted));
    QVERIFY(list.configuration(0).trackShape() == LvGPXTrackShapeEnum::automatic);
    // Now the same wish is compared as automatic, which is what the row has.
    QVERIFY(!list.setConfiguration(0, wanted));
}

void tst_LvGPXConfiguredTrackList::setConfigurationOfPoint()
{
    LvGPXConfiguredTrackList list(single("P"));
    LvGPXTrackConfiguration wanted = list.configuration(0);
    wanted.setTrackShape(LvGPXTrackShapeEnum::polygon);
    wanted.setMarkerShape(LvGPXMarkerShapeEnum::unknown);
    // Compared before the rules of the single point make it equal again.
    QVERIFY(list.setConfiguration(0, wanted));
    QVERIFY(list.configuration(0).trackShape() == LvGPXTrackShapeEnum::point);
    QVERIFY(list.configuration(0).markerShape() == LvGPXMarkerShapeEnum::disk);
}

void tst_LvGPXConfiguredTrackList::moveTrack_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("names");

    QTest::newRow("down") << 0 << 2 << "BCAD";
    QTest::newRow("up") << 3 << 1 << "ADBC";
    QTest::newRow("to the end") << 0 << 3 << "BCDA";
    QTest::newRow("to the start") << 3 << 0 << "DABC";
    QTest::newRow("by one") << 1 << 2 << "ACBD";
    QTest::newRow("to itself") << 2 << 2 << "ABCD";
}

void tst_LvGPXConfiguredTrackList::moveTrack()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, names);

    LvGPXConfiguredTrackList list = listOf({"A", "B", "C", "D"});
    list.moveTrack(from, to);
    QCOMPARE(namesOf(list), names);
}

void tst_LvGPXConfiguredTrackList::compare()
{
    const LvGPXConfiguredTrackList list = listOf({"A", "B", "C", "D"});
    LvGPXConfiguredTrackList other = list;
    QVERIFY(list.compare(other).changingTracks().isEmpty());
    QVERIFY(!list.compare(other).changingAspects());
    other[3].setLineWidth(1.0);
    other[1].setTrack(named("other").track());
    other[2].setFillColor(Qt::red); // no aspect
    const LvGPXTrackSelectionComparisonResult result = list.compare(other);
    QCOMPARE(result.changingTracks(), QList<int>({1, 3}));
    QCOMPARE(result.changingAspects(), LvGPXTrackAspect(5));
    QVERIFY(!result.trackCountChanges());
}

void tst_LvGPXConfiguredTrackList::compareIgnoresLength()
{
    LvGPXConfiguredTrackList other = listOf({"A", "B", "C"});
    other[1].setLineColor(Qt::red);
    const LvGPXTrackSelectionComparisonResult result = listOf({"A", "B"}).compare(other);
    QCOMPARE(result.changingTracks(), QList<int>({1}));
    QCOMPARE(result.changingAspects(), LvGPXTrackAspect(2));
    QVERIFY(!result.trackCountChanges());
    QCOMPARE(other.compare(listOf({"A", "B"})).changingTracks(), QList<int>({1}));
    QVERIFY(other.compare(LvGPXConfiguredTrackList()).changingTracks().isEmpty());
}

void tst_LvGPXConfiguredTrackList::halo_data()
{
    QTest::addColumn<QList<double>>("now");
    QTest::addColumn<QList<double>>("previous");
    QTest::addColumn<bool>("becomesVisible");

    QTest::newRow("second row") << QList<double>{0, 2} << QList<double>{0, 0} << true;
    QTest::newRow("rows are compared in pairs") << QList<double>{2, 0} << QList<double>{2, 0} << false;
    QTest::newRow("beyond the shorter list") << QList<double>{0, 2} << QList<double>{0} << false;
    QTest::newRow("the previous list is longer") << QList<double>{2} << QList<double>{0, 0} << true;
    QTest::newRow("nothing before") << QList<double>{2} << QList<double>{} << false;
}

void tst_LvGPXConfiguredTrackList::halo()
{
    QFETCH(const QList<double>, now);
    QFETCH(const QList<double>, previous);
    QFETCH(const bool, becomesVisible);

    const auto list = [](const QList<double>& widths) {
        LvGPXConfiguredTrackList tracks;
        for (const double width : widths) {
            tracks.append(withHalo(width));
        }
        return tracks;
    };
    QCOMPARE(list(now).wouldChangeHaloToVisibleAgainst(list(previous)), becomesVisible);
}

void tst_LvGPXConfiguredTrackList::xmlForm()
{
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    const LvGPXConfiguredTrackList list = listOf({"A", "B"});
    list.toXml(parent, QStringLiteral("entry"), QDir(QString()));
    QCOMPARE(parent.childNodes().count(), 2);
    QCOMPARE(parent.firstChildElement(QStringLiteral("entry"))
                 .nextSiblingElement(QStringLiteral("entry"))
                 .firstChildElement(QStringLiteral("trk"))
                 .firstChildElement(QStringLiteral("name"))
                 .text(),
             QStringLiteral("B"));
    QVERIFY(LvGPXConfiguredTrackList(parent, QStringLiteral("entry"), QDir(QString())) == list);
}

void tst_LvGPXConfiguredTrackList::xmlReading()
{
    QDomDocument document;
    QVERIFY(
        document.setContent(QStringLiteral("<list><other><trk><name>X</name></trk></other>"
                                           "<entry><trk><name>A</name></trk></entry>text"
                                           "<other/><entry><trk><name>B</name></trk>"
                                           "<entry><trk><name>inner</name></trk></entry></entry></list>")));
    const QDomElement list = document.documentElement();
    QCOMPARE(namesOf(LvGPXConfiguredTrackList(list, QStringLiteral("entry"), QDir(QString()))),
             QStringLiteral("AB"));
    QCOMPARE(LvGPXConfiguredTrackList(list, QStringLiteral("Entry"), QDir(QString())).count(), 0);
    QCOMPARE(LvGPXConfiguredTrackList(QDomElement(), QStringLiteral("entry"), QDir(QString())).count(), 0);
}

void tst_LvGPXConfiguredTrackList::fromFile()
{
    const QTemporaryDir temporary;
    QVERIFY(temporary.isValid());
    const QString path = temporary.filePath(QStringLiteral("tour.gpx"));
    named("written").track().saveAsGpxFile(QFileInfo(path));
    LvRequestDiskAccess::instance()->setAsker(
        [path](const QString&, const QString&, const QString&) { return path; });
    QCOMPARE(namesOf(LvGPXConfiguredTrackList::fromFile()), QStringLiteral("written"));
    LvRequestDiskAccess::instance()->setAsker(
        [](const QString&, const QString&, const QString&) { return QString(); });
    QVERIFY(!LvGPXConfiguredTrackList::fromFile().isValid());
}

LV_TEST_MAIN(tst_LvGPXConfiguredTrackList)
#include "tst_LvGPXConfiguredTrackList.moc"
