#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTestTiles.h"
#include "LvTracksProcess.h"

#include <QImageReader>
#include <QPainter>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using LvTracksProcess::Result;
using LvTracksProcess::run;

namespace
{

/// How many pixels have a colour, within a small tolerance.
qint64 countOf(const QImage& image, const QColor& color, int tolerance = 3)
{
    qint64 count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            count += std::abs(pixel.red() - color.red()) <= tolerance
                    && std::abs(pixel.green() - color.green()) <= tolerance
                    && std::abs(pixel.blue() - color.blue()) <= tolerance && pixel.alpha() == color.alpha()
                ? 1
                : 0;
        }
    }
    return count;
}

/// An MBTiles file with the one tile of zoom level 0.
bool writeMBTiles(const QString& fileName, const QByteArray& tile)
{
    const QString connection = QStringLiteral("tst_lvtracks_render");
    bool isFine = true;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(fileName);
        isFine = database.open();
        QSqlQuery query(database);
        isFine = query.exec(QStringLiteral("CREATE TABLE tiles (zoom_level integer, tile_column integer, "
                                           "tile_row integer, tile_data blob)"))
            && isFine;
        query.prepare(QStringLiteral("INSERT INTO tiles VALUES (0, 0, 0, ?)"));
        query.addBindValue(tile);
        isFine = query.exec() && isFine;
    }
    QSqlDatabase::removeDatabase(connection);
    return isFine;
}

} // namespace

class tst_lvtracks_render : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void kinds_data();
    void kinds();
    void defaults();
    void wrongUsage_data();
    void wrongUsage();
    void exitCodes_data();
    void exitCodes();
    void unwritable_data();
    void unwritable();
    void fitsTheTracks();
    void boundingBox_data();
    void boundingBox();
    void tinyWorld_data();
    void tinyWorld();
    void centerAndZoom_data();
    void centerAndZoom();
    void scale();
    void styles_data();
    void styles();
    void arrow();
    void colorPerFile();
    void styleFile();
    void badStyleFile_data();
    void badStyleFile();
    void cropping();
    void map_data();
    void map();
    void attribution();
    void badMap_data();
    void badMap();
    void legendKeepsOffTheTracks();
    void everything();
    void manyFiles();
    void progressOnATerminal_data();
    void progressOnATerminal();
    void repeatable();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory->filePath(name); }

    /// Renders files with options into out.png and gives the picture.
    QImage picture(const QStringList& arguments) const
    {
        const Result result = render(arguments + QStringList{"-o", "out.png"});
        if (result.exitCode != 0) {
            qWarning("%s", result.errors.constData());
        }
        return QImage(path(QStringLiteral("out.png"))).convertToFormat(QImage::Format_ARGB32);
    }

    [[nodiscard]] Result render(const QStringList& arguments) const
    {
        return run(QStringList(QStringLiteral("render")) + arguments, myDirectory->path());
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
};

void tst_lvtracks_render::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(LvTestFiles::write(path(QStringLiteral("line.gpx")), LvTestFiles::gpx({{50, 8}, {51, 10}})));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("flat.gpx")), LvTestFiles::gpx({{50, 8}, {50, 10}})));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("down.gpx")), LvTestFiles::gpx({{51, 8}, {50, 10}})));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("point.gpx")), LvTestFiles::gpx({{50, 8}})));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("area.gpx")),
                               LvTestFiles::gpx({{50, 8}, {50, 10}, {51, 10}, {51, 8}, {50, 8}})));
    QVERIFY(
        LvTestFiles::write(path(QStringLiteral("waypoint.gpx")), "<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>"));
}

void tst_lvtracks_render::kinds_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("png") << "out.png";
    QTest::newRow("jpg") << "out.jpg";
    QTest::newRow("jpeg") << "out.JPEG";
    QTest::newRow("svg") << "out.svg";
    QTest::newRow("pdf") << "out.pdf";
}

void tst_lvtracks_render::kinds()
{
    QFETCH(QString, name);
    const Result result =
        render({"line.gpx", "-o", name, "--size", "400x300", "--color", "#ff0000", "--map", "none"});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QByteArray());
    QCOMPARE(result.output, QByteArray());
    const QByteArray bytes = LvTestFiles::read(path(name));
    if (name.endsWith(QLatin1String("pdf"))) {
        QVERIFY(bytes.startsWith("%PDF-"));
        QVERIFY(bytes.contains("/MediaBox [0 0 300.000000 225.000000]"));
        return;
    }
    QImage image(400, 300, QImage::Format_ARGB32);
    if (name.endsWith(QLatin1String("svg"))) {
        QSvgRenderer svg(bytes);
        QVERIFY(svg.isValid());
        QCOMPARE(svg.viewBox(), QRect(0, 0, 400, 300));
        image.fill(Qt::white);
        QPainter painter(&image);
        svg.render(&painter);
    } else {
        image = QImage(path(name));
        QCOMPARE(image.size(), QSize(400, 300));
    }
    const bool isJpeg = name.endsWith(QLatin1String("JPEG")) || name.endsWith(QLatin1String("jpg"));
    QVERIFY(countOf(image, Qt::red, isJpeg ? 40 : 3) > 1000);
}

void tst_lvtracks_render::defaults()
{
    const QImage image = picture({"line.gpx"});
    QCOMPARE(image.size(), QSize(1600, 1000));
    QCOMPARE(qAlpha(image.pixel(0, 0)), 255); // there is a map
    QVERIFY(countOf(image, QColor(247, 245, 240)) > 100000); // with land
}

void tst_lvtracks_render::wrongUsage_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("message");

    const auto row = [](const char* name, const QStringList& options, const QString& message) {
        QTest::newRow(name) << options << message;
    };
    const QString size = QStringLiteral(
        "--size needs WIDTHxHEIGHT, each from 1 to 30000 and together at most 268435456 pixels");
    const QString scale = QStringLiteral("--scale needs a number from 0.01 to 100");
    const QString box =
        QStringLiteral("--bbox needs WEST,SOUTH,EAST,NORTH in degrees, the south below the north");
    const QString center = QStringLiteral("--center needs LATITUDE,LONGITUDE in degrees");
    const QString zoom = QStringLiteral("--zoom needs a number from 0 to 24");
    const QString cropping = QStringLiteral("--cropping needs a whole number from 0 to 255");
    row("no picture", {}, QStringLiteral("no picture file given (-o)"));
    row("picture without a value", {"-o"}, QStringLiteral("Missing value after '-o'."));
    row("empty picture", {"-o", ""}, QStringLiteral("no picture file given (-o)"));
    const QString kind =
        QStringLiteral("-o: the name of the picture must end with .png, .jpg, .jpeg, .svg or .pdf");
    row("picture without a suffix", {"-o", "png"}, kind);
    row("picture of another kind", {"-o", "a.bmp"}, kind);
    const QStringList out{"-o", "out.png"};
    row("unknown option", out + QStringList{"--colour", "red"}, QStringLiteral("Unknown option 'colour'."));
    for (const char* value : {"", "100", "100x", "0x100", "100x0", "-1x5", "30001x1", "1x30001",
                              "20000x20000", "100x100x100", "1.5x2", "axb", "100 x 100"}) {
        row(qPrintable(QStringLiteral("size %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--size=%1").arg(QLatin1String(value))}, size);
    }
    for (const char* value : {"", "0", "0.009", "100.1", "-1", "nan", "inf", "1,5", "x"}) {
        row(qPrintable(QStringLiteral("scale %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--scale=%1").arg(QLatin1String(value))}, scale);
    }
    for (const char* value : {"", "1", "1,2,3", "1,2,3,4,5", "1,2,3,x", "1,4,3,2", "1,2,3,2", "1,2,1,4",
                              "181,2,3,4", "1,-91,3,4", "1,2,3,nan"}) {
        row(qPrintable(QStringLiteral("bbox %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--bbox=%1").arg(QLatin1String(value))}, box);
    }
    row("bbox beyond the map", out + QStringList{"--bbox", "1,86,3,89"},
        QStringLiteral("--bbox lies beyond the map, which ends at 85.05 degrees"));
    row("bbox and center", out + QStringList{"--bbox=1,2,3,4", "--center=1,2", "--zoom=3"},
        QStringLiteral("--bbox and --center exclude each other"));
    row("center without zoom", out + QStringList{"--center=1,2"},
        QStringLiteral("--center and --zoom belong together"));
    row("zoom without center", out + QStringList{"--zoom=3"},
        QStringLiteral("--center and --zoom belong together"));
    for (const char* value : {"", "1", "1,2,3", "91,0", "0,181", "a,b"}) {
        row(qPrintable(QStringLiteral("center %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--center=%1").arg(QLatin1String(value)), "--zoom=3"}, center);
    }
    for (const char* value : {"", "-0.1", "24.1", "x", "1,2"}) {
        row(qPrintable(QStringLiteral("zoom %1").arg(QLatin1String(value))),
            out + QStringList{"--center=1,2", QStringLiteral("--zoom=%1").arg(QLatin1String(value))}, zoom);
    }
    for (const char* value : {"", "-1", "256", "1.5", "x"}) {
        row(qPrintable(QStringLiteral("cropping %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--cropping=%1").arg(QLatin1String(value))}, cropping);
    }
    row("color", out + QStringList{"--color", "reddish"},
        QStringLiteral("--color: \"reddish\" is no colour"));
    row("color, hexadecimal", out + QStringList{"--color", "#12345"},
        QStringLiteral("--color: \"#12345\" is no colour"));
    row("fill", out + QStringList{"--fill", "auto"}, QStringLiteral("--fill: \"auto\" is no colour"));
    for (const char* value : {"", "-1", "1001", "x", "nan"}) {
        row(qPrintable(QStringLiteral("width %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--width=%1").arg(QLatin1String(value))},
            QStringLiteral("--width needs a number from 0 to 1000"));
        row(qPrintable(QStringLiteral("halo %1").arg(QLatin1String(value))),
            out + QStringList{QStringLiteral("--halo=%1").arg(QLatin1String(value))},
            QStringLiteral("--halo needs a number from 0 to 1000"));
    }
    row("two widths, the first wrong", out + QStringList{"--width=x", "--halo=3"},
        QStringLiteral("--width needs a number from 0 to 1000"));
    row("marker", out + QStringList{"--marker", "cross"}, QStringLiteral("--marker: \"cross\" is no marker"));
    row("marker in a list", out + QStringList{"--marker", "disk,cross"},
        QStringLiteral("--marker: \"cross\" is no marker"));
    row("empty marker", out + QStringList{"--marker", ""}, QStringLiteral("--marker: \"\" is no marker"));
}

void tst_lvtracks_render::wrongUsage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, message);
    const Result result = render(QStringList("line.gpx") + options);
    QCOMPARE(result.errorLines(),
             QStringList(QStringLiteral("lvtracks: %1 (try: lvtracks render --help)").arg(message)));
    QCOMPARE(result.exitCode, 2);
    QVERIFY(!QFile::exists(path(QStringLiteral("out.png"))));
}

void tst_lvtracks_render::exitCodes_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<bool>("hasPicture");
    QTest::newRow("good") << QStringList{"line.gpx"} << 0 << true;
    QTest::newRow("bad") << QStringList{"waypoint.gpx"} << 1 << false;
    QTest::newRow("some") << QStringList{"waypoint.gpx", "line.gpx", "missing.gpx"} << 3 << true;
    QTest::newRow("none") << QStringList{} << 2 << false;
}

void tst_lvtracks_render::exitCodes()
{
    QFETCH(QStringList, files);
    QFETCH(int, exitCode);
    QFETCH(bool, hasPicture);
    const Result result = render(files + QStringList{"-o", "out.png", "--size", "100x100"});
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(QFile::exists(path(QStringLiteral("out.png"))), hasPicture);
    if (exitCode == 3) {
        const QStringList expected{"lvtracks: waypoint.gpx: only waypoints, no track or route",
                                   "lvtracks: missing.gpx: not found"};
        QCOMPARE(result.errorLines(), expected);
    }
}

void tst_lvtracks_render::unwritable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no such folder") << "no/out.png"
                                    << "No such file or directory";
    QTest::newRow("a folder") << "folder.png"
                              << "Filename refers to a directory";
}

void tst_lvtracks_render::unwritable()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QVERIFY(QDir(myDirectory->path()).mkdir(QStringLiteral("folder.png")));
    const Result result = render({"line.gpx", "-o", name, "--size", "50x50"});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errorLines(),
             QStringList(QStringLiteral("lvtracks: %1: cannot be written: %2").arg(name, reason)));
}

void tst_lvtracks_render::fitsTheTracks()
{
    const QImage image =
        picture({"down.gpx", "--size", "600x600", "--map", "none", "--color", "red", "--width", "6"});
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red)) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    // The line runs from the upper left to the lower right with the same air on both sides.
    QVERIFY(rect.left() > 20 && rect.left() < 60);
    QVERIFY(std::abs(rect.left() - (599 - rect.right())) <= 2);
    QVERIFY(std::abs(rect.top() - (599 - rect.bottom())) <= 2);
}

void tst_lvtracks_render::boundingBox_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QList<double>>("position"); // latitude, longitude
    QTest::addColumn<QPoint>("pixel");
    const auto place = [](double latitude, double longitude) { return QList<double>{latitude, longitude}; };
    QTest::newRow("left edge") << "8,-1,10,1" << place(0.1, 8.1) << QPoint(20, 180);
    QTest::newRow("middle") << "-1,-1,1,1" << place(0.25, 0.25) << QPoint(250, 150);
    QTest::newRow("across the date line, east of it")
        << "179,-1,-179,1" << place(0.1, -179.9) << QPoint(220, 180);
    QTest::newRow("across the date line, west of it")
        << "179,-1,-179,1" << place(0.1, 179.5) << QPoint(100, 180);
    QTest::newRow("up to the date line") << "178,-1,180,1" << place(0.1, 179.5) << QPoint(300, 180);
    QTest::newRow("from the date line on") << "-180,-1,-178,1" << place(0.1, -179.5) << QPoint(100, 180);
}

void tst_lvtracks_render::boundingBox()
{
    QFETCH(QString, box);
    QFETCH(QList<double>, position);
    QFETCH(QPoint, pixel);
    QVERIFY(LvTestFiles::write(path(QStringLiteral("p.gpx")),
                               LvTestFiles::gpx({{position.at(0), position.at(1)}})));
    const QImage image = picture({"p.gpx", "--bbox", box, "--size", "400x400", "--map", "none", "--color",
                                  "red", "--marker", "disk", "--width", "8"});
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::red)) {
                rect |= QRect(x, y, 1, 1);
            }
        }
    }
    QVERIFY(!rect.isEmpty());
    QVERIFY2((rect.center() - pixel).manhattanLength() <= 3,
             qPrintable(QStringLiteral("%1, %2").arg(rect.center().x()).arg(rect.center().y())));
}

void tst_lvtracks_render::tinyWorld_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QStringList>("area");

    const QStringList world{"--bbox=-180,-85.05,180,85.05"};
    QTest::newRow("one pixel") << "1x1" << world;
    QTest::newRow("one column") << "1x3000" << world;
    QTest::newRow("one row") << "3000x1" << world;
    QTest::newRow("nearly the whole turn") << "1x1" << QStringList{"--bbox=0.001,-85,0,85"};
    QTest::newRow("a pole") << "1x1000" << QStringList{"--bbox=-180,85,180,90"};
    QTest::newRow("the lowest zoom level") << "2x2" << QStringList{"--center=0,0", "--zoom=0"};
    QTest::newRow("the tracks") << "1x1" << QStringList{};
}

void tst_lvtracks_render::tinyWorld()
{
    // A world less than a pixel wide would be endlessly many copies in the picture.
    QFETCH(QString, size);
    QFETCH(QStringList, area);
    for (const char* map : {"builtin", "none"}) {
        const QImage image = picture(
            QStringList{"line.gpx", "area.gpx", "point.gpx", "--size", size, "--cropping=50", "--map", map}
            + area);
        QCOMPARE(QStringLiteral("%1x%2").arg(image.width()).arg(image.height()), size);
    }
}

void tst_lvtracks_render::centerAndZoom_data()
{
    QTest::addColumn<QString>("center");
    QTest::addColumn<QString>("zoom");
    QTest::addColumn<int>("expected"); // pixels from one world copy to the next
    QTest::newRow("zoom 0") << "50,8"
                            << "0" << 256;
    QTest::newRow("half a level") << "50,8"
                                  << "0.5" << 362;
    QTest::newRow("zoom 1") << "50,8"
                            << "1" << 512;
}

void tst_lvtracks_render::centerAndZoom()
{
    QFETCH(QString, center);
    QFETCH(QString, zoom);
    QFETCH(int, expected);
    const QImage image =
        picture({"point.gpx", "--center", center, "--zoom", zoom, "--size", "1200x200", "--map", "none",
                 "--color", "#ff0000", "--fill", "#ff0000", "--marker", "disk"});
    QList<int> starts;
    for (int x = 1; x < image.width(); ++x) {
        if (image.pixelColor(x, 100) == QColor(Qt::red) && image.pixelColor(x - 1, 100) != QColor(Qt::red)) {
            starts.append(x);
        }
    }
    QVERIFY(starts.size() >= 2);
    for (qsizetype i = 1; i < starts.size(); ++i) {
        QVERIFY2(std::abs(starts.at(i) - starts.at(i - 1) - expected) <= 1,
                 qPrintable(QString::number(starts.at(i) - starts.at(i - 1))));
    }
    QCOMPARE(image.pixelColor(600, 100), QColor(Qt::red)); // the middle of the picture
}

void tst_lvtracks_render::scale()
{
    const QStringList options{"flat.gpx", "--size", "600x400", "--map", "none",
                              "--color",  "red",    "--width", "10"};
    const double single = double(countOf(picture(options), Qt::red));
    const double triple = double(countOf(picture(options + QStringList{"--scale", "3"}), Qt::red));
    QVERIFY(std::abs((triple / single) - 3.0) < 0.4);
    QCOMPARE(QImage(path(QStringLiteral("out.png"))).size(), QSize(600, 400)); // the size stays
}

void tst_lvtracks_render::styles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("options");
    // Two runs that differ in the options: what the colour's share of the picture has to be, in pixels.
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");

    const QColor red(Qt::red);
    const QColor blue(Qt::blue);
    QTest::newRow("colour by name") << "line.gpx" << QStringList{"--color", "red"} << red << 1000 << 6000;
    QTest::newRow("colour by number")
        << "line.gpx" << QStringList{"--color", "#0000ff"} << blue << 1000 << 6000;
    QTest::newRow("translucent colour")
        << "line.gpx" << QStringList{"--color", "#80ff0000"} << QColor(255, 0, 0, 128) << 1000 << 6000;
    QTest::newRow("width") << "flat.gpx" << QStringList{"--color", "red", "--width", "2"} << red << 300
                           << 1000;
    QTest::newRow("no width is a hair line")
        << "line.gpx" << QStringList{"--color", "red", "--width", "0"} << red << 0 << 700;
    QTest::newRow("great width") << "line.gpx" << QStringList{"--color", "red", "--width", "40"} << red
                                 << 10000 << 30000;
    QTest::newRow("halo") << "line.gpx" << QStringList{"--width", "2", "--halo", "20"}
                          << QColor(255, 255, 255, 180) << 2000 << 12000;
    QTest::newRow("area without filling") << "area.gpx" << QStringList{"--color", "red"} << blue << 0 << 0;
    QTest::newRow("area with filling")
        << "area.gpx" << QStringList{"--fill", "blue"} << blue << 40000 << 90000;
    QTest::newRow("filling of a line is nothing")
        << "line.gpx" << QStringList{"--fill", "blue"} << blue << 0 << 0;
    QTest::newRow("filled marker") << "point.gpx"
                                   << QStringList{"--fill", "blue", "--marker", "disk", "--width", "30"}
                                   << blue << 300 << 4000;
    QTest::newRow("empty marker") << "point.gpx"
                                  << QStringList{"--fill", "none", "--marker", "circle", "--width", "30"}
                                  << blue << 0 << 0;
}

void tst_lvtracks_render::styles()
{
    QFETCH(QString, file);
    QFETCH(QStringList, options);
    QFETCH(QColor, color);
    QFETCH(int, least);
    QFETCH(int, most);
    const QImage image = picture(QStringList{file, "--map", "none", "--size", "400x300"} + options);
    const qint64 count = countOf(image, color);
    QVERIFY2(count >= least && count <= most, qPrintable(QString::number(count)));
}

void tst_lvtracks_render::arrow()
{
    const QStringList options{"flat.gpx", "--map", "none",    "--size", "400x300",
                              "--color",  "red",   "--width", "4"};
    const qint64 plain = countOf(picture(options), Qt::red);
    const qint64 arrow = countOf(picture(options + QStringList{"--marker", "arrow"}), Qt::red);
    QVERIFY2(arrow > plain + 300, qPrintable(QStringLiteral("%1, %2").arg(plain).arg(arrow)));
}

void tst_lvtracks_render::colorPerFile()
{
    QVERIFY(LvTestFiles::write(path(QStringLiteral("a.gpx")), LvTestFiles::gpx({{50, 8}, {51, 8}})));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("b.gpx")), LvTestFiles::gpx({{50, 9}, {51, 9}})));
    const QImage image =
        picture({"a.gpx", "waypoint.gpx", "b.gpx", "--map", "none", "--size", "300x300", "--color", "auto"});
    // The second file gives nothing and uses up its colour all the same.
    QVERIFY(countOf(image, QColor(0xD7, 0x26, 0x3D)) > 300);
    QCOMPARE(countOf(image, QColor(0x1B, 0x6F, 0xC2)), 0);
    QVERIFY(countOf(image, QColor(0x2E, 0x93, 0x3C)) > 300);
}

void tst_lvtracks_render::styleFile()
{
    QVERIFY(LvTestFiles::write(path(QStringLiteral("s.xml")),
                               "<config><pensize>8</pensize><color>#ff0000ff</color>"
                               "<displayOptions>stroke</displayOptions></config>"));
    const QStringList options{"line.gpx", "--map", "none", "--size", "300x300", "--style", "s.xml"};
    QVERIFY(countOf(picture(options), Qt::blue) > 1000);
    // The other options go on top of the file.
    const QImage changed = picture(options + QStringList{"--color", "red"});
    QVERIFY(countOf(changed, Qt::red) > 1000);
    QCOMPARE(countOf(changed, Qt::blue), 0);
    // It replaces what a KML file brings along.
    const QImage kml =
        picture(QStringList{LvTest::sampleFile(QStringLiteral("iceland.kmz"))} + options.mid(1));
    QVERIFY(countOf(kml, Qt::blue) > 1000);
    QCOMPARE(countOf(kml, QColor(0xC0, 0x39, 0x2B)), 0);
}

void tst_lvtracks_render::badStyleFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no XML") << QByteArray("red")
                            << "not readable as XML: Start tag expected. (line 1, column 1)";
    QTest::newRow("other XML") << QByteArray("<style/>")
                               << "no serialised track configuration (root element \"config\")";
}

void tst_lvtracks_render::badStyleFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    QVERIFY(LvTestFiles::write(path(QStringLiteral("s.xml")), content));
    const Result result = render({"line.gpx", "-o", "out.png", "--style", "s.xml"});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errorLines(), QStringList(QStringLiteral("lvtracks: s.xml: %1").arg(reason)));
    QCOMPARE(render({"line.gpx", "-o", "out.png", "--style", "no.xml"}).errorLines(),
             QStringList("lvtracks: no.xml: not found"));
    QCOMPARE(render({"line.gpx", "-o", "out.png", "--style", "."}).exitCode, 1);
    QVERIFY(!QFile::exists(path(QStringLiteral("out.png"))));
}

void tst_lvtracks_render::cropping()
{
    const QStringList options{"line.gpx", "--size", "300x300", "--halo", "20", "--cropping"};
    const QImage faded = picture(options + QStringList("40"));
    QCOMPARE(qAlpha(faded.pixel(5, 5)), 40);
    const QImage whole = picture(options + QStringList("255"));
    QCOMPARE(qAlpha(whole.pixel(5, 5)), 255);
    const QImage invisible = picture(options + QStringList("0"));
    QCOMPARE(qAlpha(invisible.pixel(5, 5)), 0);
    QCOMPARE(qAlpha(invisible.pixel(150, 150)), 255); // the line
}

void tst_lvtracks_render::map_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QColor>("expected");
    QTest::newRow("default") << QStringList{} << QColor(247, 245, 240);
    QTest::newRow("builtin") << QStringList{"--map", "builtin"} << QColor(247, 245, 240);
    QTest::newRow("none") << QStringList{"--map", "none"} << QColor(Qt::transparent);
    QTest::newRow("tiles") << QStringList{"--map", "tiles"} << QColor(Qt::darkGreen);
    QTest::newRow("MBTiles") << QStringList{"--map", "my map.mbtiles"} << QColor(Qt::darkMagenta);
}

void tst_lvtracks_render::map()
{
    QFETCH(QStringList, options);
    QFETCH(QColor, expected);
    QVERIFY(LvTestFiles::write(path(QStringLiteral("tiles/0/0/0.png")), LvTestTiles::tile(Qt::darkGreen)));
    QVERIFY(writeMBTiles(path(QStringLiteral("my map.mbtiles")), LvTestTiles::tile(Qt::darkMagenta)));
    const QImage image = picture(QStringList{"line.gpx", "--size", "200x200"} + options);
    QCOMPARE(image.pixelColor(3, 3), expected);
}

void tst_lvtracks_render::attribution()
{
    QVERIFY(LvTestFiles::write(path(QStringLiteral("tiles/0/0/0.png")), LvTestTiles::tile(Qt::white)));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("tiles/metadata.json")),
                               R"({"attribution":"&copy; <a href='x'>Somebody</a>"})"));
    const auto text = [this](const QStringList& options) {
        const Result result = render(QStringList{"line.gpx", "--size", "800x600", "-o", "out.svg"} + options);
        return result.exitCode == 0 ? QString::fromUtf8(LvTestFiles::read(path(QStringLiteral("out.svg"))))
                                    : QString();
    };
    const QString notice = QStringLiteral("© Somebody</text>");
    QVERIFY(text({"--map", "tiles"}).contains(notice));
    QVERIFY(!text({"--map", "tiles", "--attribution", ""}).contains(notice));
    const QString other = text({"--map", "tiles", "--attribution", "Me & you"});
    QVERIFY(!other.contains(notice));
    QVERIFY(other.contains(QStringLiteral("Me &amp; you</text>")));
    QVERIFY(!text({}).contains(QStringLiteral("©"))); // the built-in map needs none
    QVERIFY(text({"--attribution", "© Me"}).contains(QStringLiteral("© Me</text>")));
}

void tst_lvtracks_render::badMap_data()
{
    QTest::addColumn<QString>("map");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << "osm"
                             << "not found";
    QTest::newRow("empty folder") << "folder"
                                  << "no folder of a zoom level in it ({z}/{x}/{y}.png)";
    QTest::newRow("no database") << "line.gpx"
                                 << "not an MBTiles file: file is not a database";
}

void tst_lvtracks_render::badMap()
{
    QFETCH(QString, map);
    QFETCH(QString, reason);
    QVERIFY(QDir(myDirectory->path()).mkdir(QStringLiteral("folder")));
    const Result result = render({"line.gpx", "-o", "out.png", "--map", map});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.errorLines(), QStringList(QStringLiteral("lvtracks: %1: %2").arg(map, reason)));
    QVERIFY(!QFile::exists(path(QStringLiteral("out.png"))));
}

void tst_lvtracks_render::legendKeepsOffTheTracks()
{
    // A frame: its lower left corner would lie below the scale bar.
    const QStringList options{"area.gpx", "--map",   "none",    "--size", "800x500",
                              "--color",  "#ff0000", "--width", "4"};
    const QImage image = picture(options);
    // Whatever is painted over a red pixel in a translucent grey is neither red nor grey.
    qint64 mixed = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            mixed += pixel.alpha() == 255 && pixel.red() - pixel.green() > 30 && pixel.green() > 100 ? 1 : 0;
        }
    }
    QCOMPARE(mixed, 0);
    QVERIFY(countOf(image, Qt::red) > 3000);
    // An area that was asked for stays as it is.
    const QImage asked = picture(options + QStringList{"--bbox", "8,50,10,51"});
    QCOMPARE(asked.pixelColor(400, 499), QColor(Qt::red));
}

void tst_lvtracks_render::everything()
{
    const QDir samples(LvTest::sampleFile(QString()));
    QStringList files;
    const QStringList names = samples.entryList({"*.gpx", "*.kml", "*.kmz"}, QDir::Files);
    for (const QString& name : names) {
        files.append(samples.filePath(name));
    }
    QCOMPARE(files.size(), 6);
    const QImage image = picture(files + QStringList{"--size", "800x450", "--color", "auto", "--width", "4"});
    QCOMPARE(image.size(), QSize(800, 450));
    // The voyages, in the colour of the second file, are one piece over the date line.
    QVERIFY(countOf(image, QColor(0x1B, 0x6F, 0xC2)) > 1000);
}

void tst_lvtracks_render::manyFiles()
{
    QStringList files;
    for (int i = 0; i < 700; ++i) {
        const QString name = QStringLiteral("t%1.gpx").arg(i);
        const double latitude = 50.0 + (0.01 * (i % 26));
        const double longitude = 8.0 + (0.01 * (i / 26));
        QVERIFY(LvTestFiles::write(
            path(name), LvTestFiles::gpx({{latitude, longitude}, {latitude + 0.008, longitude + 0.008}})));
        files.append(name);
    }
    const QImage image =
        picture(files + QStringList{"--map", "none", "--size", "900x900", "--color", "red", "--width", "2"});
    QVERIFY(countOf(image, Qt::red) > 700 * 10);
}

void tst_lvtracks_render::progressOnATerminal_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("hasBar");
    QTest::newRow("several files") << QStringList{"line.gpx", "point.gpx"} << true;
    QTest::newRow("one file") << QStringList{"line.gpx"} << false;
    QTest::newRow("quiet") << QStringList{"line.gpx", "point.gpx", "--quiet"} << false;
}

void tst_lvtracks_render::progressOnATerminal()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, hasBar);
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    QVERIFY(terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
    const QString name = QString::fromLocal8Bit(::ptsname(terminal));
    // Kept open, so that what the program wrote outlives it.
    const int other = ::open(QFile::encodeName(name).constData(), O_RDWR | O_NOCTTY);
    QProcess process;
    process.setWorkingDirectory(myDirectory->path());
    process.setStandardErrorFile(name);
    process.start(QStringLiteral(LVTRACKS_PROGRAM),
                  QStringList("render") + arguments + QStringList{"-o", "out.png", "--size", "50x50"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    QByteArray written(10000, '\0');
    const ssize_t count = ::read(terminal, written.data(), static_cast<std::size_t>(written.size()));
    written.truncate(std::max<ssize_t>(0, count));
    ::close(other);
    ::close(terminal);
    QCOMPARE(written.contains("100 % (2 of 2)"), hasBar);
    QVERIFY(hasBar ? written.endsWith("\r\033[K") : written.isEmpty());
}

void tst_lvtracks_render::repeatable()
{
    const QStringList options{LvTest::sampleFile(QStringLiteral("german-bight.kml")), "--size", "500x400"};
    const QImage first = picture(options);
    QCOMPARE(picture(options), first);
}

LV_TEST_MAIN(tst_lvtracks_render)
#include "tst_lvtracks_render.moc"
