// What a program outside the tree can write with the style and settings classes of the installed package.

#include <QCheckBox>
#include <QDomDocument>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <LvDistance.h>
#include <LvEnumToStringTable.h>
#include <LvGPXFullShape.h>
#include <LvGPXMarkerShape.h>
#include <LvGPXTrackConfiguration.h>
#include <LvGPXTrackDisplayOptions.h>
#include <LvGPXTrackShape.h>
#include <LvGPXTrackStyle.h>
#include <LvGPXTrackStyleList.h>
#include <LvGeoLocationSettings.h>
#include <LvPreferencesGeoLocation.h>

class styles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void enumerations();
    void shapes();
    void configurations();
    void kmlStyles();
    void settings();
};

void styles::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("package"));
    QCoreApplication::setApplicationName(QStringLiteral("client"));
    QSettings().clear();
}

void styles::enumerations()
{
    QVERIFY(LvGPXMarkerShape(QStringLiteral("STAR6, DISK")) == LvGPXMarkerShape(129));
    QVERIFY(LvGPXMarkerShape(QStringLiteral(" circle ")) == LvGPXMarkerShape(2));
    QVERIFY(LvGPXMarkerShape(QStringLiteral("disk,,circle")) == LvGPXMarkerShape(3));
    QVERIFY(!LvGPXTrackShape().isValid());
    QVERIFY(LvGPXTrackShape(4).isValid());
    const auto* table = LvGPXMarkerShape().enumToStringTable();
    QCOMPARE(table->encodeCSV(LvGPXMarkerShapeEnum(1025)), QStringLiteral("disk, arrow"));
    QCOMPARE(table->encodeAsList(LvGPXMarkerShapeEnum(0x80000000U)).size(), 0);
    QVERIFY(!table->decode(QStringLiteral("nothing")));
    QVERIFY(*table->decode(QStringLiteral(" Unknown ")) == LvGPXMarkerShapeEnum(0));
    QCOMPARE(LvGPXTrackDisplayOptions().enumToStringTable()->encodeCSV(LvGPXTrackDisplayOptionsEnum(3)),
             QStringLiteral("stroke, fill"));
    LvGPXMarkerShape bits(1);
    bits |= LvGPXMarkerShape(2);
    QVERIFY(bits == LvGPXMarkerShapeEnum(3));
    bits &= LvGPXMarkerShapeEnum(2);
    QVERIFY(bits != LvGPXMarkerShapeEnum(3));
    QVERIFY((LvGPXMarkerShape(3) & LvGPXMarkerShape(1)) == LvGPXMarkerShapeEnum(1));
    QVERIFY(LvGPXMarkerShape(3).reducedTo(LvGPXMarkerShapeEnum(2)) == LvGPXMarkerShapeEnum(2));
    QVERIFY(LvGPXMarkerShape(1) < LvGPXMarkerShape(2));
    QCOMPARE(LvGPXTrackShape(4).humanReadable(LvGPXMarkerShape(1024)), QStringLiteral("Pfeil"));
    QCOMPARE(LvGPXTrackShape(4).humanReadable(LvGPXMarkerShape(1)), QStringLiteral("Strecke"));
    QVERIFY(LvGPXTrackShape(3).humanReadable(LvGPXMarkerShape(1)).isEmpty());
    QCOMPARE(LvGPXTrackShape(2).toolTip(),
             QStringLiteral("Die beiden Punkt werden als Fluglinie betrachtet."));
}

void styles::shapes()
{
    QVERIFY(LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(1025)).normalized()
            == LvGPXFullShape(LvGPXTrackShape(1), LvGPXMarkerShape(1)));
    LvGPXFullShape full(LvGPXTrackShape(4), LvGPXMarkerShape(1024 | 128));
    full.normalize();
    QVERIFY(full.markerShape() == LvGPXMarkerShape(1024));
    QVERIFY(LvGPXFullShape() == LvGPXFullShape(LvGPXTrackShape(0), LvGPXMarkerShape(0)));
    QCOMPARE(LvGPXTrackShape(4).possibleShapes().size(), 2);
    QVERIFY(LvGPXTrackShape(8).possibleShapes().first() == LvGPXTrackShape(1));
    QCOMPARE(LvGPXTrackShape(1).createMarkerShapes().size(), 9);
    QCOMPARE(LvGPXMarkerShape::allLineStringShapes().size(), 2);
    QVERIFY(LvGPXTrackShape(1).availableDisplayOptions() == LvGPXTrackDisplayOptions(7));
    QVERIFY(LvGPXTrackShape(1).defaultDisplayOptions() == LvGPXTrackDisplayOptions(1));
    QVERIFY(LvGPXMarkerShape(1024).createIcon(Qt::black, Qt::white).isNull());
    QVERIFY(!LvGPXMarkerShape(1).createIcon(Qt::black, Qt::white).isNull());
    QCOMPARE(LvGPXMarkerShape(1).createImage(QSize(20, 20), 12, Qt::black, Qt::white).size(), QSize(32, 32));
    QCOMPARE(LvGPXMarkerShape(1).targetRect(QPointF(5, 5), 2, 3), QRectF(3, 2, 4, 6));
    QDomDocument document;
    document.setContent(QStringLiteral("<Placemark><Point/><Polygon/></Placemark>"));
    QVERIFY(LvGPXTrackShape::decodeKml(document.documentElement()) == LvGPXTrackShape(8));
    QVERIFY(LvGPXTrackShape::fromXml(document.documentElement()) == LvGPXTrackShape(256));
    QVERIFY(LvGPXMarkerShape::fromXml(document.documentElement()) == LvGPXMarkerShape(1));
}

void styles::configurations()
{
    LvGPXTrackConfiguration config = LvGPXTrackConfiguration::defaultValue();
    QCOMPARE(config.fillColor(), QColor(252, 164, 4, 255));
    QCOMPARE(config.lineColor(), QColor(255, 145, 0));
    QVERIFY(!config.setLineWidth(LvDistance(10.0)));
    QVERIFY(config.setLineWidth(LvDistance(2.7)));
    QVERIFY(config.setHaloWidth(LvDistance(3)));
    QVERIFY(config.wouldChangeHaloToVisibleAgainst(LvGPXTrackConfiguration::defaultValue()));
    QVERIFY(config.hasDrawOption(LvGPXTrackDisplayOptions(1)));
    QVERIFY(config.setPenStyle(LvPenStyle(2)));
    const LvGPXTrackConfiguration read = LvGPXTrackConfiguration::deserialize(config.serialize());
    QCOMPARE(read.lineWidth().value(), 2.0);
    QVERIFY(read != config);
    QVERIFY(read.penStyle() == LvPenStyle(2));
    QVERIFY(LvGPXTrackConfiguration::deserialize(LvGPXTrackConfiguration::defaultValue().serialize())
            == LvGPXTrackConfiguration::defaultValue());
    QDomDocument document;
    document.setContent(QStringLiteral("<c><pensize>4</pensize><color>#80ff0000</color></c>"));
    const LvGPXTrackConfiguration sparse = LvGPXTrackConfiguration::fromXml(document.documentElement());
    QCOMPARE(sparse.haloWidth().value(), 8.0);
    QCOMPARE(sparse.fillColor().alpha(), 64);
    QCOMPARE(LvGPXTrackConfiguration::multiplyAlpha(QColor(1, 2, 3, 200), 0.5).alpha(), 100);
    const LvGPXTrackConfiguration all(Qt::red, LvDistance(1), Qt::blue, LvDistance(2),
                                      LvGPXTrackDisplayOptions(3), LvGPXMarkerShape(2), LvGPXTrackShape(8),
                                      LvPenStyle(1), 50, 4);
    QCOMPARE(all.smoothingSteps(), 4);
    QVERIFY(all.currentDisplayOptions() == LvGPXTrackDisplayOptions(3));
}

void styles::kmlStyles()
{
    QDomDocument document;
    document.setContent(QStringLiteral("<D><Style id='a'><LineStyle><width>0</width></LineStyle></Style>"
                                       "<Style id='b'><LineStyle><color>00000000</color></LineStyle>"
                                       "<PolyStyle><color>7f102030</color></PolyStyle></Style></D>"));
    const LvGPXTrackStyleList list = LvGPXTrackStyleList::fromKml(document.documentElement());
    const LvGPXTrackConfiguration plain = list.findStyling(QStringLiteral("#a"));
    QCOMPARE(plain.lineWidth().value(), 7.7);
    QCOMPARE(plain.haloWidth().value(), 15.4);
    QCOMPARE(list.findStyling(QStringLiteral("#b")).lineColor(), QColor(0x10, 0x20, 0x30, 254));
    QVERIFY(list.findStyling(QStringLiteral("a")) == LvGPXTrackConfiguration::defaultValue());
    QCOMPARE(LvGPXTrackStyle(QStringLiteral("i"), plain).styleId(), QStringLiteral("i"));
}

void styles::settings()
{
    LvGeoLocationSettings* settings = LvGeoLocationSettings::instance();
    QVERIFY(settings->defaultTrackConfiguration() == LvGPXTrackConfiguration::defaultValue());
    QVERIFY(settings->instantlyAddLocations());
    QSignalSpy spy(settings, &LvGeoLocationSettings::instantlyAddLocationsDisabled);
    settings->setInstantlyAddLocations(false);
    settings->setInstantlyAddLocations(false);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().toBool(), true);
    LvGPXTrackConfiguration point = LvGPXTrackConfiguration::defaultValue();
    point.setTrackShape(LvGPXTrackShape(1));
    settings->setDefaultTrackConfiguration(point);
    settings->loadSettings();
    QVERIFY(LvGPXTrackConfiguration::currentDefaultConfiguration().trackShape() == LvGPXTrackShape(256));
    LvPreferencesGeoLocation page(nullptr);
    QCOMPARE(page.title(), QStringLiteral("Landkarten"));
    auto* box = page.findChild<QCheckBox*>(QStringLiteral("myInstantlyAddLocations"));
    QVERIFY(box != nullptr);
    page.readFromConfig();
    QVERIFY(!box->isChecked() || settings->instantlyAddLocations());
    box->setChecked(true);
    page.writeToConfig();
    QVERIFY(settings->instantlyAddLocations());
}

QTEST_MAIN(styles)
#include "styles.moc"
