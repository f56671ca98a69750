#include "LvLongitude.h"
#include "LvTest.h"

#include <QTranslator>

#include <limits>
#include <type_traits>

namespace
{

/// Answers each text with all that it is looked up by.
class Brackets : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int count) const override
    {
        return count == -1 ? QStringLiteral("[%1|%2|%3]")
                                 .arg(QString::fromUtf8(source), QString::fromUtf8(context),
                                      QString::fromUtf8(disambiguation))
                           : QString();
    }
};

} // namespace

class tst_LvLongitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNoAngle();
    void eastAndWest_data();
    void eastAndWest();
    void hemisphere_data();
    void hemisphere();
    void isInValidRange_data();
    void isInValidRange();
    void bounded_data();
    void bounded();
    void normalized_data();
    void normalized();
    void machineText_data();
    void machineText();
    void humanText_data();
    void humanText();
    void translation();
    void parse_data();
    void parse();
    void arithmetic();
    void debugText();
};

void tst_LvLongitude::defaultIsNoAngle()
{
    QVERIFY(LvLongitude().decimalDegrees() == 720.0);
    QVERIFY(!LvLongitude().isValid());
}

void tst_LvLongitude::eastAndWest_data()
{
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("other");
    QTest::addColumn<bool>("east");
    QTest::addColumn<bool>("west");
    QTest::newRow("east") << 20.0 << 10.0 << true << false;
    QTest::newRow("west") << 10.0 << 20.0 << false << true;
    QTest::newRow("across the date line, eastern one") << 170.0 << -170.0 << false << true;
    QTest::newRow("across the date line, western one") << -170.0 << 170.0 << true << false;
    QTest::newRow("equal") << 10.0 << 10.0 << false << false;
    QTest::newRow("opposite") << 90.0 << -90.0 << false << false;
    QTest::newRow("opposite, other way") << -90.0 << 90.0 << false << false;
    QTest::newRow("just less than half a turn") << 89.9 << -90.0 << true << false;
    QTest::newRow("just more than half a turn") << 90.1 << -90.0 << false << true;
    QTest::newRow("180 and -180 are a full turn apart") << 180.0 << -180.0 << false << false;
    QTest::newRow("closer than the tolerance") << 10.0000001 << 10.0 << true << false;
}

void tst_LvLongitude::eastAndWest()
{
    QFETCH(double, longitude);
    QFETCH(double, other);
    QTEST(LvLongitude(longitude).isEastOf(LvLongitude(other)), "east");
    QTEST(LvLongitude(longitude).isWestOf(LvLongitude(other)), "west");
}

void tst_LvLongitude::hemisphere_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("western");
    QTest::newRow("east") << 8.8 << false;
    QTest::newRow("west") << -74.0 << true;
    QTest::newRow("zero") << 0.0 << false;
    QTest::newRow("180") << 180.0 << false;
    QTest::newRow("-180") << -180.0 << false;
    QTest::newRow("just west of zero") << -1e-9 << true;
    QTest::newRow("just east of -180") << -179.999999 << true;
    QTest::newRow("beyond 180") << 190.0 << true;
}

void tst_LvLongitude::hemisphere()
{
    QFETCH(double, degrees);
    QFETCH(bool, western);
    const LvLongitude longitude(degrees);
    QCOMPARE(longitude.isInWesternHemisphere(), western);
    QCOMPARE(longitude.isInEasternHemisphere(), !western);
    QCOMPARE(longitude.directionIndicator(), western ? QStringLiteral("W") : QStringLiteral("E"));
    const LvGeoArc& base = longitude;
    QCOMPARE(base.directionIndicator(), longitude.directionIndicator());
}

void tst_LvLongitude::isInValidRange_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("inRange");
    QTest::newRow("eastern end") << 180.0 << true;
    QTest::newRow("western end") << -180.0 << true;
    QTest::newRow("beyond, within the tolerance") << 180.0000005 << true;
    QTest::newRow("below, within the tolerance") << -180.0000005 << true;
    QTest::newRow("beyond the tolerance") << 180.000002 << false;
    QTest::newRow("below the tolerance") << -180.000002 << false;
    QTest::newRow("marker") << 720.0 << false;
}

void tst_LvLongitude::isInValidRange()
{
    QFETCH(double, degrees);
    QTEST(LvLongitude(degrees).isInValidRange(), "inRange");
}

void tst_LvLongitude::bounded_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("result");
    QTest::newRow("inside") << -74.0 << -74.0;
    QTest::newRow("just beyond, no tolerance") << 180.0000005 << 180.0;
    QTest::newRow("just below, no tolerance") << -180.0000005 << -180.0;
    QTest::newRow("far beyond") << 720.0 << 180.0;
    QTest::newRow("far below") << -190.0 << -180.0;
}

void tst_LvLongitude::bounded()
{
    QFETCH(double, degrees);
    QFETCH(double, result);
    QVERIFY(LvLongitude(degrees).bounded().decimalDegrees() == result);
}

void tst_LvLongitude::normalized_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("result");
    QTest::newRow("inside") << 8.8 << 8.8;
    QTest::newRow("180 stays") << 180.0 << 180.0;
    QTest::newRow("-180 stays") << -180.0 << -180.0;
    QTest::newRow("one turn and a half") << 540.0 << 180.0;
    QTest::newRow("two turns and a half") << 900.0 << 180.0;
    QTest::newRow("minus one turn and a half") << -540.0 << -180.0;
    QTest::newRow("minus two turns and a half") << -900.0 << -180.0;
    QTest::newRow("just west of -180") << -181.0 << 179.0;
    QTest::newRow("just east of 180") << 181.0 << -179.0;
    QTest::newRow("marker") << 720.0 << 0.0;
    QTest::newRow("minus one turn") << -360.0 << 0.0;
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity()
                              << -std::numeric_limits<double>::infinity();
}

void tst_LvLongitude::normalized()
{
    QFETCH(double, degrees);
    QFETCH(double, result);
    const double actual = LvLongitude(degrees).normalized().decimalDegrees();
    QVERIFY(actual == result);
    QCOMPARE(std::signbit(actual), std::signbit(result));
    QVERIFY(LvLongitude::safeLongitude(degrees).decimalDegrees() == result);

    // Turn by turn, as the rule is worded, it must be the same to the bit.
    for (int i = 0; i < 1000 && std::isfinite(degrees); ++i) {
        const double start = degrees + i * 1.2345678901;
        double stepped = start;
        while (stepped > 180.0)
            stepped -= 360.0;
        while (stepped < -180.0)
            stepped += 360.0;
        QVERIFY(LvLongitude(start).normalized().decimalDegrees() == stepped);
        QVERIFY(LvLongitude::safeLongitude(start).decimalDegrees() == stepped);
    }
    QVERIFY(std::abs(LvLongitude::safeLongitude(-1e300).decimalDegrees()) <= 180.0);
}

void tst_LvLongitude::machineText_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("east") << 8.8 << "E8.80000000";
    QTest::newRow("west") << -74.006 << "W74.00600000";
    QTest::newRow("zero") << 0.0 << "E0.00000000";
    QTest::newRow("180") << 180.0 << "E180.00000000";
    QTest::newRow("-180 is eastern") << -180.0 << "E180.00000000";
    QTest::newRow("marker") << 720.0 << QString();
}

void tst_LvLongitude::machineText()
{
    QFETCH(double, degrees);
    QTEST(LvLongitude(degrees).toString(false), "text");
    QCOMPARE(LvLongitude(degrees).toString(false).isNull(), !LvLongitude(degrees).isValid());
}

void tst_LvLongitude::humanText_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("east") << 8.5 << "8° 30′ 0″ Ost";
    QTest::newRow("west") << -73.25 << "73° 15′ 0″ West";
    QTest::newRow("floating-point residue is shown") << 8.8 << "8° 48′ 3.63798e-12″ Ost";
    QTest::newRow("-180 is eastern") << -180.0 << "180° 0′ 0″ Ost";
    QTest::newRow("marker") << 720.0 << QString();
}

void tst_LvLongitude::humanText()
{
    QFETCH(double, degrees);
    QTEST(LvLongitude(degrees).toString(true), "text");
}

void tst_LvLongitude::translation()
{
    // Context and disambiguation are the keys of existing translations.
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(LvLongitude(-73.25).directionIndicator(), QStringLiteral("[W|LvLongitude|short for 'west']"));
    QCOMPARE(LvLongitude(8.5).directionIndicator(), QStringLiteral("[E|LvLongitude|short for 'east']"));
    const QString key = QStringLiteral("|QObject|Coordinate / Nautilal Bearing   Longitude/Länge]");
    QCOMPARE(LvLongitude(-73.25).toString(true), QStringLiteral("[73° 15′ 0″ West") + key);
    QCOMPARE(LvLongitude(8.5).toString(true), QStringLiteral("[8° 30′ 0″ Ost") + key);
    QCoreApplication::removeTranslator(&translator);
}

void tst_LvLongitude::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("degrees");
    QTest::newRow("east") << "E8.8" << 8.8;
    QTest::newRow("west") << "W74.006" << -74.006;
    QTest::newRow("signed") << "-12.5" << -12.5;
    QTest::newRow("no range check") << "E999" << 999.0;
    QTest::newRow("lower case") << "w8" << 720.0;
    QTest::newRow("letter of the other axis") << "N8" << 720.0;
    QTest::newRow("empty") << "" << 720.0;
    QTest::newRow("exponent") << "E1e2" << 100.0;
}

void tst_LvLongitude::parse()
{
    QFETCH(QString, text);
    QFETCH(double, degrees);
    QVERIFY(LvLongitude::parse(text).decimalDegrees() == degrees);
}

void tst_LvLongitude::arithmetic()
{
    LvLongitude longitude = LvLongitude(170.0) + LvLongitude(20.0);
    QVERIFY(longitude.decimalDegrees() == 190.0); // not wrapped
    longitude += LvLongitude(1.0);
    QVERIFY(longitude.decimalDegrees() == 191.0);
    QVERIFY((LvLongitude(-170.0) - LvLongitude(20.0)).decimalDegrees() == -190.0);
    static_assert(std::is_same_v<decltype(longitude + longitude), LvLongitude>);
    static_assert(std::is_same_v<decltype(longitude - longitude), LvLongitude>);
    static_assert(std::is_same_v<decltype(longitude += longitude), LvLongitude&>);
    static_assert(std::is_same_v<decltype(longitude * 2.0), LvLongitude>);
    static_assert(std::is_same_v<decltype(longitude / 2.0), LvLongitude>);
    static_assert(std::is_same_v<decltype(LvLongitude::fromRadians(1.0)), LvLongitude>);
    QVERIFY(LvLongitude::fromRadians(1.0).decimalDegrees() == 57.29577951308232);
}

void tst_LvLongitude::debugText()
{
    QString text;
    QDebug(&text).noquote() << LvLongitude(8.8);
    QCOMPARE(text.trimmed(), QStringLiteral("E8.80000000")); // no degree sign, unlike the latitude
}

LV_TEST_MAIN(tst_LvLongitude)

#include "tst_LvLongitude.moc"
