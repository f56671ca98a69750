#include "LvTest.h"
#include "LvZIP.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <utility>
#include <zip.h>

namespace
{

struct Entry {
    QByteArray name;
    QByteArray content;
    zip_int32_t method = ZIP_CM_DEFLATE;
    zip_uint16_t encryption = ZIP_EM_NONE;
};

bool writeArchive(const QString& path, const QList<Entry>& entries)
{
    QFile::remove(path);
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE, nullptr);
    bool isFine = archive != nullptr;
    for (const Entry& entry : entries) {
        zip_source_t* source = zip_source_buffer(archive, entry.content.constData(),
                                                 static_cast<zip_uint64_t>(entry.content.size()), 0);
        const zip_int64_t index = zip_file_add(archive, entry.name.constData(), source, ZIP_FL_ENC_UTF_8);
        isFine = isFine && index >= 0
            && zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), entry.method, 0) == 0;
        if (entry.encryption != ZIP_EM_NONE) {
            isFine = isFine
                && zip_file_set_encryption(archive, static_cast<zip_uint64_t>(index), entry.encryption,
                                           "secret")
                    == 0;
        }
    }
    return isFine && zip_close(archive) == 0;
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/// Puts a size into the directory of an archive with one entry, where readers look for it.
QByteArray withDeclaredSize(QByteArray archive, quint32 size)
{
    constexpr qsizetype sizeOffset = 24; // of the uncompressed size in an entry of the central directory
    const qsizetype entry = archive.indexOf("PK\x01\x02");
    for (qsizetype i = 0; i < 4; ++i) {
        archive[entry + sizeOffset + i] = static_cast<char>((size >> (8 * i)) & 0xFF);
    }
    return archive;
}

} // namespace

class tst_LvZIP : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init() { myPath = myDirectory.filePath(QStringLiteral("archive.zip")); }

    void reads()
    {
        const QByteArray large(3000000, 'x');
        QVERIFY(writeArchive(myPath,
                             {{"z.kml", "last letter first"},
                              {"doc.kml", "<kml/>", ZIP_CM_STORE},
                              {"images/x.png", QByteArray("\0\xFF\x01", 3)},
                              {"Zürich €.kml", "umlaut"},
                              {"empty", ""},
                              {"large", large}}));
        LvZIP zip{QFileInfo(myPath)};
        QVERIFY(zip.open(1));
        QVERIFY(zip.isOpen());
        QCOMPARE(zip.getFileNameList(),
                 (QStringList{"z.kml", "doc.kml", "images/x.png", "Zürich €.kml", "empty", "large"}));
        QCOMPARE(zip.fileContent(QStringLiteral("z.kml")), QByteArray("last letter first"));
        QCOMPARE(zip.fileContent(QStringLiteral("doc.kml")), QByteArray("<kml/>"));
        QCOMPARE(zip.fileContent(QStringLiteral("images/x.png")), QByteArray("\0\xFF\x01", 3));
        QCOMPARE(zip.fileContent(QStringLiteral("Zürich €.kml")), QByteArray("umlaut"));
        QCOMPARE(zip.fileContent(QStringLiteral("empty")), QByteArray());
        QCOMPARE(zip.fileContent(QStringLiteral("large")), large);
        QCOMPARE(zip.fileContent(QStringLiteral("doc.kml")), QByteArray("<kml/>")); // again
        QCOMPARE(zip.fileContent(QStringLiteral("DOC.KML")), QByteArray());
        QCOMPARE(zip.fileContent(QStringLiteral("missing")), QByteArray());
    }

    void life()
    {
        QVERIFY(writeArchive(myPath, {{"a", "1"}}));
        LvZIP zip{QFileInfo(myPath)};
        QVERIFY(!zip.isOpen());
        QCOMPARE(zip.getFileNameList(), QStringList());
        QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray());
        zip.close();
        QVERIFY(zip.open());
        QVERIFY(zip.open()); // anew
        QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray("1"));
        LvZIP moved = std::move(zip);
        QCOMPARE(moved.fileContent(QStringLiteral("a")), QByteArray("1"));
        moved.close();
        QVERIFY(!moved.isOpen());
        QCOMPARE(moved.getFileNameList(), QStringList());
        QCOMPARE(moved.fileContent(QStringLiteral("a")), QByteArray());
    }

    void changesNothing()
    {
        QVERIFY(writeArchive(myPath, {{"a", "1"}}));
        const QByteArray before = bytesOf(myPath);
        {
            LvZIP zip{QFileInfo(myPath)};
            QVERIFY(zip.open());
            QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray("1"));
        }
        QCOMPARE(bytesOf(myPath), before);
    }

    void otherModes()
    {
        QVERIFY(writeArchive(myPath, {{"a", "1"}}));
        for (const int mode : {0, 2, 3, -1}) {
            LvZIP zip{QFileInfo(myPath)};
            QVERIFY(!zip.open(mode));
            QVERIFY(!zip.isOpen());
        }
    }

    void noArchive_data()
    {
        QTest::addColumn<QString>("path");
        const QString pipe = myDirectory.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QString text = myDirectory.filePath(QStringLiteral("text.kmz"));
        QVERIFY(writeBytes(text, "no archive"));
        const QString empty = myDirectory.filePath(QStringLiteral("empty.kmz"));
        QVERIFY(writeBytes(empty, ""));
        QTest::newRow("text") << text;
        QTest::newRow("empty file") << empty;
        QTest::newRow("missing") << myDirectory.filePath(QStringLiteral("nothing"));
        QTest::newRow("directory") << myDirectory.path();
        QTest::newRow("pipe") << pipe;
        QTest::newRow("device") << QStringLiteral("/dev/zero");
        QTest::newRow("no name") << QString();
    }

    void noArchive()
    {
        QFETCH(QString, path);
        LvZIP zip{QFileInfo(path)};
        QVERIFY(!zip.open(1));
        QCOMPARE(zip.getFileNameList(), QStringList());
    }

    void encrypted_data()
    {
        QTest::addColumn<int>("encryption");
        QTest::newRow("traditional") << int(ZIP_EM_TRAD_PKWARE);
        QTest::newRow("AES") << int(ZIP_EM_AES_256);
    }

    void encrypted()
    {
        QFETCH(int, encryption);
        QVERIFY(writeArchive(myPath,
                             {{"secret", "content", ZIP_CM_DEFLATE, static_cast<zip_uint16_t>(encryption)},
                              {"open", "content"}}));
        LvZIP zip{QFileInfo(myPath)};
        QVERIFY(zip.open());
        QCOMPARE(zip.fileContent(QStringLiteral("secret")), QByteArray());
        QCOMPARE(zip.fileContent(QStringLiteral("open")), QByteArray("content"));
    }

    void damaged_data()
    {
        QTest::addColumn<int>("method");
        QTest::newRow("stored") << int(ZIP_CM_STORE);
        QTest::newRow("deflated") << int(ZIP_CM_DEFLATE);
    }

    void damaged()
    {
        QFETCH(int, method);
        const QByteArray content = QByteArray("0123456789abcdef").repeated(20);
        QVERIFY(writeArchive(myPath, {{"a", content, method}}));
        QByteArray bytes = bytesOf(myPath);
        bytes[36] = static_cast<char>(bytes.at(36) ^ 0x10); // in the middle of the content
        QVERIFY(writeBytes(myPath, bytes));
        LvZIP zip{QFileInfo(myPath)};
        QVERIFY(zip.open());
        QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray());
    }

    void truncated()
    {
        QVERIFY(writeArchive(myPath, {{"a", QByteArray("0123456789abcdef").repeated(2000), ZIP_CM_STORE}}));
        const QByteArray bytes = bytesOf(myPath);
        for (qsizetype length = 0; length < bytes.size(); length += 101) {
            QVERIFY(writeBytes(myPath, bytes.left(length)));
            LvZIP zip{QFileInfo(myPath)};
            if (zip.open()) {
                QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray());
            }
        }
    }

    void lyingSizes_data()
    {
        QTest::addColumn<quint32>("declared");
        QTest::newRow("4 GiB") << quint32(0xFFFFFFFE);
        QTest::newRow("within the limit") << quint32(200) * 1024 * 1024;
        QTest::newRow("too small") << quint32(3);
        QTest::newRow("nothing") << quint32(0);
    }

    void lyingSizes()
    {
        QFETCH(quint32, declared);
        QVERIFY(writeArchive(myPath, {{"a", QByteArray("0123456789abcdef").repeated(2000)}}));
        QVERIFY(writeBytes(myPath, withDeclaredSize(bytesOf(myPath), declared)));
        LvZIP zip{QFileInfo(myPath)};
        if (zip.open()) {
            QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray());
        }
    }

    void bombs_data()
    {
        QTest::addColumn<bool>("isHonest");
        QTest::newRow("declares its size") << true;
        QTest::newRow("declares 100 bytes") << false;
    }

    void bombs()
    {
        QFETCH(bool, isHonest);
        QVERIFY(writeArchive(myPath, {{"a", QByteArray(LvZIP::maximumEntrySize + 1, ' ')}}));
        if (!isHonest) {
            QVERIFY(writeBytes(myPath, withDeclaredSize(bytesOf(myPath), 100)));
        }
        QVERIFY(QFileInfo(myPath).size() < 1000000);
        LvZIP zip{QFileInfo(myPath)};
        if (isHonest) {
            QVERIFY(zip.open());
        }
        if (zip.open()) {
            QCOMPARE(zip.fileContent(QStringLiteral("a")), QByteArray());
        }
    }

    void manyEntries_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("opens");
        QTest::newRow("at the limit") << LvZIP::maximumEntryCount << true;
        QTest::newRow("beyond the limit") << LvZIP::maximumEntryCount + 1 << false;
    }

    void manyEntries()
    {
        QFETCH(int, count);
        QFETCH(bool, opens);
        QFile::remove(myPath);
        zip_t* archive = zip_open(QFile::encodeName(myPath).constData(), ZIP_CREATE, nullptr);
        for (int index = 0; index < count; ++index) {
            zip_source_t* source = zip_source_buffer(archive, "x", 1, 0);
            const zip_int64_t entry = zip_file_add(archive, QByteArray::number(index).constData(), source, 0);
            zip_set_file_compression(archive, static_cast<zip_uint64_t>(entry), ZIP_CM_STORE, 0);
        }
        QCOMPARE(zip_close(archive), 0);
        LvZIP zip{QFileInfo(myPath)};
        QCOMPARE(zip.open(), opens);
        QCOMPARE(zip.getFileNameList().size(), opens ? count : 0);
    }

    void corpus()
    {
        const QString corpus = LvTest::corpusDirectory();
        if (corpus.isEmpty()) {
            QSKIP("no corpus of real files beside the repository");
        }
        QElapsedTimer timer;
        timer.start();
        for (const QFileInfo& file : QDir(corpus + QStringLiteral("/kmz")).entryInfoList(QDir::Files)) {
            LvZIP zip(file);
            QVERIFY2(zip.open(1), qUtf8Printable(file.fileName()));
            QVERIFY(!zip.getFileNameList().isEmpty());
            for (const QString& name : zip.getFileNameList()) {
                QVERIFY2(name.endsWith(QLatin1Char('/')) || !zip.fileContent(name).isEmpty(),
                         qUtf8Printable(file.fileName() + QLatin1Char(' ') + name));
            }
        }
        for (const QFileInfo& file : QDir(corpus + QStringLiteral("/malformed"))
                                         .entryInfoList({QStringLiteral("*.kmz")}, QDir::Files)) {
            LvZIP zip(file);
            zip.open(1);
            for (const QString& name : zip.getFileNameList()) {
                QVERIFY(zip.fileContent(name).size() <= LvZIP::maximumEntrySize);
            }
        }
        QVERIFY(timer.elapsed() < 60000);
    }

private:
    QTemporaryDir myDirectory;
    QString myPath;
};

LV_TEST_MAIN(tst_LvZIP)
#include "tst_LvZIP.moc"
