#include "LvTest.h"
#include "LvXMLParser.h"

#include <QDomDocument>
#include <QTimeZone>

#include <cmath>

namespace
{

QDomElement element(const QString& xml)
{
    QDomDocument document;
    return document.setContent(xml) ? document.documentElement() : QDomElement();
}

QDomElement withAttribute(const QString& value)
{
    return element(QStringLiteral("<e a=\"%1\"/>").arg(value));
}

QDomElement withChild(const QString& text)
{
    return element(QStringLiteral("<e><other>5</other><c>%1</c><c>77</c></e>").arg(text));
}

} // namespace

class tst_LvXMLParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void missingGivesDefault_data();
    void missingGivesDefault();
    void doubles_data();
    void doubles();
    void ints_data();
    void ints();
    void bools_data();
    void bools();
    void texts_data();
    void texts();
    void namesAreExact();
    void textAcrossNodes();
    void dateTimes_data();
    void dateTimes();
    void dateTimeIsUtc();
    void colors_data();
    void colors();
    void missingColorIsTransparentBlack();
};

void tst_LvXMLParser::missingGivesDefault_data()
{
    QTest::addColumn<QDomElement>("e");
    QTest::newRow("null element") << QDomElement();
    QTest::newRow("empty element") << element("<e/>");
    QTest::newRow("others only") << element("<e b=\"1\" A=\"2\"><d>3</d><C>4</C></e>");
    QTest::newRow("grandchild only") << element("<e><d a=\"1\"><c>3</c></d></e>");
}

void tst_LvXMLParser::missingGivesDefault()
{
    QFETCH(QDomElement, e);
    QCOMPARE(LvXMLParser::doubleAttribute(e, "a", 1.0), 1.0);
    QCOMPARE(LvXMLParser::intAttribute(e, "a", 255), 255);
    QCOMPARE(LvXMLParser::stringAttribute(e, "a", "none"), QString("none"));
    QCOMPARE(LvXMLParser::boolAttribute(e, "a", true), true);
    QCOMPARE(LvXMLParser::boolAttribute(e, "a", false), false);
    QCOMPARE(LvXMLParser::text(e, "c", "none"), QString("none"));
    QCOMPARE(LvXMLParser::doubleText(e, "c", -3.5), -3.5);
    QCOMPARE(LvXMLParser::intText(e, "c", -3), -3);
    QCOMPARE(LvXMLParser::boolText(e, "c", true), true);
    QCOMPARE(LvXMLParser::boolText(e, "c", false), false);
    const QDateTime start(QDate(2020, 2, 29), QTime(12, 0), Qt::UTC);
    QCOMPARE(LvXMLParser::dateTimeText(e, "c", Qt::ISODate, start), start);
    QVERIFY(!LvXMLParser::dateTimeText(e, "c", Qt::ISODate, QDateTime()).isValid());
}

void tst_LvXMLParser::doubles_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::newRow("decimal") << "53.125" << 53.125;
    QTest::newRow("negative") << "-8.5" << -8.5;
    QTest::newRow("exponent") << "1e-3" << 0.001;
    QTest::newRow("integer") << "12" << 12.0;
    QTest::newRow("outer blanks") << " 1.5 " << 1.5;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("word") << "north" << 0.0;
    QTest::newRow("decimal comma") << "53,1" << 0.0;
    QTest::newRow("unit behind") << "12m" << 0.0;
}

void tst_LvXMLParser::doubles()
{
    QFETCH(QString, text);
    QFETCH(double, number);
    QCOMPARE(LvXMLParser::doubleAttribute(withAttribute(text), "a", 7.0), number);
    QCOMPARE(LvXMLParser::doubleText(withChild(text), "c", 7.0), number);
}

void tst_LvXMLParser::ints_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("attribute");
    QTest::addColumn<int>("childText");
    QTest::newRow("decimal") << "100" << 100 << 100;
    QTest::newRow("negative") << "-1" << -1 << -1;
    QTest::newRow("zero") << "0" << 0 << 0;
    QTest::newRow("largest") << "2147483647" << 2147483647 << 2147483647;
    QTest::newRow("one above the largest") << "2147483648" << 7 << 0;
    QTest::newRow("empty") << "" << 7 << 0;
    QTest::newRow("fraction") << "12.5" << 7 << 0;
    QTest::newRow("word") << "many" << 7 << 0;
    QTest::newRow("hexadecimal") << "0x10" << 7 << 0;
}

void tst_LvXMLParser::ints()
{
    QFETCH(QString, text);
    QFETCH(int, attribute);
    QFETCH(int, childText);
    QCOMPARE(LvXMLParser::intAttribute(withAttribute(text), "a", 7), attribute);
    QCOMPARE(LvXMLParser::intText(withChild(text), "c", 7), childText);
}

void tst_LvXMLParser::bools_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("withDefaultTrue");
    QTest::addColumn<bool>("withDefaultFalse");
    QTest::newRow("true") << "true" << true << true;
    QTest::newRow("false") << "false" << false << false;
    QTest::newRow("1") << "1" << true << true;
    QTest::newRow("0") << "0" << false << false;
    QTest::newRow("capitals") << "TRUE" << true << true;
    QTest::newRow("outer blanks") << " False " << false << false;
    QTest::newRow("empty") << "" << true << false;
    QTest::newRow("other word") << "yes" << true << false;
    QTest::newRow("other number") << "2" << true << false;
}

void tst_LvXMLParser::bools()
{
    QFETCH(QString, text);
    QFETCH(bool, withDefaultTrue);
    QFETCH(bool, withDefaultFalse);
    QCOMPARE(LvXMLParser::boolAttribute(withAttribute(text), "a", true), withDefaultTrue);
    QCOMPARE(LvXMLParser::boolAttribute(withAttribute(text), "a", false), withDefaultFalse);
    QCOMPARE(LvXMLParser::boolText(withChild(text), "c", true), withDefaultTrue);
    QCOMPARE(LvXMLParser::boolText(withChild(text), "c", false), withDefaultFalse);
}

void tst_LvXMLParser::texts_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << "Weser"
                           << "Weser";
    QTest::newRow("umlaut") << "Brücke"
                            << "Brücke";
    QTest::newRow("outer blanks stay") << " a b "
                                       << " a b ";
    QTest::newRow("entities") << "a &lt;&amp;&gt;"
                              << "a <&>";
    QTest::newRow("empty is not missing") << ""
                                          << "";
}

void tst_LvXMLParser::texts()
{
    QFETCH(QString, xml);
    QFETCH(QString, expected);
    QCOMPARE(LvXMLParser::stringAttribute(withAttribute(xml), "a", "none"), expected);
    QCOMPARE(LvXMLParser::text(withChild(xml), "c", "none"), expected);
}

void tst_LvXMLParser::namesAreExact()
{
    const QDomElement e = element("<e old_a=\"3\" a=\"4\"><old_c>5</old_c><c>6</c></e>");
    QCOMPARE(LvXMLParser::intAttribute(e, "old_a", 0), 3);
    QCOMPARE(LvXMLParser::intAttribute(e, "a", 0), 4);
    QCOMPARE(LvXMLParser::intText(e, "old_c", 0), 5);
    QCOMPARE(LvXMLParser::intText(e, "c", 0), 6);
    QCOMPARE(LvXMLParser::intText(element("<e><p:c>1</p:c></e>"), "p:c", 0), 1);
    QCOMPARE(LvXMLParser::intText(element("<e><p:c>1</p:c></e>"), "c", 0), 0);
}

void tst_LvXMLParser::textAcrossNodes()
{
    const QDomElement e = element("<e><c>a<!-- no -->b<![CDATA[<c>]]><i>d</i></c></e>");
    QCOMPARE(LvXMLParser::text(e, "c", QString()), QString("ab<c>d"));
}

void tst_LvXMLParser::dateTimes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDateTime>("expected");
    const QDateTime moment(QDate(2023, 11, 14), QTime(22, 13, 20), Qt::UTC);
    QTest::newRow("UTC") << "2023-11-14T22:13:20Z" << moment;
    QTest::newRow("offset") << "2023-11-15T00:13:20+02:00" << moment;
    QTest::newRow("milliseconds") << "2023-11-14T22:13:20.250Z" << moment.addMSecs(250);
    QTest::newRow("line breaks around") << "\n  2023-11-14T22:13:20Z\n" << moment;
    QTest::newRow("empty") << "" << QDateTime();
    QTest::newRow("word") << "yesterday" << QDateTime();
    QTest::newRow("no such day") << "2023-02-30T00:00:00Z" << QDateTime();
}

void tst_LvXMLParser::dateTimes()
{
    QFETCH(QString, text);
    QFETCH(QDateTime, expected);
    const QDateTime other(QDate(2001, 1, 1), QTime(0, 0), Qt::UTC);
    const QDateTime read = LvXMLParser::dateTimeText(withChild(text), "c", Qt::ISODate, other);
    QCOMPARE(read.isValid(), expected.isValid());
    QCOMPARE(read, expected);
}

void tst_LvXMLParser::dateTimeIsUtc()
{
    const QDateTime read = LvXMLParser::dateTimeText(withChild("2023-11-14T22:13:20Z"), "c", Qt::ISODate, {});
    QCOMPARE(read.timeSpec(), Qt::UTC);
    QCOMPARE(read.toSecsSinceEpoch(), 1700000000);
}

void tst_LvXMLParser::colors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRgb>("argb");
    QTest::newRow("six digits are opaque") << "#ff9100" << QRgb(0xFFFF9100);
    QTest::newRow("capital digits") << "#FF91AB" << QRgb(0xFFFF91AB);
    QTest::newRow("mixed case") << "#aBcDeF" << QRgb(0xFFABCDEF);
    QTest::newRow("eight digits, alpha first") << "#80ff0000" << QRgb(0x80FF0000);
    QTest::newRow("eight digits, transparent keeps its colour") << "#00123456" << QRgb(0x00123456);
    QTest::newRow("eight digits, opaque") << "#ff010203" << QRgb(0xFF010203);
    for (const char* unreadable : {"",         "#",          "ff9100",         "#fff",      "#ff910",
                                   "#ff91000", "#ff9100000", "#fffff91000000", "#gg9100",   "#ff910g",
                                   "#-12345",  "#+12345",    "#0x1234",        "# f9100",   " #ff9100",
                                   "#ff9100 ", "red",        "transparent",    "#ff9100\n", "##f9100",
                                   "#ff91é0"}) {
        QTest::addRow("unreadable '%s'", unreadable) << QString::fromUtf8(unreadable) << QRgb(0);
    }
}

void tst_LvXMLParser::colors()
{
    QFETCH(QString, text);
    QFETCH(QRgb, argb);
    QCOMPARE(LvXMLParser::readColor(text), QColor::fromRgba(argb));
}

void tst_LvXMLParser::missingColorIsTransparentBlack()
{
    const QColor color = LvXMLParser::readColor(QString());
    QVERIFY(color.isValid());
    QCOMPARE(color, QColor(0, 0, 0, 0));
}

LV_TEST_MAIN(tst_LvXMLParser)
#include "tst_LvXMLParser.moc"
