#include "LvMBTilesSource.h"
#include "LvMapText.h"
#include "LvTest.h"
#include "LvTileDirectorySource.h"
#include "LvTranslations.h"
#include "LvWorldMapSource.h"

#include <QTemporaryDir>

class tst_LvMapSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void create();
    void plainAttribution_data();
    void plainAttribution();
};

void tst_LvMapSource::initTestCase()
{
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
}

void tst_LvMapSource::create()
{
    QCOMPARE(LvMapSource::create(QStringLiteral("none")).get(), nullptr);
    QVERIFY(dynamic_cast<LvWorldMapSource*>(LvMapSource::create(QStringLiteral("builtin")).get()) != nullptr);

    const QTemporaryDir directory;
    const auto tiles = LvMapSource::create(directory.path());
    QVERIFY(dynamic_cast<LvTileDirectorySource*>(tiles.get()) != nullptr);
    QVERIFY(!tiles->isValid());

    const auto file = LvMapSource::create(directory.filePath(QStringLiteral("missing.mbtiles")));
    QVERIFY(dynamic_cast<LvMBTilesSource*>(file.get()) != nullptr);
    QCOMPARE(file->errorText(), QStringLiteral("not found"));
}

void tst_LvMapSource::plainAttribution_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("plain") << QStringLiteral("© OpenStreetMap contributors")
                           << QStringLiteral("© OpenStreetMap contributors");
    QTest::newRow("line breaks and blanks") << "  one\n\ttwo  three "
                                            << "one two three";
    QTest::newRow("link") << "<a href='https://x.y/z?a=1&b=2'>Map</a>"
                          << "Map";
    QTest::newRow("several") << "<a href='x'>&copy; One</a> <a href='y'>&copy; Two</a>"
                             << QStringLiteral("© One © Two");
    QTest::newRow("entity only") << "&copy; Map" << QStringLiteral("© Map");
    QTest::newRow("no HTML in spite of the sign") << "1 < 2"
                                                  << "1 < 2";
    QTest::newRow("script") << "<script>alert(1)</script>Map"
                            << "Map";
    QTest::newRow("endless") << QString(100000, QLatin1Char('x')) << QString(200, QLatin1Char('x'));
}

void tst_LvMapSource::plainAttribution()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(LvMapText::plainAttribution(text), expected);
}

LV_TEST_MAIN(tst_LvMapSource)
#include "tst_LvMapSource.moc"
