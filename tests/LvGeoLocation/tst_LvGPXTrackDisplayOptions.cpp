#include "LvGPXTrackDisplayOptions.h"
#include "LvTest.h"

#include <QDomDocument>

class tst_LvGPXTrackDisplayOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void texts_data();
    void texts();
    void fromXml_data();
    void fromXml();
    void toXml();
};

void tst_LvGPXTrackDisplayOptions::construction()
{
    QVERIFY(LvGPXTrackDisplayOptions() == LvGPXTrackDisplayOptionsEnum::none);
    QVERIFY(LvGPXTrackDisplayOptions(2) == LvGPXTrackDisplayOptionsEnum::fill);
    QVERIFY(LvGPXTrackDisplayOptions(0x80000000U).isValid());
    QVERIFY(LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum::stroke) == LvGPXTrackDisplayOptions(1));
    QVERIFY(LvGPXTrackDisplayOptions("Fill,STROKE") == LvGPXTrackDisplayOptions(3));
    QVERIFY(!LvGPXTrackDisplayOptions("unknown").isValid());
    QVERIFY(!LvGPXTrackDisplayOptions().enumToStringTable()->decode("unknown")); // no key for 0
}

void tst_LvGPXTrackDisplayOptions::texts_data()
{
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("whole");
    QTest::newRow("none") << 0U << ""
                          << "";
    QTest::newRow("stroke") << 1U << "stroke"
                            << "stroke";
    QTest::newRow("fill") << 2U << "fill"
                          << "fill";
    QTest::newRow("both") << 3U << "stroke, fill"
                          << "";
    QTest::newRow("nameless flag") << 4U << ""
                                   << "";
    QTest::newRow("all of a point") << 7U << "stroke, fill, "
                                    << "";
}

void tst_LvGPXTrackDisplayOptions::texts()
{
    QFETCH(quint32, value);
    QFETCH(QString, text);
    QFETCH(QString, whole);
    const LvGPXTrackDisplayOptions options(value);
    QCOMPARE(options.enumToStringTable()->encodeCSV(options.value()), text);
    QCOMPARE(options.enumToStringTable()->toString(options.value()), whole);
}

void tst_LvGPXTrackDisplayOptions::fromXml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("value");
    QTest::newRow("missing") << "<c/>" << 1;
    QTest::newRow("empty") << "<c><displayOptions/></c>" << 0;
    QTest::newRow("fill") << "<c><displayOptions>fill</displayOptions></c>" << 2;
    QTest::newRow("both") << "<c><displayOptions>stroke, fill</displayOptions></c>" << 3;
    QTest::newRow("unknown word") << "<c><displayOptions>dots</displayOptions></c>" << 0;
    QTest::newRow("first child counts")
        << "<c><displayOptions>fill</displayOptions><displayOptions>stroke</displayOptions></c>" << 2;
    QTest::newRow("not below a child") << "<c><d><displayOptions>fill</displayOptions></d></c>" << 1;
}

void tst_LvGPXTrackDisplayOptions::fromXml()
{
    QFETCH(QString, xml);
    QFETCH(int, value);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    QVERIFY(LvGPXTrackDisplayOptions::fromXml(document.documentElement()) == LvGPXTrackDisplayOptions(value));
}

void tst_LvGPXTrackDisplayOptions::toXml()
{
    QDomDocument document;
    QDomElement parent = document.createElement("c");
    LvGPXTrackDisplayOptions(3).toXml(parent);
    QCOMPARE(parent.childNodes().size(), 1);
    QCOMPARE(parent.firstChildElement("displayOptions").text(), QStringLiteral("stroke, fill"));
}

LV_TEST_MAIN(tst_LvGPXTrackDisplayOptions)
#include "tst_LvGPXTrackDisplayOptions.moc"
