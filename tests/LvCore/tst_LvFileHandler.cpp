#include "LvFileHandler.h"
#include "LvTest.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <memory>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

QByteArray encoded(const QString& text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder(text);
}

} // namespace

class tst_LvFileHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void readTextFile_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        const QString text = QStringLiteral("Zürich\n東京 😀\n");
        const QStringList lines = {QStringLiteral("Zürich"), QStringLiteral("東京 😀")};
        QTest::newRow("UTF-8 without mark") << text.toUtf8() << lines;
        QTest::newRow("UTF-8 with mark") << encoded(text, QStringConverter::Utf8) << lines;
        QTest::newRow("UTF-16 little endian") << encoded(text, QStringConverter::Utf16LE) << lines;
        QTest::newRow("UTF-16 big endian") << encoded(text, QStringConverter::Utf16BE) << lines;
        QTest::newRow("UTF-32 little endian") << encoded(text, QStringConverter::Utf32LE) << lines;
        QTest::newRow("UTF-32 big endian") << encoded(text, QStringConverter::Utf32BE) << lines;
        QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"};
        QTest::newRow("lone CR stays inside") << QByteArray("a\rb\n") << QStringList{"a\rb"};
        QTest::newRow("no end at the end") << QByteArray("a\nb") << QStringList{"a", "b"};
        QTest::newRow("empty lines") << QByteArray("\na\n\n\n") << QStringList{"", "a", "", ""};
        QTest::newRow("empty file") << QByteArray() << QStringList();
        QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF") << QStringList();
        QTest::newRow("one line end") << QByteArray("\n") << QStringList{""};
        QTest::newRow("not UTF-8") << QByteArray("a\xFF"
                                                 "b")
                                   << QStringList{QStringLiteral("a\uFFFDb")};
        QTest::newRow("not trimmed") << QByteArray(" a \n") << QStringList{" a "};
    }

    void readTextFile()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, lines);
        QFile file(myDirectory.filePath(QStringLiteral("text.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QCOMPARE(LvFileHandler::readTextFile(QFileInfo(file)), lines);
        QCOMPARE(LvFileHandler::readBytes(QFileInfo(file)).value(), bytes);
        QVERIFY(LvFileHandler::isReadableRegularFile(QFileInfo(file)));
    }

    /// Lines may end in any mixture of carriage returns and line feeds.
    void joinsLines()
    {
        const QString alphabet = QStringLiteral("a\r\n");
        const QString path = myDirectory.filePath(QStringLiteral("lines.txt"));
        for (int length = 0; length <= 6; ++length) {
            const int count = static_cast<int>(std::pow(alphabet.size(), length));
            for (int number = 0; number < count; ++number) {
                QString text;
                for (int rest = number; text.size() < length; rest /= 3) {
                    text += alphabet[rest % 3];
                }
                QFile file(path);
                QVERIFY(file.open(QIODevice::WriteOnly));
                file.write(text.toUtf8());
                file.close();
                QCOMPARE(LvFileHandler::joinLines(text),
                         LvFileHandler::readTextFile(QFileInfo(path)).join(u'\n'));
            }
        }
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("path");
        const QString pipe = myDirectory.filePath(QStringLiteral("pipe"));
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QString link = myDirectory.filePath(QStringLiteral("link-to-pipe"));
        QVERIFY(QFile::link(pipe, link));
        const QString dangling = myDirectory.filePath(QStringLiteral("dangling"));
        QVERIFY(QFile::link(myDirectory.filePath(QStringLiteral("nothing")), dangling));
        QFile huge(myDirectory.filePath(QStringLiteral("huge")));
        QVERIFY(huge.open(QIODevice::WriteOnly));
        QVERIFY(huge.resize(LvFileHandler::maximumFileSize + 1)); // sparse, takes no room
        QTest::newRow("missing") << myDirectory.filePath(QStringLiteral("nothing"));
        QTest::newRow("directory") << myDirectory.path();
        QTest::newRow("pipe that nobody writes") << pipe;
        QTest::newRow("link to a pipe") << link;
        QTest::newRow("dangling link") << dangling;
        QTest::newRow("socket") << socketPath();
        QTest::newRow("link to itself") << loopPath();
        QTest::newRow("name that is too long") << myDirectory.filePath(QString(300, u'x'));
        QTest::newRow("path that is too long") << myDirectory.filePath(QStringLiteral("x/").repeated(5000));
        QTest::newRow("name with a null character") << myDirectory.filePath(QString(QChar(0)));
        QTest::newRow("endless device") << QStringLiteral("/dev/zero");
        QTest::newRow("too large") << huge.fileName();
        QTest::newRow("no name") << QString();
    }

    void refuses()
    {
        QFETCH(QString, path);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!LvFileHandler::readBytes(QFileInfo(path)).has_value());
        QCOMPARE(LvFileHandler::readTextFile(QFileInfo(path)), QStringList());
        QVERIFY(timer.elapsed() < 5000);
    }

    void changingWhileRead_data()
    {
        QTest::addColumn<QString>("change");
        QTest::newRow("written in place") << "in place";
        QTest::newRow("vanishing") << "vanishing";
        QTest::newRow("replaced") << "replaced";
    }

    void changingWhileRead()
    {
        QFETCH(QString, change);
        const QString path = myDirectory.filePath(QStringLiteral("changing"));
        const QByteArray shorter(70'000, 'a');
        const QByteArray longer(300'000, 'b');
        QVERIFY(write(path, shorter));
        std::atomic<bool> isOver = false;
        const std::unique_ptr<QThread> writer(QThread::create([&] {
            for (int turn = 0; !isOver; ++turn) {
                const QByteArray& content = turn % 2 == 0 ? longer : shorter;
                if (change == QLatin1String("replaced")) {
                    write(path + QLatin1Char('2'), content);
                    ::rename(QFile::encodeName(path + QLatin1Char('2')).constData(),
                             QFile::encodeName(path).constData());
                } else {
                    if (change == QLatin1String("vanishing")) {
                        QFile::remove(path);
                    }
                    write(path, content);
                }
            }
        }));
        writer->start();
        int read = 0;
        bool isSane = true;
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 500) {
            const std::optional<QByteArray> bytes = LvFileHandler::readBytes(QFileInfo(path));
            if (bytes) {
                ++read;
                const qsizetype known = bytes->count('a') + bytes->count('b');
                isSane = isSane && known == bytes->size() && bytes->size() <= longer.size();
                // A file that is replaced in one step is one of the two, whole.
                isSane =
                    isSane && (change != QLatin1String("replaced") || *bytes == shorter || *bytes == longer);
            }
        }
        isOver = true;
        QVERIFY(writer->wait(10000));
        QVERIFY(isSane);
        QVERIFY(read > 0);
    }

    void filesWithoutEndAreEmpty()
    {
        // A regular file of size 0 that gives some 250 petabytes.
        const QFileInfo endless(QStringLiteral("/proc/self/pagemap"));
        if (!LvFileHandler::isReadableRegularFile(endless)) {
            QSKIP("This system has no such file.");
        }
        QCOMPARE(LvFileHandler::readBytes(endless), QByteArray());
        QCOMPARE(LvFileHandler::readTextFile(endless), QStringList());
    }

    void asksTheDiskAnew()
    {
        const QFileInfo file(myDirectory.filePath(QStringLiteral("later.txt")));
        QVERIFY(!file.exists()); // from now on it remembers that
        QVERIFY(!LvFileHandler::isReadableRegularFile(file));
        QFile device(file.filePath());
        QVERIFY(device.open(QIODevice::WriteOnly));
        device.write("x");
        device.close();
        QVERIFY(LvFileHandler::isReadableRegularFile(file));
        QCOMPARE(LvFileHandler::readTextFile(file), QStringList{"x"});
    }

    void followsLinksToFiles()
    {
        QFile file(myDirectory.filePath(QStringLiteral("target.txt")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("x");
        file.close();
        const QString link = myDirectory.filePath(QStringLiteral("link.txt"));
        QVERIFY(QFile::link(file.fileName(), link));
        QCOMPARE(LvFileHandler::readTextFile(QFileInfo(link)), QStringList{"x"});
    }

private:
    static bool write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(bytes) == bytes.size();
    }

    /// A socket that somebody has bound, and that nobody answers.
    QString socketPath()
    {
        const QString path = myDirectory.filePath(QStringLiteral("socket"));
        const QByteArray name = QFile::encodeName(path);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        if (name.size() < static_cast<qsizetype>(sizeof address.sun_path)) {
            std::copy(name.begin(), name.end(), address.sun_path);
            const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
            ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
            ::close(socket);
        }
        return path;
    }

    QString loopPath()
    {
        const QString path = myDirectory.filePath(QStringLiteral("loop"));
        ::symlink("loop", QFile::encodeName(path).constData());
        return path;
    }

    QTemporaryDir myDirectory;
};

LV_TEST_MAIN(tst_LvFileHandler)
#include "tst_LvFileHandler.moc"
