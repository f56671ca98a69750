#include "LvTest.h"
#include "LvTileUrlTemplate.h"
#include "LvTiledMapSource.h"

class tst_LvTileUrlTemplate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void url_data();
    void url();
    void invalid_data();
    void invalid();
    void looksLikeUrl_data();
    void looksLikeUrl();
    void defaultConstructed();
    void whiteSpaceDoesNotCount();
    void tilePixelRatio();
};

void tst_LvTileUrlTemplate::url_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("path") << "https://a.example/{z}/{x}/{y}.png"
                          << "https://a.example/3/6/2.png";
    QTest::newRow("rows from the south") << "https://a.example/{z}/{x}/{-y}.png"
                                         << "https://a.example/3/6/5.png";
    QTest::newRow("double size") << "https://a.example/{z}/{x}/{y}@2x.png"
                                 << "https://a.example/3/6/2@2x.png";
    QTest::newRow("query") << "https://a.example/tile?l={z}&c={x}&r={y}&key=k%20k"
                           << "https://a.example/tile?l=3&c=6&r=2&key=k%20k";
    QTest::newRow("other order, twice") << "http://a.example:81/{x}/{y}/{z}/{z}"
                                        << "http://a.example:81/6/2/3/3";
    QTest::newRow("address of numbers") << "http://127.0.0.1:8080/{z}/{x}/{y}"
                                        << "http://127.0.0.1:8080/3/6/2";
}

void tst_LvTileUrlTemplate::url()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    const LvTileUrlTemplate address(text);
    QVERIFY2(address.isValid(), qUtf8Printable(address.errorText()));
    QCOMPARE(address.errorText(), QString());
    QCOMPARE(address.urlFor({3, 6, 2}).toString(QUrl::FullyEncoded), expected);
    QCOMPARE(address.host(), QUrl(expected).host());
}

void tst_LvTileUrlTemplate::invalid_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("part"); // of the message
    QTest::newRow("nothing") << ""
                             << "fehlt";
    QTest::newRow("white space") << " \t"
                                 << "fehlt";
    QTest::newRow("no scheme") << "a.example/{z}/{x}/{y}.png"
                               << "https://";
    QTest::newRow("file") << "file:///srv/{z}/{x}/{y}.png"
                          << "https://";
    QTest::newRow("ftp") << "ftp://a.example/{z}/{x}/{y}.png"
                         << "https://";
    QTest::newRow("no server") << "https:///{z}/{x}/{y}.png"
                               << "keine gültige Adresse";
    QTest::newRow("broken server") << "https://a b.example/{z}/{x}/{y}.png"
                                   << "keine gültige Adresse";
    QTest::newRow("broken port") << "https://a.example:port/{z}/{x}/{y}.png"
                                 << "keine gültige Adresse";
    QTest::newRow("no zoom") << "https://a.example/{x}/{y}.png"
                             << "müssen {z}, {x} und {y}";
    QTest::newRow("no column") << "https://a.example/{z}/{y}.png"
                               << "müssen {z}, {x} und {y}";
    QTest::newRow("no row") << "https://a.example/{z}/{x}.png"
                            << "müssen {z}, {x} und {y}";
    QTest::newRow("both rows") << "https://a.example/{z}/{x}/{y}/{-y}.png"
                               << "nur eines";
    QTest::newRow("further placeholder") << "https://a.example/{z}/{x}/{y}{r}.png"
                                         << "unbekannter Platzhalter";
    QTest::newRow("zoom names the server") << "https://a{z}.example/{z}/{x}/{y}.png"
                                           << "hinter dem Namen";
    QTest::newRow("column is the port") << "https://a.example:8{x}/{z}/{x}/{y}.png"
                                        << "hinter dem Namen";
}

void tst_LvTileUrlTemplate::invalid()
{
    QFETCH(QString, text);
    QFETCH(QString, part);
    const LvTileUrlTemplate address(text);
    QVERIFY(!address.isValid());
    QVERIFY2(address.errorText().contains(part), qUtf8Printable(address.errorText()));
    QVERIFY(address.urlFor({0, 0, 0}).isEmpty());
    QCOMPARE(address.host(), QString());
}

void tst_LvTileUrlTemplate::looksLikeUrl_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("expected");
    QTest::newRow("https") << "https://a.example/{z}/{x}/{y}.png" << true;
    QTest::newRow("scheme that is not accepted") << "ftp://a.example" << true;
    QTest::newRow("scheme forgotten") << "a.example/{z}/{x}/{y}.png" << true;
    QTest::newRow("folder") << "/srv/maps" << false;
    QTest::newRow("folder of a drive") << "C:/maps" << false;
    QTest::newRow("drive and two slashes") << "C://maps" << false;
    QTest::newRow("file") << "maps/world.mbtiles" << false;
    QTest::newRow("name") << "builtin" << false;
}

void tst_LvTileUrlTemplate::looksLikeUrl()
{
    QFETCH(QString, text);
    QTEST(LvTileUrlTemplate::looksLikeUrl(text), "expected");
}

void tst_LvTileUrlTemplate::defaultConstructed()
{
    const LvTileUrlTemplate address;
    QVERIFY(!address.isValid());
    QVERIFY(address.errorText().contains(QStringLiteral("fehlt")));
    QVERIFY(address.urlFor({0, 0, 0}).isEmpty());
    QVERIFY(address == LvTileUrlTemplate(QString()));
}

void tst_LvTileUrlTemplate::whiteSpaceDoesNotCount()
{
    const LvTileUrlTemplate address(QStringLiteral("  https://a.example/{z}/{x}/{y}\n"));
    QVERIFY(address.isValid());
    QCOMPARE(address.text(), QStringLiteral("https://a.example/{z}/{x}/{y}"));
    QVERIFY(address == LvTileUrlTemplate(address.text()));
}

void tst_LvTileUrlTemplate::tilePixelRatio()
{
    QCOMPARE(LvTileUrlTemplate(QStringLiteral("https://a.example/{z}/{x}/{y}.png")).tilePixelRatio(), 1);
    QCOMPARE(LvTileUrlTemplate(QStringLiteral("https://a.example/{z}/{x}/{y}@2x.png")).tilePixelRatio(), 2);
}

LV_TEST_MAIN(tst_LvTileUrlTemplate)

#include "tst_LvTileUrlTemplate.moc"
