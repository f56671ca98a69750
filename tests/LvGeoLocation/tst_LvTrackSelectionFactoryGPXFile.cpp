#include "LvGeoLocationSettings.h"
#include "LvTest.h"
#include "LvTrackSelectionFactoryGPXFile.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace
{

const QByteArray tour = "<gpx>"
                        "<rte><rtept lat='1' lon='2'><extensions><gpxx:RoutePointExtension>"
                        "<gpxx:rpt lat='50' lon='8'/><gpxx:rpt lat='50' lon='8'/>"
                        "</gpxx:RoutePointExtension></extensions></rtept></rte>"
                        "<trk><name>line</name><desc>along</desc><trkseg><trkpt lat='50' lon='8'/>"
                        "<trkpt lat='51' lon='8'/></trkseg></trk>"
                        "<trk><name>empty</name><trkseg/></trk>"
                        "<trk><trkseg><trkpt lat='50' lon='8'/></trkseg></trk>"
                        "</gpx>";

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// Shows that the URL forms go through the file forms.
class RenamingFactory : public LvTrackSelectionFactoryGPXFile
{
public:
    using LvTrackSelectionFactoryGPXFile::createConfiguredTrackList;
    using LvTrackSelectionFactoryGPXFile::supportsFile;

    bool supportsFile(const QFileInfo& file) const override
    {
        return file.fileName() == QStringLiteral("x y#.abc");
    }

    LvGPXConfiguredTrackList createConfiguredTrackList(const QFileInfo& file) const override
    {
        return file.fileName() == QStringLiteral("x y#.abc")
            ? LvGPXConfiguredTrackList(LvGPXConfiguredTrack())
            : LvGPXConfiguredTrackList();
    }
};

} // namespace

class tst_LvTrackSelectionFactoryGPXFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void supportsFile_data();
    void supportsFile();
    void supportedFileFormats();
    void reads();
    void takesTheDefaultOfTheUser();
    void unreadable_data();
    void unreadable();
    void urlFormsUseFileForms();

private:
    QTemporaryDir myDirectory;
};

void tst_LvTrackSelectionFactoryGPXFile::cleanup()
{
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(LvGPXTrackConfiguration::defaultValue());
}

void tst_LvTrackSelectionFactoryGPXFile::supportsFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("supported");

    QTest::newRow("lower case") << "tour.gpx" << true;
    QTest::newRow("upper case") << "Tour.GPX" << true;
    QTest::newRow("mixed case, not there") << "/nowhere/Tour.gPx" << true;
    QTest::newRow("last suffix counts") << "tour.kml.gpx" << true;
    QTest::newRow("other suffix behind it") << "tour.gpx.bak" << false;
    QTest::newRow("longer suffix") << "tour.gpxx" << false;
    QTest::newRow("KML") << "tour.kml" << false;
    QTest::newRow("no suffix") << "gpx" << false;
    QTest::newRow("no name") << "" << false;
}

void tst_LvTrackSelectionFactoryGPXFile::supportsFile()
{
    QFETCH(const QString, name);
    QFETCH(const bool, supported);

    const LvTrackSelectionFactoryGPXFile factory;
    QCOMPARE(factory.supportsFile(QFileInfo(name)), supported);
    QCOMPARE(factory.supportsFile(QUrl::fromLocalFile(name)), supported);
    // What is not local has no file.
    QVERIFY(!factory.supportsFile(QUrl(QStringLiteral("https://example.org/tour.gpx"))));
}

void tst_LvTrackSelectionFactoryGPXFile::supportedFileFormats()
{
    QCOMPARE(LvTrackSelectionFactoryGPXFile().supportedFileFormats(), QStringList({QStringLiteral("*.gpx")}));
}

void tst_LvTrackSelectionFactoryGPXFile::reads()
{
    const QString path = myDirectory.filePath(QStringLiteral("A tour#1.gpx"));
    QVERIFY(writeFile(path, tour));
    const LvTrackSelectionFactoryGPXFile factory;
    const LvGPXConfiguredTrackList tracks = factory.createConfiguredTrackList(QFileInfo(path));
    QCOMPARE(tracks.count(), 3);
    QCOMPARE(tracks.at(0).name(), QStringLiteral("line"));
    QCOMPARE(tracks.at(0).description(), QStringLiteral("along"));
    QCOMPARE(tracks.at(0).allPoints().count(), 2);
    // The automatic shape of the default style is resolved for each track.
    QVERIFY(tracks.at(0).configuration().trackShape() == LvGPXTrackShapeEnum::linestring);
    QCOMPARE(tracks.at(1).name(), QStringLiteral("A tour#1 3"));
    QVERIFY(tracks.at(1).configuration().trackShape() == LvGPXTrackShapeEnum::point);
    QCOMPARE(tracks.at(2).name(), QStringLiteral("A tour#1 4"));
    QVERIFY(tracks.at(2).configuration().trackShape() == LvGPXTrackShapeEnum::polygon);
    QVERIFY(factory.createConfiguredTrackList(QUrl::fromLocalFile(path)) == tracks);
}

void tst_LvTrackSelectionFactoryGPXFile::takesTheDefaultOfTheUser()
{
    LvGPXTrackConfiguration ofTheUser = LvGPXTrackConfiguration::defaultValue();
    ofTheUser.setLineColor(QColor(1, 2, 3));
    LvGeoLocationSettings::instance()->setDefaultTrackConfiguration(ofTheUser);
    const QString path = myDirectory.filePath(QStringLiteral("tour.gpx"));
    QVERIFY(writeFile(path, tour));
    const LvGPXConfiguredTrackList tracks =
        LvTrackSelectionFactoryGPXFile().createConfiguredTrackList(QFileInfo(path));
    QCOMPARE(tracks.count(), 3);
    for (const LvGPXConfiguredTrack& track : tracks) {
        QCOMPARE(track.lineColor().rgba(), qRgb(1, 2, 3));
    }
}

void tst_LvTrackSelectionFactoryGPXFile::unreadable_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("cut off") << tour.left(tour.size() - 3);
    QTest::newRow("waypoints only") << QByteArray("<gpx><wpt lat='1' lon='2'/></gpx>");
    QTest::newRow("no XML") << QByteArray("error 404");
}

void tst_LvTrackSelectionFactoryGPXFile::unreadable()
{
    QFETCH(const QByteArray, content);

    const QString path = myDirectory.filePath(QStringLiteral("odd.gpx"));
    QVERIFY(writeFile(path, content));
    const LvTrackSelectionFactoryGPXFile factory;
    QVERIFY(!factory.createConfiguredTrackList(QFileInfo(path)).isValid());
    QVERIFY(!factory.createConfiguredTrackList(QFileInfo(myDirectory.filePath(QStringLiteral("none.gpx"))))
                 .isValid());
    QVERIFY(!factory.createConfiguredTrackList(QFileInfo(myDirectory.path())).isValid());
    QVERIFY(!factory.createConfiguredTrackList(QUrl()).isValid());
}

void tst_LvTrackSelectionFactoryGPXFile::urlFormsUseFileForms()
{
    const RenamingFactory factory;
    const LvTrackSelectionFactoryAbstract& base = factory;
    QVERIFY(base.supportsFile(QUrl::fromLocalFile(QStringLiteral("/tmp/x y#.abc"))));
    QVERIFY(!base.supportsFile(QUrl::fromLocalFile(QStringLiteral("/tmp/tour.gpx"))));
    QCOMPARE(base.createConfiguredTrackList(QUrl::fromLocalFile(QStringLiteral("/tmp/x y#.abc"))).count(), 1);
}

LV_TEST_MAIN(tst_LvTrackSelectionFactoryGPXFile)
#include "tst_LvTrackSelectionFactoryGPXFile.moc"
