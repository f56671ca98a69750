#include "LvRecentFiles.h"
#include "LvTest.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

class tst_LvRecentFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void latestFirst();
    void oneNameForOneFile();
    void lengthIsLimited();
    void missingFilesAreHidden();
    void removeAndClear();
    void changedOnlyWhenChanged();
    void objectsShareTheList();
    void strangeStore();

private:
    [[nodiscard]] QString file(const QString& name) const
    {
        QFile created(myDirectory.filePath(name));
        if (!created.open(QIODevice::WriteOnly)) {
            qFatal("cannot create %s", qPrintable(name));
        }
        return created.fileName();
    }

    QTemporaryDir myDirectory;
};

void tst_LvRecentFiles::init()
{
    QSettings().clear();
}

void tst_LvRecentFiles::latestFirst()
{
    LvRecentFiles recent;
    QVERIFY(recent.fileNames().isEmpty());
    recent.add(file("a"));
    recent.add(file("b"));
    recent.add(file("c"));
    QCOMPARE(recent.fileNames(), (QStringList{file("c"), file("b"), file("a")}));
    recent.add(file("a"));
    QCOMPARE(recent.fileNames(), (QStringList{file("a"), file("c"), file("b")}));
}

void tst_LvRecentFiles::oneNameForOneFile()
{
    LvRecentFiles recent;
    recent.add(file("a"));
    recent.add(myDirectory.path() + QStringLiteral("/./x/../a"));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(myDirectory.path()));
    recent.add(QStringLiteral("a"));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(recent.fileNames(), QStringList{file("a")});
    recent.add(QString());
    QCOMPARE(recent.fileNames(), QStringList{file("a")});
}

void tst_LvRecentFiles::lengthIsLimited()
{
    LvRecentFiles recent;
    for (int i = 0; i <= LvRecentFiles::maximumCount; ++i) {
        recent.add(file(QString::number(i)));
    }
    QCOMPARE(recent.fileNames().size(), LvRecentFiles::maximumCount);
    QVERIFY(!recent.fileNames().contains(file("0")));
    QVERIFY(recent.fileNames().contains(file("1")));
}

void tst_LvRecentFiles::missingFilesAreHidden()
{
    LvRecentFiles recent;
    recent.add(file("a"));
    recent.add(file("b"));
    QVERIFY(QFile::remove(myDirectory.filePath("a")));
    QCOMPARE(recent.fileNames(), QStringList{file("b")});
    QVERIFY(QFile::exists(file("a")));
    QCOMPARE(recent.fileNames(), (QStringList{file("b"), file("a")}));
}

void tst_LvRecentFiles::removeAndClear()
{
    LvRecentFiles recent;
    recent.add(file("a"));
    recent.add(file("b"));
    recent.add(file("c"));
    recent.remove(file("b"));
    QCOMPARE(recent.fileNames(), (QStringList{file("c"), file("a")}));
    recent.clear();
    QVERIFY(recent.fileNames().isEmpty());
}

void tst_LvRecentFiles::changedOnlyWhenChanged()
{
    LvRecentFiles recent;
    QSignalSpy spy(&recent, &LvRecentFiles::changed);
    recent.clear();
    recent.remove(file("a"));
    QCOMPARE(spy.count(), 0);
    recent.add(file("a"));
    QCOMPARE(spy.count(), 1);
    recent.add(file("a"));
    QCOMPARE(spy.count(), 1);
    recent.remove(file("a"));
    QCOMPARE(spy.count(), 2);
}

void tst_LvRecentFiles::objectsShareTheList()
{
    LvRecentFiles one;
    LvRecentFiles other;
    one.add(file("a"));
    other.add(file("b"));
    QCOMPARE(one.fileNames(), (QStringList{file("b"), file("a")}));
}

void tst_LvRecentFiles::strangeStore()
{
    QSettings().setValue(QStringLiteral("recentFiles"), 5);
    LvRecentFiles recent;
    QVERIFY(recent.fileNames().isEmpty());
    recent.add(file("a"));
    QCOMPARE(recent.fileNames(), QStringList{file("a")});
}

LV_TEST_MAIN(tst_LvRecentFiles)
#include "tst_LvRecentFiles.moc"
