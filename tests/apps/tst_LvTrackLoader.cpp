#include "LvFileHandler.h"
#include "LvGPXConfiguredTrack.h"
#include "LvTest.h"
#include "LvTestFiles.h"
#include "LvTrackLoader.h"
#include "LvTranslations.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

namespace
{

/// A KMZ archive with one entry.
bool writeArchive(const QString& path, const QByteArray& name, const QByteArray& content,
                  const char* password = nullptr)
{
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE, nullptr);
    zip_source_t* source =
        zip_source_buffer(archive, content.constData(), static_cast<zip_uint64_t>(content.size()), 0);
    const zip_int64_t index = zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8);
    const bool isEncrypted = password == nullptr
        || zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), ZIP_EM_AES_256, password) == 0;
    return zip_close(archive) == 0 && index >= 0 && isEncrypted;
}

} // namespace

class tst_LvTrackLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void reasons_data();
    void reasons();
    void archives_data();
    void archives();
    void damagedArchive();
    void specialFiles_data();
    void specialFiles();
    void tooLargeFile();
    void unreadableFile();
    void languages_data();
    void languages();
    void tracks_data();
    void tracks();
    void oddNames_data();
    void oddNames();
    void changingWhileRead();
    void corpus();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory.filePath(name); }

    QTemporaryDir myDirectory;
};

void tst_LvTrackLoader::initTestCase()
{
    QVERIFY(myDirectory.isValid());
}

void tst_LvTrackLoader::init()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvTrackLoader::reasons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");

    const QByteArray point = "<trkpt lat=\"1\" lon=\"2\"/>";
    QTest::newRow("empty GPX") << "a.gpx" << QByteArray() << "empty file";
    QTest::newRow("empty KML") << "a.kml" << QByteArray() << "empty file";
    QTest::newRow("text") << "a.gpx" << QByteArray("Good morning")
                          << "not readable as XML: Start tag expected. (line 1, column 1)";
    QTest::newRow("cut off") << "a.gpx" << QByteArray("<gpx>\n<trk>\n<trkseg>\n" + point)
                             << "not readable as XML: Premature end of document. (line 4, column 24)";
    QTest::newRow("wrong end tag")
        << "a.kml" << QByteArray("<kml>\n<Document>\n</kml>")
        << "not readable as XML: Opening and ending tag mismatch. (line 3, column 6)";
    QTest::newRow("other XML") << "a.gpx" << QByteArray("<html/>") << "no track or route in it";
    QTest::newRow("only waypoints") << "a.gpx" << QByteArray("<gpx><wpt lat=\"1\" lon=\"2\"/></gpx>")
                                    << "only waypoints, no track or route";
    QTest::newRow("track without points")
        << "a.gpx" << QByteArray("<gpx><wpt/><trk><trkseg/></trk></gpx>") << "tracks without points";
    QTest::newRow("route without shaping points")
        << "a.gpx" << QByteArray("<gpx><wpt/><rte><rtept lat=\"1\" lon=\"2\"/></rte></gpx>")
        << "routes without shaping points (Garmin route point extension)";
    QTest::newRow("KML without Document") << "a.kml" << QByteArray("<kml><Folder><Placemark/></Folder></kml>")
                                          << "KML without a Document element";
    QTest::newRow("no placemark") << "a.kml" << QByteArray("<kml><Document><Folder/></Document></kml>")
                                  << "no placemark in it";
    QTest::newRow("no coordinates") << "a.kml"
                                    << QByteArray(
                                           "<kml><Document><Folder><Placemark/></Folder></Document></kml>")
                                    << "no placemark with coordinates in it";
    QTest::newRow("empty coordinates")
        << "a.kml"
        << QByteArray("<kml><Document><Placemark><Point><coordinates> </coordinates></Point></Placemark>"
                      "</Document></kml>")
        << "no placemark with coordinates in it";
    QTest::newRow("GPX by another name")
        << "a.xml" << LvTestFiles::gpx({{1, 2}}) << "not a track file by its name (*.gpx, *.kml, *.kmz)";
    QTest::newRow("no suffix") << "gpx" << LvTestFiles::gpx({{1, 2}})
                               << "not a track file by its name (*.gpx, *.kml, *.kmz)";
    QTest::newRow("upper case suffix")
        << "A.GPX" << QByteArray("<gpx><wpt/></gpx>") << "only waypoints, no track or route";
    QTest::newRow("no archive") << "a.kmz" << QByteArray("PK junk") << "not a readable archive";
    QTest::newRow("empty archive file") << "a.kmz" << QByteArray() << "not a readable archive";
}

void tst_LvTrackLoader::reasons()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);

    QVERIFY(LvTestFiles::write(path(name), content));
    const LvLoadedTracks loaded = LvTrackLoader::load(path(name));
    QCOMPARE(loaded.errorText, reason);
    QCOMPARE(loaded.tracks.count(), 0);
}

void tst_LvTrackLoader::archives_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");

    const QByteArray document = "<kml><Document><Placemark><Point><coordinates>8,53</coordinates></Point>"
                                "</Placemark></Document></kml>";
    QTest::newRow("good") << QByteArray("doc.kml") << document << "";
    QTest::newRow("without a .kml file")
        << QByteArray("picture.png") << document << "archive without a .kml file";
    QTest::newRow("in capitals") << QByteArray("DOC.KML") << document << "archive without a .kml file";
    QTest::newRow("empty entry") << QByteArray("doc.kml") << QByteArray()
                                 << "the .kml file in the archive is empty, damaged, encrypted or too large";
    QTest::newRow("no XML") << QByteArray("doc.kml") << QByteArray("junk")
                            << "not readable as XML: Start tag expected. (line 1, column 1)";
    QTest::newRow("no Document") << QByteArray("doc.kml") << QByteArray("<kml/>")
                                 << "KML without a Document element";
}

void tst_LvTrackLoader::archives()
{
    QFETCH(QByteArray, entry);
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);

    const QString name = path(QStringLiteral("archive.kmz"));
    QFile::remove(name);
    QVERIFY(writeArchive(name, entry, content));
    const LvLoadedTracks loaded = LvTrackLoader::load(name);
    QCOMPARE(loaded.errorText, reason);
    QCOMPARE(loaded.tracks.count(), reason.isEmpty() ? 1 : 0);
}

void tst_LvTrackLoader::damagedArchive()
{
    const QString reason =
        QStringLiteral("the .kml file in the archive is empty, damaged, encrypted or too large");
    const QString encrypted = path(QStringLiteral("encrypted.kmz"));
    QVERIFY(writeArchive(encrypted, "doc.kml", "<kml><Document/></kml>", "secret"));
    QCOMPARE(LvTrackLoader::load(encrypted).errorText, reason);

    const QString damaged = path(QStringLiteral("damaged.kmz"));
    QVERIFY(writeArchive(damaged, "doc.kml", QByteArray(5000, 'x')));
    QByteArray bytes = LvTestFiles::read(damaged);
    bytes[45] = static_cast<char>(~bytes.at(45)); // in the packed content, behind the header of 37 bytes
    QVERIFY(LvTestFiles::write(damaged, bytes));
    QCOMPARE(LvTrackLoader::load(damaged).errorText, reason);
}

void tst_LvTrackLoader::specialFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");

    QTest::newRow("missing") << "missing.gpx"
                             << "not found";
    QTest::newRow("folder") << "folder.gpx"
                            << "not a regular file";
    QTest::newRow("pipe") << "pipe.gpx"
                          << "not a regular file";
    QTest::newRow("link to a device") << "device.kml"
                                      << "not a regular file";
    QTest::newRow("socket") << "socket.gpx"
                            << "not a regular file";
    QTest::newRow("link to itself") << "loop.gpx"
                                    << "broken symbolic link";
    QTest::newRow("name that is too long") << QString(300, u'x') + QStringLiteral(".gpx") << "not found";
    QTest::newRow("broken link") << "broken.gpx"
                                 << "broken symbolic link";
    QTest::newRow("empty name") << ""
                                << "not a regular file"; // the folder itself
}

void tst_LvTrackLoader::specialFiles()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);

    QVERIFY(QDir(myDirectory.path()).mkpath(QStringLiteral("folder.gpx")));
    ::mkfifo(QFile::encodeName(path(QStringLiteral("pipe.gpx"))).constData(), 0600);
    QFile::link(QStringLiteral("/dev/zero"), path(QStringLiteral("device.kml")));
    QFile::link(path(QStringLiteral("nowhere")), path(QStringLiteral("broken.gpx")));
    ::symlink("loop.gpx", QFile::encodeName(path(QStringLiteral("loop.gpx"))).constData());
    ::mknod(QFile::encodeName(path(QStringLiteral("socket.gpx"))).constData(), S_IFSOCK | 0600, 0);

    QElapsedTimer timer;
    timer.start();
    const LvLoadedTracks loaded = LvTrackLoader::load(path(name));
    QCOMPARE(loaded.errorText, reason);
    QCOMPARE(loaded.tracks.count(), 0);
    QVERIFY(timer.elapsed() < 5000);
    QCOMPARE(LvTrackLoader::load(QString()).errorText, QStringLiteral("not found"));
}

void tst_LvTrackLoader::tooLargeFile()
{
    for (const char* suffix : {"gpx", "kml"}) {
        QFile file(path(QStringLiteral("large.") + QLatin1String(suffix)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        if (!file.resize(LvFileHandler::maximumFileSize + 1)) { // takes no room where files may have holes
            QSKIP("no room for a large file");
        }
        file.close();
        QCOMPARE(LvTrackLoader::load(file.fileName()).errorText, QStringLiteral("larger than 1024 MiB"));
        QVERIFY(file.remove());
    }
}

void tst_LvTrackLoader::unreadableFile()
{
    const QString name = path(QStringLiteral("secret.gpx"));
    QVERIFY(LvTestFiles::write(name, LvTestFiles::gpx({{1, 2}, {3, 4}})));
    QVERIFY(QFile::setPermissions(name, QFile::Permissions()));
    // Everything is readable for the superuser: be somebody else for a moment.
    constexpr uid_t nobody = 65534;
    const bool isSuperuser = ::geteuid() == 0;
    if (isSuperuser) {
        QVERIFY(::chmod(QFile::encodeName(myDirectory.path()).constData(), 0755) == 0);
        QVERIFY(::setresuid(nobody, nobody, 0) == 0);
    }
    const QString reason = LvTrackLoader::load(name).errorText;
    if (isSuperuser) {
        QVERIFY(::setresuid(0, 0, 0) == 0);
    }
    QCOMPARE(reason, QStringLiteral("not readable"));
}

void tst_LvTrackLoader::languages_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("reason");
    QTest::newRow("German") << QLocale(QLocale::German) << "nicht gefunden";
    QTest::newRow("English") << QLocale(QLocale::English, QLocale::UnitedKingdom) << "not found";
    QTest::newRow("without a catalogue") << QLocale(QLocale::French) << "not found";
}

void tst_LvTrackLoader::languages()
{
    QFETCH(QLocale, locale);
    LvTranslations::install(locale, QStringLiteral("LvAppsCommon"));
    QTEST(LvTrackLoader::load(path(QStringLiteral("missing.gpx"))).errorText, "reason");
}

void tst_LvTrackLoader::tracks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("empty");

    QTest::newRow("one track") << "t.gpx" << LvTestFiles::gpx({{1, 2}, {3, 4}}) << 1 << 0;
    QTest::newRow("placemarks without coordinates")
        << "t.kml"
        << QByteArray("<kml><Document><Placemark/><Placemark><Point><coordinates>8,53</coordinates></Point>"
                      "</Placemark><Placemark/></Document></kml>")
        << 1 << 2;
}

void tst_LvTrackLoader::tracks()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(int, count);
    QFETCH(int, empty);

    QVERIFY(LvTestFiles::write(path(name), content));
    const LvLoadedTracks loaded = LvTrackLoader::load(path(name));
    QCOMPARE(loaded.errorText, QString());
    QCOMPARE(loaded.tracks.count(), count);
    QCOMPARE(loaded.emptyTracks, empty);
    for (const LvGPXConfiguredTrack& track : loaded.tracks) {
        QVERIFY(track.track().isValid());
    }
}

void tst_LvTrackLoader::oddNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("hash and per cent") << "a#b%20c.gpx";
    QTest::newRow("question mark and colon") << "what?:no.gpx";
    QTest::newRow("blanks and four scripts") << QStringLiteral("Üφήが 1.gpx");
    QTest::newRow("line break") << "two\nlines.gpx";
    QTest::newRow("like an option") << "--help.gpx";
    QTest::newRow("as long as names get") << QString(251, u'x') + QStringLiteral(".gpx");
}

void tst_LvTrackLoader::oddNames()
{
    QFETCH(QString, name);
    QVERIFY(LvTestFiles::write(path(name), LvTestFiles::gpx({{1, 2}, {3, 4}})));
    const LvLoadedTracks loaded = LvTrackLoader::load(path(name));
    QCOMPARE(loaded.errorText, QString());
    QCOMPARE(loaded.tracks.count(), 1);
}

void tst_LvTrackLoader::changingWhileRead()
{
    // Whatever the file is at that moment, there are tracks or there is one line that says why not.
    const QString name = path(QStringLiteral("changing.gpx"));
    const QByteArray good = LvTestFiles::gpx(QList<std::pair<double, double>>(2000, {1, 2}));
    std::atomic<bool> isOver = false;
    const std::unique_ptr<QThread> writer(QThread::create([&] {
        for (int turn = 0; !isOver; ++turn) {
            if (turn % 3 == 0) {
                QFile::remove(name);
            }
            LvTestFiles::write(name, turn % 3 == 1 ? good.chopped(good.size() / 2) : good);
        }
    }));
    QLoggingCategory::setFilterRules(QStringLiteral("lv.usage=false"));
    writer->start();
    bool isSane = true;
    QSet<QString> reasons;
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 1000) {
        const LvLoadedTracks loaded = LvTrackLoader::load(name);
        reasons.insert(loaded.errorText);
        isSane = isSane && !loaded.errorText.contains(QLatin1Char('\n'))
            && loaded.tracks.isValid() == loaded.errorText.isEmpty();
    }
    isOver = true;
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(writer->wait(10000));
    QVERIFY(isSane);
    QVERIFY2(reasons.size() > 1, "the file did not change while it was read");
}

void tst_LvTrackLoader::corpus()
{
    const QDir directory(LvTest::corpusDirectory());
    if (LvTest::corpusDirectory().isEmpty()) {
        QSKIP("no folder with sample files");
    }
    // Whatever a file holds, either there are tracks or there is one line that says why not.
    int count = 0;
    for (const char* folder : {"gpx", "kml", "kmz", "malformed"}) {
        const QDir files(directory.filePath(QLatin1String(folder)));
        const QStringList names = files.entryList(QDir::Files);
        for (const QString& name : names) {
            const LvLoadedTracks loaded = LvTrackLoader::load(files.filePath(name));
            QVERIFY2(loaded.tracks.isValid() == loaded.errorText.isEmpty(), qPrintable(name));
            QVERIFY2(!loaded.errorText.contains(QLatin1Char('\n')), qPrintable(name));
            ++count;
        }
    }
    QVERIFY(count > 0);
}

LV_TEST_MAIN(tst_LvTrackLoader)
#include "tst_LvTrackLoader.moc"
