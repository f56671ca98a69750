#include "LvLatitude.h"
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

class tst_LvLatitude : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaultIsNoAngle();
    void northAndSouth();
    void hemisphere_data();
    void hemisphere();
    void isInValidRange_data();
    void isInValidRange();
    void bounded_data();
    void bounded();
    void catchOutOfBound_data();
    void catchOutOfBound();
    void safeLatitude_data();
    void safeLatitude();
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

void tst_LvLatitude::defaultIsNoAngle()
{
    QVERIFY(LvLatitude().decimalDegrees() == 720.0);
    QVERIFY(!LvLatitude().isValid());
}

void tst_LvLatitude::northAndSouth()
{
    QVERIFY(LvLatitude(53.0).isNorthOf(52.0));
    QVERIFY(!LvLatitude(52.0).isNorthOf(53.0));
    QVERIFY(LvLatitude(52.0).isSouthOf(53.0));
    QVERIFY(!LvLatitude(53.0).isSouthOf(53.0));
    QVERIFY(!LvLatitude(53.0).isNorthOf(53.0));
    // Equal within the tolerance, yet strictly ordered.
    QVERIFY(LvLatitude(53.0) == LvLatitude(53.0000005));
    QVERIFY(LvLatitude(53.0000005).isNorthOf(53.0));
    QVERIFY(LvLatitude(53.0).isSouthOf(53.0000005));
}

void tst_LvLatitude::hemisphere_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("northern");
    QTest::newRow("north") << 53.14 << true;
    QTest::newRow("south") << -33.8 << false;
    QTest::newRow("equator") << 0.0 << true;
    QTest::newRow("just south of the equator") << -1e-9 << false;
}

void tst_LvLatitude::hemisphere()
{
    QFETCH(double, degrees);
    QFETCH(bool, northern);
    QCOMPARE(LvLatitude(degrees).isInNorthernHemisphere(), northern);
    QCOMPARE(LvLatitude(degrees).isInSouthernHemisphere(), !northern);
    QCOMPARE(LvLatitude(degrees).directionIndicator(), northern ? QStringLiteral("N") : QStringLiteral("S"));
    const LvLatitude latitude(degrees);
    const LvGeoArc& base = latitude;
    QCOMPARE(base.directionIndicator(), latitude.directionIndicator());
}

void tst_LvLatitude::isInValidRange_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("inRange");
    QTest::newRow("north pole") << 90.0 << true;
    QTest::newRow("south pole") << -90.0 << true;
    QTest::newRow("beyond, within the tolerance") << 90.0000005 << true;
    QTest::newRow("below, within the tolerance") << -90.0000005 << true;
    QTest::newRow("beyond the tolerance") << 90.000002 << false;
    QTest::newRow("below the tolerance") << -90.000002 << false;
    QTest::newRow("marker") << 720.0 << false;
}

void tst_LvLatitude::isInValidRange()
{
    QFETCH(double, degrees);
    QTEST(LvLatitude(degrees).isInValidRange(), "inRange");
}

void tst_LvLatitude::bounded_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("result");
    QTest::newRow("inside") << 53.14 << 53.14;
    QTest::newRow("north pole") << 90.0 << 90.0;
    QTest::newRow("just beyond, no tolerance") << 90.0000005 << 90.0;
    QTest::newRow("just below, no tolerance") << -90.0000005 << -90.0;
    QTest::newRow("far beyond") << 720.0 << 90.0;
    QTest::newRow("far below") << -100.0 << -90.0;
}

void tst_LvLatitude::bounded()
{
    QFETCH(double, degrees);
    QFETCH(double, result);
    QVERIFY(LvLatitude(degrees).bounded().decimalDegrees() == result);
}

void tst_LvLatitude::catchOutOfBound_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("result");
    QTest::newRow("north pole") << 90.0 << 89.99;
    QTest::newRow("before the pole, within the tolerance") << 89.9999995 << 89.99;
    QTest::newRow("nearer than the guard, but no pole") << 89.995 << 89.995;
    QTest::newRow("before the guard") << 89.98 << 89.98;
    QTest::newRow("beyond the pole") << 100.0 << 89.99;
    QTest::newRow("south pole") << -90.0 << -89.99;
    QTest::newRow("before the south pole, within the tolerance") << -89.9999995 << -89.99;
    QTest::newRow("beyond the south pole") << -720.0 << -89.99;
    QTest::newRow("equator") << 0.0 << 0.0;
}

void tst_LvLatitude::catchOutOfBound()
{
    QFETCH(double, degrees);
    QFETCH(double, result);
    QVERIFY(LvLatitude(degrees).catchOutOfBound().decimalDegrees() == result);
}

void tst_LvLatitude::safeLatitude_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("result");
    QTest::newRow("inside") << 53.14 << 53.14;
    QTest::newRow("north pole") << 90.0 << 90.0;
    QTest::newRow("south pole") << -90.0 << -90.0;
    QTest::newRow("a shift, no reflection") << 100.0 << -80.0;
    QTest::newRow("below") << -100.0 << 80.0;
    QTest::newRow("from above to the pole") << 270.0 << 90.0;
    QTest::newRow("from below to the pole") << -270.0 << -90.0;
    QTest::newRow("several times") << 720.0 << 0.0;
    QTest::newRow("from below to the equator") << -180.0 << 0.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity()
                              << std::numeric_limits<double>::infinity();
}

void tst_LvLatitude::safeLatitude()
{
    QFETCH(double, degrees);
    QFETCH(double, result);
    const double actual = LvLatitude::safeLatitude(degrees).decimalDegrees();
    QVERIFY(actual == result);
    QCOMPARE(std::signbit(actual), std::signbit(result));

    // Step by step, as the rule is worded, it must be the same to the bit.
    for (int i = 0; i < 1000 && std::isfinite(degrees); ++i) {
        const double start = degrees + i * 1.2345678901;
        double stepped = start;
        while (stepped > 90.0)
            stepped -= 180.0;
        while (stepped < -90.0)
            stepped += 180.0;
        QVERIFY(LvLatitude::safeLatitude(start).decimalDegrees() == stepped);
    }
    QVERIFY(std::abs(LvLatitude::safeLatitude(1e300).decimalDegrees()) <= 90.0);
}

void tst_LvLatitude::machineText_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("north") << 53.14 << "N53.14000000";
    QTest::newRow("south") << -33.8688 << "S33.86880000";
    QTest::newRow("equator") << 0.0 << "N0.00000000";
    QTest::newRow("valid, though no latitude") << 360.0 << "N360.00000000";
    QTest::newRow("marker") << 720.0 << QString();
    QTest::newRow("below the valid range") << -361.0 << QString();
}

void tst_LvLatitude::machineText()
{
    QFETCH(double, degrees);
    QTEST(LvLatitude(degrees).toString(false), "text");
    QCOMPARE(LvLatitude(degrees).toString(false).isNull(), !LvLatitude(degrees).isValid());
}

void tst_LvLatitude::humanText_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("south") << -33.5 << "33° 30′ 0″ Süd";
    QTest::newRow("north") << 53.25 << "53° 15′ 0″ Nord";
    QTest::newRow("fraction of a second") << 0.5 + 1.5 / 4096.0 << "0° 30′ 1.31836″ Nord";
    QTest::newRow("equator") << 0.0 << "0° 0′ 0″ Nord";
    QTest::newRow("marker") << 720.0 << QString();
}

void tst_LvLatitude::humanText()
{
    QFETCH(double, degrees);
    QTEST(LvLatitude(degrees).toString(true), "text");
}

void tst_LvLatitude::translation()
{
    // Context and disambiguation are the keys of existing translations.
    Brackets translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(LvLatitude(-33.5).directionIndicator(), QStringLiteral("[S|LvLatitude|short for 'south']"));
    QCOMPARE(LvLatitude(53.25).directionIndicator(), QStringLiteral("[N|LvLatitude|short for 'north']"));
    const QString key = QStringLiteral("|QObject|Coordinate / Nautical Bearing  Latitude  Breite]");
    QCOMPARE(LvLatitude(-33.5).toString(true), QStringLiteral("[33° 30′ 0″ Süd") + key);
    QCOMPARE(LvLatitude(53.25).toString(true), QStringLiteral("[53° 15′ 0″ Nord") + key);
    QCoreApplication::removeTranslator(&translator);
}

void tst_LvLatitude::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("degrees");
    QTest::newRow("north") << "N53.14" << 53.14;
    QTest::newRow("south") << "S33.8688" << -33.8688;
    QTest::newRow("plain") << "53.14" << 53.14;
    QTest::newRow("signed") << "-12.5" << -12.5;
    QTest::newRow("letter and sign") << "S-12.5" << 12.5;
    QTest::newRow("no range check") << "N123" << 123.0;
    QTest::newRow("lower case") << "s33.8688" << 720.0;
    QTest::newRow("letter of the other axis") << "E33.8688" << 720.0;
    QTest::newRow("letter only") << "N" << 720.0;
    QTest::newRow("two letters") << "NS5" << 720.0;
    QTest::newRow("empty") << "" << 720.0;
    QTest::newRow("trailing letter") << "53.14N" << 720.0;
    QTest::newRow("decimal comma") << "N53,14" << 720.0;
    QTest::newRow("machine text") << "S33.86880000" << -33.8688;
}

void tst_LvLatitude::parse()
{
    QFETCH(QString, text);
    QFETCH(double, degrees);
    QVERIFY(LvLatitude::parse(text).decimalDegrees() == degrees);
}

void tst_LvLatitude::arithmetic()
{
    LvLatitude latitude = LvLatitude(80.0) + LvLatitude(20.0);
    QVERIFY(latitude.decimalDegrees() == 100.0); // neither wrapped nor clamped
    latitude += LvLatitude(1.0);
    QVERIFY(latitude.decimalDegrees() == 101.0);
    QVERIFY((LvLatitude(-80.0) - LvLatitude(20.0)).decimalDegrees() == -100.0);
    QVERIFY((LvLatitude(10.0) * 3.0).decimalDegrees() == 30.0);
    QVERIFY((LvLatitude(10.0) / 4.0).decimalDegrees() == 2.5);
    static_assert(std::is_same_v<decltype(latitude + latitude), LvLatitude>);
    static_assert(std::is_same_v<decltype(latitude - latitude), LvLatitude>);
    static_assert(std::is_same_v<decltype(latitude += latitude), LvLatitude&>);
    static_assert(std::is_same_v<decltype(latitude * 2.0), LvLatitude>);
    static_assert(std::is_same_v<decltype(latitude / 2.0), LvLatitude>);
    static_assert(std::is_same_v<decltype(LvLatitude::fromRadians(1.0)), LvLatitude>);
    QVERIFY(LvLatitude::fromRadians(1.0).decimalDegrees() == 57.29577951308232);
}

void tst_LvLatitude::debugText()
{
    QString text;
    QDebug(&text).noquote() << LvLatitude(53.14);
    QCOMPARE(text.trimmed(), QStringLiteral("N53.14000000 °"));
}

LV_TEST_MAIN(tst_LvLatitude)

#include "tst_LvLatitude.moc"
