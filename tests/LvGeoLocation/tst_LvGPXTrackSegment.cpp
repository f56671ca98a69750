#include "LvGPXTrackSegment.h"
#include "LvIntRange.h"
#include "LvTest.h"

#include <QDomDocument>
#include <QThread>

#include <functional>
#include <memory>
#include <type_traits>

namespace
{

QDomElement parsed(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document.documentElement();
}

LvGPXTrackPoint place(double latitude, double longitude)
{
    return {LvGeoPosition(latitude, longitude), 0, QDateTime(), QString()};
}

/// Points on a line; the latitude of each is its index divided by 10,000, plus 1.
LvGPXTrackSegment line(int count)
{
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < count; ++index) {
        points.append(place(1 + index / 10000.0, 2));
    }
    return points;
}

QList<double> latitudes(const QList<LvGPXTrackPoint>& points)
{
    QList<double> result;
    for (const LvGPXTrackPoint& point : points) {
        result.append(point.position().latitude().decimalDegrees());
    }
    return result;
}

LvGeoPositionList joined(const QList<LvGeoPositionList>& chunks)
{
    LvGeoPositionList positions;
    for (const LvGeoPositionList& chunk : chunks) {
        positions.append(chunk);
    }
    return positions;
}

void onWorkerThread(const std::function<void()>& work)
{
    const std::unique_ptr<QThread> thread(QThread::create(work));
    thread->start();
    thread->wait();
}

static_assert(std::is_base_of_v<LvGPXTrackElement, LvGPXTrackSegment>);
static_assert(std::is_nothrow_move_constructible_v<LvGPXTrackSegment>);

} // namespace

class tst_LvGPXTrackSegment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void emptySegment();
    void elementOperations();
    void fromXml_data();
    void fromXml();
    void garminExtension();
    void decodeTrackPoints_data();
    void decodeTrackPoints();
    void textForm();
    void toXml();
    void equality();
    void collectBlock_data();
    void collectBlock();
    void chunkedPoints_data();
    void chunkedPoints();
    void mainThread();
};

void tst_LvGPXTrackSegment::construction()
{
    const LvGPXTrackSegment two(QList<LvGPXTrackPoint>{place(1, 2), place(3, 4)});
    QCOMPARE(two.count(), 2);
    QVERIFY(two.isValid());
    QVERIFY(!two.isSinglePoint());
    QCOMPARE(latitudes(two.trackPoints()), (QList<double>{1, 3}));
    const LvGPXTrackSegment one(place(1, 2));
    QCOMPARE(one.count(), 1);
    QVERIFY(one.isValid());
    QVERIFY(one.isSinglePoint());
    // A point without a valid position counts as well.
    QVERIFY(LvGPXTrackSegment(LvGPXTrackPoint()).isValid());
    LvGPXTrackSegment copy = two;
    copy = one;
    QCOMPARE(two.count(), 2);
    QCOMPARE(copy.count(), 1);
}

void tst_LvGPXTrackSegment::emptySegment()
{
    const LvGPXTrackSegment segment;
    QCOMPARE(segment.count(), 0);
    QVERIFY(!segment.isValid());
    QVERIFY(!segment.isSinglePoint());
    QVERIFY(segment.trackPoints().isEmpty());
    QVERIFY(segment.allPoints().isEmpty());
    QVERIFY(segment.allTimeStamps().isEmpty());
    QVERIFY(joined(segment.chunkedPoints()).isEmpty());
    QCOMPARE(segment.firstPoint().latitude().decimalDegrees(), 720.0);
    QCOMPARE(segment.lastPoint().longitude().decimalDegrees(), 720.0);
    QCOMPARE(segment.toKml(), QString());
}

void tst_LvGPXTrackSegment::elementOperations()
{
    const QDateTime time(QDate(2024, 5, 17), QTime(9, 0), Qt::UTC);
    const LvGPXTrackSegment segment(
        {place(1, 2), LvGPXTrackPoint(LvGeoPosition(3, 4), 0, time, {}), LvGPXTrackPoint(), place(5, 6)});
    const LvGPXTrackElement& element = segment;
    QCOMPARE(element.allPoints().size(), 4);
    QVERIFY(element.allPoints().at(1) == LvGeoPosition(3, 4));
    QVERIFY(!element.allPoints().at(2).isValid());
    const LvGeoPositionList many = LvGPXTrackSegment(QList<LvGPXTrackPoint>(1000, place(1, 2))).allPoints();
    QCOMPARE(many.capacity(), 1000); // room for all of them at once, not grown step by step
    QVERIFY(element.firstPoint() == LvGeoPosition(1, 2));
    QVERIFY(element.lastPoint() == LvGeoPosition(5, 6));
    QCOMPARE(element.allTimeStamps(), (QList<QDateTime>{{}, time, {}, {}}));
    QVERIFY(element.boundingBox() == LvGeoPositionRect(LvGeoPosition(1, 2), LvGeoPosition(5, 6)));
}

void tst_LvGPXTrackSegment::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QList<double>>("expected");
    QTest::newRow("no children") << "<trkseg/>" << QList<double>{};
    QTest::newRow("points") << "<trkseg><trkpt lat='1' lon='9'/><trkpt lat='2' lon='9'/></trkseg>"
                            << QList<double>{1, 2};
    QTest::newRow("text form") << "<trkseg><compressedPoints>9,1\n9,2</compressedPoints></trkseg>"
                               << QList<double>{1, 2};
    QTest::newRow("mixed, in document order")
        << "<trkseg><trkpt lat='1' lon='9'/><compressedPoints>9,2 9,3</compressedPoints>"
           "<extensions><gpxx:RoutePointExtension><gpxx:rpt lat='4' "
           "lon='9'/></gpxx:RoutePointExtension></extensions>"
           "<trkpt lat='5' lon='9'/><compressedPoints>9,6</compressedPoints></trkseg>"
        << QList<double>{1, 2, 3, 4, 5, 6};
    QTest::newRow("others are skipped")
        << "<trkseg><x/><wpt lat='1' lon='9'/><rtept lat='2' lon='9'/>text"
           "<!-- <trkpt lat='3' lon='9'/> --><trkpt lat='4' lon='9'/></trkseg>"
        << QList<double>{4};
    QTest::newRow("case counts")
        << "<trkseg><TrkPt lat='1' lon='9'/><compressedpoints>9,2</compressedpoints></trkseg>"
        << QList<double>{};
    QTest::newRow("prefix counts") << "<trkseg><gpx:trkpt lat='1' lon='9'/></trkseg>" << QList<double>{};
    QTest::newRow("only children count")
        << "<trkseg><x><trkpt lat='1' lon='9'/></x></trkseg>" << QList<double>{};
    QTest::newRow("own name does not count")
        << "<anything><trkpt lat='1' lon='9'/></anything>" << QList<double>{1};
    QTest::newRow("a point at 0/0 stays in this form")
        << "<trkseg><trkpt lat='0' lon='0'/></trkseg>" << QList<double>{0};
    QTest::newRow("its own coordinates are no point")
        << "<rtept lat='1' lon='9'><name>a</name></rtept>" << QList<double>{};
}

void tst_LvGPXTrackSegment::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(QList<double>, expected);
    QCOMPARE(latitudes(LvGPXTrackSegment(parsed(xml)).trackPoints()), expected);
}

void tst_LvGPXTrackSegment::garminExtension()
{
    const QDomElement extensions = parsed(
        QStringLiteral("<extensions><x/><gpxx:RoutePointExtension><gpxx:Subclass>0</gpxx:Subclass>"
                       "<gpxx:rpt lat='1' lon='9'><ele>3</ele></gpxx:rpt><rpt lat='8' lon='9'/>"
                       "<gpxx:rpt lat='2' lon='9'/></gpxx:RoutePointExtension>"
                       "<gpxx:RoutePointExtension><gpxx:rpt lat='7' lon='9'/></gpxx:RoutePointExtension>"
                       "</extensions>"));
    LvGPXTrackSegment segment(place(5, 9));
    segment.decodeGarminGPX(extensions);
    QCOMPARE(latitudes(segment.trackPoints()), (QList<double>{5, 1, 2}));
    QCOMPARE(segment.trackPoints().at(1).elevation(), 3);

    LvGPXTrackSegment unchanged;
    unchanged.decodeGarminGPX(QDomElement());
    unchanged.decodeGarminGPX(parsed(QStringLiteral("<extensions/>")));
    unchanged.decodeGarminGPX(parsed(QStringLiteral("<extensions><gpxx:RoutePointExtension/></extensions>")));
    // Another prefix for the same namespace is another name.
    unchanged.decodeGarminGPX(parsed(
        QStringLiteral("<extensions><g:RoutePointExtension><g:rpt/></g:RoutePointExtension></extensions>")));
    QVERIFY(!unchanged.isValid());
}

void tst_LvGPXTrackSegment::decodeTrackPoints_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("white space only") << " \n\t "
                                      << "";
    QTest::newRow("line feeds") << "8.5,53.25\n8.6,53.3"
                                << "8.5,53.25\n8.6,53.3";
    QTest::newRow("any white space, doubled and around") << " \r\n8.5,53.25 \t  8.6,53.3\r\n8.7,53.4\f"
                                                         << "8.5,53.25\n8.6,53.3\n8.7,53.4";
    QTest::newRow("0/0 is dropped") << "1,2 0,0 0.0,0.0 3,4"
                                    << "1.,2.\n3.,4.";
    QTest::newRow("0/0 is dropped with its elevation and time") << "0,0,12,5"
                                                                << "";
    QTest::newRow("0/1 is kept") << "0,1 1,0"
                                 << "0.,1.\n1.,0.";
    QTest::newRow("unreadable is 0/0") << "north,east 1,2"
                                       << "1.,2.";
    QTest::newRow("cut to 0/0") << "0.00000001,0.00000001"
                                << "";
    QTest::newRow("blanks after commas split tuples") << "8, 53, 7"
                                                      << "8.,0.\n53.,0.\n7.,0.";
    QTest::newRow("elevation") << "8.5,53.25,12"
                               << "8.5,53.25,12";
}

void tst_LvGPXTrackSegment::decodeTrackPoints()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const QList<LvGPXTrackPoint> points = LvGPXTrackSegment::decodeTrackPoints(text);
    QCOMPARE(LvGPXTrackSegment(points).toKml(), expected);
    QVERIFY(LvGPXTrackSegment::decodeKml(text) == LvGPXTrackSegment(points));
}

void tst_LvGPXTrackSegment::textForm()
{
    const LvGPXTrackSegment segment(
        {place(53.25, 8.5),
         LvGPXTrackPoint(LvGeoPosition(53.3, 8.6), 12, QDateTime::fromMSecsSinceEpoch(1700000000000, Qt::UTC),
                         {})});
    QCOMPARE(segment.toKml(), QStringLiteral("8.5,53.25\n8.6,53.3,12,1700000000000"));
}

void tst_LvGPXTrackSegment::toXml()
{
    const LvGPXTrackSegment segment(parsed(QStringLiteral(
        "<trkseg><trkpt lat='1' lon='9'><desc>a</desc></trkpt><trkpt lat='2' lon='9'/></trkseg>")));
    QDomElement trk = parsed(QStringLiteral("<trk><name/></trk>"));
    segment.toXml(trk);
    const QDomElement trkseg = trk.lastChildElement();
    QCOMPARE(trk.childNodes().size(), 2);
    QCOMPARE(trkseg.tagName(), QStringLiteral("trkseg"));
    QCOMPARE(trkseg.childNodes().size(), 1);
    QCOMPARE(trkseg.firstChildElement().tagName(), QStringLiteral("compressedPoints"));
    QCOMPARE(trkseg.text(), QStringLiteral("9.,1.\n9.,2."));

    QDomElement other = parsed(QStringLiteral("<trk/>"));
    LvGPXTrackSegment().toXml(other);
    QCOMPARE(other.firstChildElement().childNodes().size(), 1);
    QVERIFY(!other.firstChildElement().firstChildElement(QStringLiteral("compressedPoints")).isNull());
    QCOMPARE(other.text(), QString());
}

void tst_LvGPXTrackSegment::equality()
{
    const LvGPXTrackSegment segment({place(1, 2), place(3, 4)});
    const LvGPXTrackSegment copy = segment;
    QVERIFY(segment == copy);
    QVERIFY(segment == LvGPXTrackSegment({place(1, 2), place(3, 4)}));
    QVERIFY(segment != LvGPXTrackSegment({place(3, 4), place(1, 2)}));
    QVERIFY(segment != LvGPXTrackSegment(place(1, 2)));
    QVERIFY(segment != LvGPXTrackSegment({place(1, 2), LvGPXTrackPoint(LvGeoPosition(3, 4), 1, {}, {})}));
    QVERIFY(LvGPXTrackSegment() == LvGPXTrackSegment());
}

void tst_LvGPXTrackSegment::collectBlock_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("expectedFirst");
    QTest::addColumn<int>("expectedCount");
    QTest::newRow("all") << 0 << 9 << 0 << 10;
    QTest::newRow("part") << 3 << 5 << 3 << 3;
    QTest::newRow("one") << 3 << 3 << 3 << 1;
    QTest::newRow("the first") << 0 << 0 << 0 << 1;
    QTest::newRow("none") << 0 << -1 << 0 << 0;
    QTest::newRow("none in the middle") << 4 << 3 << 0 << 0;
    QTest::newRow("beyond the end") << 8 << 20 << 8 << 2;
    QTest::newRow("before the start") << -5 << 1 << 0 << 2;
}

void tst_LvGPXTrackSegment::collectBlock()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(int, expectedFirst);
    QFETCH(int, expectedCount);
    const LvGPXTrackSegment segment = line(10);
    QVERIFY(segment.collectBlock(LvIntRange(first, last))
            == segment.allPoints().mid(expectedFirst, expectedCount));
    QCOMPARE(segment.collectBlock(LvIntRange(first, last)).size(), expectedCount);
}

void tst_LvGPXTrackSegment::chunkedPoints_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("two") << 2;
    QTest::newRow("a few") << 100;
    QTest::newRow("many") << 20011;
}

void tst_LvGPXTrackSegment::chunkedPoints()
{
    QFETCH(int, count);
    const LvGPXTrackSegment segment = line(count);
    const QList<LvGeoPositionList> chunks = segment.chunkedPoints();
    QVERIFY(!chunks.isEmpty());
    QVERIFY(joined(chunks) == segment.allPoints());
    if (count > 20000 && QThread::idealThreadCount() > 1) {
        QVERIFY(chunks.size() > 1);
    }
    QList<LvGeoPositionList> fromWorker;
    onWorkerThread([&segment, &fromWorker] { fromWorker = segment.chunkedPoints(); });
    QCOMPARE(fromWorker.size(), 1);
    QVERIFY(fromWorker.first() == segment.allPoints());
}

void tst_LvGPXTrackSegment::mainThread()
{
    QVERIFY(LvGPXTrackSegment::weAreaRunningInMainThread());
    bool worker = true;
    onWorkerThread([&worker] { worker = LvGPXTrackSegment::weAreaRunningInMainThread(); });
    QVERIFY(!worker);
}

LV_TEST_MAIN(tst_LvGPXTrackSegment)
#include "tst_LvGPXTrackSegment.moc"
