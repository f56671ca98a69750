#include "LvGeoJsonExporter.h"
#include "LvGpxExporter.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackExporter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace LvTestTracks;

namespace
{

QByteArray bytesOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_LvTrackExporter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names();
    void kinds_data();
    void kinds();
    void refusals();
    void tooLarge();
};

void tst_LvTrackExporter::names()
{
    QCOMPARE(LvTrackExporter::nameFilters(),
             (QStringList{"GPX-Dateien (*.gpx)", "GeoJSON-Dateien (*.geojson *.json)"}));
    QCOMPARE(LvTrackExporter::supportedSuffixes(), (QStringList{"gpx", "geojson", "json"}));
}

void tst_LvTrackExporter::kinds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("gpx") << "a.gpx" << LvGpxExporter::encode(list({"A"}));
    QTest::newRow("upper case") << "a.b.GPX" << LvGpxExporter::encode(list({"A"}));
    QTest::newRow("geojson") << "a.geojson" << LvGeoJsonExporter::encode(list({"A"}));
    QTest::newRow("json") << "a.json" << LvGeoJsonExporter::encode(list({"A"}));
}

void tst_LvTrackExporter::kinds()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, expected);
    QTemporaryDir directory;
    QCOMPARE(LvTrackExporter::save(list({"A"}), directory.filePath(name)), QString());
    QCOMPARE(bytesOf(directory.filePath(name)), expected);
}

void tst_LvTrackExporter::refusals()
{
    QTemporaryDir directory;
    QVERIFY(!LvTrackExporter::save(list({"A"}), directory.filePath("a.kml")).isEmpty());
    QVERIFY(!LvTrackExporter::save(list({"A"}), directory.filePath("gpx")).isEmpty());
    QVERIFY(!LvTrackExporter::save(list({"A"}), directory.filePath("no/a.gpx")).isEmpty());
    // Nothing to write leaves an older file as it is.
    QCOMPARE(LvTrackExporter::save(list({"A"}), directory.filePath("a.gpx")), QString());
    QVERIFY(!LvTrackExporter::save({}, directory.filePath("a.gpx")).isEmpty());
    QCOMPARE(bytesOf(directory.filePath("a.gpx")), LvGpxExporter::encode(list({"A"})));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void tst_LvTrackExporter::tooLarge()
{
    QTemporaryDir directory;
    const QString fileName = directory.filePath("a.gpx");
    QCOMPARE(LvTrackExporter::save(list({"A"}), fileName), QString());
    const LvGPXConfiguredTrackList tracks = list({"B", "C"});
    const qint64 size = LvGpxExporter::encode(tracks).size();
    QCOMPARE(
        LvTrackExporter::save(tracks, fileName, size - 1),
        QStringLiteral("Die Spuren haben so viele Punkte, dass sich die Datei nicht wieder öffnen ließe."));
    QCOMPARE(bytesOf(fileName), LvGpxExporter::encode(list({"A"})));
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
    QCOMPARE(LvTrackExporter::save(tracks, fileName, LvGpxExporter::maximumSize(tracks)), QString());
    QCOMPARE(bytesOf(fileName), LvGpxExporter::encode(tracks));
    // What is never opened here may have any size.
    QCOMPARE(LvTrackExporter::save(tracks, directory.filePath("a.geojson"), 1), QString());
}

LV_TEST_MAIN(tst_LvTrackExporter)
#include "tst_LvTrackExporter.moc"
