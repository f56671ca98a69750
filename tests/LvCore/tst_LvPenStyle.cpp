#include "LvPenStyle.h"
#include "LvTest.h"

#include <QDomDocument>
#include <QPen>

class tst_LvPenStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void values_data()
    {
        QTest::addColumn<int>("given");
        QTest::addColumn<int>("value");
        for (int value = 0; value <= 5; ++value) {
            QTest::addRow("style %d", value) << value << value;
        }
        QTest::newRow("custom pattern") << 6 << 1;
        QTest::newRow("too large") << 1000 << 1;
        QTest::newRow("negative") << -1 << 1;
    }

    void values()
    {
        QFETCH(int, given);
        QFETCH(int, value);
        QCOMPARE(LvPenStyle(given).value(), value);
    }

    void solidIsOne()
    {
        QCOMPARE(LvPenStyle().value(), 1);
        QVERIFY(LvPenStyle() == LvPenStyle(1));
        QVERIFY(LvPenStyle() == Qt::SolidLine);
        QVERIFY(LvPenStyle(Qt::DashLine) == LvPenStyle(2));
        QVERIFY(LvPenStyle(2) != LvPenStyle(3));
    }

    void modifyPen()
    {
        QPen pen(QBrush(Qt::red), 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        LvPenStyle(Qt::DashDotLine).modifyPen(pen);
        QCOMPARE(pen.style(), Qt::DashDotLine);
        QCOMPARE(pen.dashPattern().size(), 4);
        QCOMPARE(pen.color(), QColor(Qt::red));
        QCOMPARE(pen.widthF(), 4.5);
        QCOMPARE(pen.capStyle(), Qt::RoundCap);
        QCOMPARE(pen.joinStyle(), Qt::RoundJoin);
        LvPenStyle(0).modifyPen(pen);
        QCOMPARE(pen.style(), Qt::NoPen);
        LvPenStyle().modifyPen(pen);
        QCOMPARE(pen.style(), Qt::SolidLine);
    }

    void writesOneChild()
    {
        QDomDocument document;
        QDomElement root = document.createElement(QStringLiteral("config"));
        document.appendChild(root);
        LvPenStyle(4).toXml(root);
        QCOMPARE(document.toString(-1).trimmed(), QStringLiteral("<config><penStyle>4</penStyle></config>"));
    }

    void readsBack()
    {
        for (int value = 0; value <= 5; ++value) {
            QDomDocument document;
            QDomElement root = document.createElement(QStringLiteral("config"));
            LvPenStyle(value).toXml(root);
            QCOMPARE(LvPenStyle::fromXml(root).value(), value);
        }
    }

    void reads_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<int>("value");
        QTest::newRow("missing") << "<config/>" << 1;
        QTest::newRow("known") << "<config><penStyle>3</penStyle></config>" << 3;
        QTest::newRow("blanks around") << "<config><penStyle> 3\n</penStyle></config>" << 3;
        QTest::newRow("no line") << "<config><penStyle>0</penStyle></config>" << 0;
        QTest::newRow("first one counts")
            << "<config><penStyle>2</penStyle><penStyle>3</penStyle></config>" << 2;
        QTest::newRow("empty") << "<config><penStyle/></config>" << 1;
        QTest::newRow("no number") << "<config><penStyle>dash</penStyle></config>" << 1;
        QTest::newRow("unknown") << "<config><penStyle>17</penStyle></config>" << 1;
        QTest::newRow("nested deeper") << "<config><a><penStyle>3</penStyle></a></config>" << 1;
    }

    void reads()
    {
        QFETCH(QString, xml);
        QFETCH(int, value);
        QDomDocument document;
        QVERIFY(document.setContent(xml));
        QCOMPARE(LvPenStyle::fromXml(document.documentElement()).value(), value);
    }

    void readsNothingFromANullElement() { QCOMPARE(LvPenStyle::fromXml(QDomElement()).value(), 1); }
};

LV_TEST_MAIN(tst_LvPenStyle)
#include "tst_LvPenStyle.moc"
