#include "LvLongitudeRange.h"
#include "LvTest.h"

#include <QProcess>
#include <QUrl>
#include <QUrlQuery>

#include <cstdio>

namespace
{

/// Argument that turns this program into the victim of the fatal message.
constexpr auto victimArgument = "--call-intersects";

bool holds(const LvRange<LvLongitude>& range, double west, double east)
{
    return range.min().decimalDegrees() == west && range.max().decimalDegrees() == east;
}

void printMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::printf("%d\n%s\n%d\n%s\n%s\n%s\n", static_cast<int>(type), context.file, context.line,
                context.function, context.category, message.toUtf8().constData());
    std::fflush(stdout);
}

int callIntersects()
{
    qInstallMessageHandler(printMessage);
    const LvLongitudeRange range(10, 20);
    const LvRange<LvLongitude>& base = range;
    return base.intersects(LvLongitudeRange(15, 25)) ? 0 : 1;
}

} // namespace

class tst_LvLongitudeRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bounds();
    void spawn_data();
    void spawn();
    void isValid_data();
    void isValid();
    void contains_data();
    void contains();
    void containsRange();
    void center_data();
    void center();
    void width();
    void halfOfTheEarth_data();
    void halfOfTheEarth();
    void expandTo_data();
    void expandTo();
    void blowUp();
    void equality();
    void intersectsEndsTheProcess();
    void text();
    void urlQuery();
    void parse();
    void debugText();
};

void tst_LvLongitudeRange::bounds()
{
    QVERIFY(holds(LvLongitudeRange(), 720.0, 720.0));
    const LvLongitudeRange range(170, -170);
    QVERIFY(range.west().decimalDegrees() == 170.0);
    QVERIFY(range.east().decimalDegrees() == -170.0);
    QVERIFY(range.crossesDateLine());
    QVERIFY(!LvLongitudeRange(-10, 30).crossesDateLine());
    QVERIFY(!LvLongitudeRange(10, 10).crossesDateLine());
    QVERIFY(LvLongitudeRange(10.0000005, 10).crossesDateLine()); // exact
    const LvRange<LvLongitude> plain(170.0, -170.0);
    QVERIFY(LvLongitudeRange(plain).crossesDateLine());
}

void tst_LvLongitudeRange::spawn_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::newRow("in order") << -10.0 << 30.0 << -10.0 << 30.0;
    QTest::newRow("reversed") << 30.0 << -10.0 << -10.0 << 30.0;
    QTest::newRow("across the date line") << 170.0 << -170.0 << 170.0 << -170.0;
    QTest::newRow("across the date line, reversed") << -170.0 << 170.0 << 170.0 << -170.0;
    QTest::newRow("opposite: the second becomes west") << -90.0 << 90.0 << 90.0 << -90.0;
    QTest::newRow("equal") << 8.0 << 8.0 << 8.0 << 8.0;
}

void tst_LvLongitudeRange::spawn()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, west);
    QFETCH(double, east);
    QVERIFY(holds(LvLongitudeRange::spawn(a, b), west, east));
}

void tst_LvLongitudeRange::isValid_data()
{
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::addColumn<bool>("valid");
    QTest::newRow("whole") << -180.0 << 180.0 << true;
    QTest::newRow("crossing") << 50.0 << 40.0 << true;
    QTest::newRow("beyond within the tolerance") << -180.0000005 << 180.0000005 << true;
    QTest::newRow("west beyond") << -181.0 << 10.0 << false;
    QTest::newRow("east beyond") << 10.0 << 181.0 << false;
    QTest::newRow("empty") << 720.0 << 720.0 << false;
}

void tst_LvLongitudeRange::isValid()
{
    QFETCH(double, west);
    QFETCH(double, east);
    QTEST(LvLongitudeRange(west, east).isValid(), "valid");
}

void tst_LvLongitudeRange::contains_data()
{
    QTest::addColumn<LvLongitudeRange>("range");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<bool>("contained");
    const LvLongitudeRange plain(-10, 30);
    QTest::newRow("inside") << plain << 0.0 << true;
    QTest::newRow("west") << plain << -10.0 << true;
    QTest::newRow("east") << plain << 30.0 << true;
    QTest::newRow("west within the tolerance") << plain << -10.0000005 << true;
    QTest::newRow("east within the tolerance") << plain << 30.0000005 << true;
    QTest::newRow("too far west") << plain << -10.000002 << false;
    QTest::newRow("too far east") << plain << 30.000002 << false;
    const LvLongitudeRange crossing(170, -170);
    QTest::newRow("crossing, eastern part") << crossing << 179.0 << true;
    QTest::newRow("crossing, western part") << crossing << -179.0 << true;
    QTest::newRow("crossing, 180") << crossing << 180.0 << true;
    QTest::newRow("crossing, -180") << crossing << -180.0 << true;
    QTest::newRow("crossing, west") << crossing << 170.0 << true;
    QTest::newRow("crossing, east") << crossing << -170.0 << true;
    QTest::newRow("crossing, west within the tolerance") << crossing << 169.9999995 << true;
    QTest::newRow("crossing, east within the tolerance") << crossing << -169.9999995 << true;
    QTest::newRow("crossing, before west") << crossing << 169.999998 << false;
    QTest::newRow("crossing, behind east") << crossing << -169.999998 << false;
    QTest::newRow("crossing, opposite") << crossing << 0.0 << false;
}

void tst_LvLongitudeRange::contains()
{
    QFETCH(LvLongitudeRange, range);
    QFETCH(double, longitude);
    QTEST(range.contains(longitude), "contained");
    const LvRange<LvLongitude>& base = range;
    QTEST(base.contains(longitude), "contained");
}

void tst_LvLongitudeRange::containsRange()
{
    const LvLongitudeRange crossing(170, -170);
    QVERIFY(crossing.contains(179));
    QVERIFY(!crossing.contains(0));
    QVERIFY(crossing.contains(LvLongitudeRange(175, -175)));
    QVERIFY(crossing.contains(LvLongitudeRange(171, 172)));
    QVERIFY(!crossing.contains(LvLongitudeRange(175, -160)));
    QVERIFY(!crossing.contains(LvLongitudeRange(160, 175)));
    QVERIFY(LvLongitudeRange(-10, 30).contains(LvLongitudeRange(-10, 30)));
    QVERIFY(!LvLongitudeRange(-10, 30).contains(LvLongitudeRange(0, 31)));
    const LvRange<LvLongitude>& base = crossing;
    QVERIFY(base.contains(LvRange<LvLongitude>(175.0, -175.0)));
}

void tst_LvLongitudeRange::center_data()
{
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::addColumn<double>("center");
    QTest::newRow("plain") << -10.0 << 30.0 << 10.0;
    QTest::newRow("one longitude") << 8.0 << 8.0 << 8.0;
    QTest::newRow("crossing, exactly on the date line") << 170.0 << -170.0 << 180.0;
    QTest::newRow("crossing, west of it") << 150.0 << -160.0 << 175.0;
    QTest::newRow("crossing, east of it") << 160.0 << -150.0 << -175.0;
    QTest::newRow("crossing, nearly whole") << 10.0 << 0.0 << -175.0;
}

void tst_LvLongitudeRange::center()
{
    QFETCH(double, west);
    QFETCH(double, east);
    QFETCH(double, center);
    const LvLongitudeRange range(west, east);
    QVERIFY(range.center().decimalDegrees() == center);
    const LvRange<LvLongitude>& base = range;
    QVERIFY(base.center().decimalDegrees() == center);
}

void tst_LvLongitudeRange::width()
{
    QVERIFY(LvLongitudeRange(-10, 30).width().decimalDegrees() == 40.0);
    QVERIFY(LvLongitudeRange(170, -170).width().decimalDegrees() == -340.0);
}

void tst_LvLongitudeRange::halfOfTheEarth_data()
{
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::addColumn<bool>("noMore");
    QTest::newRow("small") << -10.0 << 30.0 << true;
    QTest::newRow("small, crossing") << 170.0 << -170.0 << true;
    QTest::newRow("one longitude") << 8.0 << 8.0 << true;
    QTest::newRow("one longitude within the tolerance") << 8.0000005 << 8.0 << true;
    QTest::newRow("exactly half") << -90.0 << 90.0 << false;
    QTest::newRow("just less") << -90.0 << 89.9 << true;
    QTest::newRow("large") << -100.0 << 100.0 << false;
    QTest::newRow("large, crossing") << 10.0 << -10.0 << false;
}

void tst_LvLongitudeRange::halfOfTheEarth()
{
    QFETCH(double, west);
    QFETCH(double, east);
    QTEST(LvLongitudeRange(west, east).coversNoMoreThanHalfOfTheEarth(), "noMore");
}

void tst_LvLongitudeRange::expandTo_data()
{
    QTest::addColumn<LvLongitudeRange>("range");
    QTest::addColumn<double>("longitude");
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::newRow("empty") << LvLongitudeRange() << 53.0 << 53.0 << 53.0;
    const LvLongitudeRange plain(-10, 30);
    QTest::newRow("east") << plain << 40.0 << -10.0 << 40.0;
    QTest::newRow("west") << plain << -20.0 << -20.0 << 30.0;
    QTest::newRow("inside") << plain << 8.0 << -10.0 << 30.0;
    QTest::newRow("never starts to cross") << LvLongitudeRange(170, 175) << -175.0 << -175.0 << 175.0;
    const LvLongitudeRange crossing(170, -170);
    QTest::newRow("crossing, eastern longitude") << crossing << 160.0 << 160.0 << -170.0;
    QTest::newRow("crossing, western longitude") << crossing << -160.0 << 170.0 << -160.0;
    QTest::newRow("crossing, inside") << crossing << 175.0 << 170.0 << -170.0;
    QTest::newRow("crossing, within the tolerance") << crossing << 169.9999995 << 170.0 << -170.0;
    QTest::newRow("crossing, 0 is eastern") << crossing << 0.0 << 0.0 << -170.0;
}

void tst_LvLongitudeRange::expandTo()
{
    QFETCH(LvLongitudeRange, range);
    QFETCH(double, longitude);
    QFETCH(double, west);
    QFETCH(double, east);
    LvRange<LvLongitude>& base = range;
    base.expandTo(longitude);
    QVERIFY(holds(range, west, east));
}

void tst_LvLongitudeRange::blowUp()
{
    LvLongitudeRange range(-10, 30);
    range.blowUp(1.5);
    QVERIFY(holds(range, -11.5, 31.5));
    range.blowUp(160);
    QVERIFY(holds(range, -171.5, 180.0));
    range.blowUp(160);
    QVERIFY(holds(range, -180.0, 180.0));
    LvLongitudeRange crossing(170, -170);
    crossing.blowUp(5);
    QVERIFY(holds(crossing, 165.0, -165.0));
}

void tst_LvLongitudeRange::equality()
{
    QVERIFY(LvLongitudeRange(170, -170) == LvLongitudeRange(170.0000005, -170));
    QVERIFY(LvLongitudeRange(170, -170) != LvLongitudeRange(-170, 170));
    QVERIFY(LvLongitudeRange(10, 5) < LvLongitudeRange(11, 4)); // both valid, by the western bound
    QVERIFY(LvLongitudeRange(10, 5) < LvLongitudeRange());
}

void tst_LvLongitudeRange::intersectsEndsTheProcess()
{
    QProcess victim;
    victim.start(QCoreApplication::applicationFilePath(), {QLatin1String(victimArgument)});
    QVERIFY(victim.waitForFinished());
    QCOMPARE(victim.exitStatus(), QProcess::CrashExit);
    const QStringList lines = QString::fromUtf8(victim.readAllStandardOutput()).split(QLatin1Char('\n'));
    QVERIFY(lines.size() >= 6);
    QCOMPARE(lines.at(0).toInt(), static_cast<int>(QtFatalMsg));
    QCOMPARE(lines.at(1), QStringLiteral("libs/LvGeoLocation/LvLongitudeRange"));
    QCOMPARE(lines.at(2), QStringLiteral("151"));
    QCOMPARE(lines.at(3),
             QStringLiteral("virtual bool LvLongitudeRange::intersects(const LvRange<LvLongitude> &) const"));
    QCOMPARE(lines.at(4), QStringLiteral("default"));
    QCOMPARE(lines.at(5),
             QStringLiteral(
                 "Diese Funktion muss erst getestet werden, bevor man sie benutzen kann (implmentierung ist "
                 "ungeprüft und wahrscheinlich falsch!"));
}

void tst_LvLongitudeRange::text()
{
    QCOMPARE(LvLongitudeRange(170, -170.5).toString(false), QStringLiteral("E170.00000000 - W170.50000000"));
    QCOMPARE(LvLongitudeRange(170, -170.5).toString(true),
             QStringLiteral("170° 0′ 0″ Ost - 170° 30′ 0″ West"));
}

void tst_LvLongitudeRange::urlQuery()
{
    QCOMPARE(QUERY_ITEM_WEST, QStringLiteral("longitude_min"));
    QCOMPARE(QUERY_ITEM_EAST, QStringLiteral("longitude_max"));
    QUrlQuery query;
    LvLongitudeRange(170, -170.5).writeTo(query);
    QCOMPARE(query.toString(QUrl::FullyEncoded),
             QStringLiteral("longitude_max=-170.5000000000000000&longitude_min=170.0000000000000000"));
    QVERIFY(holds(LvLongitudeRange::parse(query), 170.0, -170.5));
}

void tst_LvLongitudeRange::parse()
{
    QVERIFY(holds(LvLongitudeRange::parse(QUrlQuery(QStringLiteral("longitude_min=E60&longitude_max=W10"))),
                  60.0, -10.0));
    QVERIFY(holds(LvLongitudeRange::parse(QUrlQuery(QStringLiteral("longitude_max=10"))), 720.0, 10.0));
    QVERIFY(holds(LvLongitudeRange::parse(QStringLiteral("W10"), QStringLiteral("E999")), -10.0, 999.0));
    QVERIFY(holds(LvLongitudeRange::parse(QString(), QStringLiteral("N5")), 720.0, 720.0));
}

void tst_LvLongitudeRange::debugText()
{
    QString text;
    QDebug(&text).noquote() << LvLongitudeRange(170, -170);
    QCOMPARE(text.trimmed(), QStringLiteral("E170.00000000 - W170.00000000"));
}

int main(int argc, char* argv[])
{
    if (argc == 2 && qstrcmp(argv[1], victimArgument) == 0)
        return callIntersects();
    return LvTest::run<tst_LvLongitudeRange>(argc, argv);
}

#include "tst_LvLongitudeRange.moc"
