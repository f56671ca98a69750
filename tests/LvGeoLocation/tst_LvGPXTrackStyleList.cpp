#include "LvGPXTrackStyleList.h"
#include "LvTest.h"

#include <QDomDocument>

namespace
{

LvGPXTrackStyleList fromKml(const QString& xml)
{
    QDomDocument document;
    document.setContent(xml);
    return LvGPXTrackStyleList::fromKml(document.documentElement());
}

QString style(const QString& id, int width)
{
    return QStringLiteral("<Style id='%1'><LineStyle><width>%2</width></LineStyle></Style>")
        .arg(id)
        .arg(width);
}

constexpr double notFound = 10.0; // the line width of the built-in default

} // namespace

class tst_LvGPXTrackStyleList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findStyling_data();
    void findStyling();
    void builtInDefault();
    void add();
    void empty();
};

void tst_LvGPXTrackStyleList::findStyling_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("styleUrl");
    QTest::addColumn<double>("lineWidth");
    QTest::addColumn<int>("count");
    const QString two = style("a", 1) + style("b", 2);
    QTest::newRow("first") << two << "#a" << 6.0 << 2;
    QTest::newRow("second") << two << "#b" << 12.0 << 2;
    QTest::newRow("bare id") << two << "a" << notFound << 2;
    QTest::newRow("other case") << two << "#A" << notFound << 2;
    QTest::newRow("untrimmed") << two << " #a" << notFound << 2;
    QTest::newRow("style of another file") << two << "styles.kml#a" << notFound << 2;
    QTest::newRow("empty reference") << two << "" << notFound << 2;
    QTest::newRow("last definition wins")
        << style("a", 1) + style("b", 2) + style("a", 3) << "#a" << 18.0 << 2;
    QTest::newRow("other elements between")
        << style("a", 1) + "<Placemark/>text" + style("b", 2) << "#b" << 12.0 << 2;
    QTest::newRow("without id") << "<Style><LineStyle><width>4</width></LineStyle></Style>"
                                << "#" << 24.0 << 1;
    QTest::newRow("nested deeper") << "<Folder>" + style("a", 1) + "</Folder>"
                                   << "#a" << notFound << 0;
    QTest::newRow("style map") << "<StyleMap id='a'/>"
                               << "#a" << notFound << 0;
}

void tst_LvGPXTrackStyleList::findStyling()
{
    QFETCH(QString, content);
    QFETCH(QString, styleUrl);
    QFETCH(double, lineWidth);
    QFETCH(int, count);
    const LvGPXTrackStyleList styles = fromKml("<Document>" + content + "</Document>");
    QCOMPARE(styles.findStyling(styleUrl).lineWidth().value(), lineWidth);
    QCOMPARE(styles.count(), count);
}

void tst_LvGPXTrackStyleList::builtInDefault()
{
    QVERIFY(fromKml("<Document/>").findStyling("#a") == LvGPXTrackConfiguration::defaultValue());
}

void tst_LvGPXTrackStyleList::add()
{
    LvGPXTrackConfiguration values;
    values.setSmoothingSteps(5);
    LvGPXTrackStyleList styles;
    styles.add(LvGPXTrackStyle("new", values));
    LvGPXTrackStyleList copy(styles);
    values.setSmoothingSteps(6);
    styles.add(LvGPXTrackStyle("new", values));
    QCOMPARE(styles.count(), 1);
    QCOMPARE(styles.findStyling("#new").smoothingSteps(), 6);
    QCOMPARE(copy.findStyling("#new").smoothingSteps(), 5);
}

void tst_LvGPXTrackStyleList::empty()
{
    QVERIFY(LvGPXTrackStyleList().isEmpty());
    QVERIFY(LvGPXTrackStyleList::fromKml(QDomElement()).isEmpty());
    QVERIFY(!fromKml("<Document>" + style("a", 1) + "</Document>").isEmpty());
}

LV_TEST_MAIN(tst_LvGPXTrackStyleList)
#include "tst_LvGPXTrackStyleList.moc"
