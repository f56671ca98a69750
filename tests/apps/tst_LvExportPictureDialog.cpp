#include "LvExportPictureDialog.h"
#include "LvTest.h"
#include "LvTestTracks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTimer>

using namespace LvTestTracks;

namespace
{

constexpr int patienceMs = 30000;

LvPictureExporter exporterFor(const QString& mapSource = QStringLiteral("none"),
                              const LvGPXTrackSelection& selection = LvGPXTrackSelection(list({"A"})))
{
    return {selection, LvMapView::aroundCenter(LvGeoPosition(51, 9), 5, QSize(400, 300)), mapSource,
            QString()};
}

} // namespace

class tst_LvExportPictureDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void defaults();
    void everythingIsReachable();
    void suffixAndFormat_data();
    void suffixAndFormat();
    void formatChangesTheSuffix();
    void ratio();
    void optionsFollowTheFields();
    void noTracksNoChoice();
    void saves();
    void failureKeepsTheDialogueOpen();
    void needsAName();
    void asksBeforeReplacing_data();
    void asksBeforeReplacing();
    void busyWhileDrawing();

private:
    template <class Widget>
    Widget* field(const char* name) const
    {
        auto* widget = myDialog->findChild<Widget*>(QString::fromLatin1(name));
        if (widget == nullptr) {
            qFatal("no field %s", name);
        }
        return widget;
    }

    void typeName(const QString& name)
    {
        field<QLineEdit>("fileName")->selectAll();
        QTest::keyClicks(field<QLineEdit>("fileName"), name);
    }

    std::unique_ptr<LvExportPictureDialog> myDialog;
    QTemporaryDir myDirectory;
};

void tst_LvExportPictureDialog::init()
{
    myDialog = std::make_unique<LvExportPictureDialog>(exporterFor());
}

void tst_LvExportPictureDialog::cleanup()
{
    myDialog.reset();
}

void tst_LvExportPictureDialog::defaults()
{
    const LvPictureOptions options = myDialog->options();
    QCOMPARE(options.size, QSize(800, 600));
    QCOMPARE(options.paintFactor, 2.0);
    QCOMPARE(options.extent, LvPictureOptions::Extent::Shown);
    QVERIFY(options.hasScaleBar);
    QCOMPARE(myDialog->fileName(), QStringLiteral("Karte.png"));
    QVERIFY(!myDialog->isBusy());
}

void tst_LvExportPictureDialog::everythingIsReachable()
{
    const char* const names[] = {"fileName", "format", "extent", "width", "height", "paintFactor", "browse"};
    for (const char* name : names) {
        QVERIFY2(!field<QWidget>(name)->accessibleName().isEmpty(), name);
        QVERIFY2(field<QWidget>(name)->focusPolicy() & Qt::TabFocus, name);
    }
    for (const QLabel* label : myDialog->findChildren<QLabel*>()) {
        if (label->text().contains(QLatin1Char('&'))) {
            QVERIFY2(label->buddy() != nullptr, qPrintable(label->text()));
        }
    }
}

void tst_LvExportPictureDialog::suffixAndFormat_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("expected");
    QTest::newRow("known suffix") << "/a/b.svg" << 2 << "/a/b.svg";
    QTest::newRow("second suffix of a format") << "/a/b.JPEG" << 1 << "/a/b.JPEG";
    QTest::newRow("no suffix") << "/a/b" << 0 << "/a/b.png";
    QTest::newRow("unknown suffix") << "/a/b.c" << 0 << "/a/b.c.png";
    QTest::newRow("blanks around") << " /a/b.pdf " << 3 << "/a/b.pdf";
    QTest::newRow("nothing") << " " << 0 << "";
}

void tst_LvExportPictureDialog::suffixAndFormat()
{
    QFETCH(QString, typed);
    QFETCH(int, format);
    QFETCH(QString, expected);
    typeName(typed);
    QCOMPARE(field<QComboBox>("format")->currentIndex(), format);
    QCOMPARE(myDialog->fileName(), expected);
    myDialog->setFileName(typed);
    QCOMPARE(field<QComboBox>("format")->currentIndex(), format);
}

void tst_LvExportPictureDialog::formatChangesTheSuffix()
{
    myDialog->setFileName(QStringLiteral("/a.b/c.d.png"));
    auto* format = field<QComboBox>("format");
    format->setFocus();
    QTest::keyClick(format, Qt::Key_End);
    QCOMPARE(format->currentIndex(), 3);
    QCOMPARE(myDialog->fileName(), QStringLiteral("/a.b/c.d.pdf"));
    myDialog->setFileName(QStringLiteral("/a.b/c"));
    QTest::keyClick(format, Qt::Key_Home);
    QCOMPARE(myDialog->fileName(), QStringLiteral("/a.b/c.png"));
    QCOMPARE(field<QLineEdit>("fileName")->text(), QStringLiteral("/a.b/c"));
}

void tst_LvExportPictureDialog::ratio()
{
    auto* width = field<QSpinBox>("width");
    auto* height = field<QSpinBox>("height");
    width->setValue(1000);
    QCOMPARE(height->value(), 750);
    height->setValue(300);
    QCOMPARE(width->value(), 400);
    height->setValue(LvExportPictureDialog::largestSide);
    QCOMPARE(width->value(), LvExportPictureDialog::largestSide);
    field<QCheckBox>("keepsRatio")->setChecked(false);
    width->setValue(500);
    height->setValue(100);
    QCOMPARE(width->value(), 500);
    field<QCheckBox>("keepsRatio")->setChecked(true); // the present one
    width->setValue(1000);
    QCOMPARE(height->value(), 200);
}

void tst_LvExportPictureDialog::optionsFollowTheFields()
{
    field<QSpinBox>("width")->setValue(1200);
    field<QDoubleSpinBox>("paintFactor")->setValue(0.5);
    field<QComboBox>("extent")->setCurrentIndex(1);
    field<QCheckBox>("scaleBar")->setChecked(false);
    const LvPictureOptions options = myDialog->options();
    QCOMPARE(options.size, QSize(1200, 900));
    QCOMPARE(options.paintFactor, 0.5);
    QCOMPARE(options.extent, LvPictureOptions::Extent::AllTracks);
    QVERIFY(!options.hasScaleBar);
}

void tst_LvExportPictureDialog::noTracksNoChoice()
{
    QCOMPARE(field<QComboBox>("extent")->count(), 2);
    myDialog = std::make_unique<LvExportPictureDialog>(exporterFor("none", LvGPXTrackSelection()));
    QCOMPARE(field<QComboBox>("extent")->count(), 1);
}

void tst_LvExportPictureDialog::saves()
{
    const QString name = myDirectory.filePath("saved.png");
    myDialog->setFileName(name);
    myDialog->show();
    QSignalSpy accepted(myDialog.get(), &QDialog::accepted);
    field<QSpinBox>("width")->setValue(320);
    auto* buttons = myDialog->findChild<QDialogButtonBox*>();
    QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    QVERIFY(accepted.wait(patienceMs));
    QCOMPARE(QImage(name).size(), QSize(320, 240));
    QVERIFY(!myDialog->isVisible());
}

void tst_LvExportPictureDialog::failureKeepsTheDialogueOpen()
{
    myDialog->setFileName(myDirectory.filePath("no/such/a.png"));
    myDialog->show();
    QSignalSpy accepted(myDialog.get(), &QDialog::accepted);
    myDialog->accept();
    QTRY_VERIFY_WITH_TIMEOUT(!myDialog->isBusy(), patienceMs);
    QCOMPARE(accepted.count(), 0);
    QVERIFY(myDialog->isVisible());
    QVERIFY(field<QLabel>("message")->isVisible());
    QVERIFY(field<QLabel>("message")->text().startsWith(QStringLiteral("Das Bild „")));
    // The next attempt may succeed.
    myDialog->setFileName(myDirectory.filePath("second.png"));
    myDialog->accept();
    QVERIFY(accepted.wait(patienceMs));
}

void tst_LvExportPictureDialog::needsAName()
{
    myDialog->show();
    typeName(QStringLiteral(" "));
    myDialog->accept();
    QVERIFY(!myDialog->isBusy());
    QVERIFY(myDialog->isVisible());
    QCOMPARE(field<QLabel>("message")->text(), QStringLiteral("Das Bild braucht einen Dateinamen."));
}

void tst_LvExportPictureDialog::asksBeforeReplacing_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("yes") << static_cast<int>(QMessageBox::Yes) << true;
    QTest::newRow("no") << static_cast<int>(QMessageBox::No) << false;
}

void tst_LvExportPictureDialog::asksBeforeReplacing()
{
    QFETCH(int, answer);
    QFETCH(bool, isReplaced);
    const QString name = myDirectory.filePath("old.png");
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    myDialog->setFileName(name);
    myDialog->show();
    bool isAsked = false;
    QTimer::singleShot(0, myDialog.get(), [&] {
        auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(question != nullptr);
        isAsked = true;
        question->button(static_cast<QMessageBox::StandardButton>(answer))->click();
    });
    myDialog->accept();
    QVERIFY(isAsked);
    QTRY_VERIFY_WITH_TIMEOUT(!myDialog->isBusy(), patienceMs);
    QCOMPARE(!QImage(name).isNull(), isReplaced);
    QCOMPARE(myDialog->isVisible(), !isReplaced);
}

void tst_LvExportPictureDialog::busyWhileDrawing()
{
    myDialog = std::make_unique<LvExportPictureDialog>(exporterFor("builtin"));
    myDialog->setFileName(myDirectory.filePath("busy.png"));
    myDialog->show();
    QSignalSpy accepted(myDialog.get(), &QDialog::accepted);
    myDialog->accept();
    QVERIFY(myDialog->isBusy());
    QVERIFY(!field<QWidget>("width")->isEnabled());
    myDialog->reject();
    QVERIFY(myDialog->isVisible());
    myDialog->accept(); // no second picture
    QVERIFY(accepted.wait(patienceMs));
    QTest::qWait(50);
    QCOMPARE(accepted.count(), 1);
}

LV_TEST_MAIN(tst_LvExportPictureDialog)
#include "tst_LvExportPictureDialog.moc"
