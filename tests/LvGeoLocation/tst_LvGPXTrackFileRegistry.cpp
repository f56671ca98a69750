#include "LvGPXTrackFile.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvTest.h"
#include "LvXMLLoader.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

namespace
{

LvGPXTrack track(int count, const QString& name = QStringLiteral("a"))
{
    QList<LvGPXTrackPoint> points;
    for (int index = 0; index < count; ++index) {
        points.append(LvGPXTrackPoint(LvGeoPosition(1 + index, 2), 0, {}, {}));
    }
    return {name, QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShapeEnum::linestring};
}

QByteArray content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The file name that the track's "include" element gets.
QString includedName(const LvGPXTrack& track, const QDir& dir)
{
    QDomDocument document;
    QDomElement parent = document.createElement(QStringLiteral("parent"));
    track.toXml(parent, dir);
    return parent.firstChildElement(QStringLiteral("trk"))
        .firstChildElement(QStringLiteral("include"))
        .text();
}

/// The track that the file holds.
LvGPXTrack readBack(const QDir& dir, const QString& name)
{
    return {LvXMLLoader::loadDocumentElement(QFileInfo(dir, name)).firstChildElement(QStringLiteral("trk")),
            QDir(QString())};
}

static_assert(std::is_base_of_v<QObject, LvGPXTrackFileRegistry>);
static_assert(std::is_base_of_v<LvSingleton<LvGPXTrackFileRegistry>, LvGPXTrackFileRegistry>);

} // namespace

class tst_LvGPXTrackFileRegistry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void singleton();
    void registerFile();
    void createFileInfo();
    void createAssignedFile();
    void knownFilesAreNotWritten();
    void unchangedTrackKeepsItsFile();
    void differentTracksGetDifferentFiles();
    void editedTrackGetsANewFile();
    void directoriesAreKeptApart();
    void saveTrackInFile();
    void failureToWrite();
    void manyThreads();

private:
    [[nodiscard]] QDir dir() const { return QDir(myDirectory->path()); }

    std::unique_ptr<QTemporaryDir> myDirectory;
    LvGPXTrackFileRegistry* myRegistry = LvGPXTrackFileRegistry::instance();
};

void tst_LvGPXTrackFileRegistry::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
}

void tst_LvGPXTrackFileRegistry::singleton()
{
    QVERIFY(myRegistry != nullptr);
    QCOMPARE(LvGPXTrackFileRegistry::instance(), myRegistry);
    QCOMPARE(LvSingleton<LvGPXTrackFileRegistry>::instance(), myRegistry);
    QVERIFY(myRegistry->parent() == nullptr);
    QCOMPARE(myRegistry->thread(), QCoreApplication::instance()->thread());
    QCOMPARE(std::strcmp(myRegistry->metaObject()->className(), "LvGPXTrackFileRegistry"), 0);
    QCOMPARE(myRegistry->qt_metacast("LvGPXTrackFileRegistry"), static_cast<void*>(myRegistry));
    QCOMPARE(myRegistry->qt_metacast("LvSingleton<LvGPXTrackFileRegistry>"),
             static_cast<void*>(static_cast<LvSingleton<LvGPXTrackFileRegistry>*>(myRegistry)));
    QCOMPARE(myRegistry->qt_metacast("QObject"), static_cast<void*>(static_cast<QObject*>(myRegistry)));
    QVERIFY(myRegistry->qt_metacast("LvSingleton") == nullptr);
    QCOMPARE(myRegistry->metaObject()->methodCount(), QObject::staticMetaObject.methodCount());
}

void tst_LvGPXTrackFileRegistry::registerFile()
{
    const LvGPXTrackFileRegistryKey key(track(2), dir());
    QCOMPARE(myRegistry->fileName(key), QString());
    myRegistry->registerFile(key, QStringLiteral("a.gps"));
    QCOMPARE(myRegistry->fileName(key), QStringLiteral("a.gps"));
    QCOMPARE(myRegistry->fileName(LvGPXTrackFileRegistryKey(track(2), dir())), QStringLiteral("a.gps"));
    QCOMPARE(myRegistry->fileName(LvGPXTrackFileRegistryKey(track(3), dir())), QString());
    myRegistry->registerFile(key, QStringLiteral("b.gps"));
    QCOMPARE(myRegistry->fileName(key), QStringLiteral("b.gps"));
    QVERIFY(dir().isEmpty());
}

void tst_LvGPXTrackFileRegistry::createFileInfo()
{
    const LvGPXTrackFileRegistryKey key(track(2), dir());
    const QFileInfo file = myRegistry->createFileInfo(key, QStringLiteral("sub/a.gps"));
    QCOMPARE(file.filePath(), dir().filePath(QStringLiteral("sub/a.gps")));
    QVERIFY(!file.exists());
    QCOMPARE(myRegistry->createFileInfo(key, QStringLiteral("/a.gps")).filePath(), QStringLiteral("/a.gps"));
}

void tst_LvGPXTrackFileRegistry::createAssignedFile()
{
    const LvGPXTrackFileRegistryKey key(track(2), dir());
    const QString name = myRegistry->createAssignedFile(key);
    QVERIFY2(name.startsWith(QStringLiteral("track")) && name.endsWith(QStringLiteral(".gps")),
             qPrintable(name));
    QVERIFY(!name.contains(QLatin1Char('/')));
    QCOMPARE(dir().entryList(QDir::Files), QStringList{name});
    QCOMPARE(myRegistry->fileName(key), name);
    QVERIFY(readBack(dir(), name) == track(2));
}

void tst_LvGPXTrackFileRegistry::knownFilesAreNotWritten()
{
    const LvGPXTrackFileRegistryKey key(track(2), dir());
    myRegistry->registerFile(key, QStringLiteral("mine.gps"));
    QCOMPARE(myRegistry->createAssignedFile(key), QStringLiteral("mine.gps"));
    QVERIFY(dir().isEmpty());
    // An empty name counts as none.
    const LvGPXTrackFileRegistryKey nameless(track(3), dir());
    myRegistry->registerFile(nameless, QString());
    const QString name = myRegistry->createAssignedFile(nameless);
    QVERIFY(!name.isEmpty());
    QCOMPARE(dir().entryList(QDir::Files), QStringList{name});
}

void tst_LvGPXTrackFileRegistry::unchangedTrackKeepsItsFile()
{
    const QString name = includedName(track(2), dir());
    QVERIFY(!name.isEmpty());
    const QString path = dir().filePath(name);
    QVERIFY(QFile::remove(path));
    QFile marker(path);
    QVERIFY(marker.open(QIODevice::WriteOnly));
    marker.write("untouched");
    marker.close();
    QCOMPARE(includedName(track(2), dir()), name);
    QCOMPARE(content(path), QByteArray("untouched"));
    QCOMPARE(dir().entryList(QDir::Files), QStringList{name});
}

void tst_LvGPXTrackFileRegistry::differentTracksGetDifferentFiles()
{
    const QString first = includedName(track(2), dir());
    const QString second = includedName(track(3), dir());
    QVERIFY(first != second);
    QVERIFY(second.startsWith(QStringLiteral("track")) && second.endsWith(QStringLiteral(".gps")));
    QVERIFY(readBack(dir(), first) == track(2));
    QVERIFY(readBack(dir(), second) == track(3));
    // A file of another program is not overwritten.
    QTemporaryDir other;
    QFile taken(other.filePath(QStringLiteral("track.gps")));
    QVERIFY(taken.open(QIODevice::WriteOnly));
    taken.write("taken");
    taken.close();
    QVERIFY(includedName(track(2), QDir(other.path())) != QStringLiteral("track.gps"));
    QCOMPARE(content(taken.fileName()), QByteArray("taken"));
}

void tst_LvGPXTrackFileRegistry::editedTrackGetsANewFile()
{
    LvGPXTrack edited = track(2);
    const QString before = includedName(edited, dir());
    edited.setName(QStringLiteral("b"));
    const QString after = includedName(edited, dir());
    QVERIFY(before != after);
    QVERIFY(readBack(dir(), before) == track(2));
    QVERIFY(readBack(dir(), after) == edited);
    // Edited back, it has its old file again.
    edited.setName(QStringLiteral("a"));
    QCOMPARE(includedName(edited, dir()), before);
}

void tst_LvGPXTrackFileRegistry::directoriesAreKeptApart()
{
    QVERIFY(dir().mkdir(QStringLiteral("sub")));
    const QDir sub(dir().filePath(QStringLiteral("sub")));
    const QString name = includedName(track(2), dir());
    const QString nameInSub = includedName(track(2), sub);
    QVERIFY(readBack(dir(), name) == track(2));
    QVERIFY(readBack(sub, nameInSub) == track(2));
    // The same directory by another path.
    QCOMPARE(includedName(track(2), QDir(sub.filePath(QStringLiteral("..")))), name);
    QCOMPARE(dir().entryList(QDir::Files), QStringList{name});
}

void tst_LvGPXTrackFileRegistry::saveTrackInFile()
{
    LvGPXTrack written = track(2, QStringLiteral("Größe & <b>"));
    written.addEnclave(track(1));
    const LvGPXTrackFileRegistryKey key(written, dir());
    const QFileInfo file(dir(), QStringLiteral("x.gps"));
    myRegistry->saveTrackInFile(key, file);
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
    QCOMPARE(root.tagName(), QStringLiteral("includedTrack"));
    QCOMPARE(root.childNodes().size(), 1);
    QCOMPARE(root.firstChildElement().tagName(), QStringLiteral("trk"));
    QVERIFY(root.firstChildElement().firstChildElement(QStringLiteral("include")).isNull());
    QVERIFY(readBack(dir(), QStringLiteral("x.gps")) == written);
    QCOMPARE(LvGPXTrackFile(file).tracks(), QList<LvGPXTrack>{written});
    QVERIFY(content(file.filePath()).contains("Größe"));
    // Saving registers nothing.
    QVERIFY(myRegistry->fileName(key).isEmpty());
}

void tst_LvGPXTrackFileRegistry::failureToWrite()
{
    // The directory is missing, so nothing can be written; the name is given and remembered all the same.
    const QDir missing(dir().filePath(QStringLiteral("missing")));
    const LvGPXTrackFileRegistryKey key(track(2), missing);
    const QString name = myRegistry->createAssignedFile(key);
    QVERIFY(!name.isEmpty());
    QCOMPARE(myRegistry->fileName(key), name);
    QVERIFY(!missing.exists());
}

void tst_LvGPXTrackFileRegistry::manyThreads()
{
    constexpr int threadCount = 8;
    constexpr int trackCount = 12;
    const QDir directory = dir();
    std::vector<QStringList> names(threadCount);
    std::vector<std::unique_ptr<QThread>> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back(QThread::create([&names, &directory, thread, this] {
            for (int index = 0; index < trackCount; ++index) {
                // Half of the tracks are saved by all threads, half by one thread each.
                const bool shared = index % 2 == 0;
                const LvGPXTrackFileRegistryKey key(
                    track(index + 1, shared ? QStringLiteral("shared") : QString::number(thread)), directory);
                names.at(static_cast<std::size_t>(thread)).append(myRegistry->createAssignedFile(key));
                if (myRegistry->fileName(key).isEmpty()) {
                    names.at(static_cast<std::size_t>(thread)).append(QString());
                }
                myRegistry->registerFile(
                    LvGPXTrackFileRegistryKey(track(index), QDir(QStringLiteral("/missing"))),
                    QString::number(thread));
            }
        }));
    }
    for (const std::unique_ptr<QThread>& thread : threads) {
        thread->start();
    }
    for (const std::unique_ptr<QThread>& thread : threads) {
        thread->wait();
    }
    QSet<QString> ownNames;
    for (int thread = 0; thread < threadCount; ++thread) {
        const QStringList& own = names.at(static_cast<std::size_t>(thread));
        QCOMPARE(own.size(), trackCount);
        for (int index = 0; index < trackCount; ++index) {
            // Whichever thread was later: every file handed out holds the track that it was asked for.
            const LvGPXTrack expected =
                track(index + 1, index % 2 == 0 ? QStringLiteral("shared") : QString::number(thread));
            QVERIFY(readBack(directory, own.at(index)) == expected);
            if (index % 2 == 1) {
                QVERIFY(!ownNames.contains(own.at(index)));
                ownNames.insert(own.at(index));
            }
        }
    }
    QVERIFY(dir()
                .entryList(QDir::Files)
                .contains(myRegistry->fileName(
                    LvGPXTrackFileRegistryKey(track(1, QStringLiteral("shared")), directory))));
}

LV_TEST_MAIN(tst_LvGPXTrackFileRegistry)
#include "tst_LvGPXTrackFileRegistry.moc"
