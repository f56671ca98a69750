#include "LvGPXTrackConfiguration.h"
#include "LvGeoLocationSettings.h"
#include "LvTest.h"

#include <QDebug>
#include <QDomDocument>

#include <limits>

namespace
{

QDomElement parsed(QDomDocument& document, const QString& xml)
{
    return document.setContent(xml) ? document.documentElement() : QDomElement();
}

LvGPXTrackConfiguration fromXml(const QString& xml)
{
    QDomDocument document;
    return LvGPXTrackConfiguration::fromXml(parsed(document, xml));
}

LvGPXTrackConfiguration fromKml(const QString& xml)
{
    QDomDocument document;
    return LvGPXTrackConfiguration::fromKml(parsed(document, xml));
}

LvGPXTrackConfiguration sample()
{
    return {QColor(1, 2, 3, 4),
            4.5,
            QColor(5, 6, 7, 8),
            6.5,
            LvGPXTrackDisplayOptions(3),
            LvGPXMarkerShape(64),
            LvGPXTrackShape(8),
            LvPenStyle(2),
            50,
            3};
}

QString argb(const QColor& color)
{
    return color.name(QColor::HexArgb);
}

} // namespace

class tst_LvGPXTrackConfiguration : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void defaults();
    void construction();
    void setters();
    void inequality_data();
    void inequality();
    void drawOptions_data();
    void drawOptions();
    void halo_data();
    void halo();
    void multiplyAlpha_data();
    void multiplyAlpha();
    void toXml();
    void widthsAreTruncated_data();
    void widthsAreTruncated();
    void fromEmptyElement();
    void fromXmlWidths_data();
    void fromXmlWidths();
    void fromXmlColors_data();
    void fromXmlColors();
    void fromXmlShapes();
    void fromXmlSmoothing_data();
    void fromXmlSmoothing();
    void roundTrip();
    void serialize();
    void deserialize_data();
    void deserialize();
    void kmlColors_data();
    void kmlColors();
    void kmlWidths_data();
    void kmlWidths();
    void kmlRest();
    void decodeColor_data();
    void decodeColor();
    void decodeWidth_data();
    void decodeWidth();
    void debug_data();
    void debug();
    void currentDefault();
};

void tst_LvGPXTrackConfiguration::defaults()
{
    const LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    QCOMPARE(configuration.lineColor(), QColor(255, 145, 0));
    QCOMPARE(configuration.lineColor().alpha(), 255);
    QCOMPARE(configuration.lineWidth().value(), 10.0);
    QCOMPARE(configuration.penStyle().value(), 1);
    QCOMPARE(configuration.fillColor(), QColor(252, 164, 4));
    QCOMPARE(configuration.fillColor().alpha(), 255);
    QVERIFY(configuration.haloWidth().isNull());
    QVERIFY(configuration.currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::stroke);
    QVERIFY(configuration.markerShape() == LvGPXMarkerShapeEnum::disk);
    QVERIFY(configuration.trackShape() == LvGPXTrackShapeEnum::automatic);
    QCOMPARE(configuration.smoothingStrength(), 100);
    QCOMPARE(configuration.smoothingSteps(), 1);
    QVERIFY(LvGPXTrackConfiguration() == configuration);
    static_assert(std::has_virtual_destructor_v<LvGPXTrackConfiguration>);
}

void tst_LvGPXTrackConfiguration::construction()
{
    const LvGPXTrackConfiguration configuration = sample();
    QCOMPARE(configuration.lineColor(), QColor(1, 2, 3, 4));
    QCOMPARE(configuration.lineWidth().value(), 4.5);
    QCOMPARE(configuration.fillColor(), QColor(5, 6, 7, 8));
    QCOMPARE(configuration.haloWidth().value(), 6.5);
    QVERIFY(configuration.currentDisplayOptions() == LvGPXTrackDisplayOptions(3));
    QVERIFY(configuration.markerShape() == LvGPXMarkerShape(64));
    QVERIFY(configuration.trackShape() == LvGPXTrackShape(8));
    QCOMPARE(configuration.penStyle().value(), 2);
    QCOMPARE(configuration.smoothingStrength(), 50);
    QCOMPARE(configuration.smoothingSteps(), 3);
    const LvGPXTrackConfiguration copy(configuration);
    QVERIFY(copy == configuration);
}

void tst_LvGPXTrackConfiguration::setters()
{
    LvGPXTrackConfiguration configuration;
    const LvGPXTrackConfiguration other = sample();

    QVERIFY(!configuration.setLineColor(configuration.lineColor()));
    QVERIFY(!configuration.setLineWidth(configuration.lineWidth()));
    QVERIFY(!configuration.setPenStyle(configuration.penStyle()));
    QVERIFY(!configuration.setFillColor(configuration.fillColor()));
    QVERIFY(!configuration.setHaloWidth(configuration.haloWidth()));
    QVERIFY(!configuration.setCurrentDisplayOptions(configuration.currentDisplayOptions()));
    QVERIFY(!configuration.setMarkerShape(configuration.markerShape()));
    QVERIFY(!configuration.setTrackShape(configuration.trackShape()));
    QVERIFY(!configuration.setSmoothingStrength(configuration.smoothingStrength()));
    QVERIFY(!configuration.setSmoothingSteps(configuration.smoothingSteps()));
    QVERIFY(configuration == LvGPXTrackConfiguration::defaultValue());

    QVERIFY(configuration.setLineColor(other.lineColor()));
    QVERIFY(configuration.setLineWidth(other.lineWidth()));
    QVERIFY(configuration.setPenStyle(other.penStyle()));
    QVERIFY(configuration.setFillColor(other.fillColor()));
    QVERIFY(configuration.setHaloWidth(other.haloWidth()));
    QVERIFY(configuration.setCurrentDisplayOptions(other.currentDisplayOptions()));
    QVERIFY(configuration.setMarkerShape(other.markerShape()));
    QVERIFY(configuration.setTrackShape(other.trackShape()));
    QVERIFY(configuration.setSmoothingStrength(other.smoothingStrength()));
    QVERIFY(configuration.setSmoothingSteps(other.smoothingSteps()));
    QVERIFY(configuration == other);
    QVERIFY(!configuration.setLineColor(other.lineColor()));

    // Colours compare by all they hold: one that only looks the same differs.
    configuration.setLineColor(QColor(10, 20, 30));
    QVERIFY(configuration.setLineColor(QColor(10, 20, 30).toHsv()));
}

void tst_LvGPXTrackConfiguration::inequality_data()
{
    QTest::addColumn<LvGPXTrackConfiguration>("other");
    const auto changed = [](auto change) {
        LvGPXTrackConfiguration configuration = sample();
        change(configuration);
        return configuration;
    };
    using Configuration = LvGPXTrackConfiguration;
    QTest::newRow("line colour") << changed([](Configuration& c) { c.setLineColor(QColor(1, 2, 3, 5)); });
    QTest::newRow("line width") << changed([](Configuration& c) { c.setLineWidth(4.25); });
    QTest::newRow("pen style") << changed([](Configuration& c) { c.setPenStyle(LvPenStyle(3)); });
    QTest::newRow("fill colour") << changed([](Configuration& c) { c.setFillColor(QColor(5, 6, 7, 9)); });
    QTest::newRow("halo width") << changed([](Configuration& c) { c.setHaloWidth(6.75); });
    QTest::newRow("options") << changed(
        [](Configuration& c) { c.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(2)); });
    QTest::newRow("marker") << changed([](Configuration& c) { c.setMarkerShape(LvGPXMarkerShape(65)); });
    QTest::newRow("track shape") << changed([](Configuration& c) { c.setTrackShape(LvGPXTrackShape(4)); });
    QTest::newRow("strength") << changed([](Configuration& c) { c.setSmoothingStrength(51); });
    QTest::newRow("steps") << changed([](Configuration& c) { c.setSmoothingSteps(4); });
}

void tst_LvGPXTrackConfiguration::inequality()
{
    QFETCH(LvGPXTrackConfiguration, other);
    QVERIFY(sample() == sample());
    QVERIFY(!(sample() != sample()));
    QVERIFY(sample() != other);
    QVERIFY(!(sample() == other));
}

void tst_LvGPXTrackConfiguration::drawOptions_data()
{
    QTest::addColumn<int>("options");
    QTest::addColumn<int>("option");
    QTest::addColumn<bool>("has");
    QTest::newRow("stroke of stroke") << 1 << 1 << true;
    QTest::newRow("fill of stroke") << 1 << 2 << false;
    QTest::newRow("fill of both") << 3 << 2 << true;
    QTest::newRow("either of fill") << 2 << 3 << true;
    QTest::newRow("stroke of none") << 0 << 1 << false;
    QTest::newRow("none of both") << 3 << 0 << false;
}

void tst_LvGPXTrackConfiguration::drawOptions()
{
    QFETCH(int, options);
    QFETCH(int, option);
    QFETCH(bool, has);
    LvGPXTrackConfiguration configuration;
    configuration.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(options));
    QCOMPARE(configuration.hasDrawOption(LvGPXTrackDisplayOptions(option)), has);
}

void tst_LvGPXTrackConfiguration::halo_data()
{
    QTest::addColumn<double>("previous");
    QTest::addColumn<double>("now");
    QTest::addColumn<bool>("becomesVisible");
    QTest::newRow("none to some") << 0.0 << 0.5 << true;
    QTest::newRow("some to none") << 3.0 << 0.0 << false;
    QTest::newRow("some to more") << 3.0 << 4.0 << false;
    QTest::newRow("none to none") << 0.0 << 0.0 << false;
}

void tst_LvGPXTrackConfiguration::halo()
{
    QFETCH(double, previous);
    QFETCH(double, now);
    QFETCH(bool, becomesVisible);
    LvGPXTrackConfiguration before;
    before.setHaloWidth(previous);
    LvGPXTrackConfiguration after;
    after.setHaloWidth(now);
    QCOMPARE(after.wouldChangeHaloToVisibleAgainst(before), becomesVisible);
}

void tst_LvGPXTrackConfiguration::multiplyAlpha_data()
{
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("alpha");
    QTest::newRow("half") << 0.5 << 100;
    QTest::newRow("unchanged") << 1.0 << 200;
    QTest::newRow("nothing") << 0.0 << 0;
    QTest::newRow("no more than opaque") << 2.0 << 255;
    QTest::newRow("no less than transparent") << -1.0 << 0;
}

void tst_LvGPXTrackConfiguration::multiplyAlpha()
{
    QFETCH(double, factor);
    QFETCH(int, alpha);
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    const QColor color(10, 20, 30, 200);
    const QColor result = LvGPXTrackConfiguration::multiplyAlpha(color, factor);
    QCOMPARE(result.alpha(), alpha);
    QCOMPARE(result.rgb(), color.rgb());
}

void tst_LvGPXTrackConfiguration::toXml()
{
    QDomDocument document;
    QDomElement element = document.createElement("style");
    document.appendChild(element);
    sample().toXml(element);
    QStringList children;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        children.append(child.tagName() + '=' + child.text());
    }
    QCOMPARE(children,
             (QStringList{"pensize=4", "color=#04010203", "fillcolor=#08050607", "halosize=6",
                          "displayOptions=stroke, fill", "markerShape=rhombus", "trackShape=polygon",
                          "penStyle=2"}));
    QCOMPARE(element.attributes().size(), 2);
    QCOMPARE(element.attribute("smoothing"), QStringLiteral("50"));
    QCOMPARE(element.attribute("smoothingSteps"), QStringLiteral("3"));
}

void tst_LvGPXTrackConfiguration::widthsAreTruncated_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QString>("text");
    QTest::newRow("down") << 2.7 << "2";
    QTest::newRow("towards zero") << -2.7 << "-2";
    QTest::newRow("whole") << 10.0 << "10";
    QTest::newRow("less than one") << 0.9 << "0";
    QTest::newRow("more than an int") << 1e300 << "2147483647";
    QTest::newRow("less than an int") << -1e300 << "-2147483648";
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << "2147483647";
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << "0";
}

void tst_LvGPXTrackConfiguration::widthsAreTruncated()
{
    QFETCH(double, width);
    QFETCH(QString, text);
    LvGPXTrackConfiguration configuration;
    configuration.setLineWidth(width);
    configuration.setHaloWidth(width);
    QDomDocument document;
    QDomElement element = document.createElement("style");
    configuration.toXml(element);
    QCOMPARE(element.firstChildElement("pensize").text(), text);
    QCOMPARE(element.firstChildElement("halosize").text(), text);
}

void tst_LvGPXTrackConfiguration::fromEmptyElement()
{
    for (const LvGPXTrackConfiguration& configuration :
         {fromXml("<c/>"), LvGPXTrackConfiguration::fromXml(QDomElement())}) {
        QCOMPARE(argb(configuration.lineColor()), QStringLiteral("#00000000"));
        QCOMPARE(configuration.lineWidth().value(), 10.0);
        QCOMPARE(configuration.penStyle().value(), 1);
        QCOMPARE(argb(configuration.fillColor()), QStringLiteral("#00000000"));
        QCOMPARE(configuration.haloWidth().value(), 20.0);
        QVERIFY(configuration.currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::stroke);
        QVERIFY(configuration.markerShape() == LvGPXMarkerShapeEnum::disk);
        QVERIFY(configuration.trackShape() == LvGPXTrackShapeEnum::automatic);
        QCOMPARE(configuration.smoothingStrength(), 100);
        QCOMPARE(configuration.smoothingSteps(), 1);
        QVERIFY(configuration != LvGPXTrackConfiguration::defaultValue());
    }
}

void tst_LvGPXTrackConfiguration::fromXmlWidths_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<double>("line");
    QTest::addColumn<double>("halo");
    QTest::newRow("nothing") << "" << 10.0 << 20.0;
    QTest::newRow("both") << "<pensize>3</pensize><halosize>7</halosize>" << 3.0 << 7.0;
    QTest::newRow("real numbers") << "<pensize>2.75</pensize><halosize>0.5</halosize>" << 2.75 << 0.5;
    QTest::newRow("no numbers") << "<pensize>wide</pensize><halosize>wider</halosize>" << 0.0 << 0.0;
    QTest::newRow("empty") << "<pensize/><halosize/>" << 0.0 << 0.0;
    QTest::newRow("halo missing, stroke")
        << "<pensize>4</pensize><displayOptions>stroke</displayOptions>" << 4.0 << 8.0;
    QTest::newRow("halo missing, stroke and fill")
        << "<pensize>4</pensize><displayOptions>stroke, fill</displayOptions>" << 4.0 << 4.0;
    QTest::newRow("halo missing, fill")
        << "<pensize>4</pensize><displayOptions>fill</displayOptions>" << 4.0 << 4.0;
    QTest::newRow("halo missing, no option") << "<pensize>4</pensize><displayOptions/>" << 4.0 << 8.0;
    QTest::newRow("halo of zero stays") << "<pensize>4</pensize><halosize>0</halosize>" << 4.0 << 0.0;
    QTest::newRow("first child counts") << "<pensize>4</pensize><pensize>5</pensize>" << 4.0 << 8.0;
}

void tst_LvGPXTrackConfiguration::fromXmlWidths()
{
    QFETCH(QString, xml);
    QFETCH(double, line);
    QFETCH(double, halo);
    const LvGPXTrackConfiguration configuration = fromXml("<c>" + xml + "</c>");
    QCOMPARE(configuration.lineWidth().value(), line);
    QCOMPARE(configuration.haloWidth().value(), halo);
}

void tst_LvGPXTrackConfiguration::fromXmlColors_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fill");
    QTest::newRow("both, with alpha") << "<color>#01020304</color><fillcolor>#05060708</fillcolor>"
                                      << "#01020304"
                                      << "#05060708";
    QTest::newRow("six digits are opaque") << "<color>#102030</color><fillcolor>#405060</fillcolor>"
                                           << "#ff102030"
                                           << "#ff405060";
    QTest::newRow("fill missing: half as opaque") << "<color>#80ff0000</color>"
                                                  << "#80ff0000"
                                                  << "#40ff0000";
    QTest::newRow("fill missing, opaque line") << "<color>#00ff00</color>"
                                               << "#ff00ff00"
                                               << "#8000ff00";
    QTest::newRow("fill empty") << "<color>#00ff00</color><fillcolor/>"
                                << "#ff00ff00"
                                << "#00000000";
    QTest::newRow("unreadable") << "<color>red</color><fillcolor>#12</fillcolor>"
                                << "#00000000"
                                << "#00000000";
    QTest::newRow("line missing") << "<fillcolor>#05060708</fillcolor>"
                                  << "#00000000"
                                  << "#05060708";
}

void tst_LvGPXTrackConfiguration::fromXmlColors()
{
    QFETCH(QString, xml);
    QFETCH(QString, line);
    QFETCH(QString, fill);
    const LvGPXTrackConfiguration configuration = fromXml("<c>" + xml + "</c>");
    QCOMPARE(argb(configuration.lineColor()), line);
    QCOMPARE(argb(configuration.fillColor()), fill);
}

void tst_LvGPXTrackConfiguration::fromXmlShapes()
{
    const LvGPXTrackConfiguration configuration = fromXml(
        "<c><markerShape>star6</markerShape><trackShape>hop</trackShape><displayOptions>fill</displayOptions>"
        "<penStyle>4</penStyle></c>");
    QVERIFY(configuration.markerShape() == LvGPXMarkerShapeEnum::star6);
    QVERIFY(configuration.trackShape() == LvGPXTrackShapeEnum::hop);
    QVERIFY(configuration.currentDisplayOptions() == LvGPXTrackDisplayOptionsEnum::fill);
    QCOMPARE(configuration.penStyle().value(), 4);
    QVERIFY(!fromXml("<c><displayOptions/></c>").currentDisplayOptions().isValid());
}

void tst_LvGPXTrackConfiguration::fromXmlSmoothing_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<int>("strength");
    QTest::addColumn<int>("steps");
    QTest::newRow("missing") << "<c/>" << 100 << 1;
    QTest::newRow("both") << "<c smoothing='30' smoothingSteps='0'/>" << 30 << 0;
    QTest::newRow("negative") << "<c smoothing='-5' smoothingSteps='-1'/>" << -5 << -1;
    QTest::newRow("unreadable") << "<c smoothing='much' smoothingSteps='1.5'/>" << 100 << 1;
}

void tst_LvGPXTrackConfiguration::fromXmlSmoothing()
{
    QFETCH(QString, xml);
    QFETCH(int, strength);
    QFETCH(int, steps);
    QCOMPARE(fromXml(xml).smoothingStrength(), strength);
    QCOMPARE(fromXml(xml).smoothingSteps(), steps);
}

void tst_LvGPXTrackConfiguration::roundTrip()
{
    LvGPXTrackConfiguration configuration = sample();
    configuration.setLineWidth(2.7);
    configuration.setHaloWidth(5.0);
    LvGPXTrackConfiguration read = LvGPXTrackConfiguration::deserialize(configuration.serialize());
    QCOMPARE(read.lineWidth().value(), 2.0);
    QVERIFY(read.setLineWidth(2.7));
    QVERIFY(read == configuration);
    QVERIFY(LvGPXTrackConfiguration::deserialize(LvGPXTrackConfiguration::defaultValue().serialize())
            == LvGPXTrackConfiguration::defaultValue());
}

void tst_LvGPXTrackConfiguration::serialize()
{
    const QString text = sample().serialize();
    QVERIFY(text.startsWith("<?xml"));
    QVERIFY(text.contains("\n<pensize>4</pensize>\n")); // lines without indentation
    QDomDocument document;
    const QDomElement root = parsed(document, text);
    QCOMPARE(root.tagName(), QStringLiteral("config"));
    QCOMPARE(root.childNodes().size(), 8);
    QVERIFY(LvGPXTrackConfiguration::fromXml(root).currentDisplayOptions() == LvGPXTrackDisplayOptions(3));
}

void tst_LvGPXTrackConfiguration::deserialize_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("no XML") << "pensize 5";
    QTest::newRow("broken behind a good start") << "<config><pensize>5</pensize>";
    QTest::newRow("nested too deeply")
        << QString("<config>").repeated(200000) + QString("</config>").repeated(200000);
    QTest::newRow("empty element of another name") << "<other/>";
}

void tst_LvGPXTrackConfiguration::deserialize()
{
    QFETCH(QString, text);
    QVERIFY(LvGPXTrackConfiguration::deserialize(text) == LvGPXTrackConfiguration::fromXml(QDomElement()));
}

void tst_LvGPXTrackConfiguration::kmlColors_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fill");
    QTest::addColumn<QString>("lineResult");
    QTest::addColumn<QString>("fillResult");
    QTest::newRow("both visible") << "80010203"
                                  << "40040506"
                                  << "#80010203"
                                  << "#40040506";
    QTest::newRow("both invisible") << "00010203"
                                    << "00040506"
                                    << "#ff000000"
                                    << "#80000000";
    QTest::newRow("both unreadable") << ""
                                     << ""
                                     << "#ff000000"
                                     << "#80000000";
    QTest::newRow("line invisible, fill 127") << "00010203"
                                              << "7f040506"
                                              << "#fe040506"
                                              << "#7f040506";
    QTest::newRow("line invisible, fill 1") << "00010203"
                                            << "01040506"
                                            << "#02040506"
                                            << "#01040506";
    QTest::newRow("line invisible, fill 128") << "00010203"
                                              << "80040506"
                                              << "#ff040506"
                                              << "#80040506";
    QTest::newRow("line invisible, fill 200") << "00010203"
                                              << "c8040506"
                                              << "#ff040506"
                                              << "#c8040506";
    QTest::newRow("line unreadable") << "red"
                                     << "30040506"
                                     << "#60040506"
                                     << "#30040506";
    QTest::newRow("fill invisible") << "ff010203"
                                    << "00040506"
                                    << "#ff010203"
                                    << "#7f010203";
    QTest::newRow("fill invisible, faint line") << "01010203"
                                                << "00040506"
                                                << "#01010203"
                                                << "#00010203";
    QTest::newRow("fill unreadable") << "81010203"
                                     << ""
                                     << "#81010203"
                                     << "#40010203";
}

void tst_LvGPXTrackConfiguration::kmlColors()
{
    QFETCH(QString, line);
    QFETCH(QString, fill);
    QFETCH(QString, lineResult);
    QFETCH(QString, fillResult);
    const LvGPXTrackConfiguration configuration =
        fromKml(QStringLiteral("<Style><LineStyle><color>%1</color></LineStyle><PolyStyle><color>%2</color>"
                               "</PolyStyle></Style>")
                    .arg(line, fill));
    QCOMPARE(argb(configuration.lineColor()), lineResult);
    QCOMPARE(argb(configuration.fillColor()), fillResult);
}

void tst_LvGPXTrackConfiguration::kmlWidths_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<double>("line");
    QTest::addColumn<double>("halo");
    QTest::addColumn<int>("options");
    QTest::newRow("line of 2") << "<LineStyle><width>2</width></LineStyle>" << 12.0 << 24.0 << 1;
    QTest::newRow("line of 0") << "<LineStyle><width>0</width></LineStyle>" << 7.7 << 15.4 << 1;
    QTest::newRow("line without width") << "<LineStyle/>" << 7.7 << 15.4 << 1;
    QTest::newRow("negative line") << "<LineStyle><width>-3</width></LineStyle>" << 7.7 << 15.4 << 1;
    QTest::newRow("just too thin") << "<LineStyle><width>0.0166</width></LineStyle>" << 7.7 << 15.4 << 1;
    QTest::newRow("just thick enough")
        << "<LineStyle><width>0.0167</width></LineStyle>" << 0.0167 * 6 << 0.0167 * 12 << 1;
    QTest::newRow("nothing") << "" << 7.7 << 15.4 << 1;
    QTest::newRow("area") << "<PolyStyle/>" << 7.7 << 7.7 << 2;
    QTest::newRow("line and area") << "<LineStyle><width>1</width></LineStyle><PolyStyle/>" << 6.0 << 6.0
                                   << 3;
}

void tst_LvGPXTrackConfiguration::kmlWidths()
{
    QFETCH(QString, xml);
    QFETCH(double, line);
    QFETCH(double, halo);
    QFETCH(int, options);
    const LvGPXTrackConfiguration configuration = fromKml("<Style>" + xml + "</Style>");
    QCOMPARE(configuration.lineWidth().value(), line);
    QCOMPARE(configuration.haloWidth().value(), halo);
    QVERIFY(configuration.currentDisplayOptions() == LvGPXTrackDisplayOptions(options));
}

void tst_LvGPXTrackConfiguration::kmlRest()
{
    const LvGPXTrackConfiguration configuration = fromKml("<Style><LineStyle/><PolyStyle/></Style>");
    QCOMPARE(configuration.penStyle().value(), 1);
    QVERIFY(configuration.markerShape() == LvGPXMarkerShapeEnum::disk);
    QVERIFY(configuration.trackShape() == LvGPXTrackShapeEnum::automatic);
    QCOMPARE(configuration.smoothingStrength(), 100);
    QCOMPARE(configuration.smoothingSteps(), 1);
}

void tst_LvGPXTrackConfiguration::decodeColor_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("color");
    QTest::newRow("no byte swapping") << "<s><color>80112233</color></s>"
                                      << "#80112233";
    QTest::newRow("with the sign") << "<s><color>#80112233</color></s>"
                                   << "#80112233";
    QTest::newRow("six digits") << "<s><color>112233</color></s>"
                                << "#ff112233";
    QTest::newRow("missing") << "<s/>"
                             << "#00000000";
    QTest::newRow("unreadable") << "<s><color>##112233</color></s>"
                                << "#00000000";
    QTest::newRow("colour names are none") << "<s><color>red</color></s>"
                                           << "#00000000";
}

void tst_LvGPXTrackConfiguration::decodeColor()
{
    QFETCH(QString, xml);
    QFETCH(QString, color);
    QDomDocument document;
    QDomElement element = parsed(document, xml);
    QCOMPARE(argb(LvGPXTrackConfiguration::decodeColor(element)), color);
}

void tst_LvGPXTrackConfiguration::decodeWidth_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<double>("width");
    QTest::newRow("number") << "<s><width>2.5</width></s>" << 2.5;
    QTest::newRow("missing") << "<s/>" << 0.0;
    QTest::newRow("unreadable") << "<s><width>thin</width></s>" << 0.0;
}

void tst_LvGPXTrackConfiguration::decodeWidth()
{
    QFETCH(QString, xml);
    QFETCH(double, width);
    QDomDocument document;
    QCOMPARE(LvGPXTrackConfiguration::decodeWidth(parsed(document, xml)), width);
}

void tst_LvGPXTrackConfiguration::debug_data()
{
    QTest::addColumn<LvGPXTrackConfiguration>("configuration");
    QTest::addColumn<QString>("text");
    QTest::newRow("default")
        << LvGPXTrackConfiguration()
        << "LvGPXTrackConfiguration -- #ff9100; 10.0 px; #fca404; 0.0 px; stroke; disk; auto";
    QTest::newRow("combination without a key of its own")
        << sample() << "LvGPXTrackConfiguration -- #010203; 4.5 px; #050607; 6.5 px; ; rhombus; polygon";
    LvGPXTrackConfiguration unknown;
    unknown.setMarkerShape(LvGPXMarkerShape(0));
    unknown.setTrackShape(LvGPXTrackShape(0));
    unknown.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(0));
    QTest::newRow("zeros have keys where there are some")
        << unknown << "LvGPXTrackConfiguration -- #ff9100; 10.0 px; #fca404; 0.0 px; ; unknown; unknown";
}

void tst_LvGPXTrackConfiguration::debug()
{
    QFETCH(LvGPXTrackConfiguration, configuration);
    QFETCH(QString, text);
    QString written;
    QDebug(&written) << configuration;
    QCOMPARE(written.trimmed(), text);
    written.clear();
    QDebug(&written) << configuration << QStringLiteral("quoted"); // the stream's own settings come back
    QCOMPARE(written.trimmed(), text + " \"quoted\"");
}

void tst_LvGPXTrackConfiguration::currentDefault()
{
    LvGPXTrackConfiguration configuration;
    configuration.setSmoothingSteps(9);
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(configuration);
    QVERIFY(LvGPXTrackConfiguration::currentDefaultConfiguration() == configuration);
    QVERIFY(LvGPXTrackConfiguration::defaultValue() != configuration);
}

LV_TEST_MAIN(tst_LvGPXTrackConfiguration)
#include "tst_LvGPXTrackConfiguration.moc"
