#include "LvFaults.h"
#include "LvMapPicture.h"
#include "LvPictureExporter.h"
#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTestTracks.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackExporter.h"
#include "LvTracksProcess.h"

#include <QDir>
#include <QFile>

#include <functional>
#include <utility>
#include <vector>

using LvFaults::Fault;
using TrackStorage = LvTrackDocumentFile::TrackStorage;

namespace
{

/// Writes the file and returns the message that the user gets, one line; empty when there is none.
using Writer = std::function<QString(const QString& path)>;

LvGPXConfiguredTrackList tracks()
{
    return LvTestTracks::list({"A", "B"});
}

LvMapView view()
{
    return LvMapView::aroundCenter(LvGeoPosition(50.5, 9.0), 7.0, QSize(200, 150));
}

Writer document(TrackStorage storage)
{
    return [storage](const QString& path) {
        LvTrackDocument shown;
        shown.addTracks(tracks());
        QString errorText = LvTrackDocumentFile::save(shown, path, storage);
        // The title of the window goes on telling that there is something to save.
        const bool isModified = shown.isModified();
        return isModified != errorText.isEmpty() ? errorText : QStringLiteral("(wrong state)");
    };
}

QString exported(const QString& path)
{
    return LvTrackExporter::save(tracks(), path);
}

QString picture(const QString& path)
{
    return LvMapPicture(LvGPXTrackSelection(tracks()), view(), nullptr, 1.0).save(path);
}

QString exportedPicture(const QString& path)
{
    LvPictureOptions options;
    options.size = QSize(200, 150);
    return LvPictureExporter(LvGPXTrackSelection(tracks()), view(), QStringLiteral("none"), QString())
        .save(path, options);
}

/// By the command-line program; what it tells stands on its standard error output.
QString rendered(const QString& path)
{
    const LvTracksProcess::Result result =
        LvTracksProcess::run({"render", LvTest::sampleFile(QStringLiteral("brocken-hike.gpx")), "-o", path,
                              "--map", "none", "--size", "200x150", "--quiet"});
    const QString message = result.errorLines().join(QLatin1Char('\n'));
    return (result.exitCode == 0) == message.isEmpty() && result.exitCode >= 0
        ? message
        : QStringLiteral("(wrong exit code)");
}

/// The message without what differs from system to system.
bool isMessageAbout(const QString& message, const QString& path)
{
    return !message.isEmpty() && !message.startsWith(QLatin1Char('(')) && !message.contains(QLatin1Char('\n'))
        && (message.contains(QFileInfo(path).fileName()) || message.contains(QFileInfo(path).path())
            || message.startsWith(QStringLiteral("cannot be written: "))
            || message.startsWith(QStringLiteral("lässt sich nicht schreiben: ")));
}

} // namespace

Q_DECLARE_METATYPE(Writer)

/// What becomes of the files and of the user when the programs cannot write, with every fault really
/// provoked.
class tst_ProgramFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void failedWritesLeaveEverything_data();
    void failedWritesLeaveEverything();
    void newFilesAppearWholeOrNotAtAll_data();
    void newFilesAppearWholeOrNotAtAll();
    void documentWithTrackFiles_data();
    void documentWithTrackFiles();
    void saveAfterFailure();

private:
    static void addWritersAndFaults(bool hasOlderFile);
};

void tst_ProgramFaults::initTestCase()
{
    // What is no fault of the disk would be told the same way.
    const QTemporaryDir directory;
    QCOMPARE(rendered(directory.filePath(QStringLiteral("a.png"))), QString());
}

void tst_ProgramFaults::addWritersAndFaults(bool hasOlderFile)
{
    QTest::addColumn<Writer>("writer");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Fault>("fault");
    const std::vector<std::pair<const char*, Writer>> writers = {
        {"inline.lvt", document(TrackStorage::Inline)},
        {"separate.lvt", document(TrackStorage::SeparateFiles)},
        {"exported.gpx", exported},
        {"exported.geojson", exported},
        {"picture.png", picture},
        {"picture.jpg", picture},
        {"picture.svg", picture},
        {"picture.pdf", picture},
        {"exported.png", exportedPicture},
        {"rendered.png", rendered},
        {"rendered.svg", rendered},
    };
    for (const auto& [name, writer] : writers) {
        for (const Fault fault : {Fault::FileSizeLimit, Fault::FullDisk, Fault::FullFileTable,
                                  Fault::ReadOnlyDirectory, Fault::ReadOnlyFile, Fault::VanishedDirectory}) {
            if (hasOlderFile || fault != Fault::ReadOnlyFile) {
                QTest::addRow("%s, %s", name, LvFaults::nameOf(fault))
                    << writer << QString::fromLatin1(name) << fault;
            }
        }
    }
}

void tst_ProgramFaults::failedWritesLeaveEverything_data()
{
    addWritersAndFaults(true);
}

void tst_ProgramFaults::failedWritesLeaveEverything()
{
    QFETCH(Writer, writer);
    QFETCH(QString, name);
    QFETCH(Fault, fault);
    LvFaults::Place place(fault, name);
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    auto before = place.content();
    place.begin();
    const bool isReachable = QFileInfo(QStringLiteral(LVTRACKS_PROGRAM)).isExecutable();
    const QString message = writer(place.olderFile());
    place.end();
    if (!place.isValid() || !isReachable) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    QVERIFY2(isMessageAbout(message, place.olderFile()), qPrintable(message));
    auto after = place.content();
    QCOMPARE(after.value(name), QByteArray("older"));
    if (fault == Fault::ReadOnlyFile && name == QLatin1String("separate.lvt")) {
        // The tracks could be written, wholly, before it turned out that the document cannot.
        QCOMPARE(after.remove(QStringLiteral("track.gps")) + after.remove(QStringLiteral("track_1.gps")), 2);
    }
    QCOMPARE(after, before);
    // Without the fault it is written.
    QCOMPARE(writer(place.olderFile()), QString());
    QVERIFY(place.content().value(name).size() > 100);
}

void tst_ProgramFaults::newFilesAppearWholeOrNotAtAll_data()
{
    addWritersAndFaults(false);
}

void tst_ProgramFaults::newFilesAppearWholeOrNotAtAll()
{
    QFETCH(Writer, writer);
    QFETCH(QString, name);
    QFETCH(Fault, fault);
    LvFaults::Place place(fault, QStringLiteral("other.txt"));
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    const auto before = place.content();
    const QString path = QDir(place.directory()).filePath(name);
    place.begin();
    const bool isReachable = QFileInfo(QStringLiteral(LVTRACKS_PROGRAM)).isExecutable();
    const QString message = writer(path);
    place.end();
    if (!isReachable) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    QVERIFY2(isMessageAbout(message, path), qPrintable(message));
    QCOMPARE(place.content(), before);
}

void tst_ProgramFaults::documentWithTrackFiles_data()
{
    QTest::addColumn<Fault>("fault");
    for (const Fault fault : {Fault::FileSizeLimit, Fault::FullDisk, Fault::FullFileTable,
                              Fault::ReadOnlyDirectory, Fault::ReadOnlyFile, Fault::VanishedDirectory}) {
        QTest::newRow(LvFaults::nameOf(fault)) << fault;
    }
}

void tst_ProgramFaults::documentWithTrackFiles()
{
    // An older document with its tracks, and one more track that does not find its place.
    QFETCH(Fault, fault);
    const QString name = QStringLiteral("a.lvt");
    LvFaults::Place place(fault, name);
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    LvTrackDocument shown;
    shown.addTracks(tracks());
    QCOMPARE(LvTrackDocumentFile::save(shown, place.olderFile(), TrackStorage::SeparateFiles), QString());
    const LvTrackDocumentContent older = shown.content();
    shown.addTracks(LvTestTracks::list({"C"}));
    shown.renameTrack(0, QStringLiteral("changed"));
    place.begin();
    const QString message = LvTrackDocumentFile::save(shown, place.olderFile(), TrackStorage::SeparateFiles);
    place.end();
    QVERIFY2(isMessageAbout(message, place.olderFile()), qPrintable(message));
    QVERIFY(shown.isModified());
    LvTrackDocumentReading reading = LvTrackDocumentFile::read(place.olderFile());
    QCOMPARE(reading.errorText, QString());
    QCOMPARE(reading.warnings, QStringList());
    QVERIFY(reading.content == older);
    QCOMPARE(LvTrackDocumentFile::save(shown, place.olderFile(), TrackStorage::SeparateFiles), QString());
    QVERIFY(!shown.isModified());
    reading = LvTrackDocumentFile::read(place.olderFile());
    QCOMPARE(reading.warnings, QStringList());
    QVERIFY(reading.content == shown.content());
    // Nothing but the document, its tracks and those of the older one.
    QCOMPARE(place.content().size(), 1 + 2 + 2);
}

void tst_ProgramFaults::saveAfterFailure()
{
    // Track files of a failed save are taken by the next one instead of being written twice.
    LvFaults::Place place(Fault::ReadOnlyFile, QStringLiteral("a.lvt"));
    LvTrackDocument shown;
    shown.addTracks(tracks());
    place.begin();
    for (int attempt = 0; attempt < 3; ++attempt) {
        QVERIFY(!LvTrackDocumentFile::save(shown, place.olderFile(), TrackStorage::SeparateFiles).isEmpty());
    }
    place.end();
    if (!place.isValid()) {
        QSKIP("needs the right to mount a small disk, or to act as another user");
    }
    QCOMPARE(LvTrackDocumentFile::save(shown, place.olderFile(), TrackStorage::SeparateFiles), QString());
    QCOMPARE(place.content().keys(), (QStringList{"a.lvt", "track.gps", "track_1.gps"}));
}

LV_TEST_MAIN(tst_ProgramFaults)
#include "tst_ProgramFaults.moc"
