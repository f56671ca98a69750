#include "LvRequestDiskAccess.h"
#include "LvTest.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <memory>

namespace
{

/// Waits for the file dialog and hands it to the function, on which it has to close.
template <class Function>
void whenDialogOpens(Function function)
{
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, function] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog != nullptr) {
            timer->deleteLater();
            timer->stop();
            function(dialog);
        }
    });
    timer->start(20);
}

} // namespace

class tst_LvRequestDiskAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void oneInstance();
    void nameFilters_data();
    void nameFilters();
    void askerGetsTheQuestion();
    void askerCancels();
    void unknownMode_data();
    void unknownMode();
    void dialogLooksAsAsked();
    void dialogReturnsTheFile();
    void dialogCancelled();
    void emptyAskerBringsDialogBack();
    void otherThreadGetsNoDialog();
};

void tst_LvRequestDiskAccess::cleanup()
{
    LvRequestDiskAccess::instance()->setAsker({});
}

void tst_LvRequestDiskAccess::oneInstance()
{
    QVERIFY(LvRequestDiskAccess::instance() != nullptr);
    QCOMPARE(LvRequestDiskAccess::instance(), LvRequestDiskAccess::instance());
}

void tst_LvRequestDiskAccess::nameFilters_data()
{
    QTest::addColumn<QString>("patterns");
    QTest::addColumn<QString>("expected");
    QTest::newRow("several") << "*.gpx *.kml *.kmz"
                             << "Unterstützte Dateien (*.gpx *.kml *.kmz);;Alle Dateien (*)";
    QTest::newRow("one") << "*.gpx"
                         << "Unterstützte Dateien (*.gpx);;Alle Dateien (*)";
    QTest::newRow("extra blanks") << "  *.gpx   *.kml "
                                  << "Unterstützte Dateien (*.gpx *.kml);;Alle Dateien (*)";
    QTest::newRow("none") << ""
                          << "Alle Dateien (*)";
    QTest::newRow("blanks only") << "  "
                                 << "Alle Dateien (*)";
    QTest::newRow("with a label") << "Tracks (*.gpx)"
                                  << "Tracks (*.gpx);;Alle Dateien (*)";
    QTest::newRow("several with labels") << "A (*.a);;B (*.b)"
                                         << "A (*.a);;B (*.b);;Alle Dateien (*)";
}

void tst_LvRequestDiskAccess::nameFilters()
{
    QFETCH(QString, patterns);
    QFETCH(QString, expected);
    QCOMPARE(LvRequestDiskAccess::nameFilters(patterns), expected);
}

void tst_LvRequestDiskAccess::askerGetsTheQuestion()
{
    QStringList question;
    LvRequestDiskAccess::instance()->setAsker(
        [&question](const QString& title, const QString& filters, const QString& directory) {
            question = QStringList{title, filters, directory};
            return QString("/tmp/Tour.gpx");
        });
    QCOMPARE(LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", "/start"),
             QString("/tmp/Tour.gpx"));
    QCOMPARE(question,
             QStringList({"Datei öffnen", "Unterstützte Dateien (*.gpx);;Alle Dateien (*)", "/start"}));
}

void tst_LvRequestDiskAccess::askerCancels()
{
    LvRequestDiskAccess::instance()->setAsker([](const QString& /*title*/, const QString& /*filters*/,
                                                 const QString& /*directory*/) { return QString(); });
    QVERIFY(
        LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", QString()).isEmpty());
}

void tst_LvRequestDiskAccess::unknownMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("0") << 0;
    QTest::newRow("2") << 2;
    QTest::newRow("negative") << -1;
}

void tst_LvRequestDiskAccess::unknownMode()
{
    QFETCH(int, mode);
    bool isAsked = false;
    LvRequestDiskAccess::instance()->setAsker(
        [&isAsked](const QString& /*title*/, const QString& /*filters*/, const QString& /*directory*/) {
            isAsked = true;
            return QString("/tmp/Tour.gpx");
        });
    QVERIFY(
        LvRequestDiskAccess::instance()->getOpenFileName(mode, "*.gpx", "Datei öffnen", QString()).isEmpty());
    QVERIFY(!isAsked);
}

void tst_LvRequestDiskAccess::dialogLooksAsAsked()
{
    const QTemporaryDir directory;
    QString title;
    QStringList filters;
    QString start;
    QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptSave;
    whenDialogOpens([&](QFileDialog* dialog) {
        title = dialog->windowTitle();
        filters = dialog->nameFilters();
        start = dialog->directory().absolutePath();
        fileMode = dialog->fileMode();
        acceptMode = dialog->acceptMode();
        dialog->reject();
    });
    QVERIFY(LvRequestDiskAccess::instance()
                ->getOpenFileName(1, "*.gpx *.kml", "Datei für Route öffnen", directory.path())
                .isEmpty());
    QCOMPARE(title, QString("Datei für Route öffnen"));
    QCOMPARE(filters, QStringList({"Unterstützte Dateien (*.gpx *.kml)", "Alle Dateien (*)"}));
    QCOMPARE(start, directory.path());
    QCOMPARE(fileMode, QFileDialog::ExistingFile);
    QCOMPARE(acceptMode, QFileDialog::AcceptOpen);
}

void tst_LvRequestDiskAccess::dialogReturnsTheFile()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath("Tour.GPX"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    whenDialogOpens([](QFileDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText("Tour.GPX");
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QCOMPARE(LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", directory.path()),
             file.fileName());
}

void tst_LvRequestDiskAccess::dialogCancelled()
{
    whenDialogOpens([](QFileDialog* dialog) { dialog->reject(); });
    QCOMPARE(LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", QString()),
             QString());
}

void tst_LvRequestDiskAccess::emptyAskerBringsDialogBack()
{
    LvRequestDiskAccess::instance()->setAsker(
        [](const QString& /*title*/, const QString& /*filters*/, const QString& /*directory*/) {
            return QString("/tmp/Tour.gpx");
        });
    LvRequestDiskAccess::instance()->setAsker({});
    bool isOpened = false;
    whenDialogOpens([&isOpened](QFileDialog* dialog) {
        isOpened = true;
        dialog->reject();
    });
    QVERIFY(
        LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", QString()).isEmpty());
    QVERIFY(isOpened);
}

void tst_LvRequestDiskAccess::otherThreadGetsNoDialog()
{
    QString answer = "not asked";
    const std::unique_ptr<QThread> thread(QThread::create([&answer] {
        answer = LvRequestDiskAccess::instance()->getOpenFileName(1, "*.gpx", "Datei öffnen", QString());
    }));
    thread->start();
    QVERIFY(thread->wait(10'000));
    QCOMPARE(answer, QString());
}

LV_TEST_MAIN(tst_LvRequestDiskAccess)
#include "tst_LvRequestDiskAccess.moc"
