#include "LvMapText.h"
#include "LvTest.h"

#include <QElapsedTimer>

class tst_LvMapText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainAttribution_data();
    void plainAttribution();
    void hostileAttribution_data();
    void hostileAttribution();
};

void tst_LvMapText::plainAttribution_data()
{
    QTest::addColumn<QString>("attribution");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char* name, const QString& attribution, const QString& expected) {
        QTest::newRow(name) << attribution << expected;
    };
    row("empty", {}, {});
    row("plain", QStringLiteral("© Somebody"), QStringLiteral("© Somebody"));
    row("blanks", QStringLiteral(" a\n\t b "), QStringLiteral("a b"));
    row("a comparison is no tag", QStringLiteral("1 < 2 & 3 > 2"), QStringLiteral("1 < 2 & 3 > 2"));
    row("links", QStringLiteral("<a href=\"https://x.y\">One</a>, <b>Two</b>"), QStringLiteral("One, Two"));
    row("entities", QStringLiteral("&copy;&nbsp;A &amp; B &#8212; &lt;C&gt;"),
        QStringLiteral("© A & B — <C>"));
    row("entities are read once", QStringLiteral("<i>&amp;lt;b&amp;gt;</i>"), QStringLiteral("&lt;b&gt;"));
    row("line breaks", QStringLiteral("One<br>Two<br/>Three<p>Four</p>"),
        QStringLiteral("One Two Three Four"));
    row("capitals", QStringLiteral("<A HREF='x'>One</A><BR>Two"), QStringLiteral("One Two"));
    row("styles and scripts",
        QStringLiteral("<style>a { color: red }</style><script>1 < 2</script><!-- x -->One"),
        QStringLiteral("One"));
    row("a tag without an end", QStringLiteral("One<a href=\"x"), QStringLiteral("One"));
    row("a tag inside a tag", QStringLiteral("<<b>table>One</b>"), QStringLiteral("<table>One"));
    row("long", QString(250, u'x'), QString(200, u'x'));
    row("a blank at the end of what is kept", QString(199, u'x') + QStringLiteral(" yy"), QString(199, u'x'));
}

void tst_LvMapText::plainAttribution()
{
    QFETCH(QString, attribution);
    QTEST(LvMapText::plainAttribution(attribution), "expected");
}

void tst_LvMapText::hostileAttribution_data()
{
    QTest::addColumn<QString>("attribution");
    QTest::newRow("very many columns") << "<table><tr><td colspan=999999999>a</td></tr></table>";
    QTest::newRow("very many rows") << "<table><tr><td rowspan=999999999>a</td></tr></table>";
    QTest::newRow("deep lists") << QStringLiteral("<ul>").repeated(400) + QLatin1Char('a');
    QTest::newRow("deep tables") << QStringLiteral("<table><td>").repeated(180) + QLatin1Char('a');
    QTest::newRow("a huge letter") << "<a style='font-size:999999999pt;margin:1e300px'>a</a>";
    QTest::newRow("a huge picture") << "<img src='x' width=999999999 height=999999999>a";
    QTest::newRow("open tags") << QLatin1Char('a') + QStringLiteral("<!").repeated(900);
}

void tst_LvMapText::hostileAttribution()
{
    QFETCH(QString, attribution);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(LvMapText::plainAttribution(attribution), QStringLiteral("a"));
    QVERIFY(timer.elapsed() < 5000);
}

LV_TEST_MAIN(tst_LvMapText)
#include "tst_LvMapText.moc"
