#include "LvFixedSizePool.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackPointImpl.h"
#include "LvTest.h"

#include <QDomDocument>

#include <limits>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace
{

QDomElement parsed(const QString& text)
{
    QDomDocument document;
    document.setContent(text);
    return document.documentElement();
}

QDateTime utc(qint64 seconds)
{
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

/// The one child that the point writes.
QDomElement written(const LvGPXTrackPoint& point)
{
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    point.toXml(parent);
    return parent.childNodes().size() == 1 ? parent.firstChildElement() : QDomElement();
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

static_assert(std::is_base_of_v<LvGPXTrackElement, LvGPXTrackPoint>);
static_assert(std::is_base_of_v<LvGPXTrackElement, LvGPXTrackPointImpl>);
static_assert(std::is_base_of_v<QSharedData, LvGPXTrackPointImpl>);
static_assert(std::is_nothrow_move_constructible_v<LvGPXTrackPoint>);
static_assert(std::is_nothrow_move_assignable_v<LvGPXTrackPoint>);

constexpr int maxInt = std::numeric_limits<int>::max();
constexpr int minInt = std::numeric_limits<int>::min();

} // namespace

class tst_LvGPXTrackPoint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void fields();
    void copies();
    void elementOperations();
    void fromXml_data();
    void fromXml();
    void fromXmlTime_data();
    void fromXmlTime();
    void toXml_data();
    void toXml();
    void roundTripThroughXml();
    void toKml_data();
    void toKml();
    void decodeKml_data();
    void decodeKml();
    void kmlTimesDiffer();
    void isNull_data();
    void isNull();
    void equality_data();
    void equality();
    void impl();
    void takesPartsOver();
    void memoryPerPoint();
    void payloadsOfOtherSizes();
};

void tst_LvGPXTrackPoint::defaults()
{
    const LvGPXTrackPoint point;
    QCOMPARE(point.position().latitude().decimalDegrees(), 720.0);
    QCOMPARE(point.position().longitude().decimalDegrees(), 720.0);
    QVERIFY(!point.position().isValid());
    QCOMPARE(point.elevation(), 0);
    QVERIFY(!point.timeStamp().isValid());
    QVERIFY(point.description().isEmpty());
    QVERIFY(!point.isNull());
}

void tst_LvGPXTrackPoint::fields()
{
    const LvGPXTrackPoint point(LvGeoPosition(53.25, 8.5), -12, utc(1700000000), QStringLiteral("Hütte"));
    QCOMPARE(point.position().latitude().decimalDegrees(), 53.25);
    QCOMPARE(point.position().longitude().decimalDegrees(), 8.5);
    QCOMPARE(point.elevation(), -12);
    QCOMPARE(point.timeStamp(), utc(1700000000));
    QCOMPARE(point.description(), QStringLiteral("Hütte"));
}

void tst_LvGPXTrackPoint::copies()
{
    const LvGPXTrackPoint original(LvGeoPosition(53, 8), 12, utc(1), QStringLiteral("a"));
    LvGPXTrackPoint copy(original);
    QVERIFY(copy == original);
    copy = LvGPXTrackPoint(LvGeoPosition(1, 2), 3, utc(4), QStringLiteral("b"));
    QCOMPARE(original.elevation(), 12);
    QCOMPARE(copy.elevation(), 3);
    LvGPXTrackPoint moved(std::move(copy));
    QCOMPARE(moved.description(), QStringLiteral("b"));
    copy = original;
    QVERIFY(copy == original);
    moved = std::move(copy);
    QVERIFY(moved == original);
    LvGPXTrackPoint other;
    other.swap(moved);
    QVERIFY(other == original);
    QCOMPARE(moved.elevation(), 0);
}

void tst_LvGPXTrackPoint::elementOperations()
{
    const LvGPXTrackPoint point(LvGeoPosition(53, 8), 12, utc(1), QString());
    const LvGPXTrackElement& element = point;
    QCOMPARE(element.allPoints().size(), 1);
    QVERIFY(element.allPoints().first() == LvGeoPosition(53, 8));
    QCOMPARE(element.chunkedPoints().size(), 1);
    QCOMPARE(element.chunkedPoints().first().size(), 1);
    QVERIFY(element.isSinglePoint());
    QVERIFY(element.firstPoint() == LvGeoPosition(53, 8));
    QVERIFY(element.lastPoint() == LvGeoPosition(53, 8));
    QCOMPARE(element.allTimeStamps(), QList<QDateTime>{utc(1)});

    const LvGPXTrackPoint nothing;
    QVERIFY(nothing.isSinglePoint());
    QCOMPARE(nothing.allPoints().size(), 1);
    QCOMPARE(nothing.allTimeStamps().size(), 1);
    QVERIFY(!nothing.allTimeStamps().first().isValid());
}

void tst_LvGPXTrackPoint::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<int>("elevation");
    QTest::addColumn<QString>("description");
    const auto elevation = [](const char* name, const char* text, int expected) {
        QTest::newRow(name)
            << QStringLiteral("<trkpt lat='1' lon='2'><ele>%1</ele></trkpt>").arg(QLatin1String(text)) << 1.0
            << 2.0 << expected << "";
    };
    QTest::newRow("complete") << "<trkpt lat='53.25' lon='-8.5'><ele>12</ele><desc> a b </desc></trkpt>"
                              << 53.25 << -8.5 << 12 << " a b ";
    QTest::newRow("other name") << "<gpxx:rpt lat='53.25' lon='8.5'/>" << 53.25 << 8.5 << 0 << "";
    QTest::newRow("no coordinates") << "<trkpt/>" << 1.0 << 1.0 << 0 << "";
    QTest::newRow("no latitude") << "<trkpt lon='8.5'/>" << 1.0 << 8.5 << 0 << "";
    QTest::newRow("no longitude") << "<trkpt lat='53.25'/>" << 53.25 << 1.0 << 0 << "";
    QTest::newRow("unreadable latitude") << "<trkpt lat='north' lon='8.5'/>" << 0.0 << 8.5 << 0 << "";
    QTest::newRow("beyond the globe") << "<trkpt lat='95' lon='-270'/>" << 95.0 << -270.0 << 0 << "";
    QTest::newRow("more than seven digits")
        << "<trkpt lat='53.123456789' lon='8.5'/>" << 53.123456789 << 8.5 << 0 << "";
    QTest::newRow("names with a prefix or in capitals are others")
        << "<trkpt LAT='2' x:lon='3'><x:ele>4</x:ele><Desc>a</Desc></trkpt>" << 1.0 << 1.0 << 0 << "";
    QTest::newRow("only children count")
        << "<trkpt lat='1' lon='2'><x><ele>4</ele><desc>a</desc></x></trkpt>" << 1.0 << 2.0 << 0 << "";
    elevation("truncated", "123.9", 123);
    elevation("truncated toward zero", "-0.5", 0);
    elevation("below one metre", "0.9", 0);
    elevation("negative", "-123.9", -123);
    elevation("exponent", "1.5e3", 1500);
    elevation("no number", "high", 0);
    elevation("empty", "", 0);
    elevation("largest int", "2147483647", maxInt);
    elevation("beyond the largest int", "1e12", maxInt);
    elevation("smallest int", "-2147483648", minInt);
    elevation("beyond the smallest int", "-1e12", minInt);
    elevation("infinite", "inf", maxInt);
    elevation("not a number", "nan", 0);
}

void tst_LvGPXTrackPoint::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    QFETCH(int, elevation);
    QFETCH(QString, description);
    const LvGPXTrackPoint point(parsed(xml));
    QVERIFY(point.position().latitude().decimalDegrees() == latitude);
    QVERIFY(point.position().longitude().decimalDegrees() == longitude);
    QCOMPARE(point.elevation(), elevation);
    QCOMPARE(point.description(), description);
}

void tst_LvGPXTrackPoint::fromXmlTime_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QDateTime>("expected");
    QTest::newRow("missing") << "<trkpt/>" << QDateTime();
    QTest::newRow("empty") << "<trkpt><time/></trkpt>" << QDateTime();
    QTest::newRow("unreadable") << "<trkpt><time>yesterday</time></trkpt>" << QDateTime();
    QTest::newRow("UTC") << "<trkpt><time>2023-11-14T22:13:20Z</time></trkpt>" << utc(1700000000);
    QTest::newRow("offset") << "<trkpt><time>2023-11-14T23:28:20+01:15</time></trkpt>" << utc(1700000000);
    QTest::newRow("milliseconds") << "<trkpt><time>2023-11-14T22:13:20.250Z</time></trkpt>"
                                  << utc(1700000000).addMSecs(250);
    QTest::newRow("local time") << "<trkpt><time>2023-11-14T22:13:20</time></trkpt>"
                                << QDateTime(QDate(2023, 11, 14), QTime(22, 13, 20));
    QTest::newRow("other name") << "<trkpt><Time>2023-11-14T22:13:20Z</Time></trkpt>" << QDateTime();
}

void tst_LvGPXTrackPoint::fromXmlTime()
{
    QFETCH(QString, xml);
    QFETCH(QDateTime, expected);
    const LvGPXTrackPoint point(parsed(xml));
    QCOMPARE(point.timeStamp(), expected);
    QCOMPARE(point.timeStamp().isValid(), expected.isValid());
}

void tst_LvGPXTrackPoint::toXml_data()
{
    QTest::addColumn<LvGPXTrackPoint>("point");
    QTest::addColumn<QString>("latitude");
    QTest::addColumn<QString>("longitude");
    QTest::addColumn<QStringList>("children");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("bare") << LvGPXTrackPoint(LvGeoPosition(53.1, 8), 0, {}, {}) << "53.1"
                          << "8" << QStringList{} << QStringList{};
    QTest::newRow("complete, in this order")
        << LvGPXTrackPoint(LvGeoPosition(-53.1, -8), 7, utc(1700000000), QStringLiteral("a <b>")) << "-53.1"
        << "-8" << QStringList{"ele", "time", "desc"} << QStringList{"7", "2023-11-14T22:13:20Z", "a <b>"};
    QTest::newRow("ten significant digits")
        << LvGPXTrackPoint(LvGeoPosition(53.123456789012, 8.00000000004), 0, {}, {}) << "53.12345679"
        << "8" << QStringList{} << QStringList{};
    QTest::newRow("general notation") << LvGPXTrackPoint(LvGeoPosition(0.00001, 180), 0, {}, {}) << "1e-05"
                                      << "180" << QStringList{} << QStringList{};
    QTest::newRow("below sea level") << LvGPXTrackPoint(LvGeoPosition(1, 2), -3, {}, {}) << "1"
                                     << "2" << QStringList{"ele"} << QStringList{"-3"};
    QTest::newRow("time at 0 m") << LvGPXTrackPoint(LvGeoPosition(1, 2), 0, utc(0), {}) << "1"
                                 << "2" << QStringList{"time"} << QStringList{"1970-01-01T00:00:00Z"};
}

void tst_LvGPXTrackPoint::toXml()
{
    QFETCH(LvGPXTrackPoint, point);
    QFETCH(QString, latitude);
    QFETCH(QString, longitude);
    QFETCH(QStringList, children);
    QFETCH(QStringList, texts);
    const QDomElement element = written(point);
    QCOMPARE(element.tagName(), QStringLiteral("trkpt"));
    QCOMPARE(element.attributes().size(), 2);
    QCOMPARE(element.attribute(QStringLiteral("lat")), latitude);
    QCOMPARE(element.attribute(QStringLiteral("lon")), longitude);
    QCOMPARE(childNames(element), children);
    for (qsizetype index = 0; index < children.size(); ++index) {
        QCOMPARE(element.firstChildElement(children.at(index)).text(), texts.at(index));
    }
}

void tst_LvGPXTrackPoint::roundTripThroughXml()
{
    const LvGPXTrackPoint point(LvGeoPosition(53.14, -8.8), -12, utc(1700000000),
                                QStringLiteral("Größe & mehr"));
    QVERIFY(LvGPXTrackPoint(written(point)) == point);
    // Whatever it was read from, it is written as "trkpt", behind what the parent already holds.
    const LvGPXTrackPoint read(parsed(QStringLiteral("<rtept lat='1' lon='2'><ele>0.9</ele></rtept>")));
    QCOMPARE(written(read).tagName(), QStringLiteral("trkpt"));
    QVERIFY(written(read).firstChildElement(QStringLiteral("ele")).isNull());
    QDomElement parent = parsed(QStringLiteral("<trkseg><a/></trkseg>"));
    read.toXml(parent);
    QCOMPARE(childNames(parent), (QStringList{"a", "trkpt"}));
}

void tst_LvGPXTrackPoint::toKml_data()
{
    QTest::addColumn<LvGPXTrackPoint>("point");
    QTest::addColumn<QString>("expected");
    const auto place = [](double latitude, double longitude) {
        return LvGPXTrackPoint(LvGeoPosition(latitude, longitude), 0, {}, {});
    };
    QTest::newRow("longitude first, point kept") << place(53.0, 8.5) << "8.5,53.";
    QTest::newRow("negative") << place(-0.5, -53.25) << "-53.25,-0.5";
    QTest::newRow("zeros in front of the point stay") << place(10, 100) << "100.,10.";
    QTest::newRow("zero") << place(0, 0) << "0.,0.";
    QTest::newRow("ten decimals") << place(53.12345678914, 8.00000000016) << "8.0000000002,53.1234567891";
    QTest::newRow("zeros within stay") << place(53.0101, 8.001) << "8.001,53.0101";
    QTest::newRow("too small") << place(1e-11, 2e-10) << "0.0000000002,0.";
    QTest::newRow("default point") << LvGPXTrackPoint() << "720.,720.";
    QTest::newRow("elevation") << LvGPXTrackPoint(LvGeoPosition(53, 8.5), 12, {}, QStringLiteral("a"))
                               << "8.5,53.,12";
    QTest::newRow("negative elevation")
        << LvGPXTrackPoint(LvGeoPosition(53, 8.5), -120, {}, {}) << "8.5,53.,-120";
    QTest::newRow("time at 0 m") << LvGPXTrackPoint(LvGeoPosition(53, 8.5), 0, utc(1700000000), {})
                                 << "8.5,53.,0,1700000000000";
    QTest::newRow("elevation and time")
        << LvGPXTrackPoint(LvGeoPosition(53.3, 8.6), 12, utc(1700000000).addMSecs(250), {})
        << "8.6,53.3,12,1700000000250";
    QTest::newRow("before 1970") << LvGPXTrackPoint(LvGeoPosition(53, 8.5), 0, utc(-1), {})
                                 << "8.5,53.,0,-1000";
    QTest::newRow("offset") << LvGPXTrackPoint(LvGeoPosition(53, 8.5), 0,
                                               utc(1700000000).toOffsetFromUtc(4500), {})
                            << "8.5,53.,0,1700000000000";
}

void tst_LvGPXTrackPoint::toKml()
{
    QFETCH(LvGPXTrackPoint, point);
    QFETCH(QString, expected);
    QCOMPARE(point.toKml(), expected);
}

void tst_LvGPXTrackPoint::decodeKml_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<int>("elevation");
    QTest::addColumn<QDateTime>("timeStamp");
    QTest::newRow("two fields") << "8.5,53." << 8.5 << 53.0 << 0 << QDateTime();
    QTest::newRow("one field") << "8.1" << 8.1 << 0.0 << 0 << QDateTime();
    QTest::newRow("empty") << "" << 0.0 << 0.0 << 0 << QDateTime();
    QTest::newRow("empty fields count") << ",53" << 0.0 << 53.0 << 0 << QDateTime();
    QTest::newRow("seven decimals") << "8.123456789,53.1" << 8.1234567 << 53.1 << 0 << QDateTime();
    QTest::newRow("seven characters") << "12345678,1" << 1234567.0 << 1.0 << 0 << QDateTime();
    QTest::newRow("no numbers") << "east,north,high" << 0.0 << 0.0 << 0 << QDateTime();
    QTest::newRow("elevation") << "8,53,100" << 8.0 << 53.0 << 100 << QDateTime();
    QTest::newRow("negative elevation") << "8,53,-3" << 8.0 << 53.0 << -3 << QDateTime();
    QTest::newRow("elevation with a fraction") << "8,53,12.5" << 8.0 << 53.0 << 0 << QDateTime();
    QTest::newRow("elevation of ten digits") << "8,53,2147483647" << 8.0 << 53.0 << maxInt << QDateTime();
    QTest::newRow("elevation beyond 32 bits") << "8,53,2147483648" << 8.0 << 53.0 << 0 << QDateTime();
    QTest::newRow("elevation not hexadecimal") << "8,53,0x10" << 8.0 << 53.0 << 0 << QDateTime();
    QTest::newRow("empty elevation") << "8,53," << 8.0 << 53.0 << 0 << QDateTime();
    QTest::newRow("time in seconds") << "8,53,100,1700000000" << 8.0 << 53.0 << 100 << utc(1700000000);
    QTest::newRow("time before 1970") << "8,53,0,-1" << 8.0 << 53.0 << 0 << utc(-1);
    QTest::newRow("unreadable time is 1970") << "8,53,0,noon" << 8.0 << 53.0 << 0 << utc(0);
    QTest::newRow("empty time is 1970") << "8,53,0," << 8.0 << 53.0 << 0 << utc(0);
    QTest::newRow("time with a fraction is 1970") << "8,53,0,1.5" << 8.0 << 53.0 << 0 << utc(0);
    QTest::newRow("time beyond 64 bits is 1970")
        << "8,53,0,9223372036854775808" << 8.0 << 53.0 << 0 << utc(0);
    QTest::newRow("further fields") << "8,53,1,2,3,4" << 8.0 << 53.0 << 1 << utc(2);
}

void tst_LvGPXTrackPoint::decodeKml()
{
    QFETCH(QString, text);
    QFETCH(double, longitude);
    QFETCH(double, latitude);
    QFETCH(int, elevation);
    QFETCH(QDateTime, timeStamp);
    const LvGPXTrackPoint point = LvGPXTrackPoint::decodeKml(text);
    QVERIFY(point.position().longitude().decimalDegrees() == longitude);
    QVERIFY(point.position().latitude().decimalDegrees() == latitude);
    QCOMPARE(point.elevation(), elevation);
    QCOMPARE(point.timeStamp(), timeStamp);
    QCOMPARE(point.timeStamp().isValid(), timeStamp.isValid());
    if (timeStamp.isValid()) {
        QCOMPARE(point.timeStamp().timeSpec(), Qt::UTC);
    }
    QVERIFY(point.description().isEmpty());
}

void tst_LvGPXTrackPoint::kmlTimesDiffer()
{
    // Written in milliseconds, read as seconds.
    const LvGPXTrackPoint point(LvGeoPosition(53, 8), 0, utc(1000), {});
    QCOMPARE(LvGPXTrackPoint::decodeKml(point.toKml()).timeStamp(), utc(1000000));
    const LvGPXTrackPoint untimed(LvGeoPosition(53.0, 8.5), 100, {}, {});
    QVERIFY(LvGPXTrackPoint::decodeKml(untimed.toKml()) == untimed);
    // The largest number of seconds is beyond what a date-time holds; it must do no harm.
    QVERIFY(LvGPXTrackPoint::decodeKml(QStringLiteral("8,53,0,9223372036854775807")).position()
            == LvGeoPosition(53, 8));
}

void tst_LvGPXTrackPoint::isNull_data()
{
    QTest::addColumn<LvGeoPosition>("position");
    QTest::addColumn<bool>("expected");
    QTest::newRow("0/0") << LvGeoPosition(0, 0) << true;
    QTest::newRow("negative zeros") << LvGeoPosition(-0.0, -0.0) << true;
    QTest::newRow("latitude only") << LvGeoPosition(0, 1) << false;
    QTest::newRow("longitude only") << LvGeoPosition(1, 0) << false;
    QTest::newRow("no tolerance") << LvGeoPosition(0, 1e-12) << false;
    QTest::newRow("invalid") << LvGeoPosition() << false;
}

void tst_LvGPXTrackPoint::isNull()
{
    QFETCH(LvGeoPosition, position);
    QFETCH(bool, expected);
    // The other fields do not count.
    QCOMPARE(LvGPXTrackPoint(position, 5, utc(5), QStringLiteral("a")).isNull(), expected);
}

void tst_LvGPXTrackPoint::equality_data()
{
    QTest::addColumn<LvGPXTrackPoint>("other");
    QTest::addColumn<bool>("expected");
    const LvGeoPosition place(53, 8);
    const QString text = QStringLiteral("a");
    QTest::newRow("equal fields") << LvGPXTrackPoint(place, 1, utc(2), text) << true;
    QTest::newRow("position within the tolerance")
        << LvGPXTrackPoint(LvGeoPosition(53.0000005, 8), 1, utc(2), text) << true;
    QTest::newRow("position") << LvGPXTrackPoint(LvGeoPosition(53.00001, 8), 1, utc(2), text) << false;
    QTest::newRow("elevation") << LvGPXTrackPoint(place, 2, utc(2), text) << false;
    QTest::newRow("time") << LvGPXTrackPoint(place, 1, utc(3), text) << false;
    QTest::newRow("no time") << LvGPXTrackPoint(place, 1, {}, text) << false;
    QTest::newRow("the same instant elsewhere")
        << LvGPXTrackPoint(place, 1, utc(2).toOffsetFromUtc(3600), text) << true;
    QTest::newRow("description") << LvGPXTrackPoint(place, 1, utc(2), {}) << false;
}

void tst_LvGPXTrackPoint::equality()
{
    QFETCH(LvGPXTrackPoint, other);
    QFETCH(bool, expected);
    const LvGPXTrackPoint point(LvGeoPosition(53, 8), 1, utc(2), QStringLiteral("a"));
    QCOMPARE(point == other, expected);
    QCOMPARE(point != other, !expected);
    QVERIFY(other == LvGPXTrackPoint(other));
}

void tst_LvGPXTrackPoint::impl()
{
    const LvGPXTrackPointImpl impl(LvGeoPosition(53, 8), 1, utc(2), QStringLiteral("a"));
    QVERIFY(impl.position() == LvGeoPosition(53, 8));
    QCOMPARE(impl.elevation(), 1);
    QCOMPARE(impl.timeStamp(), utc(2));
    QCOMPARE(impl.description(), QStringLiteral("a"));
    QCOMPARE(impl.allPoints().size(), 1);
    QCOMPARE(impl.chunkedPoints().size(), 1);
    QVERIFY(impl.isSinglePoint());
    QVERIFY(impl.firstPoint() == impl.lastPoint());
    QCOMPARE(impl.allTimeStamps(), QList<QDateTime>{utc(2)});
    const LvGPXTrackPointImpl copy(impl);
    QCOMPARE(copy.description(), QStringLiteral("a"));
    QVERIFY(!LvGPXTrackPointImpl().position().isValid());
}

void tst_LvGPXTrackPoint::takesPartsOver()
{
    LvGeoPosition position(53, 8);
    QDateTime time = utc(2);
    QString description = QStringLiteral("a").repeated(3);
    const QChar* text = description.constData();
    const LvGPXTrackPoint point(std::move(position), 1, std::move(time), std::move(description));
    QVERIFY(point == LvGPXTrackPoint(LvGeoPosition(53, 8), 1, utc(2), QStringLiteral("aaa")));
    QCOMPARE(point.description().constData(), text);
}

void tst_LvGPXTrackPoint::memoryPerPoint()
{
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    constexpr int count = 200000;
    const auto usedBytes = [] {
        const auto heap = mallinfo2();
        return static_cast<double>(heap.uordblks + heap.hblkhd)
            + static_cast<double>(LvFixedSizePool::usedSlabCount())
            * static_cast<double>(LvFixedSizePool::slabSize);
    };
    const double before = usedBytes();
    QList<LvGPXTrackPoint> points;
    points.reserve(count);
    for (int index = 0; index < count; ++index) {
        points.append(LvGPXTrackPoint(LvGeoPosition(53.0 + index * 1e-6, 8.0), index % 100 + 1,
                                      utc(1700000000 + index), QString()));
    }
    const double perPoint = (usedBytes() - before) / count;
    // 16 in the list, 72 and 48 for the payloads; the rest is for the slabs.
    QVERIFY2(perPoint > 135.0 && perPoint < 138.0, qPrintable(QString::number(perPoint)));
    points = {};
    QVERIFY(usedBytes() - before < 1e6);
#else
    QSKIP("the allocator does not count, or a sanitizer replaces it");
#endif
}

void tst_LvGPXTrackPoint::payloadsOfOtherSizes()
{
    // A derived payload is larger and must not be put into the slabs of its base.
    class LargerImpl : public LvGPXTrackPointImpl
    {
    public:
        double more = 1.5;
    };

    std::vector<std::unique_ptr<LvGPXTrackPointImpl>> payloads;
    const qsizetype before = LvFixedSizePool::usedSlabCount();
    for (int index = 0; index < 5000; ++index) {
        payloads.push_back(std::make_unique<LargerImpl>());
    }
    QCOMPARE(LvFixedSizePool::usedSlabCount(), before);
}

LV_TEST_MAIN(tst_LvGPXTrackPoint)
#include "tst_LvGPXTrackPoint.moc"
