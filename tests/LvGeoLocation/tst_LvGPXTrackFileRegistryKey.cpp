#include "LvGPXTrackFileRegistryKey.h"
#include "LvTest.h"

#include <QHash>
#include <QTemporaryDir>

#include <type_traits>

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

static_assert(std::has_virtual_destructor_v<LvGPXTrackFileRegistryKey>);
static_assert(std::is_copy_assignable_v<LvGPXTrackFileRegistryKey>);

} // namespace

class tst_LvGPXTrackFileRegistryKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void accessors();
    void isValid_data();
    void isValid();
    void equality_data();
    void equality();
    void hash_data();
    void hash();
    void hashTable();
};

void tst_LvGPXTrackFileRegistryKey::accessors()
{
    LvGPXTrack changed = track(2);
    const LvGPXTrackFileRegistryKey key(changed, QDir(QStringLiteral("/tmp")));
    changed.setName(QStringLiteral("b"));
    QVERIFY(key.track() == track(2));
    QVERIFY(key.dir() == QDir(QStringLiteral("/tmp")));
    LvGPXTrackFileRegistryKey copy(changed, QDir(QStringLiteral("/")));
    copy = key;
    QVERIFY(copy == key);
}

void tst_LvGPXTrackFileRegistryKey::isValid_data()
{
    QTest::addColumn<LvGPXTrack>("track");
    QTest::addColumn<QDir>("dir");
    QTest::addColumn<bool>("expected");
    const QDir root(QStringLiteral("/"));
    QTest::newRow("both") << track(1) << root << true;
    QTest::newRow("a directory that is not there") << track(1) << QDir(QStringLiteral("/missing")) << true;
    QTest::newRow("invalid track") << LvGPXTrack() << root << false;
    QTest::newRow("empty directory") << track(1) << QDir(QString()) << false;
    QTest::newRow("the current directory is the empty one") << track(1) << QDir::current() << false;
}

void tst_LvGPXTrackFileRegistryKey::isValid()
{
    QFETCH(LvGPXTrack, track);
    QFETCH(QDir, dir);
    QFETCH(bool, expected);
    QCOMPARE(LvGPXTrackFileRegistryKey(track, dir).isValid(), expected);
}

void tst_LvGPXTrackFileRegistryKey::equality_data()
{
    QTest::addColumn<LvGPXTrack>("track");
    QTest::addColumn<QDir>("dir");
    QTest::addColumn<bool>("expected");
    const QDir root(QStringLiteral("/"));
    LvGPXTrack enclosing = ::track(2);
    enclosing.addEnclave(::track(1));
    QTest::newRow("equal") << ::track(2) << root << true;
    QTest::newRow("the same directory, written differently")
        << ::track(2) << QDir(QStringLiteral("/tmp/..")) << true;
    QTest::newRow("directory") << ::track(2) << QDir(QStringLiteral("/tmp")) << false;
    QTest::newRow("points") << ::track(3) << root << false;
    QTest::newRow("name") << ::track(2, QStringLiteral("b")) << root << false;
    QTest::newRow("enclaves") << enclosing << root << false;
}

void tst_LvGPXTrackFileRegistryKey::equality()
{
    QFETCH(LvGPXTrack, track);
    QFETCH(QDir, dir);
    QFETCH(bool, expected);
    const LvGPXTrackFileRegistryKey key(::track(2), QDir(QStringLiteral("/")));
    QCOMPARE(key == LvGPXTrackFileRegistryKey(track, dir), expected);
    QCOMPARE(key != LvGPXTrackFileRegistryKey(track, dir), !expected);
}

void tst_LvGPXTrackFileRegistryKey::hash_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("no points") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("many") << 5000;
}

void tst_LvGPXTrackFileRegistryKey::hash()
{
    QFETCH(int, count);
    const LvGPXTrackFileRegistryKey key(track(count), QDir(QStringLiteral("/")));
    QCOMPARE(key.hash(), qHash(count, 0));
    QCOMPARE(qHash(key), key.hash());
    QCOMPARE(qHash(key, 42), qHash(count, 42));
    // Neither the name nor the directory counts.
    QCOMPARE(
        LvGPXTrackFileRegistryKey(track(count, QStringLiteral("b")), QDir(QStringLiteral("/tmp"))).hash(),
        key.hash());
}

void tst_LvGPXTrackFileRegistryKey::hashTable()
{
    const QDir root(QStringLiteral("/"));
    QHash<LvGPXTrackFileRegistryKey, QString> files;
    files.insert(LvGPXTrackFileRegistryKey(track(2), root), QStringLiteral("a"));
    files.insert(LvGPXTrackFileRegistryKey(track(2, QStringLiteral("b")), root), QStringLiteral("b"));
    files.insert(LvGPXTrackFileRegistryKey(track(3), root), QStringLiteral("c"));
    files.insert(LvGPXTrackFileRegistryKey(track(2), root), QStringLiteral("d"));
    QCOMPARE(files.size(), 3);
    QCOMPARE(files.value(LvGPXTrackFileRegistryKey(track(2), root)), QStringLiteral("d"));
    QCOMPARE(files.value(LvGPXTrackFileRegistryKey(track(2, QStringLiteral("b")), root)),
             QStringLiteral("b"));
    QVERIFY(!files.contains(LvGPXTrackFileRegistryKey(track(4), root)));
}

LV_TEST_MAIN(tst_LvGPXTrackFileRegistryKey)
#include "tst_LvGPXTrackFileRegistryKey.moc"
