#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackXml.h"
#include "LvXMLBuilder.h"
#include "LvXMLWriter.h"

#include <QBuffer>
#include <QDir>
#include <QDomDocument>

using namespace LvTestTracks;

Q_DECLARE_METATYPE(LvGPXTrack)

namespace
{

QDomElement newElement(QDomDocument& document, const QString& name)
{
    return LvXMLBuilder::buildRootElement(document, name);
}

/// Written, turned into text, and read.
LvGPXTrack copyThroughText(const LvGPXTrack& track)
{
    QDomDocument document;
    LvTrackXml::writeTrack(newElement(document, LvTrackXml::trackTag()), track);
    QDomDocument read;
    read.setContent(document.toString());
    return {read.documentElement(), QDir(QString())};
}

/// The element as text, the attributes in a fixed order: the toolkit writes them in any.
QString elementOf(const LvGPXTrackPoint& point)
{
    QDomDocument document;
    QDomElement segment = newElement(document, QStringLiteral("trkseg"));
    LvTrackXml::appendPoint(segment, point);
    const QDomElement element = segment.firstChildElement();
    QString children;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        children += QStringLiteral("<%1>%2").arg(child.tagName(), child.text());
    }
    return QStringLiteral("%1 %2,%3 %4")
        .arg(element.tagName(), element.attribute("lat"), element.attribute("lon"), children)
        .trimmed();
}

/// The nodes at and below an element, and their depths, counted as LvXMLLoader does in the text.
LvTrackXmlCost costOf(const QDomElement& element, int depth)
{
    LvTrackXmlCost cost{1 + 2 * element.attributes().count(), depth - 1, 0};
    if (!element.hasChildNodes()) {
        return cost; // one tag
    }
    cost.depthSum += depth;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const LvTrackXmlCost more =
            child.isElement() ? costOf(child.toElement(), depth + 1) : LvTrackXmlCost{1, 0, 0};
        cost.nodes += more.nodes;
        cost.depthSum += more.depthSum;
    }
    return cost;
}

qint64 fileSize(const QDomDocument& document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LvXMLWriter(buffer).write(document);
    return buffer.size();
}

/// The bytes of a track in a file, at that depth.
qint64 bytesOf(const LvGPXTrack& track, int depth)
{
    QDomDocument document;
    QDomElement element = newElement(document, QStringLiteral("a"));
    for (int parent = 2; parent < depth; ++parent) {
        element = LvXMLBuilder::buildDomElement(element, QStringLiteral("a"));
    }
    const qint64 around = fileSize(document);
    LvTrackXml::writeTrack(LvXMLBuilder::buildDomElement(element, LvTrackXml::trackTag()), track);
    return fileSize(document) - around;
}

} // namespace

class tst_LvTrackXml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void points_data();
    void points();
    void timesAreReadBack_data();
    void timesAreReadBack();
    void segmentForms_data();
    void segmentForms();
    void shapesAreKept_data();
    void shapesAreKept();
    void deepEnclaves();
    void costs_data();
    void costs();
    void bytesOfRandomTracks();
};

void tst_LvTrackXml::points_data()
{
    QTest::addColumn<LvGPXTrackPoint>("trackPoint");
    QTest::addColumn<QString>("expected");
    QTest::newRow("position only") << point(53.1, 8.8) << "trkpt 53.1,8.8";
    QTest::newRow("whole degrees") << point(53, -8) << "trkpt 53,-8";
    QTest::newRow("tiny angles") << point(0.00001, -0.00002) << "trkpt 0.00001,-0.00002";
    QTest::newRow("tens") << point(10, 100) << "trkpt 10,100";
    QTest::newRow("date line from the west") << point(1, 180) << "trkpt 1,-180";
    QTest::newRow("date line from the east") << point(1, -180) << "trkpt 1,-180";
    QTest::newRow("everything in order") << point(1, 2, -3, utc("2023-06-01T10:00:00Z"), "a < b")
                                         << "trkpt 1,2 <ele>-3<time>2023-06-01T10:00:00Z<desc>a < b";
    QTest::newRow("milliseconds") << point(1, 2, 0, utc("2023-06-01T10:00:00.050Z"))
                                  << "trkpt 1,2 <time>2023-06-01T10:00:00.050Z";
    QTest::newRow("another time zone")
        << point(1, 2, 0, QDateTime(QDate(2023, 6, 1), QTime(12, 0), Qt::OffsetFromUTC, 7200))
        << "trkpt 1,2 <time>2023-06-01T10:00:00Z";
    QTest::newRow("last year that can be written")
        << point(1, 2, 0, utc("9999-12-31T23:59:59Z")) << "trkpt 1,2 <time>9999-12-31T23:59:59Z";
    QTest::newRow("a year too far") << point(1, 2, 0, utc("9999-12-31T23:59:59Z").addSecs(1)) << "trkpt 1,2";
    QTest::newRow("before the first year")
        << point(1, 2, 0, QDateTime(QDate(-1, 1, 1), QTime(), Qt::UTC)) << "trkpt 1,2";
}

void tst_LvTrackXml::points()
{
    QFETCH(LvGPXTrackPoint, trackPoint);
    QFETCH(QString, expected);
    QCOMPARE(elementOf(trackPoint), expected);
}

void tst_LvTrackXml::timesAreReadBack_data()
{
    QTest::addColumn<QDateTime>("time");
    QTest::newRow("none") << QDateTime();
    QTest::newRow("whole seconds") << utc("2023-06-01T10:00:00Z");
    QTest::newRow("milliseconds") << utc("2023-06-01T10:00:00.999Z");
    QTest::newRow("zero") << utc("1970-01-01T00:00:00Z");
    QTest::newRow("one second before zero") << utc("1969-12-31T23:59:59Z");
    QTest::newRow("one millisecond before zero") << utc("1969-12-31T23:59:59.999Z");
    QTest::newRow("far future") << QDateTime::fromSecsSinceEpoch(1685613600000, Qt::UTC);
}

void tst_LvTrackXml::timesAreReadBack()
{
    QFETCH(QDateTime, time);
    const LvGPXTrack track = line("T", {point(1, 2, 0, time), point(3, 4, 5, time)});
    QVERIFY(copyThroughText(track) == track);
}

void tst_LvTrackXml::segmentForms_data()
{
    QTest::addColumn<QList<LvGPXTrackPoint>>("points");
    QTest::addColumn<bool>("isCompact");
    const QDateTime time = utc("2023-06-01T10:00:00Z");
    QTest::newRow("positions") << QList<LvGPXTrackPoint>{point(1, 2), point(3, 4)} << true;
    QTest::newRow("elevations and times")
        << QList<LvGPXTrackPoint>{point(1, 2, 3, time), point(3, 4, 0, time)} << true;
    QTest::newRow("a text") << QList<LvGPXTrackPoint>{point(1, 2), point(3, 4, 0, {}, "x")} << false;
    QTest::newRow("milliseconds") << QList<LvGPXTrackPoint>{point(1, 2, 0, time.addMSecs(1))} << false;
    QTest::newRow("a point nearly at zero")
        << QList<LvGPXTrackPoint>{point(0.00000009, -0.00000009, 3), point(3, 4)} << false;
    QTest::newRow("a point nearly at zero, to the seventh digit")
        << QList<LvGPXTrackPoint>{point(0.0000001, 0, 3), point(3, 4)} << true;
    QTest::newRow("a point at zero") << QList<LvGPXTrackPoint>{point(0, 0, 3), point(3, 4)} << false;
}

void tst_LvTrackXml::segmentForms()
{
    QFETCH(QList<LvGPXTrackPoint>, points);
    QFETCH(bool, isCompact);
    const LvGPXTrack track = line("T", points);
    QDomDocument document;
    const QDomElement trk = newElement(document, LvTrackXml::trackTag());
    LvTrackXml::writeTrack(trk, track);
    const QDomElement segment = trk.firstChildElement(QStringLiteral("trkseg"));
    QCOMPARE(!segment.firstChildElement(QStringLiteral("compressedPoints")).isNull(), isCompact);
    QCOMPARE(segment.firstChildElement(QStringLiteral("trkpt")).isNull(), isCompact);
    QVERIFY(copyThroughText(track) == track);
}

void tst_LvTrackXml::shapesAreKept_data()
{
    QTest::addColumn<LvGPXTrackShapeEnum>("shape");
    QTest::newRow("line") << LvGPXTrackShapeEnum::linestring;
    QTest::newRow("area") << LvGPXTrackShapeEnum::polygon;
    QTest::newRow("hop") << LvGPXTrackShapeEnum::hop;
    QTest::newRow("point") << LvGPXTrackShapeEnum::point;
}

void tst_LvTrackXml::shapesAreKept()
{
    QFETCH(LvGPXTrackShapeEnum, shape);
    LvGPXTrack track = line("T", {point(1, 2), point(3, 4)});
    track.setShape(shape);
    QVERIFY(copyThroughText(track) == track);
}

void tst_LvTrackXml::deepEnclaves()
{
    LvGPXTrack track = line("0", {point(1, 2, 3, utc("2023-06-01T10:00:00Z"))});
    for (int depth = 1; depth < 500; ++depth) {
        LvGPXTrack outer = line(QString::number(depth), {point(1, 2), point(3, 4)});
        outer.setEnclaves({track, line("sibling", {point(depth / 10.0 + 1.0, 5)})});
        track = outer;
    }
    QVERIFY(copyThroughText(track) == track);
}

void tst_LvTrackXml::costs_data()
{
    QTest::addColumn<LvGPXTrack>("track");
    const QDateTime exactTime = utc("2023-06-01T10:00:00.250Z");
    QList<LvGPXTrackPoint> plain;
    QList<LvGPXTrackPoint> rich;
    for (int index = 0; index < 200; ++index) {
        plain.append(point(1, index * 0.1, index));
        rich.append(point(1, index * 0.1, index % 2, index % 3 == 0 ? exactTime : QDateTime(),
                          index % 5 == 0 ? QStringLiteral("Text") : QString()));
    }
    LvGPXTrack nested = line("outer", rich);
    for (int depth = 0; depth < 20; ++depth) {
        LvGPXTrack outer = line(QString::number(depth), depth % 2 == 0 ? plain : rich);
        outer.addEnclave(nested);
        nested = outer;
    }
    QTest::newRow("nothing") << LvGPXTrack();
    QTest::newRow("compact") << line("A", plain);
    QTest::newRow("point by point") << line("A", rich);
    QTest::newRow("mixed segments") << LvGPXTrack(
        "A", "text", {LvGPXTrackSegment(plain), LvGPXTrackSegment(rich), LvGPXTrackSegment()},
        LvGPXTrackShapeEnum::linestring);
    QTest::newRow("nested") << nested;
}

void tst_LvTrackXml::costs()
{
    QFETCH(LvGPXTrack, track);
    QDomDocument document;
    const QDomElement trk = newElement(document, LvTrackXml::trackTag());
    LvTrackXml::writeTrack(trk, track);
    constexpr int depth = 5;
    const LvTrackXmlCost real = costOf(trk, depth);
    const LvTrackXmlCost told = LvTrackXml::costOf(track, depth);
    QVERIFY(told.nodes >= real.nodes);
    QVERIFY(told.depthSum >= real.depthSum);
    // It is not much more, or documents would be refused that can be read.
    const int trackCount = 1 + document.elementsByTagName(LvTrackXml::trackTag()).size();
    QVERIFY2(told.nodes <= real.nodes + 10 * trackCount,
             qPrintable(QStringLiteral("%1 instead of %2").arg(told.nodes).arg(real.nodes)));
    QVERIFY(told.depthSum <= 2 * real.depthSum + 100);
    const qint64 bytes = bytesOf(track, depth);
    QVERIFY2(told.bytes >= bytes && told.bytes <= bytes + bytes / 5 + 300 * trackCount,
             qPrintable(QStringLiteral("%1 instead of %2").arg(told.bytes).arg(bytes)));
}

void tst_LvTrackXml::bytesOfRandomTracks()
{
    QRandomGenerator random(20261122);
    for (int round = 0; round < 150; ++round) {
        const LvGPXTrack track = randomTrack(random, 3);
        const int depth = 2 + round % 5;
        const qint64 told = LvTrackXml::costOf(track, depth).bytes;
        const qint64 real = bytesOf(track, depth);
        QVERIFY2(told >= real, qPrintable(QStringLiteral("%1 instead of %2").arg(told).arg(real)));
    }
}

LV_TEST_MAIN(tst_LvTrackXml)
#include "tst_LvTrackXml.moc"
