#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTestTiles.h"
#include "LvTileDirectorySource.h"
#include "LvTranslations.h"

#include <QTemporaryDir>

#include <sys/stat.h>

namespace
{

const QColor missing(236, 240, 242); // what shows where there is no tile

QColor pixel(const QImage& image, int x, int y)
{
    return image.pixelColor(x, y);
}

} // namespace

class tst_LvTileDirectorySource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void notATileTree_data();
    void notATileTree();
    void tilesStandWhereTheyBelong();
    void worldCopies();
    void nearestZoomLevel_data();
    void nearestZoomLevel();
    void missingTilesComeFromAbove();
    void enormousEnlargement_data();
    void enormousEnlargement();
    void kindsOfPictures_data();
    void kindsOfPictures();
    void damagedTiles_data();
    void damagedTiles();
    void attribution_data();
    void attribution();
    void tooManyTiles();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory->filePath(name); }

    void writeTile(int zoom, int column, int row, const QByteArray& bytes,
                   const QString& suffix = "png") const
    {
        QVERIFY(LvTestFiles::write(
            path(QStringLiteral("%1/%2/%3.%4").arg(zoom).arg(column).arg(row).arg(suffix)), bytes));
    }

    void writeLevel(int zoom) const
    {
        for (int column = 0; column < 1 << zoom; ++column) {
            for (int row = 0; row < 1 << zoom; ++row) {
                writeTile(zoom, column, row, LvTestTiles::tile(LvTestTiles::color(zoom, column, row)));
            }
        }
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
};

void tst_LvTileDirectorySource::initTestCase()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvTileDirectorySource::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(myDirectory->isValid());
}

void tst_LvTileDirectorySource::notATileTree_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("empty") << "";
    QTest::newRow("a name") << "tiles/0/0";
    QTest::newRow("a negative number") << "-1/0";
    QTest::newRow("a number with a zero in front") << "01/0";
    QTest::newRow("too deep") << "31/0";
}

void tst_LvTileDirectorySource::notATileTree()
{
    QFETCH(QString, folder);
    QVERIFY(QDir(myDirectory->path()).mkpath(folder.isEmpty() ? QStringLiteral(".") : folder));
    LvTileDirectorySource source(myDirectory->path());
    QVERIFY(!source.isValid());
    QCOMPARE(source.errorText(), QStringLiteral("no folder of a zoom level in it ({z}/{x}/{y}.png)"));
    QCOMPARE(pixel(LvTestTiles::draw(source, LvMapView(QSize(10, 10))), 5, 5), missing);
}

void tst_LvTileDirectorySource::tilesStandWhereTheyBelong()
{
    writeLevel(1);
    LvTileDirectorySource source(myDirectory->path());
    QVERIFY(source.isValid());
    QCOMPARE(source.errorText(), QString());
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(512, 512)));
    for (int column = 0; column < 2; ++column) {
        for (int row = 0; row < 2; ++row) {
            // To the very edge: no gap and no blending between neighbours.
            for (const int offset : {0, 128, 255}) {
                QCOMPARE(pixel(image, (column * 256) + offset, (row * 256) + offset),
                         LvTestTiles::color(1, column, row));
            }
        }
    }
}

void tst_LvTileDirectorySource::worldCopies()
{
    writeLevel(1);
    LvTileDirectorySource source(myDirectory->path());
    const LvMapView view = LvMapView::aroundCenter(LvGeoPosition(0.0, 180.0), 1.0, {1024, 600});
    const QImage image = LvTestTiles::draw(source, view);
    // The date line is in the middle; half a world to each side follow the next copies.
    QCOMPARE(pixel(image, 500, 200), LvTestTiles::color(1, 1, 0));
    QCOMPARE(pixel(image, 520, 200), LvTestTiles::color(1, 0, 0));
    QCOMPARE(pixel(image, 10, 200), LvTestTiles::color(1, 0, 0));
    QCOMPARE(pixel(image, 1010, 400), LvTestTiles::color(1, 1, 1));
    QCOMPARE(pixel(image, 500, 10), missing); // north of the map
    QCOMPARE(pixel(image, 500, 590), missing);
}

void tst_LvTileDirectorySource::nearestZoomLevel_data()
{
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("expected");
    QTest::newRow("below the first level") << 0.0 << 1;
    QTest::newRow("rounded down") << 1.4 << 1;
    QTest::newRow("rounded up") << 1.6 << 2;
    QTest::newRow("beyond the last level") << 5.0 << 3;
}

void tst_LvTileDirectorySource::nearestZoomLevel()
{
    QFETCH(double, zoom);
    QFETCH(int, expected);
    for (const char* level : {"1", "2", "3"}) {
        QVERIFY(QDir(myDirectory->path()).mkpath(QLatin1String(level)));
    }
    const LvTileDirectorySource source(myDirectory->path());
    QCOMPARE(source.zoomFor(LvMapView::aroundCenter(LvGeoPosition(1.0, 1.0), zoom, {200, 200})), expected);
}

void tst_LvTileDirectorySource::missingTilesComeFromAbove()
{
    writeTile(0, 0, 0, LvTestTiles::quarters(Qt::red, Qt::green, Qt::blue, Qt::yellow));
    writeTile(2, 3, 3, LvTestTiles::tile(Qt::black));
    QVERIFY(QDir(myDirectory->path()).mkpath(QStringLiteral("1"))); // an empty level in between
    LvTileDirectorySource source(myDirectory->path());
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(1024, 1024)));
    QCOMPARE(pixel(image, 128, 128), QColor(Qt::red));
    QCOMPARE(pixel(image, 1000, 10), QColor(Qt::green));
    QCOMPARE(pixel(image, 10, 1000), QColor(Qt::blue));
    QCOMPARE(pixel(image, 640, 640), QColor(Qt::yellow));
    QCOMPARE(pixel(image, 900, 900), QColor(Qt::black));
}

void tst_LvTileDirectorySource::enormousEnlargement_data()
{
    QTest::addColumn<double>("zoom");
    QTest::newRow("some pixels of the tile") << 6.0;
    QTest::newRow("a pixel of the tile") << 9.0;
    QTest::newRow("a part of a pixel") << 20.0;
    QTest::newRow("beyond 32 bits") << 24.0;
    QTest::newRow("as deep as views go") << 30.0;
}

void tst_LvTileDirectorySource::enormousEnlargement()
{
    QFETCH(double, zoom);
    writeTile(0, 0, 0, LvTestTiles::quarters(Qt::red, Qt::green, Qt::blue, Qt::yellow));
    LvTileDirectorySource source(myDirectory->path());
    const QSize size(600, 400);
    const auto at = [&](double latitude, double longitude) {
        return pixel(LvTestTiles::draw(source, LvMapView::aroundCenter({latitude, longitude}, zoom, size)),
                     300, 200);
    };
    QCOMPARE(at(40.0, -90.0), QColor(Qt::red));
    QCOMPARE(at(40.0, 90.0), QColor(Qt::green));
    QCOMPARE(at(-40.0, -90.0), QColor(Qt::blue));
    QCOMPARE(at(-40.0, 90.0), QColor(Qt::yellow));
}

void tst_LvTileDirectorySource::kindsOfPictures_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("side");
    QTest::newRow("png") << "png" << QByteArray("PNG") << 256;
    QTest::newRow("jpg") << "jpg" << QByteArray("JPG") << 256;
    QTest::newRow("jpeg") << "jpeg" << QByteArray("JPG") << 256;
    QTest::newRow("a JPEG named png") << "png" << QByteArray("JPG") << 256;
    QTest::newRow("twice as large") << "png" << QByteArray("PNG") << 512;
    QTest::newRow("small") << "png" << QByteArray("PNG") << 16;
}

void tst_LvTileDirectorySource::kindsOfPictures()
{
    QFETCH(QString, suffix);
    QFETCH(QByteArray, format);
    QFETCH(int, side);
    writeTile(0, 0, 0, LvTestTiles::tile(QColor(200, 100, 50), format.constData(), side), suffix);
    LvTileDirectorySource source(myDirectory->path());
    const QColor color = pixel(LvTestTiles::draw(source, LvMapView(QSize(256, 256))), 200, 50);
    QVERIFY(std::abs(color.red() - 200) < 4 && std::abs(color.green() - 100) < 4
            && std::abs(color.blue() - 50) < 4);
}

void tst_LvTileDirectorySource::damagedTiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("<html>Not found</html>");
    QTest::newRow("only the beginning") << LvTestTiles::tile(Qt::red).left(20);
    // 20000 x 20000 pixels of one colour pack well.
    QByteArray huge = LvTestTiles::tile(Qt::red, "BMP", 1);
    huge.replace(18, 8, QByteArray::fromHex("204e0000204e0000"));
    QTest::newRow("a header of a gigantic picture") << huge;
}

void tst_LvTileDirectorySource::damagedTiles()
{
    QFETCH(QByteArray, bytes);
    writeTile(0, 0, 0, LvTestTiles::tile(Qt::green));
    writeTile(1, 0, 0, bytes);
    LvTileDirectorySource source(myDirectory->path());
    // Like a missing one.
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(512, 512)));
    QCOMPARE(pixel(image, 100, 100), QColor(Qt::green));
}

void tst_LvTileDirectorySource::attribution_data()
{
    QTest::addColumn<QByteArray>("metadata");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QByteArray("{}") << "";
    QTest::newRow("text") << QByteArray(R"({"attribution":"Somebody"})") << "Somebody";
    QTest::newRow("HTML") << QByteArray(R"({"attribution":"&copy; <a href=\"https://x.y\">Somebody</a>"})")
                          << QStringLiteral("© Somebody");
    QTest::newRow("a number") << QByteArray(R"({"attribution":7})") << "";
    QTest::newRow("no JSON") << QByteArray("attribution=Somebody") << "";
}

void tst_LvTileDirectorySource::attribution()
{
    QFETCH(QByteArray, metadata);
    QFETCH(QString, expected);
    QVERIFY(LvTestFiles::write(path(QStringLiteral("metadata.json")), metadata));
    QCOMPARE(LvTileDirectorySource(myDirectory->path()).attribution(), expected);
}

void tst_LvTileDirectorySource::tooManyTiles()
{
    // Only a deep level, and a picture of the whole world: millions of tiles smaller than a pixel.
    writeTile(18, 0, 0, LvTestTiles::tile(Qt::red));
    LvTileDirectorySource source(myDirectory->path());
    QCOMPARE(pixel(LvTestTiles::draw(source, LvMapView(QSize(100, 100))), 50, 50), missing);
}

LV_TEST_MAIN(tst_LvTileDirectorySource)
#include "tst_LvTileDirectorySource.moc"
