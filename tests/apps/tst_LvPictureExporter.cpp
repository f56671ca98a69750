#include "LvPictureExporter.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTileServer.h"
#include "LvTrackBounds.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTemporaryDir>
#include <QThreadPool>

#include <cmath>

using namespace LvTestTracks;

namespace
{

const QSize shownSize(400, 300);

LvMapView shownView()
{
    return LvMapView::aroundCenter(LvGeoPosition(50.5, 9.0), 5.25, shownSize);
}

LvPictureExporter exporterFor(const QString& mapSource, const QString& attribution = QString())
{
    return {LvGPXTrackSelection(list({"A"})), shownView(), mapSource, attribution};
}

LvPictureOptions sized(const QSize& size, double paintFactor = 1.0)
{
    LvPictureOptions options;
    options.size = size;
    options.paintFactor = paintFactor;
    return options;
}

QImage imageOf(const LvPictureExporter& exporter, const LvPictureOptions& options)
{
    QImage image(options.size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QString errorText = exporter.draw(painter, options);
    return errorText.isEmpty() ? image : QImage();
}

} // namespace

class tst_LvPictureExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void viewOfTheSameSize();
    void viewOfOtherSizes_data();
    void viewOfOtherSizes();
    void viewOfAllTracks();
    void files_data();
    void files();
    void attribution();
    void scaleBar();
    void refusals_data();
    void refusals();
    void tileServer();
    void dotsPerInchDoNotMatter();
};

void tst_LvPictureExporter::viewOfTheSameSize()
{
    const LvMapView view = exporterFor("none").viewFor(sized(shownSize));
    const QRectF expected = shownView().normalizedRect();
    QVERIFY(std::abs(view.normalizedRect().left() - expected.left()) < 1e-9);
    QVERIFY(std::abs(view.normalizedRect().bottom() - expected.bottom()) < 1e-9);
}

void tst_LvPictureExporter::viewOfOtherSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("zoom");
    QTest::newRow("twice as large") << QSize(800, 600) << 6.25;
    QTest::newRow("half as large") << QSize(200, 150) << 4.25;
    QTest::newRow("wider") << QSize(800, 300) << 5.25;
    QTest::newRow("higher") << QSize(400, 1200) << 5.25;
    QTest::newRow("wider and four times as large") << QSize(3200, 1200) << 7.25;
}

void tst_LvPictureExporter::viewOfOtherSizes()
{
    QFETCH(QSize, size);
    QFETCH(double, zoom);
    const LvMapView view = exporterFor("none").viewFor(sized(size));
    QCOMPARE(view.size(), size);
    QVERIFY(std::abs(view.zoom() - zoom) < 1e-9);
    const QRectF shown = shownView().normalizedRect();
    QVERIFY(view.normalizedRect().adjusted(-1e-9, -1e-9, 1e-9, 1e-9).contains(shown));
    QVERIFY(std::abs(view.normalizedRect().center().x() - shown.center().x()) < 1e-9);
    QVERIFY(std::abs(view.normalizedRect().center().y() - shown.center().y()) < 1e-9);
}

void tst_LvPictureExporter::viewOfAllTracks()
{
    LvPictureOptions options = sized(QSize(500, 500));
    options.extent = LvPictureOptions::Extent::AllTracks;
    const LvMapView view = exporterFor("none").viewFor(options);
    const LvGPXConfiguredTrackList tracks = list({"A"});
    const LvGeoPositionList points = tracks.at(0).allPoints();
    for (const LvGeoPosition& position : points) {
        const QPointF pixel =
            view.pixelOf(position.latitude().decimalDegrees(), position.longitude().decimalDegrees());
        QVERIFY(QRectF(0, 0, 500, 500).contains(pixel));
    }
    QVERIFY(view.zoom() > 5.5); // close up, unlike what is shown
}

void tst_LvPictureExporter::files_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("png") << "a.png" << QByteArray("\x89PNG");
    QTest::newRow("jpg") << "a.jpg" << QByteArray("\xff\xd8\xff");
    QTest::newRow("svg") << "a.svg" << QByteArray("<?xml");
    QTest::newRow("pdf") << "a.pdf" << QByteArray("%PDF");
}

void tst_LvPictureExporter::files()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    QTemporaryDir directory;
    const QString fileName = directory.filePath(name);
    // In a thread of its own, as the dialogue does it.
    QString errorText(QStringLiteral("not run"));
    QThreadPool pool;
    pool.start([&] { errorText = exporterFor("builtin").save(fileName, sized(QSize(640, 480), 1.5)); });
    QVERIFY(pool.waitForDone());
    QCOMPARE(errorText, QString());
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.peek(10).startsWith(start));
    if (name == QLatin1String("a.png")) {
        const QImage picture(fileName);
        QCOMPARE(picture.size(), QSize(640, 480));
        QVERIFY(picture
                == imageOf(exporterFor("builtin"), sized(QSize(640, 480), 1.5))
                       .convertToFormat(picture.format()));
    }
}

void tst_LvPictureExporter::attribution()
{
    const QImage without = imageOf(exporterFor("none"), sized(shownSize));
    const QImage with = imageOf(exporterFor("none", QStringLiteral("© Amt")), sized(shownSize));
    QVERIFY(!with.isNull());
    QVERIFY(without != with);
    const QRect upperHalf(0, 0, shownSize.width(), shownSize.height() / 2);
    QVERIFY(without.copy(upperHalf) == with.copy(upperHalf));
}

void tst_LvPictureExporter::scaleBar()
{
    LvPictureOptions options = sized(shownSize);
    const QImage with = imageOf(exporterFor("none"), options);
    options.hasScaleBar = false;
    const QImage without = imageOf(exporterFor("none"), options);
    QVERIFY(!without.isNull());
    QVERIFY(without != with);
}

void tst_LvPictureExporter::refusals_data()
{
    QTest::addColumn<QString>("mapSource");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("start");
    QTest::newRow("no such map") << "/no/such/map.mbtiles"
                                 << "a.png"
                                 << "Die Karte „/no/such/map.mbtiles“ ist nicht verfügbar: ";
    QTest::newRow("no such folder") << "none"
                                    << "no/a.png"
                                    << "Das Bild „";
    QTest::newRow("unknown format") << "none"
                                    << "a.bmp"
                                    << "Das Bild „";
}

void tst_LvPictureExporter::refusals()
{
    QFETCH(QString, mapSource);
    QFETCH(QString, name);
    QFETCH(QString, start);
    QTemporaryDir directory;
    const QString errorText = exporterFor(mapSource).save(directory.filePath(name), sized(QSize(64, 64)));
    QVERIFY2(errorText.startsWith(start), qPrintable(errorText));
    QVERIFY(QDir(directory.path()).isEmpty());
}

void tst_LvPictureExporter::tileServer()
{
    const LvTileServer server(QColor(0, 0, 200));
    LvPictureOptions options = sized(QSize(700, 500));
    options.hasScaleBar = false;
    const LvPictureExporter exporter(LvGPXTrackSelection(), shownView(), server.address(), QString());
    const QImage image = imageOf(exporter, options);
    QVERIFY(!image.isNull());
    QVERIFY(server.paths().size() >= 4);
    for (const QPoint& place :
         {QPoint(1, 1), QPoint(698, 1), QPoint(1, 498), QPoint(698, 498), QPoint(350, 250)}) {
        QCOMPARE(image.pixelColor(place), QColor(0, 0, 200));
    }
}

void tst_LvPictureExporter::dotsPerInchDoNotMatter()
{
    // A printer has more dots than a screen, but the picture already counts them.
    const LvPictureExporter exporter = exporterFor("builtin", QStringLiteral("© Amt"));
    const LvPictureOptions options = sized(QSize(900, 700), 2.0);
    QImage dense(options.size, QImage::Format_ARGB32_Premultiplied);
    dense.setDotsPerMeterX(11811); // 300 per inch
    dense.setDotsPerMeterY(11811);
    dense.fill(Qt::white);
    QPainter painter(&dense);
    QCOMPARE(painter.device()->logicalDpiY(), 300);
    QCOMPARE(exporter.draw(painter, options), QString());
    painter.end();
    const QImage usual = imageOf(exporter, options);
    int different = 0;
    for (int y = 0; y < usual.height(); ++y) {
        for (int x = 0; x < usual.width(); ++x) {
            const QColor a = usual.pixelColor(x, y);
            const QColor b = dense.pixelColor(x, y);
            different += std::abs(a.red() - b.red()) > 3 || std::abs(a.blue() - b.blue()) > 3 ? 1 : 0;
        }
    }
    QCOMPARE(different, 0);
}

LV_TEST_MAIN(tst_LvPictureExporter)
#include "tst_LvPictureExporter.moc"
