#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTracksProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <unistd.h>

using LvTracksProcess::Result;
using LvTracksProcess::run;

namespace
{

constexpr double kmPerDegree = 111.1774733520461; // on a great circle of the sphere of 6370 km

const QByteArray twoTracks = R"(<?xml version="1.0" encoding="UTF-8"?>
<gpx version="1.1">
 <trk><name>Two parts</name><desc>up &amp; down</desc>
  <trkseg>
   <trkpt lat="50" lon="8"><ele>10</ele><time>2024-05-01T12:00:00Z</time></trkpt>
   <trkpt lat="51" lon="8"><ele>20</ele><time>2024-05-01T10:30:00Z</time></trkpt>
  </trkseg>
  <trkseg>
   <trkpt lat="53" lon="8"><time>2024-05-02T08:00:00Z</time></trkpt>
   <trkpt lat="53.5" lon="8"/>
  </trkseg>
 </trk>
 <trk><name>Across</name><trkseg>
   <trkpt lat="0.5" lon="179"/><trkpt lat="0.5" lon="-179"/>
 </trkseg></trk>
</gpx>)";

} // namespace

class tst_lvtracks_info : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void helpAndVersion_data();
    void helpAndVersion();
    void wrongUsage_data();
    void wrongUsage();
    void text();
    void json();
    void jsonOfFailures();
    void everyShape_data();
    void everyShape();
    void exitCodes_data();
    void exitCodes();
    void oneLineForEachFile();
    void namesCannotControlTheTerminal();
    void nameInAnotherEncoding();
    void fileNamedLikeAnOption();
    void fullStandardOutput();
    void corpus();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory->filePath(name); }

    [[nodiscard]] Result info(const QStringList& arguments) const
    {
        return run(QStringList(QStringLiteral("info")) + arguments, myDirectory->path());
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
};

void tst_lvtracks_info::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(LvTestFiles::write(path(QStringLiteral("two.gpx")), twoTracks));
    QVERIFY(
        LvTestFiles::write(path(QStringLiteral("waypoint.gpx")), "<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>"));
}

void tst_lvtracks_info::helpAndVersion_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("texts");

    const QStringList general{"Usage: lvtracks COMMAND", "info", "render", "Exit codes:"};
    const QStringList ofInfo{"Usage: lvtracks info [OPTION...] FILE...", "--json", "--quiet", "6370 km"};
    const QStringList ofRender{"Usage: lvtracks render [OPTION...] FILE...",
                               "--output",
                               "--size",
                               "--scale",
                               "--bbox",
                               "--center",
                               "--zoom",
                               "--map",
                               "--attribution",
                               "--cropping",
                               "--color",
                               "--width",
                               "--halo",
                               "--fill",
                               "--marker",
                               "--style",
                               "--quiet"};
    const QStringList version{"lvtracks "};
    QTest::newRow("--help") << QStringList{"--help"} << general;
    QTest::newRow("-h") << QStringList{"-h"} << general;
    QTest::newRow("info --help") << QStringList{"info", "--help"} << ofInfo;
    QTest::newRow("info -h, with a file") << QStringList{"info", "x.gpx", "-h"} << ofInfo;
    QTest::newRow("render --help") << QStringList{"render", "--help"} << ofRender;
    QTest::newRow("--version") << QStringList{"--version"} << version;
    QTest::newRow("-v") << QStringList{"-v"} << version;
    QTest::newRow("info --version") << QStringList{"info", "--version"} << version;
    QTest::newRow("render -v") << QStringList{"render", "-v"} << version;
}

void tst_lvtracks_info::helpAndVersion()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, texts);
    const Result result = run(arguments);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QByteArray());
    for (const QString& text : std::as_const(texts)) {
        QVERIFY2(QString::fromUtf8(result.output).contains(text), qPrintable(text));
    }
    QVERIFY(result.output.endsWith('\n'));
}

void tst_lvtracks_info::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QStringList{} << "lvtracks: no command given (try: lvtracks --help)";
    QTest::newRow("unknown command") << QStringList{"draw", "a.gpx"}
                                     << "lvtracks: unknown command \"draw\" (try: lvtracks --help)";
    QTest::newRow("no file") << QStringList{"info"} << "lvtracks: no file given (try: lvtracks info --help)";
    QTest::newRow("unknown option") << QStringList{"info", "--jsno", "a.gpx"}
                                    << "lvtracks: Unknown option 'jsno'. (try: lvtracks info --help)";
    QTest::newRow("line break in a command")
        << QStringList{"a\nb"} << "lvtracks: unknown command \"a b\" (try: lvtracks --help)";
}

void tst_lvtracks_info::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const Result result = run(arguments);
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.errorLines(), QStringList(message));
}

void tst_lvtracks_info::text()
{
    const Result result = info({"two.gpx"});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QByteArray());
    // One degree, and half of one: the way from one segment to the next does not count.
    const QString expected =
        QStringLiteral("two.gpx, tracks: 2\n"
                       "  1. Two parts\n"
                       "     linestring, points: 4, segments: 2, %1 km\n"
                       "     from 2024-05-01T10:30:00Z to 2024-05-02T08:00:00Z\n"
                       "     south 50.00000, west 8.00000, north 53.50000, east 8.00000\n"
                       "  2. Across\n"
                       "     linestring, points: 2, segments: 1, 222.346 km\n"
                       "     south 0.50000, west 179.00000, north 0.50000, east -179.00000 (across the 180° "
                       "meridian)\n"
                       "Lengths on a sphere of radius 6370 km.\n")
            .arg(QString::number(1.5 * kmPerDegree, 'f', 3));
    QCOMPARE(QString::fromUtf8(result.output), expected);
}

void tst_lvtracks_info::json()
{
    const Result result = info({"--json", "two.gpx"});
    QCOMPARE(result.exitCode, 0);
    QJsonParseError error{};
    const QJsonObject root = QJsonDocument::fromJson(result.output, &error).object();
    QCOMPARE(error.error, QJsonParseError::NoError);
    QCOMPARE(root.keys(), QStringList({"earthRadiusKm", "files"}));
    QCOMPARE(root.value("earthRadiusKm").toInt(), 6370);
    QCOMPARE(root.value("files").toArray().size(), 1);

    const QJsonObject file = root.value("files").toArray().at(0).toObject();
    QCOMPARE(file.keys(), QStringList({"emptyTracks", "error", "file", "tracks"}));
    QCOMPARE(file.value("file").toString(), QStringLiteral("two.gpx"));
    QVERIFY(file.value("error").isNull());
    QCOMPARE(file.value("emptyTracks").toInt(-1), 0);
    QCOMPARE(file.value("tracks").toArray().size(), 2);

    const QJsonObject track = file.value("tracks").toArray().at(0).toObject();
    const QJsonObject expected{
        {"name", "Two parts"},
        {"description", "up & down"},
        {"shape", "linestring"},
        {"points", 4},
        {"segments", 2},
        {"enclaves", 0},
        {"lengthKm", 166.766},
        {"start", "2024-05-01T10:30:00Z"},
        {"end", "2024-05-02T08:00:00Z"},
        {"boundingBox", QJsonObject{{"south", 50}, {"west", 8}, {"north", 53.5}, {"east", 8}}}};
    QCOMPARE(track, expected);

    const QJsonObject across = file.value("tracks").toArray().at(1).toObject();
    QVERIFY(across.value("start").isNull());
    QVERIFY(across.value("end").isNull());
    QCOMPARE(across.value("boundingBox").toObject(),
             QJsonObject({{"south", 0.5}, {"west", 179}, {"north", 0.5}, {"east", -179}}));
}

void tst_lvtracks_info::jsonOfFailures()
{
    const Result result = info({"waypoint.gpx", "--json", "missing.gpx"});
    QCOMPARE(result.exitCode, 1);
    const QJsonArray files = QJsonDocument::fromJson(result.output).object().value("files").toArray();
    QCOMPARE(files.size(), 2);
    const QJsonObject waypoint{{"file", "waypoint.gpx"},
                               {"error", "only waypoints, no track or route"},
                               {"emptyTracks", 0},
                               {"tracks", QJsonArray()}};
    QCOMPARE(files.at(0).toObject(), waypoint);
    QCOMPARE(files.at(1).toObject().value("error").toString(), QStringLiteral("not found"));
}

void tst_lvtracks_info::everyShape_data()
{
    QTest::addColumn<QString>("sampleName");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("hike") << "brocken-hike.gpx"
                          << QStringList{"  1. Over the Brocken",
                                         "     linestring, points: 369, segments: 2, 13.088 km"};
    QTest::newRow("area with enclaves")
        << "lake-islands.gpx"
        << QStringList{"     polygon, points: 271, segments: 1, 41.118 km", "     enclaves: 2"};
    QTest::newRow("route") << "weser-route.gpx"
                           << QStringList{"     linestring, points: 206, segments: 11, 310.771 km"};
    QTest::newRow("points of a KML file")
        << "german-bight.kml"
        << QStringList{"  5. Roter Sand", "     point, points: 1, segments: 1, 0.000 km"};
    QTest::newRow("archive") << "iceland.kmz" << QStringList{"  1. Ring road", QStringLiteral("  6. Vík")};
    QTest::newRow("date line") << "date-line.gpx"
                               << QStringList{"     south -36.84000, west 174.77000, north 21.30000, east "
                                              "-149.57000 (across the 180° meridian)"};
}

void tst_lvtracks_info::everyShape()
{
    QFETCH(QString, sampleName);
    QFETCH(QStringList, lines);
    const Result result = info({LvTest::sampleFile(sampleName)});
    QCOMPARE(result.exitCode, 0);
    const QStringList output = QString::fromUtf8(result.output).split(QLatin1Char('\n'));
    for (const QString& line : std::as_const(lines)) {
        QVERIFY2(output.contains(line), qPrintable(line));
    }
}

void tst_lvtracks_info::exitCodes_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("good") << QStringList{"two.gpx"} << 0;
    QTest::newRow("good twice") << QStringList{"two.gpx", "two.gpx"} << 0;
    QTest::newRow("bad") << QStringList{"waypoint.gpx"} << 1;
    QTest::newRow("all bad") << QStringList{"waypoint.gpx", "missing.gpx"} << 1;
    QTest::newRow("one of two") << QStringList{"waypoint.gpx", "two.gpx"} << 3;
    QTest::newRow("the other of two") << QStringList{"two.gpx", "missing.gpx"} << 3;
}

void tst_lvtracks_info::exitCodes()
{
    QFETCH(QStringList, files);
    QFETCH(int, exitCode);
    const Result result = info(files);
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(result.output.contains("Two parts"), exitCode != 1);
}

void tst_lvtracks_info::oneLineForEachFile()
{
    QVERIFY(LvTestFiles::write(path(QStringLiteral("empty.gpx")), QByteArray()));
    QVERIFY(LvTestFiles::write(path(QStringLiteral("text.kml")), "Good\nmorning"));
    QVERIFY(QDir(myDirectory->path()).mkdir(QStringLiteral("folder.gpx")));
    const Result result =
        info({"waypoint.gpx", "empty.gpx", "two.gpx", "text.kml", "folder.gpx", "missing.gpx", "two.txt"});
    QCOMPARE(result.exitCode, 3);
    const QStringList expected{
        "lvtracks: waypoint.gpx: only waypoints, no track or route",
        "lvtracks: empty.gpx: empty file",
        "lvtracks: text.kml: not readable as XML: Start tag expected. (line 1, column 1)",
        "lvtracks: folder.gpx: not a regular file",
        "lvtracks: missing.gpx: not found",
        "lvtracks: two.txt: not found"};
    QCOMPARE(result.errorLines(), expected);
}

void tst_lvtracks_info::namesCannotControlTheTerminal()
{
    const QString name = QStringLiteral("a\033[31m\nb.gpx");
    QVERIFY(LvTestFiles::write(path(name), LvTestFiles::gpx({{1, 2}, {3, 4}}, "x&#10;y&#9;z&#x85;")));
    const Result good = info({name});
    QCOMPARE(good.exitCode, 0);
    QVERIFY(!good.output.contains('\033'));
    QVERIFY(good.output.startsWith("a [31m b.gpx, tracks: 1\n  1. x y z"));
    const Result bad = info({name + QStringLiteral(".gpx")});
    QCOMPARE(bad.errorLines(), QStringList("lvtracks: a [31m b.gpx.gpx: not found"));
    // In JSON the name stays what it is.
    const Result json = info({"--json", name});
    QCOMPARE(QJsonDocument::fromJson(json.output).object().value("files").toArray().at(0)["file"].toString(),
             name);
}

void tst_lvtracks_info::nameInAnotherEncoding()
{
    // No text in the encoding of the locale: such a file cannot be named, and the message is one line.
    QProcess process;
    process.setWorkingDirectory(myDirectory->path());
    process.start(QStringLiteral("sh"),
                  {"-c", "name=$(printf 'a\\377\\033.gpx'); cp two.gpx \"$name\"; \"$0\" info \"$name\"",
                   QStringLiteral(LVTRACKS_PROGRAM)});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    const QByteArray errors = process.readAllStandardError();
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(errors.count('\n'), 1);
    QVERIFY(!errors.contains('\033'));
    QVERIFY(errors.endsWith(": not found\n"));
    // The toolkit could not remove it either.
    QCOMPARE(::unlink((QFile::encodeName(path(QStringLiteral("a"))) + "\377\033.gpx").constData()), 0);
}

void tst_lvtracks_info::fileNamedLikeAnOption()
{
    QVERIFY(LvTestFiles::write(path(QStringLiteral("--json.gpx")), twoTracks));
    QCOMPARE(info({"--json.gpx"}).exitCode, 2);
    QCOMPARE(info({"--", "--json.gpx"}).exitCode, 0);
}

void tst_lvtracks_info::fullStandardOutput()
{
    if (!QFile::exists(QStringLiteral("/dev/full"))) {
        QSKIP("no device that is always full");
    }
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(LVTRACKS_PROGRAM), {"info", path(QStringLiteral("two.gpx"))});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray("lvtracks: the standard output cannot be written\n"));
}

void tst_lvtracks_info::corpus()
{
    if (LvTest::corpusDirectory().isEmpty()) {
        QSKIP("no folder with sample files");
    }
    QStringList files;
    for (const char* folder : {"gpx", "kml", "kmz", "malformed"}) {
        const QDir directory(LvTest::corpusDirectory() + QLatin1Char('/') + QLatin1String(folder));
        const QStringList names = directory.entryList(QDir::Files);
        for (const QString& name : names) {
            files.append(directory.filePath(name));
        }
    }
    const Result result = info(QStringList("--json") + files);
    QCOMPARE(result.exitCode, 3);
    const QJsonArray entries = QJsonDocument::fromJson(result.output).object().value("files").toArray();
    QCOMPARE(entries.size(), files.size());
    qsizetype failures = 0;
    for (const QJsonValue& entry : entries) {
        const bool hasTracks = !entry["tracks"].toArray().isEmpty();
        QVERIFY2(hasTracks == entry["error"].isNull(), qPrintable(entry["file"].toString()));
        failures += hasTracks ? 0 : 1;
    }
    QCOMPARE(result.errorLines().size(), failures);
}

LV_TEST_MAIN(tst_lvtracks_info)
#include "tst_lvtracks_info.moc"
