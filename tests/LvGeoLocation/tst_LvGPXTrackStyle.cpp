#include "LvGPXTrackStyle.h"
#include "LvTest.h"

#include <QDomDocument>

class tst_LvGPXTrackStyle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void fromKml_data();
    void fromKml();
};

void tst_LvGPXTrackStyle::construction()
{
    LvGPXTrackConfiguration values;
    values.setLineWidth(3.0);
    const LvGPXTrackStyle style(QStringLiteral("thin"), values);
    QCOMPARE(style.styleId(), QStringLiteral("thin"));
    QVERIFY(style.styleValues() == values);
    LvGPXTrackStyle copy(style);
    copy = LvGPXTrackStyle(QStringLiteral("other"), LvGPXTrackConfiguration());
    QCOMPARE(style.styleId(), QStringLiteral("thin"));
    QCOMPARE(copy.styleId(), QStringLiteral("other"));
    static_assert(std::has_virtual_destructor_v<LvGPXTrackStyle>);
}

void tst_LvGPXTrackStyle::fromKml_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("id");
    QTest::newRow("with id") << "<Style id='a b'><LineStyle><width>2</width></LineStyle></Style>"
                             << "a b";
    QTest::newRow("without id") << "<Style><LineStyle><width>2</width></LineStyle></Style>"
                                << "";
}

void tst_LvGPXTrackStyle::fromKml()
{
    QFETCH(QString, xml);
    QFETCH(QString, id);
    QDomDocument document;
    QVERIFY(document.setContent(xml));
    const LvGPXTrackStyle style = LvGPXTrackStyle::fromKml(document.documentElement());
    QCOMPARE(style.styleId(), id);
    QVERIFY(style.styleValues() == LvGPXTrackConfiguration::fromKml(document.documentElement()));
    QCOMPARE(style.styleValues().lineWidth().value(), 12.0);
}

LV_TEST_MAIN(tst_LvGPXTrackStyle)
#include "tst_LvGPXTrackStyle.moc"
