#include "LvEditorSettings.h"
#include "LvPreferencesMap.h"
#include "LvTest.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

namespace
{

enum Row { BuiltIn, None, Folder, File, Url };

struct Page : LvPreferencesMap {
    Page()
        : kind(findChild<QComboBox*>(QStringLiteral("kind")))
        , location(findChild<QLineEdit*>(QStringLiteral("location")))
        , browse(findChild<QPushButton*>(QStringLiteral("browse")))
        , attribution(findChild<QLineEdit*>(QStringLiteral("attribution")))
        , error(findChild<QLabel*>(QStringLiteral("error")))
    {
    }

    void choose(Row row, const QString& place = QString())
    {
        kind->setCurrentIndex(row);
        Q_EMIT kind->activated(row);
        if (!place.isNull()) {
            location->selectAll();
            location->insert(place);
        }
    }

    QComboBox* kind;
    QLineEdit* location;
    QPushButton* browse;
    QLineEdit* attribution;
    QLabel* error;
};

LvEditorSettings* settings()
{
    return LvEditorSettings::instance();
}

/// A folder that is a tree of tiles.
void makeTiles(const QString& folder)
{
    QDir().mkpath(folder + QStringLiteral("/0/0"));
    QImage tile(256, 256, QImage::Format_RGB32);
    tile.fill(Qt::white);
    tile.save(folder + QStringLiteral("/0/0/0.png"));
}

} // namespace

class tst_LvPreferencesMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsAndWrites_data();
    void readsAndWrites();
    void editorsFollowTheKind();
    void locationsOfOtherKindsStay();
    void cannotBeLeft_data();
    void cannotBeLeft();
    void canBeLeft();
    void errorGoesAway();
    void revert();
    void browses();
    void accessibility();
};

void tst_LvPreferencesMap::init()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    settings()->setMapSource(QStringLiteral("builtin"));
    settings()->setAttribution({});
}

void tst_LvPreferencesMap::readsAndWrites_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("location");
    QTest::newRow("built-in") << "builtin" << int(BuiltIn) << "";
    QTest::newRow("none") << "none" << int(None) << "";
    QTest::newRow("folder") << QDir::tempPath() << int(Folder) << QDir::tempPath();
    QTest::newRow("file") << "/no/such/map.mbtiles" << int(File) << "/no/such/map.mbtiles";
    QTest::newRow("address") << "https://t.example/{z}/{x}/{y}.png" << int(Url)
                             << "https://t.example/{z}/{x}/{y}.png";
}

void tst_LvPreferencesMap::readsAndWrites()
{
    QFETCH(QString, source);
    QFETCH(int, row);
    QFETCH(QString, location);
    settings()->setMapSource(source);
    settings()->setAttribution(QStringLiteral("© someone"));
    Page page;
    page.readFromConfig();
    QCOMPARE(page.kind->currentIndex(), row);
    QCOMPARE(page.location->text(), location);
    QCOMPARE(page.attribution->text(), QStringLiteral("© someone"));

    settings()->setMapSource(QStringLiteral("something else"));
    page.attribution->setText(QStringLiteral("  © nobody "));
    page.writeToConfig();
    QCOMPARE(settings()->mapSource(), source);
    QCOMPARE(settings()->attribution(), QStringLiteral("© nobody"));
}

void tst_LvPreferencesMap::editorsFollowTheKind()
{
    Page page;
    page.readFromConfig();
    QVERIFY(!page.location->isEnabled());
    QVERIFY(!page.browse->isEnabled());
    page.choose(Folder);
    QVERIFY(page.location->isEnabled());
    QVERIFY(page.browse->isEnabled());
    page.choose(Url);
    QVERIFY(page.location->isEnabled());
    QVERIFY(!page.browse->isEnabled());
    QVERIFY(page.location->placeholderText().contains(QStringLiteral("{z}")));
    page.choose(None);
    QVERIFY(!page.location->isEnabled());
    QVERIFY(!page.attribution->isEnabled());
}

void tst_LvPreferencesMap::locationsOfOtherKindsStay()
{
    Page page;
    page.readFromConfig();
    page.choose(Folder, QStringLiteral("/a/folder"));
    page.choose(Url, QStringLiteral("https://t.example/{z}/{x}/{y}.png"));
    page.choose(BuiltIn);
    QCOMPARE(page.location->text(), QString());
    page.choose(Folder);
    QCOMPARE(page.location->text(), QStringLiteral("/a/folder"));
    page.choose(Url);
    QCOMPARE(page.location->text(), QStringLiteral("https://t.example/{z}/{x}/{y}.png"));
    page.readFromConfig(); // forgets them
    page.choose(Folder);
    QCOMPARE(page.location->text(), QString());
}

void tst_LvPreferencesMap::cannotBeLeft_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("location");
    QTest::newRow("no folder") << int(Folder) << "";
    QTest::newRow("missing folder") << int(Folder) << "/no/such/folder";
    QTest::newRow("file as folder") << int(Folder) << QCoreApplication::applicationFilePath();
    QTest::newRow("no file") << int(File) << " ";
    QTest::newRow("missing file") << int(File) << "/no/such/map.mbtiles";
    QTest::newRow("folder as file") << int(File) << QDir::tempPath();
    QTest::newRow("no map in the file") << int(File) << QCoreApplication::applicationFilePath();
    QTest::newRow("no address") << int(Url) << "";
    QTest::newRow("no placeholders") << int(Url) << "https://t.example/tile.png";
    QTest::newRow("another scheme") << int(Url) << "ftp://t.example/{z}/{x}/{y}.png";
}

void tst_LvPreferencesMap::cannotBeLeft()
{
    QFETCH(int, row);
    QFETCH(QString, location);
    Page page;
    page.readFromConfig();
    page.choose(static_cast<Row>(row), location);
    QVERIFY(page.error->isHidden());
    QVERIFY(!page.checkLeaveCondition());
    QVERIFY(!page.error->isHidden());
    QVERIFY(page.error->text().size() > 10);
}

void tst_LvPreferencesMap::canBeLeft()
{
    QTemporaryDir folder;
    makeTiles(folder.path());
    Page page;
    page.readFromConfig();
    for (const auto& [row, location] :
         {std::pair{BuiltIn, QString()}, std::pair{None, QString()}, std::pair{Folder, folder.path()},
          std::pair{Url, QStringLiteral(" https://t.example/{z}/{x}/{-y}@2x.png ")}}) {
        page.choose(row, location);
        QVERIFY2(page.checkLeaveCondition(), qPrintable(page.error->text()));
        QVERIFY(page.error->isHidden());
    }
    page.writeToConfig();
    QCOMPARE(settings()->mapSource(), QStringLiteral("https://t.example/{z}/{x}/{-y}@2x.png"));
}

void tst_LvPreferencesMap::errorGoesAway()
{
    Page page;
    page.readFromConfig();
    page.choose(Url, QStringLiteral("x"));
    QVERIFY(!page.checkLeaveCondition());
    QTest::keyClicks(page.location, QStringLiteral("y"));
    QVERIFY(page.error->isHidden());
    QVERIFY(!page.checkLeaveCondition());
    page.choose(BuiltIn);
    QVERIFY(page.error->isHidden());
}

void tst_LvPreferencesMap::revert()
{
    Page page;
    page.readFromConfig();
    page.choose(Url, QStringLiteral("x"));
    page.attribution->setText(QStringLiteral("y"));
    QVERIFY(!page.checkLeaveCondition());
    page.revertChanges();
    QCOMPARE(page.kind->currentIndex(), int(BuiltIn));
    QCOMPARE(page.attribution->text(), QString());
    QVERIFY(page.error->isHidden());
    QVERIFY(page.checkLeaveCondition());
}

void tst_LvPreferencesMap::browses()
{
    QTemporaryDir folder;
    Page page;
    page.readFromConfig();
    page.choose(Folder, folder.path());
    page.browse->click();
    auto* dialog = page.findChild<QFileDialog*>();
    QVERIFY(dialog != nullptr);
    QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
    Q_EMIT dialog->fileSelected(QStringLiteral("/chosen"));
    QCOMPARE(page.location->text(), QStringLiteral("/chosen"));
    delete dialog;
    page.choose(File);
    page.browse->click();
    dialog = page.findChild<QFileDialog*>();
    QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
    QVERIFY(dialog->nameFilters().first().contains(QStringLiteral("*.mbtiles")));
}

void tst_LvPreferencesMap::accessibility()
{
    Page page;
    for (const Row row : {BuiltIn, None, Folder, File, Url}) {
        page.choose(row);
        QVERIFY(!page.location->accessibleName().isEmpty());
        QVERIFY(!page.location->accessibleName().contains(u'&'));
    }
    QVERIFY(!page.kind->accessibleName().isEmpty());
    QVERIFY(!page.attribution->accessibleName().isEmpty());
    bool isBuddy = false;
    for (const QLabel* label : page.findChildren<QLabel*>()) {
        isBuddy |= label->buddy() == page.location;
    }
    QVERIFY(isBuddy);
}

LV_TEST_MAIN(tst_LvPreferencesMap)
#include "tst_LvPreferencesMap.moc"
