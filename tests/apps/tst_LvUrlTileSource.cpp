#include "LvGeoPosition.h"
#include "LvMapView.h"
#include "LvTest.h"
#include "LvTileServer.h"
#include "LvUrlTileSource.h"

#include <QPainter>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace
{

constexpr QColor background(236, 240, 242);

/// A source with a cache of its own.
class TestSource
{
public:
    explicit TestSource(const QString& address)
        : source(LvTileUrlTemplate(address), directory.path())
        , changes(&source, &LvUrlTileSource::tilesChanged)
        , messages(&source, &LvUrlTileSource::messageRaised)
    {
    }

    QImage draw(const LvMapView& view)
    {
        QImage image(view.size(), QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        source.draw(painter, view, 1.0);
        return image;
    }

    /// Draws until nothing more is to come.
    QImage drawAll(const LvMapView& view)
    {
        QImage image = draw(view);
        for (int i = 0; i < 100 && !source.isComplete(); ++i) {
            changes.wait(5000);
            image = draw(view);
        }
        return image;
    }

    QTemporaryDir directory;
    LvUrlTileSource source;
    QSignalSpy changes;
    QSignalSpy messages;
};

LvMapView viewAt(double zoom, const QSize& size = QSize(256, 256))
{
    return LvMapView::aroundCenter(LvGeoPosition(0.001, 0.001), zoom, size);
}

bool isAll(const QImage& image, const QColor& color)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != color) {
                return false;
            }
        }
    }
    return true;
}

} // namespace

class tst_LvUrlTileSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsWhatComes();
    void asksForEachTileOnce();
    void asksOnlyAFewAtOnce();
    void forgetsWhatIsNoLongerSeen();
    void drawsEnlargedTilesInTheMeantime();
    void rowsFromTheSouth();
    void doubleTiles();
    void missingTilesAreReplacedByThoseAbove();
    void refusedTilesAreNotAskedForAgain_data();
    void refusedTilesAreNotAskedForAgain();
    void waitsWhenAskedForPatience_data();
    void waitsWhenAskedForPatience();
    void serverThatIsNotThere();
    void namesItself();
    void keepsTilesOnDisk();
    void invalidAddress();
    void goesWhileTilesAreComing();
};

void tst_LvUrlTileSource::drawsWhatComes()
{
    LvTileServer server(Qt::red);
    TestSource test(server.address());
    QVERIFY(test.source.isValid());
    QCOMPARE(test.source.attribution(), QString());
    const LvMapView view = viewAt(1.0);
    QVERIFY(isAll(test.draw(view), background)); // at once, without waiting
    QVERIFY(!test.source.isComplete());
    QVERIFY(isAll(test.drawAll(view), Qt::red));
    QVERIFY(test.messages.isEmpty());
}

void tst_LvUrlTileSource::asksForEachTileOnce()
{
    LvTileServer server(Qt::red);
    TestSource test(server.address());
    // A picture as wide as two worlds shows each tile of level 1 twice or more.
    const LvMapView view = viewAt(1.0, QSize(1024, 256));
    test.draw(view);
    test.draw(view);
    test.drawAll(view);
    test.drawAll(view);
    QStringList paths = server.paths();
    paths.sort();
    QCOMPARE(paths, QStringList({"/1/0/0.png", "/1/0/1.png", "/1/1/0.png", "/1/1/1.png"}));
}

void tst_LvUrlTileSource::asksOnlyAFewAtOnce()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red)](const QString&) {
        return LvTileServer::Answer{200, tile, {}, true};
    });
    TestSource test(server.address());
    const LvMapView view = viewAt(3.0, QSize(1024, 1024));
    test.draw(view);
    for (int i = 0; i < 200 && !test.source.isComplete(); ++i) {
        QTest::qWait(10);
        server.answerLate();
    }
    QVERIFY(test.source.isComplete());
    QVERIFY(server.paths().size() >= 16);
    QCOMPARE(server.mostAtOnce(), LvUrlTileSource::maximumRequests);
}

void tst_LvUrlTileSource::forgetsWhatIsNoLongerSeen()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red)](const QString&) {
        return LvTileServer::Answer{200, tile, {}, true};
    });
    TestSource test(server.address());
    test.draw(viewAt(5.0, QSize(1024, 1024)));
    QTRY_COMPARE(server.paths().size(), LvUrlTileSource::maximumRequests);
    test.draw(LvMapView::aroundCenter(LvGeoPosition(50.0, 100.0), 8.0, QSize(100, 100)));
    for (int i = 0; i < 200 && !test.source.isComplete(); ++i) {
        QTest::qWait(10);
        server.answerLate();
    }
    const QStringList paths = server.paths();
    QVERIFY(paths.size() > LvUrlTileSource::maximumRequests);
    for (qsizetype i = LvUrlTileSource::maximumRequests; i < paths.size(); ++i) {
        QVERIFY2(paths.at(i).startsWith(QStringLiteral("/8/")), qUtf8Printable(paths.at(i)));
    }
}

void tst_LvUrlTileSource::drawsEnlargedTilesInTheMeantime()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red)](const QString& path) {
        return LvTileServer::Answer{200, tile, {}, !path.startsWith(QStringLiteral("/1/"))};
    });
    TestSource test(server.address());
    test.drawAll(viewAt(1.0));
    const qsizetype before = server.paths().size();
    QVERIFY(isAll(test.draw(viewAt(2.0)), Qt::red));
    QVERIFY(isAll(test.draw(viewAt(3.0)), Qt::red));
    QTRY_VERIFY(server.paths().size() > before);
    // Those above are only asked for when the tile itself does not exist.
    const QStringList paths = server.paths();
    QCOMPARE(paths.filter(QStringLiteral("/0/0/0")).size(), 0);
}

void tst_LvUrlTileSource::rowsFromTheSouth()
{
    LvTileServer server(Qt::red);
    TestSource test(server.address(QStringLiteral("/{z}/{x}/{-y}")));
    // Row 1 of 0 ... 3 from the north.
    test.drawAll(LvMapView::aroundCenter(LvGeoPosition(50.0, 135.0), 2.0, QSize(10, 10)));
    QCOMPARE(server.paths(), QStringList({"/2/3/2"}));
}

void tst_LvUrlTileSource::doubleTiles()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red, 512)](const QString&) {
        return LvTileServer::Answer{200, tile, {}, false};
    });
    TestSource test(server.address(QStringLiteral("/{z}/{x}/{y}@2x.png")));
    const LvMapView view = viewAt(3.0);
    QCOMPARE(test.source.zoomFor(view), 2);
    QVERIFY(isAll(test.drawAll(view), Qt::red));
    for (const QString& path : server.paths()) {
        QVERIFY2(path.startsWith(QStringLiteral("/2/")) && path.endsWith(QStringLiteral("@2x.png")),
                 qUtf8Printable(path));
    }
    QCOMPARE(TestSource(server.address()).source.zoomFor(view), 3);
}

void tst_LvUrlTileSource::missingTilesAreReplacedByThoseAbove()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red)](const QString& path) {
        const bool exists = path.startsWith(QStringLiteral("/1/"));
        return LvTileServer::Answer{exists ? 200 : 404, exists ? tile : QByteArray(), {}, false};
    });
    TestSource test(server.address());
    QVERIFY(isAll(test.drawAll(viewAt(3.0)), Qt::red));
    QVERIFY(test.messages.isEmpty()); // nothing unusual
    const QStringList paths = server.paths();
    QCOMPARE(QSet<QString>(paths.cbegin(), paths.cend()).size(), paths.size());
}

void tst_LvUrlTileSource::refusedTilesAreNotAskedForAgain_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("part"); // of the message
    QTest::newRow("not found") << 404 << QByteArray("no") << QString();
    QTest::newRow("gone") << 410 << QByteArray() << QString();
    QTest::newRow("empty answer") << 200 << QByteArray() << QString();
    QTest::newRow("forbidden") << 403 << QByteArray("no") << QStringLiteral("(HTTP 403)");
    QTest::newRow("not authorised") << 401 << QByteArray() << QStringLiteral("(HTTP 401)");
    QTest::newRow("error of the server") << 500 << QByteArray("no") << QStringLiteral("(HTTP 500)");
    QTest::newRow("no picture") << 200 << QByteArray("<html>") << QStringLiteral("etwas anderes als Bilder");
    QTest::newRow("endless") << 200 << QByteArray(17 * 1024 * 1024, 'x')
                             << QStringLiteral("etwas anderes als Bilder");
}

void tst_LvUrlTileSource::refusedTilesAreNotAskedForAgain()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, part);
    LvTileServer server([&](const QString&) { return LvTileServer::Answer{status, body, {}, false}; });
    TestSource test(server.address());
    const LvMapView view = viewAt(0.0, QSize(100, 100));
    QVERIFY(isAll(test.drawAll(view), background));
    QVERIFY(test.source.isComplete());
    QCOMPARE(server.paths(), QStringList({"/0/0/0.png"}));
    test.drawAll(view);
    QTest::qWait(20);
    QCOMPARE(server.paths().size(), 1);
    if (part.isEmpty()) {
        QCOMPARE(test.messages.size(), 0);
    } else {
        QCOMPARE(test.messages.size(), 1);
        const QString message = test.messages.at(0).at(0).toString();
        QVERIFY2(message.contains(part) && message.contains(QStringLiteral("127.0.0.1")),
                 qUtf8Printable(message));
    }
    // The same reason is not told once more for the next tile.
    test.drawAll(viewAt(1.0));
    QVERIFY(server.paths().size() > 1);
    QCOMPARE(test.messages.size(), part.isEmpty() ? 0 : 1);
}

void tst_LvUrlTileSource::waitsWhenAskedForPatience_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("too many requests") << 429;
    QTest::newRow("unavailable") << 503;
}

void tst_LvUrlTileSource::waitsWhenAskedForPatience()
{
    QFETCH(int, status);
    bool isBusy = true;
    LvTileServer server([&, tile = LvTileServer::tileOf(Qt::red)](const QString&) {
        return LvTileServer::Answer{isBusy ? status : 200, isBusy ? QByteArray() : tile, {}, false};
    });
    TestSource test(server.address());
    test.source.setPause(1500);
    const LvMapView view = viewAt(0.0, QSize(100, 100));
    test.draw(view);
    QVERIFY(test.changes.wait(5000));
    QCOMPARE(test.messages.size(), 1);
    QVERIFY(test.messages.at(0).at(0).toString().contains(QStringLiteral("bittet um Geduld")));
    isBusy = false;
    test.draw(view);
    QVERIFY(test.source.isComplete());
    QTest::qWait(50);
    QCOMPARE(server.paths().size(), 1); // still waiting
    test.changes.clear();
    QVERIFY(test.changes.wait(5000)); // asks to be drawn
    QVERIFY(isAll(test.drawAll(view), Qt::red));
    QCOMPARE(server.paths().size(), 2);
}

void tst_LvUrlTileSource::serverThatIsNotThere()
{
    LvTileServer server(Qt::red);
    const QString address = server.address();
    server.close();
    TestSource test(address);
    test.source.setPause(60000);
    const LvMapView view = viewAt(2.0, QSize(512, 512));
    QVERIFY(isAll(test.drawAll(view), background));
    QVERIFY(test.source.isComplete());
    QCOMPARE(test.messages.size(), 1);
    QVERIFY(test.messages.at(0).at(0).toString().contains(QStringLiteral("nicht erreichbar")));
}

void tst_LvUrlTileSource::namesItself()
{
    QCoreApplication::setApplicationName(QStringLiteral("lvtrackeditor"));
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    LvTileServer server(Qt::red);
    TestSource test(server.address());
    test.drawAll(viewAt(0.0));
    QVERIFY(server.lastHead().contains("\r\nUser-Agent: lvtrackeditor/1.2.3 (LvGeoLocation)"));
    QVERIFY(!server.lastHead().toLower().contains("\r\ncookie:"));
}

void tst_LvUrlTileSource::keepsTilesOnDisk()
{
    LvTileServer server([tile = LvTileServer::tileOf(Qt::red)](const QString&) {
        return LvTileServer::Answer{200, tile, "Cache-Control: max-age=3600\r\nContent-Type: image/png\r\n",
                                    false};
    });
    const QTemporaryDir directory;
    const LvMapView view = viewAt(1.0);
    for (int run = 0; run < 2; ++run) {
        LvUrlTileSource source(LvTileUrlTemplate(server.address()), directory.path());
        const QSignalSpy changes(&source, &LvUrlTileSource::tilesChanged);
        QImage image(view.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        source.draw(painter, view, 1.0);
        QTRY_VERIFY(source.isComplete());
        source.draw(painter, view, 1.0);
        QVERIFY(isAll(image, Qt::red));
        QCOMPARE(server.paths().size(), 4); // also after the second run
    }
    QVERIFY(LvUrlTileSource::defaultCacheDirectory().endsWith(QStringLiteral("/tiles")));
}

void tst_LvUrlTileSource::invalidAddress()
{
    TestSource test(QStringLiteral("ftp://127.0.0.1/{z}/{x}/{y}"));
    QVERIFY(!test.source.isValid());
    QVERIFY(test.source.errorText().contains(QStringLiteral("https://")));
    QVERIFY(isAll(test.draw(viewAt(1.0)), background));
    QVERIFY(test.source.isComplete());
}

void tst_LvUrlTileSource::goesWhileTilesAreComing()
{
    LvTileServer server([](const QString&) { return LvTileServer::Answer{200, {}, {}, true}; });
    {
        TestSource test(server.address());
        test.draw(viewAt(2.0));
        QTRY_VERIFY(!server.paths().isEmpty());
    }
    QTest::qWait(20);
}

LV_TEST_MAIN(tst_LvUrlTileSource)

#include "tst_LvUrlTileSource.moc"
