#include "LvGeoArc.h"
#include "LvLatitude.h"
#include "LvLongitude.h"
#include "LvTest.h"

#include <QUrl>
#include <QUrlQuery>
#include <QVariant>

#include <limits>
#include <type_traits>

namespace
{

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double secondTolerance = 1e-9;

/// An angle whose direction looks like the places of a text.
class PlaceholderArc : public LvGeoArc
{
public:
    using LvGeoArc::LvGeoArc;

    [[nodiscard]] QString directionIndicator() const override { return QStringLiteral("%1%2%3%4"); }
};

bool isNear(double actual, double expected, double tolerance)
{
    return qAbs(actual - expected) <= tolerance;
}

} // namespace

class tst_LvGeoArc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNoAngle();
    void convertsFromNumbers();
    void isValid_data();
    void isValid();
    void isNull();
    void setDecimalDegrees();
    void setDegree_data();
    void setDegree();
    void parts_data();
    void parts();
    void partsOfHugeAngles();
    void radians();
    void text();
    void variant();
    void writeTo();
    void exifRational_data();
    void exifRational();
    void humanReadable_data();
    void humanReadable();
    void humanReadableNeverSubstitutesTwice();
    void fromString_data();
    void fromString();
    void absDistance();
    void comparison_data();
    void comparison();
    void arithmetic();
    void divisionByZero();
    void debugText();
};

void tst_LvGeoArc::defaultIsNoAngle()
{
    QVERIFY(LvGeoArc().decimalDegrees() == 720.0);
    QVERIFY(!LvGeoArc().isValid());
    QVERIFY(LvGeoArc().directionIndicator().isEmpty());
}

void tst_LvGeoArc::convertsFromNumbers()
{
    const LvGeoArc whole = 10;
    const LvGeoArc fraction = 10.5;
    QVERIFY(whole.decimalDegrees() == 10.0);
    QVERIFY(fraction.decimalDegrees() == 10.5);
    QVERIFY(fraction.degreeF() == 10.5);
}

void tst_LvGeoArc::isValid_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("valid");
    QTest::newRow("zero") << 0.0 << true;
    QTest::newRow("upper end") << 360.0 << true;
    QTest::newRow("lower end") << -360.0 << true;
    QTest::newRow("just above, no tolerance") << 360.0000001 << false;
    QTest::newRow("just below, no tolerance") << -360.0000001 << false;
    QTest::newRow("marker") << 720.0 << false;
    QTest::newRow("not a number") << notANumber << false;
}

void tst_LvGeoArc::isValid()
{
    QFETCH(double, degrees);
    QTEST(LvGeoArc(degrees).isValid(), "valid");
}

void tst_LvGeoArc::isNull()
{
    QVERIFY(LvGeoArc(0.0).isNull());
    QVERIFY(LvGeoArc(-0.0).isNull());
    QVERIFY(!LvGeoArc(1e-9).isNull()); // although it equals 0
    QVERIFY(!LvGeoArc().isNull());
}

void tst_LvGeoArc::setDecimalDegrees()
{
    LvGeoArc arc(1.0);
    const LvGeoArc copy = arc;
    arc.setDecimalDegrees(400.25);
    QVERIFY(arc.decimalDegrees() == 400.25);
    QVERIFY(copy.decimalDegrees() == 1.0);
}

void tst_LvGeoArc::setDegree_data()
{
    QTest::addColumn<int>("degree");
    QTest::addColumn<int>("minute");
    QTest::addColumn<double>("second");
    QTest::addColumn<double>("degrees");
    QTest::newRow("northern") << 53 << 8 << 24.0 << 53.14;
    QTest::newRow("all negative") << -53 << -8 << -24.0 << -53.14;
    QTest::newRow("mixed signs add up") << -53 << 30 << 0.0 << -52.5;
    QTest::newRow("seconds only") << 0 << 0 << 36.0 << 0.01;
    QTest::newRow("more than sixty") << 1 << 90 << 3600.0 << 3.5;
}

void tst_LvGeoArc::setDegree()
{
    QFETCH(int, degree);
    QFETCH(int, minute);
    QFETCH(double, second);
    QFETCH(double, degrees);
    LvGeoArc arc;
    arc.setDegree(degree, minute, second);
    QVERIFY(arc.decimalDegrees() == minute / 60.0 + degree + second / 3600.0);
    QVERIFY(isNear(arc.decimalDegrees(), degrees, 1e-12));
}

void tst_LvGeoArc::parts_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<int>("degree");
    QTest::addColumn<int>("minute");
    QTest::addColumn<double>("second");
    QTest::addColumn<double>("minuteF");
    QTest::newRow("northern") << 53.14 << 53 << 8 << 24.0 << 8.4;
    QTest::newRow("southern: negative parts, minuteF without sign") << -53.14 << -53 << -8 << -24.0 << 8.4;
    QTest::newRow("below one degree") << -0.5 << 0 << -30 << 0.0 << 30.0;
    QTest::newRow("truncated, not rounded") << 8.99999 << 8 << 59 << 59.964 << 59.9994;
    QTest::newRow("whole") << 12.0 << 12 << 0 << 0.0 << 0.0;
    QTest::newRow("marker") << 720.0 << 720 << 0 << 0.0 << 0.0;
}

void tst_LvGeoArc::parts()
{
    QFETCH(double, degrees);
    QFETCH(double, second);
    QFETCH(double, minuteF);
    const LvGeoArc arc(degrees);
    QTEST(arc.degree(), "degree");
    QTEST(arc.minute(), "minute");
    QVERIFY(isNear(arc.secondF(), second, secondTolerance));
    QVERIFY(isNear(arc.minuteF(), minuteF, secondTolerance));
    QVERIFY(arc.minuteF() >= 0.0);
    QVERIFY(arc.secondF() == degrees * 3600.0 - (arc.degree() * 60 + arc.minute()) * 60);
}

void tst_LvGeoArc::partsOfHugeAngles()
{
    QCOMPARE(LvGeoArc(1e300).degree(), std::numeric_limits<int>::max());
    QCOMPARE(LvGeoArc(-1e300).degree(), std::numeric_limits<int>::min());
    QCOMPARE(LvGeoArc(notANumber).degree(), 0);
    QCOMPARE(LvGeoArc(notANumber).minute(), 0);
    QCOMPARE(LvGeoArc(-1e300).humanReadable(QStringLiteral("dm"), 0).section(QLatin1Char(' '), 0, 0),
             QStringLiteral("2147483648°"));
}

void tst_LvGeoArc::radians()
{
    QVERIFY(LvGeoArc(180.0).radians() == 180.0 * 0.017453292519943295);
    QVERIFY(LvGeoArc::fromRadians(1.0).decimalDegrees() == 57.29577951308232);
    QVERIFY(LvGeoArc::fromRadians(-0.5).decimalDegrees() == -0.5 * 57.29577951308232);
}

void tst_LvGeoArc::text()
{
    QCOMPARE(LvGeoArc(53.14).toString(), QStringLiteral("53.1400000000000006"));
    QCOMPARE(LvGeoArc(-0.5).toString(), QStringLiteral("-0.5000000000000000"));
    QCOMPARE(LvGeoArc().toString(), QStringLiteral("720.0000000000000000"));
    QCOMPARE(LvLatitude(12.0).toString(), QStringLiteral("12.0000000000000000"));
}

void tst_LvGeoArc::variant()
{
    const QVariant variant = LvGeoArc(53.14).toVariant();
    QCOMPARE(variant.metaType(), QMetaType::fromType<double>());
    QVERIFY(variant.toDouble() == 53.14);
    QVERIFY(LvGeoArc::fromVariant(variant).decimalDegrees() == 53.14);
    QVERIFY(LvGeoArc::fromVariant(QVariant()).decimalDegrees() == 720.0);
    QVERIFY(LvGeoArc::fromVariant(QVariant(QMetaType::fromType<double>())).decimalDegrees() == 720.0);
    QVERIFY(LvGeoArc::fromVariant(QStringLiteral("12.5")).decimalDegrees() == 12.5);
    QVERIFY(LvGeoArc::fromVariant(QStringLiteral("north")).decimalDegrees() == 0.0);
    QVERIFY(LvLatitude::fromVariant(QVariant()).decimalDegrees() == 720.0);
    QVERIFY(LvLongitude::fromVariant(8).decimalDegrees() == 8.0);
}

void tst_LvGeoArc::writeTo()
{
    QUrlQuery query;
    LvGeoArc(53.14).writeTo(query, QStringLiteral("angle"));
    LvGeoArc(-0.5).writeTo(query, QStringLiteral("other"));
    QCOMPARE(query.toString(QUrl::FullyEncoded),
             QStringLiteral("angle=53.1400000000000006&other=-0.5000000000000000"));
}

void tst_LvGeoArc::exifRational_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("northern") << 53.14 << QStringLiteral("53/1 8/1 2400000/100000");
    QTest::newRow("southern, no signs") << -53.14 << QStringLiteral("53/1 8/1 2400000/100000");
    QTest::newRow("fraction of a second") << 10.0 + 1.5 / 3600.0 << QStringLiteral("10/1 0/1 150000/100000");
    QTest::newRow("zero") << 0.0 << QStringLiteral("0/1 0/1 0/100000");
    // 1.000006 seconds
    QTest::newRow("rounded up") << 1.000006 / 3600.0 << QStringLiteral("0/1 0/1 100001/100000");
    QTest::newRow("rounded down") << 1.000004 / 3600.0 << QStringLiteral("0/1 0/1 100000/100000");
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN()
                               << QStringLiteral("0/1 0/1 0/100000");
    QTest::newRow("beyond the integers")
        << 1e300 << QStringLiteral("2147483647/1 7/1 9223372036854775807/100000");
    QTest::newRow("infinitely southern") << -std::numeric_limits<double>::infinity()
                                         << QStringLiteral("2147483648/1 8/1 9223372036854775807/100000");
}

void tst_LvGeoArc::exifRational()
{
    QFETCH(double, degrees);
    QTEST(LvGeoArc(degrees).toExifRational(), "text");
}

void tst_LvGeoArc::humanReadable_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("precision");
    QTest::addColumn<QString>("arcText");
    QTest::addColumn<QString>("latitudeText");
    QTest::addColumn<QString>("longitudeText");
    QTest::newRow("d") << 53.14 << "d" << 3 << "53.140° "
                       << "53.140° N"
                       << "53.140° E";
    QTest::newRow("d, negative") << -53.14 << "d" << 1 << "53.1° "
                                 << "53.1° S"
                                 << "53.1° W";
    QTest::newRow("dm") << 53.14 << "dm" << 2 << "53° 8.40' "
                        << "53° 8.40' N"
                        << "53° 8.40' E";
    QTest::newRow("dm, negative") << -53.14 << "dm" << 0 << "53° 8' "
                                  << "53° 8' S"
                                  << "53° 8' W";
    QTest::newRow("dms") << 53.14 << "dms" << 1 << "53° 8' 24.0\" "
                         << "53° 8' 24.0\" N"
                         << "53° 8' 24.0\" E";
    QTest::newRow("dms, negative") << -53.14 << "dms" << 0 << "53° 8' 24\" "
                                   << "53° 8' 24\" S"
                                   << "53° 8' 24\" W";
    QTest::newRow("empty format") << 0.0 << "" << 0 << "0° 0' 0\" "
                                  << "0° 0' 0\" N"
                                  << "0° 0' 0\" E";
    QTest::newRow("upper case is another text") << 8.5 << "D" << 0 << "8° 30' 0\" "
                                                << "8° 30' 0\" N"
                                                << "8° 30' 0\" E";
    QTest::newRow("no guard against the marker") << 720.0 << "d" << 0 << "720° "
                                                 << "720° N"
                                                 << "720° E";
}

void tst_LvGeoArc::humanReadable()
{
    QFETCH(double, degrees);
    QFETCH(QString, format);
    QFETCH(int, precision);
    QTEST(LvGeoArc(degrees).humanReadable(format, precision), "arcText");
    QTEST(LvLatitude(degrees).humanReadable(format, precision), "latitudeText");
    QTEST(LvLongitude(degrees).humanReadable(format, precision), "longitudeText");
}

void tst_LvGeoArc::humanReadableNeverSubstitutesTwice()
{
    const PlaceholderArc arc(53.14);
    QCOMPARE(arc.humanReadable(QStringLiteral("d"), 2), QStringLiteral("53.14° %1%2%3%4"));
    QCOMPARE(arc.humanReadable(QStringLiteral("dm"), 1), QStringLiteral("53° 8.4' %1%2%3%4"));
    QCOMPARE(arc.humanReadable(QStringLiteral("dms"), 0), QStringLiteral("53° 8' 24\" %1%2%3%4"));
}

void tst_LvGeoArc::fromString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("degrees");
    QTest::newRow("north") << "53,8,24 N" << 53.14;
    QTest::newRow("south") << "53,8,24 S" << -53.14;
    QTest::newRow("west") << "53,8,24W" << -53.14;
    QTest::newRow("east") << "E 53,8,24" << 53.14;
    QTest::newRow("lower case") << "53,8,24 s" << -53.14;
    QTest::newRow("no letter") << "53,8,24" << 53.14;
    QTest::newRow("signs without letter") << "-53,-8,-24" << -53.14;
    QTest::newRow("mixed signs without letter") << "-53,30,0" << -52.5;
    QTest::newRow("north removes signs") << "-53,-8,-24 N" << 53.14;
    QTest::newRow("south makes all negative") << "-53,8,24 S" << -53.14;
    QTest::newRow("marks are skipped") << "53°, 8', 24\" N" << 53.14;
    QTest::newRow("no commas") << "53° 8' 24\"" << 720.0;
    QTest::newRow("two parts") << "53,8 N" << 720.0;
    QTest::newRow("empty parts do not count") << "53,,8 N" << 720.0;
    QTest::newRow("empty") << "" << 720.0;
    QTest::newRow("further parts are ignored") << "53,8,24,99 N" << 53.14;
    QTest::newRow("fraction of a second") << "0,0,1.8" << 0.0005;
    QTest::newRow("fractional degree is no integer") << "53.5,30,0" << 0.5;
    QTest::newRow("too large for 32 bits") << "3000000000,30,0" << 0.5;
    QTest::newRow("unreadable minute") << "53,x,36" << 53.01;
    QTest::newRow("unreadable second") << "53,30,x" << 53.5;
    // Every letter counts, so words decide by their letters; "ü", "d", "O", "t" stay in the third part.
    QTest::newRow("word with s") << "53,30,Süd" << -53.5;
    QTest::newRow("word with s and t") << "8,30,Ost" << -8.5;
    QTest::newRow("word with w, e and s") << "8,30,West" << 8.5;
    QTest::newRow("south and north") << "8,30,0 SN" << 8.5;
    QTest::newRow("smallest int") << "-2147483648,0,0 S" << -2147483648.0;
}

void tst_LvGeoArc::fromString()
{
    QFETCH(QString, text);
    QFETCH(double, degrees);
    QVERIFY(isNear(LvGeoArc::fromString(text).decimalDegrees(), degrees, 1e-12));
    const LvLatitude latitude = LvLatitude::fromString(text);
    const LvLongitude longitude = LvLongitude::fromString(text);
    QVERIFY(isNear(latitude.decimalDegrees(), degrees, 1e-12));
    QVERIFY(isNear(longitude.decimalDegrees(), degrees, 1e-12));
}

void tst_LvGeoArc::absDistance()
{
    QVERIFY(LvGeoArc(-10.0).absDistance(LvGeoArc(20.0)).decimalDegrees() == 30.0);
    QVERIFY(LvGeoArc(20.0).absDistance(-10.0).decimalDegrees() == 30.0);
    QVERIFY(LvLongitude(172.5).absDistance(LvLongitude(-172.5)).decimalDegrees() == 345.0);
}

void tst_LvGeoArc::comparison_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<bool>("equal");
    QTest::addColumn<bool>("less");
    QTest::addColumn<bool>("greater");
    QTest::newRow("same") << 53.0 << 53.0 << true << false << false;
    QTest::newRow("within the tolerance, smaller") << 53.0 << 53.0000005 << true << true << false;
    QTest::newRow("within the tolerance, greater") << 53.0000005 << 53.0 << true << false << true;
    QTest::newRow("just inside") << 0.0 << 0.99999e-6 << true << true << false;
    QTest::newRow("on the tolerance") << 0.0 << 1e-6 << false << true << false;
    QTest::newRow("smaller") << -1.0 << 1.0 << false << true << false;
    QTest::newRow("greater") << 1.0 << -1.0 << false << false << true;
}

void tst_LvGeoArc::comparison()
{
    QFETCH(double, left);
    QFETCH(double, right);
    QFETCH(bool, equal);
    QFETCH(bool, less);
    QFETCH(bool, greater);
    const auto check = [&](const auto& a, const auto& b) {
        QCOMPARE(a == b, equal);
        QCOMPARE(a != b, !equal);
        QCOMPARE(a < b, less);
        QCOMPARE(a > b, greater);
        QCOMPARE(a <= b, less || equal);
        QCOMPARE(a >= b, greater || equal);
    };
    check(LvGeoArc(left), LvGeoArc(right));
    check(LvLatitude(left), LvLatitude(right));
    check(LvLongitude(left), LvLongitude(right));
    check(LvLatitude(left), LvGeoArc(right));
    check(LvLongitude(left), right);
    check(left, LvGeoArc(right));
}

void tst_LvGeoArc::arithmetic()
{
    LvGeoArc arc = LvGeoArc(350.0) + LvGeoArc(20.0);
    QVERIFY(arc.decimalDegrees() == 370.0); // not wrapped
    arc += LvGeoArc(5.0);
    QVERIFY(arc.decimalDegrees() == 375.0);
    QVERIFY((LvGeoArc(5.0) - LvGeoArc(20.0)).decimalDegrees() == -15.0);
    QVERIFY((LvGeoArc(10.0) * 2.5).decimalDegrees() == 25.0);
    QVERIFY((LvGeoArc(10.0) / 4.0).decimalDegrees() == 2.5);
    static_assert(std::is_same_v<decltype(arc + arc), LvGeoArc>);
    static_assert(std::is_same_v<decltype(arc / 2.0), LvGeoArc>);
}

void tst_LvGeoArc::divisionByZero()
{
    QVERIFY((LvGeoArc(10) / 0.0).decimalDegrees() == 720.0);
    QVERIFY((LvGeoArc(10) / -0.0).decimalDegrees() == 720.0);
    QVERIFY((LvGeoArc(0.0) / 0.0).decimalDegrees() == 720.0);
    QVERIFY((LvLatitude(10) / 0.0).decimalDegrees() == 720.0);
    QVERIFY((LvLongitude(10) / 0.0).decimalDegrees() == 720.0);
    QVERIFY((LvGeoArc(10) * 0.0).isNull());
}

void tst_LvGeoArc::debugText()
{
    QString text;
    QDebug(&text).noquote().nospace() << LvGeoArc(53.14);
    QCOMPARE(text, QStringLiteral("53.1400000000000006"));
}

LV_TEST_MAIN(tst_LvGeoArc)

#include "tst_LvGeoArc.moc"
