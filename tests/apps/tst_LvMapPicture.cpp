#include "LvDistance.h"
#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "LvMapPicture.h"
#include "LvMapSource.h"
#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTestTracks.h"
#include "LvTrackBounds.h"
#include "LvTrackLoader.h"
#include "LvTranslations.h"
#include "LvWorldMapSource.h"

#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <unistd.h>

namespace
{

/// A map of one colour.
class PlainMap : public LvMapSource
{
public:
    explicit PlainMap(const QColor& color, const QString& attribution = QString())
        : myColor(color)
        , myAttribution(attribution)
    {
    }

    [[nodiscard]] bool isValid() const override { return true; }

    [[nodiscard]] QString errorText() const override { return {}; }

    [[nodiscard]] QString attribution() const override { return myAttribution; }

    void draw(QPainter& painter, const LvMapView& view, double /*paintFactor*/) override
    {
        painter.fillRect(QRect(QPoint(0, 0), view.size()), myColor);
    }

private:
    QColor myColor;
    QString myAttribution;
};

LvMapView viewOf(const QSize& size)
{
    return {LvGeoPositionRect(LvLatitudeRange(50.0, 52.0), LvLongitudeRange(8.0, 12.0)), size};
}

LvGPXTrackConfiguration style(const QColor& color, double width, double halo = 0.0)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setLineColor(color);
    configuration.setLineWidth(LvDistance(width));
    configuration.setHaloWidth(LvDistance(halo));
    configuration.setTrackShape(LvGPXTrackShapeEnum::automatic);
    return configuration;
}

LvGPXConfiguredTrack line(const QList<std::pair<double, double>>& positions,
                          const LvGPXTrackConfiguration& configuration)
{
    QList<LvGPXTrackPoint> points;
    for (const auto& [latitude, longitude] : positions) {
        points.append(LvTestTracks::point(latitude, longitude));
    }
    return {LvTestTracks::line(QStringLiteral("line"), points), configuration};
}

LvGPXTrackSelection selectionOf(const QList<LvGPXConfiguredTrack>& tracks)
{
    LvGPXConfiguredTrackList list;
    for (const LvGPXConfiguredTrack& track : tracks) {
        list.append(track);
    }
    LvGPXTrackSelection selection;
    selection.setTracks(list);
    return selection;
}

LvGPXTrackSelection sample(const QString& name)
{
    LvGPXTrackSelection selection;
    selection.setTracks(LvTrackLoader::load(LvTest::sampleFile(name)).tracks);
    return selection;
}

/// The smallest rectangle around everything that differs between two pictures.
QRect differenceOf(const QImage& a, const QImage& b)
{
    QRect rect;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y)) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    return rect;
}

} // namespace

class tst_LvMapPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void golden_data();
    void golden();
    void withoutMap();
    void haloLiesBelowAllLines();
    void areaHidesTheHaloBelow();
    void cropping();
    void scaleBarIsThatOfTheMiddleLatitude();
    void legendFits_data();
    void legendFits();
    void legendPartsDoNotMeet_data();
    void legendPartsDoNotMeet();
    void attributionOfTheSource();
    void legendOnTracks();
    void roomForTheLegend();
    void saveImages_data();
    void saveImages();
    void saveSvg();
    void savePdf();
    void notEnoughMemory();
    void saveFails_data();
    void saveFails();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory.filePath(name); }

    QTemporaryDir myDirectory;
};

void tst_LvMapPicture::initTestCase()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvMapPicture::golden_data()
{
    QTest::addColumn<QString>("sampleName");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("paintFactor");
    QTest::addColumn<QString>("attribution");
    QTest::addColumn<int>("cropping");

    const QString none;
    const QString notice = QStringLiteral("© Somebody");
    QTest::newRow("picture-styles") << "german-bight.kml" << QSize(600, 450) << 1.0 << none << 255;
    QTest::newRow("picture-archive") << "iceland.kmz" << QSize(600, 450) << 1.0 << notice << 255;
    QTest::newRow("picture-cropped") << "iceland.kmz" << QSize(600, 450) << 1.0 << notice << 60;
    QTest::newRow("picture-date-line") << "date-line.gpx" << QSize(600, 450) << 0.5 << none << 255;
    QTest::newRow("picture-enclaves") << "lake-islands.gpx" << QSize(400, 300) << 1.0 << none << 255;
    QTest::newRow("picture-small") << "iceland.kmz" << QSize(160, 120) << 1.0 << notice << 255;
    QTest::newRow("picture-double") << "german-bight.kml" << QSize(600, 450) << 2.0 << notice << 255;
}

void tst_LvMapPicture::golden()
{
    QFETCH(QString, sampleName);
    QFETCH(QSize, size);
    QFETCH(double, paintFactor);
    QFETCH(QString, attribution);
    QFETCH(int, cropping);

    LvGPXTrackSelection selection = sample(sampleName);
    QVERIFY(!selection.isEmpty());
    selection.setCroppingOpacity(cropping);
    LvWorldMapSource map;
    LvMapPicture picture(selection, LvMapView::fittedTo(LvTrackBounds::ofSelection(selection), size), &map,
                         paintFactor);
    picture.setAttribution(attribution);
    const QImage image = picture.toImage();
    QCOMPARE(image.size(), size);
    QVERIFY(LvTest::matchesGolden(image, QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvMapPicture::withoutMap()
{
    LvMapPicture picture(selectionOf({line({{51.0, 8.0}, {51.0, 12.0}}, style(Qt::red, 10.0))}),
                         viewOf({400, 300}), nullptr, 1.0);
    picture.setScaleBarVisible(false);
    QCOMPARE(picture.attribution(), QString());
    const QImage image = picture.toImage();
    const QPoint onLine = viewOf({400, 300}).pixelOf(51.0, 10.0).toPoint();
    QCOMPARE(image.pixelColor(onLine), QColor(Qt::red));
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QCOMPARE(qAlpha(image.pixel(5, 299)), 0);
}

void tst_LvMapPicture::haloLiesBelowAllLines()
{
    // The second line runs beside the first, within its own halo's reach.
    PlainMap map(Qt::black);
    const QSize size(400, 300);
    const LvMapView view = viewOf(size);
    LvMapPicture picture(selectionOf({line({{51.0, 8.0}, {51.0, 12.0}}, style(Qt::red, 6.0, 10.0)),
                                      line({{50.95, 8.0}, {50.95, 12.0}}, style(Qt::blue, 6.0, 10.0))}),
                         view, &map, 1.0);
    picture.setScaleBarVisible(false);
    const QImage image = picture.toImage();
    const QPoint first = view.pixelOf(51.0, 10.0).toPoint();
    const QPoint second = view.pixelOf(50.95, 10.0).toPoint();
    QVERIFY(second.y() - first.y() < 12); // else the test shows nothing
    QCOMPARE(image.pixelColor(first), QColor(Qt::red));
    QCOMPARE(image.pixelColor(second), QColor(Qt::blue));
    QVERIFY(image.pixelColor(first - QPoint(0, 6)).lightness() > 150); // the light seam
    QCOMPARE(image.pixelColor(first - QPoint(0, 12)), QColor(Qt::black));
}

void tst_LvMapPicture::areaHidesTheHaloBelow()
{
    PlainMap map(Qt::black);
    const LvMapView view = viewOf({400, 300});
    LvGPXTrackConfiguration area = style(Qt::green, 1.0);
    area.setFillColor(Qt::green);
    area.setCurrentDisplayOptions(LvGPXTrackDisplayOptionsEnum::fill);
    area.setTrackShape(LvGPXTrackShapeEnum::polygon);
    const LvGPXConfiguredTrack below = line({{51.0, 8.0}, {51.0, 12.0}}, style(Qt::red, 6.0, 10.0));
    const LvGPXConfiguredTrack square =
        line({{50.5, 9.0}, {50.5, 11.0}, {51.5, 11.0}, {51.5, 9.0}, {50.5, 9.0}}, area);
    const LvGPXConfiguredTrack above = line({{51.2, 8.0}, {51.2, 12.0}}, style(Qt::blue, 6.0, 10.0));
    const QImage image = LvMapPicture(selectionOf({below, square, above}), view, &map, 1.0).toImage();
    QCOMPARE(image.pixelColor(view.pixelOf(51.0, 10.0).toPoint()), QColor(Qt::green));
    QCOMPARE(image.pixelColor(view.pixelOf(51.0, 8.5).toPoint()), QColor(Qt::red));
    const QPoint line = view.pixelOf(51.2, 10.0).toPoint();
    QCOMPARE(image.pixelColor(line), QColor(Qt::blue));
    QVERIFY(image.pixelColor(line - QPoint(0, 6)).red() > 120); // the halo lies over the area
}

void tst_LvMapPicture::cropping()
{
    PlainMap map(Qt::yellow);
    const LvMapView view = viewOf({400, 300});
    LvGPXTrackSelection selection =
        selectionOf({line({{51.0, 8.0}, {51.0, 12.0}}, style(Qt::red, 6.0, 20.0))});
    selection.setCroppingOpacity(100);
    LvMapPicture picture(selection, view, &map, 1.0);
    picture.setScaleBarVisible(false);
    const QImage image = picture.toImage();
    const QPoint onLine = view.pixelOf(51.0, 10.0).toPoint();
    QCOMPARE(image.pixelColor(onLine), QColor(Qt::red));
    QCOMPARE(image.pixelColor(onLine - QPoint(0, 9)), QColor(Qt::yellow)); // the halo shows the map
    QCOMPARE(qAlpha(image.pixel(onLine - QPoint(0, 60))), 100);
}

void tst_LvMapPicture::scaleBarIsThatOfTheMiddleLatitude()
{
    // 10 km at latitude 51: black pixels of the bar's base line, counted.
    PlainMap map(Qt::white);
    const LvMapView view = LvMapView::aroundCenter(LvGeoPosition(51.0, 10.0), 9.0, {900, 600});
    const QImage image = LvMapPicture({}, view, &map, 1.0).toImage();
    int longest = 0;
    for (int y = 500; y < 600; ++y) {
        int run = 0;
        for (int x = 0; x < 450; ++x) {
            run = qGray(image.pixel(x, y)) < 120 ? run + 1 : 0;
            longest = std::max(longest, run);
        }
    }
    // The ladder holds 1, 2.5, 5 and 10 times: at most 300 pixels.
    const double kilometres = longest / view.pixelsPerKilometre();
    QVERIFY2(std::abs(kilometres - 50.0) < 1.0, qPrintable(QString::number(kilometres)));
}

void tst_LvMapPicture::legendFits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");
    for (const QSize& size : {QSize(1600, 1000), QSize(400, 300), QSize(200, 150), QSize(120, 400),
                              QSize(900, 40), QSize(60, 60)}) {
        for (const double factor : {0.5, 1.0, 4.0}) {
            QTest::addRow("%dx%d, factor %g", size.width(), size.height(), factor) << size << factor;
        }
    }
}

void tst_LvMapPicture::legendFits()
{
    QFETCH(QSize, size);
    QFETCH(double, factor);

    PlainMap map(Qt::white);
    const QImage blank = [&size] {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        return image;
    }();
    const LvMapView view(size);
    LvMapPicture scaleOnly({}, view, &map, factor);
    const QRect scale = differenceOf(scaleOnly.toImage(), blank);
    QVERIFY(!scale.isEmpty());
    QVERIFY2(scale.right() < size.width() - 1 || scale.height() < 6,
             qPrintable(QStringLiteral("to %1").arg(scale.right())));
    QVERIFY(scale.top() > 0 || scale.height() < 6);

    LvMapPicture noticeOnly({}, view, &map, factor);
    noticeOnly.setScaleBarVisible(false);
    noticeOnly.setAttribution(QStringLiteral("© A rather long notice of somebody"));
    const QRect notice = differenceOf(noticeOnly.toImage(), blank);
    QVERIFY(!notice.isEmpty());
    QVERIFY(notice.left() > 0 || notice.height() < 6);
    QVERIFY(notice.top() > 0 || notice.height() < 6);
}

void tst_LvMapPicture::legendPartsDoNotMeet_data()
{
    legendFits_data();
}

void tst_LvMapPicture::legendPartsDoNotMeet()
{
    QFETCH(QSize, size);
    QFETCH(double, factor);

    // Where both are drawn the picture equals the one with only one of them, outside the other's rectangle.
    PlainMap map(Qt::white);
    const QString text = QStringLiteral("© A rather long notice of somebody");
    LvMapPicture both({}, LvMapView(size), &map, factor);
    both.setAttribution(text);
    const QImage withBoth = both.toImage();
    LvMapPicture scaleOnly({}, LvMapView(size), &map, factor);
    const QImage withScale = scaleOnly.toImage();
    QImage blank = withScale;
    blank.fill(Qt::white);
    const QRect scale = differenceOf(withScale, blank);
    const QRect notice = differenceOf(withBoth, withScale);
    QVERIFY(!notice.isEmpty());
    const QRect common = scale & notice;
    QVERIFY2(common.width() <= 1 || common.height() <= 1,
             qPrintable(QStringLiteral("%1 x %2 pixels in common").arg(common.width()).arg(common.height())));
}

void tst_LvMapPicture::attributionOfTheSource()
{
    PlainMap map(Qt::white, QStringLiteral("© Somebody"));
    LvMapPicture picture({}, viewOf({600, 400}), &map, 1.0);
    QCOMPARE(picture.attribution(), QStringLiteral("© Somebody"));
    const QImage image = picture.toImage();
    picture.setAttribution(QString());
    const QRect notice = differenceOf(image, picture.toImage());
    QVERIFY(notice.left() > 300);
    QVERIFY(notice.top() > 300);
    QVERIFY(notice.right() < 600 - 8);
    QVERIFY(notice.bottom() < 400 - 8);
}

void tst_LvMapPicture::legendOnTracks()
{
    PlainMap map(Qt::white);
    const QSize size(900, 600);
    const LvMapView view = viewOf(size);
    const LvGPXTrackConfiguration thin = style(Qt::red, 2.0);
    const auto track = [&](double x0, double y0, double x1, double y1) {
        const LvMapProjection& projection = view.projection();
        const LvGeoPosition a = projection.convert(QPoint(int(x0), int(y0)));
        const LvGeoPosition b = projection.convert(QPoint(int(x1), int(y1)));
        return selectionOf({line({{a.latitude().decimalDegrees(), a.longitude().decimalDegrees()},
                                  {b.latitude().decimalDegrees(), b.longitude().decimalDegrees()}},
                                 thin)});
    };
    const auto isCovered = [&](const LvGPXTrackSelection& selection, const QString& attribution = {}) {
        LvMapPicture picture(selection, view, &map, 1.0);
        picture.setAttribution(attribution);
        return picture.isLegendOnTracks();
    };
    QVERIFY(!isCovered({}));
    QVERIFY(!isCovered(track(10, 10, 890, 10)));
    QVERIFY(!isCovered(track(500, 570, 890, 570)));
    QVERIFY(isCovered(track(500, 570, 890, 570), QStringLiteral("© Somebody")));
    QVERIFY(isCovered(track(50, 10, 50, 599))); // no end of it lies there
    QVERIFY(!isCovered(track(800, 10, 800, 599)));
    QVERIFY(isCovered(track(800, 10, 800, 599), QStringLiteral("© Somebody")));
    // The picture shows a world and a half: the copy of the track lies below the bar.
    const LvMapView world = LvMapView::aroundCenter(LvGeoPosition(-60.0, 0.0), 1.0, {800, 400});
    const LvGPXTrackSelection pacific = selectionOf({line({{-60.0, 140.0}, {-85.0, 141.0}}, thin)});
    QVERIFY(LvMapPicture(pacific, world, &map, 1.0).isLegendOnTracks());
}

void tst_LvMapPicture::roomForTheLegend()
{
    PlainMap map(Qt::white);
    const QSize size(900, 600);
    // The outline of the picture: whatever the scale, it runs through the lower left corner.
    const LvGPXTrackSelection selection = selectionOf(
        {line({{50.0, 8.0}, {50.0, 12.0}, {52.0, 12.0}, {52.0, 8.0}, {50.0, 8.0}}, style(Qt::red, 4.0))});
    const LvGeoPositionRect box = LvTrackBounds::ofSelection(selection);
    for (const double factor : {0.5, 1.0, 2.0}) {
        LvMapPicture picture(selection, LvMapView(box, size), &map, factor);
        picture.setAttribution(QStringLiteral("© Somebody"));
        QVERIFY(picture.isLegendOnTracks());
        picture.setView(LvMapView::fittedTo(box, size, picture.legendHeight()));
        QVERIFY(!picture.isLegendOnTracks());
    }
}

void tst_LvMapPicture::saveImages_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << "a.png" << QByteArray("png");
    QTest::newRow("jpg") << "a.jpg" << QByteArray("jpeg");
    QTest::newRow("jpeg") << "a.jpeg" << QByteArray("jpeg");
    QTest::newRow("capitals") << "A.PNG" << QByteArray("png");
    QTest::newRow("several dots") << "a.b.png" << QByteArray("png");
}

void tst_LvMapPicture::saveImages()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    LvMapPicture picture(selectionOf({line({{51.0, 8.0}, {51.0, 12.0}}, style(Qt::red, 10.0))}),
                         viewOf({320, 240}), nullptr, 1.0);
    picture.setScaleBarVisible(false);
    QCOMPARE(picture.save(path(name)), QString());
    QImageReader reader(path(name));
    reader.setDecideFormatFromContent(true);
    QCOMPARE(reader.format(), format);
    const QImage image = reader.read();
    QCOMPARE(image.size(), QSize(320, 240));
    // Without a map the background is transparent, or white where there is no transparency.
    QCOMPARE(image.pixelColor(3, 3), format == "png" ? QColor(Qt::transparent) : QColor(Qt::white));
}

void tst_LvMapPicture::saveSvg()
{
    LvWorldMapSource map;
    const LvGPXTrackSelection selection = sample(QStringLiteral("iceland.kmz"));
    LvMapPicture picture(selection, LvMapView::fittedTo(LvTrackBounds::ofSelection(selection), {640, 480}),
                         &map, 1.0);
    picture.setAttribution(QStringLiteral("© Somebody & <others>"));
    QCOMPARE(picture.save(path(QStringLiteral("a.svg"))), QString());
    QXmlStreamReader reader(LvTestFiles::read(path(QStringLiteral("a.svg"))));
    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.name(), QStringLiteral("svg"));
    QCOMPARE(reader.attributes().value(QStringLiteral("viewBox")), QStringLiteral("0 0 640 480"));
    QStringList texts;
    int paths = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement() && reader.name() == QStringLiteral("path")) {
            ++paths;
        } else if (reader.isStartElement() && reader.name() == QStringLiteral("text")) {
            texts.append(reader.readElementText());
        }
    }
    QVERIFY(!reader.hasError());
    QVERIFY(paths > 5);
    QVERIFY(texts.contains(QStringLiteral("© Somebody & <others>")));
}

void tst_LvMapPicture::savePdf()
{
    LvWorldMapSource map;
    LvMapPicture picture({}, viewOf({640, 480}), &map, 1.0);
    QCOMPARE(picture.save(path(QStringLiteral("a.pdf"))), QString());
    const QByteArray bytes = LvTestFiles::read(path(QStringLiteral("a.pdf")));
    QVERIFY(bytes.startsWith("%PDF-"));
    QVERIFY(bytes.trimmed().endsWith("%%EOF"));
    QVERIFY(bytes.contains("/MediaBox [0 0 480.000000 360.000000]")); // points: 96 pixels are 72 of them
    QCOMPARE(bytes.count("/Type /Page\n"), 1);
}

void tst_LvMapPicture::notEnoughMemory()
{
    LvMapPicture picture(LvGPXTrackSelection(), LvMapView(QSize(1 << 30, 1 << 30)), nullptr, 1.0);
    QVERIFY(picture.toImage().isNull());
    const QString fileName = path(QStringLiteral("memory.png"));
    QCOMPARE(picture.save(fileName), QStringLiteral("not enough memory for the picture"));
    QVERIFY(!QFile::exists(fileName));
}

void tst_LvMapPicture::saveFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no suffix") << "a"
                               << "unknown kind of picture";
    QTest::newRow("other suffix") << "a.bmp"
                                  << "unknown kind of picture";
    QTest::newRow("no such folder") << "no/a.png"
                                    << "cannot be written: No such file or directory";
    QTest::newRow("a folder") << "folder.png"
                              << "cannot be written: Filename refers to a directory";
}

void tst_LvMapPicture::saveFails()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QVERIFY(QDir(myDirectory.path()).mkpath(QStringLiteral("folder.png")));
    QCOMPARE(LvMapPicture({}, viewOf({32, 24}), nullptr, 1.0).save(path(name)), reason);
}

LV_TEST_MAIN(tst_LvMapPicture)
#include "tst_LvMapPicture.moc"
