#include "LvGPXTrackFile.h"
#include "LvTest.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <type_traits>

namespace
{

const QByteArray segment = "<trkseg><trkpt lat='50' lon='8'/><trkpt lat='51' lon='9'/></trkseg>";
const QByteArray routePoint = "<rtept lat='1' lon='1'><extensions><gpxx:RoutePointExtension>"
                              "<gpxx:rpt lat='52' lon='10'/></gpxx:RoutePointExtension></extensions></rtept>";

QStringList names(const QList<LvGPXTrack>& tracks)
{
    QStringList result;
    for (const LvGPXTrack& track : tracks) {
        result.append(track.name());
    }
    return result;
}

static_assert(std::has_virtual_destructor_v<LvGPXTrackFile>);
static_assert(std::is_copy_assignable_v<LvGPXTrackFile>);

} // namespace

class tst_LvGPXTrackFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesAndOrder_data();
    void namesAndOrder();
    void fileNames_data();
    void fileNames();
    void anyRoot_data();
    void anyRoot();
    void notValid_data();
    void notValid();
    void onlyRegularFiles();
    void ignoresIncludes();
    void content();
    void savedAndReadAgain();
    void readTracksContinuesTheCounter();

private:
    QFileInfo write(const QByteArray& text, const QString& name = QStringLiteral("tour.gpx")) const;

    QScopedPointer<QTemporaryDir> myDirectory;
};

void tst_LvGPXTrackFile::init()
{
    myDirectory.reset(new QTemporaryDir);
}

QFileInfo tst_LvGPXTrackFile::write(const QByteArray& text, const QString& name) const
{
    QFile file(myDirectory->filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? QFileInfo(file.fileName())
                                                                              : QFileInfo();
}

void tst_LvGPXTrackFile::namesAndOrder_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QStringList>("expected");
    const QByteArray unnamedTrack = "<trk>" + segment + "</trk>";
    const QByteArray namedTrack = "<trk><name>mine</name>" + segment + "</trk>";
    const QByteArray unnamedRoute = "<rte>" + routePoint + "</rte>";
    const QByteArray emptyTrack = "<trk><trkseg/></trk>";
    QTest::newRow("numbering runs on into the routes")
        << unnamedTrack + namedTrack + unnamedRoute << QStringList{"tour 1", "mine", "tour 3"};
    QTest::newRow("tracks first, whatever the document says") << unnamedRoute + namedTrack + unnamedRoute
            + unnamedTrack << QStringList{"mine", "tour 2", "tour 3", "tour 4"};
    QTest::newRow("what is skipped counts")
        << emptyTrack + unnamedTrack + "<rte/>" + unnamedRoute << QStringList{"tour 2", "tour 4"};
    QTest::newRow("blanks around a name stay")
        << "<trk><name> a </name>" + segment + "</trk>" << QStringList{" a "};
    // The document tree drops a text of blanks only.
    QTest::newRow("blanks alone are no name")
        << "<trk><name> </name>" + segment + "</trk>" << QStringList{"tour 1"};
    QTest::newRow("an empty name is none") << "<trk><name/>" + segment + "</trk>" << QStringList{"tour 1"};
    QTest::newRow("others neither count nor appear") << "<metadata/><wpt lat='1' lon='2'/><Trk>" + segment
            + "</Trk><x:trk>" + segment + "</x:trk>"
            + unnamedTrack << QStringList{"tour 1"};
    QTest::newRow("nested ones are not the root's")
        << "<x>" + namedTrack + "</x>" + unnamedTrack << QStringList{"tour 1"};
}

void tst_LvGPXTrackFile::namesAndOrder()
{
    QFETCH(QByteArray, body);
    QFETCH(QStringList, expected);
    const LvGPXTrackFile file(write("<gpx>" + body + "</gpx>"));
    QCOMPARE(names(file.tracks()), expected);
    QVERIFY(file.isValid());
}

void tst_LvGPXTrackFile::fileNames_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("expected");
    QTest::newRow("up to the first dot") << "tour.2024.gpx"
                                         << "tour 1";
    QTest::newRow("without a suffix") << "tour"
                                      << "tour 1";
    QTest::newRow("placeholders survive") << "a%2b%1.gpx"
                                          << "a%2b%1 1";
    QTest::newRow("blanks and umlauts") << QStringLiteral("Über Land.gpx") << QStringLiteral("Über Land 1");
    QTest::newRow("nothing before the dot") << ".gpx"
                                            << " 1";
}

void tst_LvGPXTrackFile::fileNames()
{
    QFETCH(QString, fileName);
    QFETCH(QString, expected);
    QCOMPARE(names(LvGPXTrackFile(write("<gpx><trk>" + segment + "</trk></gpx>", fileName)).tracks()),
             QStringList{expected});
}

void tst_LvGPXTrackFile::anyRoot_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("other root") << "<tracks><trk>" + segment + "</trk></tracks>";
    QTest::newRow("namespace") << "<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1'><trk>"
            + segment + "</trk></gpx>";
    QTest::newRow("prefix that is not declared") << "<gpx><trk>" + segment + "<q:x/></trk></gpx>";
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF<gpx><trk>") + segment + "</trk></gpx>";
}

void tst_LvGPXTrackFile::anyRoot()
{
    QFETCH(QByteArray, document);
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(write(document)).tracks();
    QCOMPARE(tracks.size(), 1);
    QCOMPARE(tracks.first().countPoints(), 2);
}

void tst_LvGPXTrackFile::notValid_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("no XML") << QByteArray("ERROR: no such track");
    QTest::newRow("only waypoints") << QByteArray("<gpx><wpt lat='1' lon='2'/></gpx>");
    QTest::newRow("only empty tracks") << QByteArray("<gpx><trk/><trk><trkseg/></trk></gpx>");
    QTest::newRow("plain route") << QByteArray("<gpx><rte><rtept lat='1' lon='2'/></rte></gpx>");
    QTest::newRow("root missing its end") << "<gpx><trk>" + segment + "</trk>";
    QTest::newRow("text behind the root") << "<gpx><trk>" + segment + "</trk></gpx>junk";
}

void tst_LvGPXTrackFile::notValid()
{
    QFETCH(QByteArray, document);
    const LvGPXTrackFile file(write(document));
    QVERIFY(!file.isValid());
    QVERIFY(file.tracks().isEmpty());
}

void tst_LvGPXTrackFile::onlyRegularFiles()
{
    QVERIFY(!LvGPXTrackFile(QFileInfo()).isValid());
    QVERIFY(!LvGPXTrackFile(QFileInfo(myDirectory->filePath(QStringLiteral("missing.gpx")))).isValid());
    QVERIFY(!LvGPXTrackFile(QFileInfo(myDirectory->path())).isValid());
    const QString pipe = myDirectory->filePath(QStringLiteral("pipe.gpx"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!LvGPXTrackFile(QFileInfo(pipe)).isValid());
}

void tst_LvGPXTrackFile::ignoresIncludes()
{
    write("<includedTrack><trk>" + segment + "</trk></includedTrack>", QStringLiteral("track.gps"));
    const QFileInfo file =
        write("<gpx><trk><include>track.gps</include></trk><trk><include>track.gps</include>" + segment
              + "</trk></gpx>");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(myDirectory->path()));
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(names(tracks), QStringList{"tour 2"});
    QCOMPARE(tracks.first().segments().size(), 1);
}

void tst_LvGPXTrackFile::content()
{
    const LvGPXTrackFile file(write("<gpx><trk><name>n</name><desc>d</desc><shape>polygon</shape>" + segment
                                    + "<trkseg><compressedPoints>8,50,12</compressedPoints></trkseg>"
                                      "<enclaves><trk/></enclaves></trk><rte><name>r</name>"
                                    + routePoint + routePoint + "</rte></gpx>"));
    const LvGPXTrackFile copy = file;
    QCOMPARE(copy.tracks().size(), 2);
    const LvGPXTrack track = copy.tracks().at(0);
    QCOMPARE(track.description(), QStringLiteral("d"));
    QVERIFY(track.hasShape(LvGPXTrackShapeEnum::polygon));
    QCOMPARE(track.segments().size(), 2);
    QCOMPARE(track.countPoints(), 3);
    QCOMPARE(track.enclaves().size(), 1);
    const LvGPXTrack route = copy.tracks().at(1);
    QCOMPARE(route.segments().size(), 2);
    QVERIFY(route.firstPoint() == LvGeoPosition(52, 10));
}

void tst_LvGPXTrackFile::savedAndReadAgain()
{
    const QFileInfo file = write("<gpx><trk><name>n</name><desc>d</desc><shape>hop</shape><trkseg>"
                                 "<trkpt lat='50.1' lon='8.2'><ele>7</ele><desc>p</desc></trkpt>"
                                 "<trkpt lat='51' lon='9'/></trkseg></trk></gpx>");
    const LvGPXTrack track = LvGPXTrackFile(file).tracks().first();
    const QFileInfo copy(myDirectory->filePath(QStringLiteral("copy.gpx")));
    track.saveAsGpxFile(copy);
    const LvGPXTrack back = LvGPXTrackFile(copy).tracks().first();
    QCOMPARE(back.name(), QStringLiteral("n"));
    QVERIFY(back.hasShape(LvGPXTrackShapeEnum::hop));
    QVERIFY(back.allPoints() == track.allPoints());
    QCOMPARE(back.segments().first().trackPoints().first().elevation(), 7);
    QCOMPARE(track.description(), QStringLiteral("d"));
    QVERIFY(back.description().isEmpty());
    QCOMPARE(track.segments().first().trackPoints().first().description(), QStringLiteral("p"));
    QVERIFY(back.segments().first().trackPoints().first().description().isEmpty());
}

void tst_LvGPXTrackFile::readTracksContinuesTheCounter()
{
    QDomDocument document;
    QVERIFY(
        document.setContent("<x><a>" + segment + "</a><a/><b>" + segment + "</b><a>" + segment + "</a></x>"));
    const LvGPXTrackFile file{QFileInfo()};
    int counter = 7;
    const QList<LvGPXTrack> tracks = file.readTracks(document.documentElement(), QStringLiteral("a"), counter,
                                                     QFileInfo(QStringLiteral("/missing/other.gpx")));
    QCOMPARE(names(tracks), (QStringList{"other 8", "other 10"}));
    QCOMPARE(counter, 10);
    QVERIFY(file.readTracks(QDomElement(), QStringLiteral("a"), counter, QFileInfo()).isEmpty());
    QCOMPARE(counter, 10);
}

LV_TEST_MAIN(tst_LvGPXTrackFile)
#include "tst_LvGPXTrackFile.moc"
