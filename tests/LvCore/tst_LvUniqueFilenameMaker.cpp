#include "LvTest.h"
#include "LvUniqueFilenameMaker.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <thread>
#include <vector>

namespace
{

bool touch(const QString& path)
{
    return QFile(path).open(QIODevice::WriteOnly);
}

QString make(const QString& path, const QSet<QDir>& allowed)
{
    return LvUniqueFilenameMaker::instance()
        ->makeUniqueFileNameInSafeContainer(QFileInfo(path), allowed)
        .filePath();
}

} // namespace

class tst_LvUniqueFilenameMaker : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        myDirectory = std::make_unique<QTemporaryDir>();
        QVERIFY(myDirectory->isValid());
    }

    void neverTheSameNameTwice()
    {
        const QSet<QDir> allowed = {QDir(myDirectory->path())};
        const QFileInfo wanted(QDir(myDirectory->path()), QStringLiteral("track.gps"));
        LvUniqueFilenameMaker* maker = LvUniqueFilenameMaker::instance();
        for (const char* expected : {"track.gps", "track_1.gps", "track_2.gps"}) {
            const QFileInfo file = maker->makeUniqueFileNameInSafeContainer(wanted, allowed);
            QCOMPARE(file.fileName(), QString::fromLatin1(expected));
            QVERIFY(!file.exists()); // nothing is created
            QCOMPARE(file.dir(), QDir(myDirectory->path()));
        }
    }

    void leavesOutWhatIsOnDisk()
    {
        const QDir directory(myDirectory->path());
        QVERIFY(touch(directory.filePath(QStringLiteral("track.gps"))));
        QVERIFY(directory.mkdir(QStringLiteral("track_1.gps")));
        QVERIFY(QFile::link(directory.filePath(QStringLiteral("nothing")),
                            directory.filePath(QStringLiteral("track_2.gps")))); // writing would follow it
        QCOMPARE(make(directory.filePath(QStringLiteral("track.gps")), {directory}),
                 directory.filePath(QStringLiteral("track_3.gps")));
    }

    void numbersOfOtherNamesDoNotCollide()
    {
        const QDir directory(myDirectory->path());
        const QSet<QDir> allowed = {directory};
        QCOMPARE(make(directory.filePath(QStringLiteral("a_1.gps")), allowed),
                 directory.filePath(QStringLiteral("a_1.gps")));
        QCOMPARE(make(directory.filePath(QStringLiteral("a.gps")), allowed),
                 directory.filePath(QStringLiteral("a.gps")));
        QCOMPARE(make(directory.filePath(QStringLiteral("a.gps")), allowed),
                 directory.filePath(QStringLiteral("a_2.gps")));
        QCOMPARE(make(directory.filePath(QStringLiteral("a_1.gps")), allowed),
                 directory.filePath(QStringLiteral("a_1_1.gps")));
    }

    void numbering_data()
    {
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<QString>("second");
        QTest::newRow("suffix") << "track.gps"
                                << "track_1.gps";
        QTest::newRow("no suffix") << "track"
                                   << "track_1";
        QTest::newRow("several dots") << "a.b.gps"
                                      << "a.b_1.gps";
        QTest::newRow("hidden") << ".track"
                                << ".track_1";
        QTest::newRow("dot at the end") << "track."
                                        << "track_1.";
        QTest::newRow("blanks and placeholders") << "a b%1%2.gps"
                                                 << "a b%1%2_1.gps";
        QTest::newRow("umlauts") << "Straße.gps"
                                 << "Straße_1.gps";
    }

    void numbering()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, second);
        const QDir directory(myDirectory->path());
        QCOMPARE(make(directory.filePath(wanted), {directory}), directory.filePath(wanted));
        QCOMPARE(make(directory.filePath(wanted), {directory}), directory.filePath(second));
    }

    void staysInTheAllowedDirectories()
    {
        const QDir root(myDirectory->path());
        for (const char* name : {"a", "b", "c"}) {
            QVERIFY(root.mkdir(QString::fromLatin1(name)));
        }
        const QSet<QDir> allowed = {QDir(root.filePath("c")), QDir(root.filePath("b"))};
        QCOMPARE(make(root.filePath("c/x.gps"), allowed), root.filePath("c/x.gps"));
        QCOMPARE(make(root.filePath("a/x.gps"), allowed), root.filePath("b/x.gps")); // first by path
        QCOMPARE(make(root.filePath("b/../a/x.gps"), allowed), root.filePath("b/x_1.gps"));
        QCOMPARE(make(root.filePath("b/sub/x.gps"), allowed), root.filePath("b/x_2.gps"));
    }

    void namesOfDirectoriesAreNoFileNames()
    {
        const QDir directory(myDirectory->path());
        QCOMPARE(make(directory.path() + "/..", {directory}), directory.filePath(QStringLiteral("unnamed")));
        QCOMPARE(make(directory.path() + "/", {directory}), directory.filePath(QStringLiteral("unnamed_1")));
    }

    void withoutAllowedDirectory()
    {
        const QFileInfo file = LvUniqueFilenameMaker::instance()->makeUniqueFileNameInSafeContainer(
            QFileInfo(QDir(myDirectory->path()), QStringLiteral("x")), {});
        QVERIFY(file.fileName().isEmpty());
    }

    void directoriesThatCannotBeWritten()
    {
        const QDir missing(myDirectory->filePath(QStringLiteral("missing")));
        QCOMPARE(make(missing.filePath(QStringLiteral("x.gps")), {missing}),
                 missing.filePath(QStringLiteral("x.gps")));
        QCOMPARE(make(missing.filePath(QStringLiteral("x.gps")), {missing}),
                 missing.filePath(QStringLiteral("x_1.gps")));
        QVERIFY(!missing.exists());
    }

    void spellingsOfOneDirectory()
    {
        const QDir directory(myDirectory->path());
        QVERIFY(directory.mkdir(QStringLiteral("real")));
        const QString real = directory.filePath(QStringLiteral("real"));
        const QString link = directory.filePath(QStringLiteral("link"));
        QVERIFY(QFile::link(real, link));
        QCOMPARE(QFileInfo(make(real + "/x.gps", {QDir(real)})).fileName(), QStringLiteral("x.gps"));
        QCOMPARE(QFileInfo(make(link + "/x.gps", {QDir(link)})).fileName(), QStringLiteral("x_1.gps"));
        QCOMPARE(QFileInfo(make(real + "/../real/x.gps", {QDir(real + "/")})).fileName(),
                 QStringLiteral("x_2.gps"));
    }

    void directoriesThatAreCreatedLater()
    {
        const QDir root(myDirectory->path());
        QVERIFY(root.mkdir(QStringLiteral("real")));
        QVERIFY(QFile::link(root.filePath(QStringLiteral("real")), root.filePath(QStringLiteral("link"))));
        const QDir throughLink(root.filePath(QStringLiteral("link/later/still")));
        const QDir direct(root.filePath(QStringLiteral("real/later/still")));
        QCOMPARE(make(throughLink.filePath(QStringLiteral("track.gps")), {throughLink}),
                 throughLink.filePath(QStringLiteral("track.gps")));
        QVERIFY(direct.mkpath(QStringLiteral(".")));
        QCOMPARE(make(direct.filePath(QStringLiteral("track.gps")), {direct}),
                 direct.filePath(QStringLiteral("track_1.gps")));
    }

    void threadsNeverShareAName()
    {
        constexpr int threadCount = 8;
        constexpr int namesPerThread = 50;
        const QDir directory(myDirectory->path());
        std::vector<QStringList> names(threadCount);
        std::vector<std::thread> threads;
        for (QStringList& list : names) {
            threads.emplace_back([&list, &directory] {
                for (int i = 0; i < namesPerThread; ++i) {
                    list.append(make(directory.filePath(QStringLiteral("track.gps")), {directory}));
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        QSet<QString> all;
        for (const QStringList& list : names) {
            all.unite(QSet<QString>(list.cbegin(), list.cend()));
        }
        QCOMPARE(all.size(), threadCount * namesPerThread);
    }

    void hash_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        const QString path = QDir::tempPath();
        const QString relative = QDir::current().relativeFilePath(path);
        QTest::newRow("same") << path << path;
        QTest::newRow("slash at the end") << path << path + "/";
        QTest::newRow("relative") << path << relative;
        QTest::newRow("dots") << path << path + "/./../" + QFileInfo(path).fileName();
        QTest::newRow("empty is the current one") << QString() << QDir::currentPath();
        QTest::newRow("missing") << path + "/no/such" << relative + "/no/such";
        QTest::newRow("missing, slash at the end") << path + "/no/such" << path + "/no/such/";
        QTest::newRow("different") << path << QStringLiteral("/");
        QTest::newRow("different, missing") << path + "/no/such" << path + "/no/other";
        QTest::newRow("one of them missing") << path << path + "/no/such";
    }

    void hash()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        const QDir leftDir(left);
        const QDir rightDir(right);
        const bool areEqual = leftDir == rightDir;
        if (areEqual) {
            QCOMPARE(qHash(leftDir), qHash(rightDir));
            QCOMPARE(qHash(leftDir, 7), qHash(rightDir, 7));
        }
        QCOMPARE(QSet<QDir>({leftDir, rightDir}).size(), areEqual ? 1 : 2);
        QCOMPARE(areEqual,
                 !QByteArray(QTest::currentDataTag()).startsWith("different")
                     && !QByteArray(QTest::currentDataTag()).startsWith("one of"));
    }

private:
    std::unique_ptr<QTemporaryDir> myDirectory;
};

LV_TEST_MAIN(tst_LvUniqueFilenameMaker)
#include "tst_LvUniqueFilenameMaker.moc"
