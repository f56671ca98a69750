#include "LvMBTilesSource.h"
#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTestTiles.h"
#include "LvTranslations.h"

#include <QElapsedTimer>
#include <QMap>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include <sys/stat.h>

namespace
{

using Metadata = QMap<QString, QString>;

const QColor missing(236, 240, 242);

struct Tile {
    int zoom;
    int column;
    int row; // from the south, as it stands in the file
    QByteArray bytes;
};

/// Runs statements on a database file, through a connection that is closed afterwards.
bool run(const QString& fileName, const QStringList& statements, const QList<Tile>& tiles = {},
         const Metadata& metadata = {})
{
    const QString connection = QStringLiteral("tst_LvMBTilesSource");
    bool isFine = true;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(fileName);
        isFine = database.open();
        QSqlQuery query(database);
        query.exec(QStringLiteral("PRAGMA synchronous = OFF")); // the file need not survive a power cut
        for (const QString& statement : statements) {
            isFine = query.exec(statement) && isFine;
        }
        for (const Tile& tile : tiles) {
            query.prepare(QStringLiteral("INSERT INTO tiles VALUES (?, ?, ?, ?)"));
            query.addBindValue(tile.zoom);
            query.addBindValue(tile.column);
            query.addBindValue(tile.row);
            query.addBindValue(tile.bytes);
            isFine = query.exec() && isFine;
        }
        for (auto entry = metadata.begin(); entry != metadata.end(); ++entry) {
            query.prepare(QStringLiteral("INSERT INTO metadata VALUES (?, ?)"));
            query.addBindValue(entry.key());
            query.addBindValue(entry.value());
            isFine = query.exec() && isFine;
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return isFine;
}

const QStringList tables = {
    QStringLiteral("CREATE TABLE metadata (name text, value text)"),
    QStringLiteral("CREATE TABLE tiles (zoom_level integer, tile_column integer, tile_row integer, "
                   "tile_data blob)"),
};

QList<Tile> level(int zoom)
{
    QList<Tile> tiles;
    const int last = (1 << zoom) - 1;
    for (int column = 0; column <= last; ++column) {
        for (int row = 0; row <= last; ++row) {
            tiles.append(
                {zoom, column, last - row, LvTestTiles::tile(LvTestTiles::color(zoom, column, row))});
        }
    }
    return tiles;
}

} // namespace

class tst_LvMBTilesSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void reasons_data();
    void reasons();
    void notADatabase();
    void rowsAreCountedFromTheSouth();
    void zoomLevels_data();
    void zoomLevels();
    void missingTilesComeFromAbove();
    void absurdTiles_data();
    void absurdTiles();
    void kindsOfPictures_data();
    void kindsOfPictures();
    void endlessQueries_data();
    void endlessQueries();
    void attributionOpensNoFiles();
    void texts_data();
    void texts();
    void withoutMetadataTable();
    void severalAtOnceAndReadOnly();

private:
    [[nodiscard]] QString fileName() const
    {
        return myDirectory->filePath(QStringLiteral("a #1%20.mbtiles"));
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
};

void tst_LvMBTilesSource::initTestCase()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvMBTilesSource::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(myDirectory->isValid());
}

void tst_LvMBTilesSource::reasons_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<int>("tileCount");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("smallestZoom");
    QTest::addColumn<QString>("reason");

    QTest::newRow("good") << tables << 1 << "png"
                          << "0"
                          << "";
    QTest::newRow("no tiles") << tables << 0 << "png"
                              << "0"
                              << "an MBTiles file without tiles";
    QTest::newRow("vector tiles") << tables << 1 << "pbf"
                                  << "0"
                                  << "an MBTiles file with vector tiles; only pictures can be drawn";
    QTest::newRow("contradictory zoom levels") << tables << 1 << "png"
                                               << "9"
                                               << "an MBTiles file with contradictory zoom levels";
}

void tst_LvMBTilesSource::reasons()
{
    QFETCH(QStringList, statements);
    QFETCH(int, tileCount);
    QFETCH(QString, format);
    QFETCH(QString, smallestZoom);
    QFETCH(QString, reason);

    const QList<Tile> tiles(tileCount, {0, 0, 0, LvTestTiles::tile(Qt::red)});
    QVERIFY(run(fileName(), statements, tiles,
                {{QStringLiteral("format"), format}, {QStringLiteral("minzoom"), smallestZoom}}));
    LvMBTilesSource source(fileName());
    QCOMPARE(source.errorText(), reason);
    QCOMPARE(source.isValid(), reason.isEmpty());
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(20, 20)));
    QCOMPARE(image.pixelColor(10, 10), reason.isEmpty() ? QColor(Qt::red) : missing);
}

void tst_LvMBTilesSource::notADatabase()
{
    QCOMPARE(LvMBTilesSource(fileName()).errorText(), QStringLiteral("not found"));
    QVERIFY(!QFile::exists(fileName()));
    QCOMPARE(LvMBTilesSource(myDirectory->path()).errorText(), QStringLiteral("not a regular file"));
    QVERIFY(
        LvTestFiles::write(fileName(), "neither a database nor anything else, but long enough to be one"));
    QCOMPARE(LvMBTilesSource(fileName()).errorText(),
             QStringLiteral("not an MBTiles file: file is not a database"));
    QVERIFY(LvTestFiles::write(fileName(), QByteArray()));
    QCOMPARE(LvMBTilesSource(fileName()).errorText(),
             QStringLiteral("not an MBTiles file: no such table: tiles"));
    QVERIFY(run(fileName(), {QStringLiteral("CREATE TABLE tiles (zoom_level integer)")}));
    QVERIFY(LvMBTilesSource(fileName()).errorText().startsWith(QLatin1String("not an MBTiles file: ")));
}

void tst_LvMBTilesSource::rowsAreCountedFromTheSouth()
{
    QVERIFY(run(fileName(), tables, level(2)));
    LvMBTilesSource source(fileName());
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(1024, 1024)));
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row) {
            QCOMPARE(image.pixelColor((column * 256) + 100, (row * 256) + 100),
                     LvTestTiles::color(2, column, row));
        }
    }
}

void tst_LvMBTilesSource::zoomLevels_data()
{
    QTest::addColumn<Metadata>("metadata");
    QTest::addColumn<double>("zoom");
    QTest::addColumn<int>("expected");

    const QString smallest = QStringLiteral("minzoom");
    const QString largest = QStringLiteral("maxzoom");
    QTest::newRow("of the tiles, low") << Metadata() << 0.0 << 1;
    QTest::newRow("of the tiles, high") << Metadata() << 9.0 << 2;
    QTest::newRow("of the metadata") << Metadata{{largest, "5"}} << 9.0 << 5;
    QTest::newRow("metadata without a number") << Metadata{{smallest, "low"}, {largest, ""}} << 9.0 << 2;
    QTest::newRow("beyond all maps") << Metadata{{smallest, "-4"}, {largest, "99"}} << 24.0 << 24;
    QTest::newRow("below all maps") << Metadata{{smallest, "-4"}} << 0.0 << 0;
}

void tst_LvMBTilesSource::zoomLevels()
{
    QFETCH(Metadata, metadata);
    QFETCH(double, zoom);
    QFETCH(int, expected);
    QVERIFY(run(fileName(), tables, level(1) + level(2), metadata));
    const LvMBTilesSource source(fileName());
    QVERIFY(source.isValid());
    QCOMPARE(source.zoomFor(LvMapView::aroundCenter(LvGeoPosition(1.0, 1.0), zoom, {100, 100})), expected);
}

void tst_LvMBTilesSource::missingTilesComeFromAbove()
{
    QVERIFY(run(fileName(), tables,
                {{0, 0, 0, LvTestTiles::quarters(Qt::red, Qt::green, Qt::blue, Qt::yellow)},
                 {2, 0, 0, LvTestTiles::tile(Qt::black)}}));
    LvMBTilesSource source(fileName());
    const QImage image = LvTestTiles::draw(source, LvMapView(QSize(1024, 1024)));
    QCOMPARE(image.pixelColor(100, 100), QColor(Qt::red));
    QCOMPARE(image.pixelColor(900, 100), QColor(Qt::green));
    QCOMPARE(image.pixelColor(400, 600), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(100, 900), QColor(Qt::black)); // the south-western corner
}

void tst_LvMBTilesSource::absurdTiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no picture") << QByteArray("junk");
    QTest::newRow("larger than any tile") << LvTestTiles::tile(Qt::red) + QByteArray(17 << 20, 'x');
}

void tst_LvMBTilesSource::absurdTiles()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(run(fileName(), tables, {{0, 0, 0, bytes}}));
    LvMBTilesSource source(fileName());
    QVERIFY(source.isValid());
    QCOMPARE(LvTestTiles::draw(source, LvMapView(QSize(64, 64))).pixelColor(30, 30), missing);
}

void tst_LvMBTilesSource::kindsOfPictures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isDrawn");
    QTest::newRow("png") << LvTestTiles::tile(Qt::red) << true;
    QTest::newRow("jpeg") << LvTestTiles::tile(Qt::red, "JPG") << true;
    QTest::newRow("bmp") << LvTestTiles::tile(Qt::red, "BMP") << false;
    QTest::newRow("xpm") << LvTestTiles::tile(Qt::red, "XPM", 16) << false;
    QTest::newRow("svg") << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='256' height='256'>"
                                       "<rect width='256' height='256' fill='red'/></svg>")
                         << false;
}

void tst_LvMBTilesSource::kindsOfPictures()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isDrawn);
    QVERIFY(run(fileName(), tables, {{0, 0, 0, bytes}}));
    LvMBTilesSource source(fileName());
    const QColor color = LvTestTiles::draw(source, LvMapView(QSize(10, 10))).pixelColor(5, 5);
    QCOMPARE(color != missing, isDrawn);
}

void tst_LvMBTilesSource::endlessQueries_data()
{
    QTest::addColumn<QString>("view");
    QTest::addColumn<bool>("isValid");

    const QString view = QStringLiteral("CREATE VIEW tiles AS %1");
    const QString endless = QStringLiteral("WITH RECURSIVE n(x) AS (VALUES(0) UNION ALL SELECT x + 1 FROM n) "
                                           "SELECT x AS zoom_level, 0 AS tile_column, 0 AS tile_row, "
                                           "x AS tile_data FROM n");
    QTest::newRow("no row ever") << view.arg(endless + QStringLiteral(" WHERE x < 0")) << false;
    QTest::newRow("rows without an end") << view.arg(endless) << true;
    QTest::newRow("a value of a gigabyte")
        << view.arg(QStringLiteral("SELECT 0 AS zoom_level, 0 AS tile_column, 0 AS tile_row, "
                                   "zeroblob(1000000000) AS tile_data"))
        << false;
}

void tst_LvMBTilesSource::endlessQueries()
{
    QFETCH(QString, view);
    QFETCH(bool, isValid);
    QVERIFY(run(fileName(), {view}));
    QElapsedTimer timer;
    timer.start();
    LvMBTilesSource source(fileName());
    QCOMPARE(source.isValid(), isValid);
    QVERIFY(!source.errorText().contains(QLatin1Char('\n')));
    for (int turn = 0; turn < 3; ++turn) {
        const QImage picture =
            LvTestTiles::draw(source, LvMapView::aroundCenter({50, 8}, 6.0, QSize(600, 600)));
        QCOMPARE(picture.pixelColor(300, 300), missing);
    }
    // One query may take its time, and none is made after it.
    QVERIFY(timer.elapsed() < LvMBTilesSource::longestQueryMilliseconds + 10000);
}

void tst_LvMBTilesSource::attributionOpensNoFiles()
{
    // Reading a pipe would wait for a writer for ever.
    const QString pipe = myDirectory->filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString html =
        QStringLiteral("<html><head><link rel='stylesheet' href='%1'/><style>@import url(%1);"
                       "</style></head><body background='%1'><img src='%1'/>Somebody")
            .arg(QLatin1String("file://") + pipe);
    QVERIFY(run(fileName(), tables, level(0), {{QStringLiteral("attribution"), html}}));
    const QString attribution = LvMBTilesSource(fileName()).attribution();
    QVERIFY2(attribution.endsWith(QLatin1String("Somebody")), qPrintable(attribution));
}

void tst_LvMBTilesSource::texts_data()
{
    QTest::addColumn<QString>("attribution");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << ""
                          << "";
    QTest::newRow("plain") << QStringLiteral("© Somebody") << QStringLiteral("© Somebody");
    QTest::newRow("links") << QStringLiteral("<a href=\"https://a.b\">&copy; One</a>,\n <b>Two</b>")
                           << QStringLiteral("© One, Two");
}

void tst_LvMBTilesSource::texts()
{
    QFETCH(QString, attribution);
    QFETCH(QString, expected);
    QVERIFY(run(fileName(), tables, level(0),
                {{QStringLiteral("attribution"), attribution}, {QStringLiteral("name"), "Map"}}));
    const LvMBTilesSource source(fileName());
    QCOMPARE(source.attribution(), expected);
    QCOMPARE(source.name(), QStringLiteral("Map"));
}

void tst_LvMBTilesSource::withoutMetadataTable()
{
    QVERIFY(run(fileName(), {tables.at(1)}, level(0)));
    LvMBTilesSource source(fileName());
    QVERIFY(source.isValid());
    QCOMPARE(source.attribution(), QString());
    QCOMPARE(LvTestTiles::draw(source, LvMapView(QSize(256, 256))).pixelColor(5, 5),
             LvTestTiles::color(0, 0, 0));
}

void tst_LvMBTilesSource::severalAtOnceAndReadOnly()
{
    QVERIFY(run(fileName(), tables, level(1)));
    const QByteArray before = LvTestFiles::read(fileName());
    const QStringList connections = QSqlDatabase::connectionNames();
    {
        LvMBTilesSource first(fileName());
        auto second = std::make_unique<LvMBTilesSource>(fileName());
        const LvMapView view(QSize(512, 512));
        const QImage picture = LvTestTiles::draw(*second, view);
        second.reset();
        QCOMPARE(LvTestTiles::draw(first, view), picture); // the end of one does not close the other
    }
    QCOMPARE(QSqlDatabase::connectionNames(), connections);
    QCOMPARE(LvTestFiles::read(fileName()), before);
    QCOMPARE(QDir(myDirectory->path()).entryList(QDir::Files).size(), 1); // no journal left behind
}

LV_TEST_MAIN(tst_LvMBTilesSource)
#include "tst_LvMBTilesSource.moc"
