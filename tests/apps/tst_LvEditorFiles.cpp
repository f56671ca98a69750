#include "LvEditorFiles.h"
#include "LvGPXTrackConfiguration.h"
#include "LvMapWidget.h"
#include "LvRecentFiles.h"
#include "LvTest.h"
#include "LvTestTracks.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <memory>

using namespace LvTestTracks;

namespace
{

constexpr int longTimeout = 120000;

/// Presses a button of the message box that will appear, and remembers its text.
void answerNextQuestion(QMessageBox::StandardButton button, QString* text = nullptr)
{
    QTimer::singleShot(0, [button, text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            answerNextQuestion(button, text); // not there yet
            return;
        }
        if (text != nullptr) {
            *text = box->text();
        }
        QVERIFY(box->button(button) != nullptr);
        box->button(button)->click();
    });
}

/// Many tracks, so that reading and writing take a while.
LvGPXConfiguredTrackList manyTracks()
{
    LvGPXConfiguredTrackList tracks;
    for (int number = 0; number < 100; ++number) {
        QList<LvGPXTrackPoint> points;
        for (int index = 0; index < 600; ++index) {
            points.append(point(50 + index * 0.0011, 8 + number * 0.0013, index,
                                utc("2023-06-01T10:00:00Z").addSecs(index)));
        }
        tracks.append(LvGPXConfiguredTrack(line(QString::number(number), points),
                                           LvGPXTrackConfiguration::defaultValue()));
    }
    return tracks;
}

/// How long the user interface waited while something was going on.
struct Stall {
    qint64 longest = 0; // milliseconds
    qint64 whole = 0;
};

/// Lets a quick timer beat until the signal comes.
Stall beatUntil(QSignalSpy& finished, const std::function<void()>& begin)
{
    Stall stall;
    QElapsedTimer whole;
    QElapsedTimer sinceBeat;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer,
                     [&] { stall.longest = std::max(stall.longest, sinceBeat.restart()); });
    whole.start();
    sinceBeat.start();
    timer.start(1);
    begin();
    if (finished.isEmpty()) {
        finished.wait(longTimeout);
    }
    stall.longest = std::max(stall.longest, sinceBeat.elapsed());
    stall.whole = whole.elapsed();
    return stall;
}

} // namespace

class tst_LvEditorFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void savesAndOpensAside();
    void savesWhatStoodThere();
    void undoneChangesDoNotCountAsSaved();
    void failedSaveLeavesModified_data();
    void failedSaveLeavesModified();
    void oneAfterTheOther();
    void closingWaitsForTheSave();
    void closingIsForgottenWhenTheSaveFails();
    void savingBeforeClosing();
    void failedOpenLeavesTheDocument();
    void changedWhileOpening_data();
    void changedWhileOpening();
    void openingIsGivenUp();
    void lastOpeningCounts();
    void endWaitsForTheSave();

private:
    [[nodiscard]] QString path(const QString& name) const { return myDirectory->filePath(name); }

    [[nodiscard]] LvGPXTrackSelection saved(const QString& name) const
    {
        return LvTrackDocumentFile::read(path(name)).content.selection;
    }

    std::unique_ptr<QTemporaryDir> myDirectory;
    std::unique_ptr<QWidget> myWindow;
    std::unique_ptr<LvTrackDocument> myDocument;
    LvRecentFiles* myRecentFiles = nullptr;
    LvEditorFiles* myFiles = nullptr;
};

void tst_LvEditorFiles::init()
{
    myDirectory = std::make_unique<QTemporaryDir>();
    QVERIFY(myDirectory->isValid());
    myDocument = std::make_unique<LvTrackDocument>();
    myWindow = std::make_unique<QWidget>();
    myRecentFiles = new LvRecentFiles(myWindow.get());
    myRecentFiles->clear();
    myFiles =
        new LvEditorFiles(myDocument.get(), new LvMapWidget(myWindow.get()), myRecentFiles, myWindow.get());
}

void tst_LvEditorFiles::cleanup()
{
    myWindow.reset();
    myDocument.reset();
}

void tst_LvEditorFiles::savesAndOpensAside()
{
    myDocument->addTracks(manyTracks());
    const LvTrackDocumentContent content = myDocument->content();
    QSignalSpy written(myFiles, &LvEditorFiles::written);
    const Stall saving = beatUntil(written, [this] { QVERIFY(myFiles->saveTo(path("a.lvt"))); });
    QCOMPARE(written.count(), 1);
    QVERIFY(!myDocument->isModified());
    QCOMPARE(myDocument->fileName(), path("a.lvt"));
    QCOMPARE(myRecentFiles->fileNames(), QStringList{path("a.lvt")});

    myFiles->startNew();
    QVERIFY(myDocument->selection().isEmpty());
    QSignalSpy opened(myFiles, &LvEditorFiles::openingFinished);
    const Stall opening = beatUntil(opened, [this] { QVERIFY(myFiles->open(path("a.lvt"))); });
    QCOMPARE(opened, QList<QList<QVariant>>{{true}});
    QVERIFY(myDocument->content() == content);
    QVERIFY(!myDocument->isModified());
    qInfo("saving: %lld of %lld ms, opening: %lld of %lld ms", saving.longest, saving.whole, opening.longest,
          opening.whole);
    // When the work is done in this thread, the longest gap is nearly as long as the whole.
    QVERIFY(saving.longest < saving.whole / 2);
    QVERIFY(opening.longest < opening.whole / 2);
}

void tst_LvEditorFiles::savesWhatStoodThere()
{
    myDocument->addTracks(list({"A", "B"}));
    const LvTrackDocumentContent before = myDocument->content();
    QVERIFY(myFiles->saveTo(path("a.lvt")));
    QVERIFY(myFiles->isBusy());
    myDocument->addTracks(list({"C"}));
    QVERIFY(myFiles->waitForDone());
    QVERIFY(myDocument->isModified());
    QCOMPARE(myDocument->fileName(), path("a.lvt"));
    QCOMPARE(saved("a.lvt"), before.selection);
    QVERIFY(myFiles->save());
    QVERIFY(myFiles->waitForDone());
    QVERIFY(!myDocument->isModified());
    QCOMPARE(saved("a.lvt"), myDocument->selection());

    // A change that has been undone until then is none.
    QVERIFY(myFiles->save());
    myDocument->removeTrack(0);
    myDocument->undoStack()->undo();
    QVERIFY(myFiles->waitForDone());
    QVERIFY(!myDocument->isModified());
}

void tst_LvEditorFiles::undoneChangesDoNotCountAsSaved()
{
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    myDocument->addTracks(list({"B"}));
    QVERIFY(myFiles->save());
    myDocument->addTracks(list({"C"}));
    QVERIFY(myFiles->waitForDone());
    QCOMPARE(names(saved("a.lvt").tracks()), QStringLiteral("A B"));
    // Back at what the first save wrote, which is not in the file any more.
    myDocument->undoStack()->undo();
    myDocument->undoStack()->undo();
    QCOMPARE(names(myDocument->selection().tracks()), QStringLiteral("A"));
    QVERIFY(myDocument->isModified());
}

void tst_LvEditorFiles::failedSaveLeavesModified_data()
{
    QTest::addColumn<bool>("isModified");
    QTest::newRow("changed") << true;
    QTest::newRow("unchanged, under another name") << false;
}

void tst_LvEditorFiles::failedSaveLeavesModified()
{
    QFETCH(bool, isModified);
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    if (isModified) {
        myDocument->addTracks(list({"B"}));
    }
    QSignalSpy written(myFiles, &LvEditorFiles::written);
    QVERIFY(myFiles->saveTo(path("no/such/folder/b.lvt")));
    QString text;
    answerNextQuestion(QMessageBox::Ok, &text);
    QVERIFY(!myFiles->waitForDone());
    QVERIFY2(text.contains(QStringLiteral("Den Ordner")), qPrintable(text));
    QVERIFY(written.isEmpty());
    QCOMPARE(myDocument->isModified(), isModified);
    QCOMPARE(myDocument->fileName(), path("a.lvt"));
    QCOMPARE(myRecentFiles->fileNames(), QStringList{path("a.lvt")});
    QCOMPARE(names(saved("a.lvt").tracks()), QStringLiteral("A"));
    QVERIFY(!myFiles->isBusy());
}

void tst_LvEditorFiles::oneAfterTheOther()
{
    QSignalSpy activities(myFiles, &LvEditorFiles::activityChanged);
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")));
    QVERIFY(!myFiles->saveTo(path("b.lvt")));
    QVERIFY(!myFiles->open(path("a.lvt")));
    QCOMPARE(activities.count(), 1);
    QCOMPARE(activities.at(0).at(0).toString(), QStringLiteral("Das Dokument „a.lvt“ wird gespeichert…"));
    QVERIFY(myFiles->waitForDone());
    QCOMPARE(activities.count(), 2);
    QCOMPARE(activities.at(1).at(0).toString(), QString());
    QVERIFY(!QFileInfo::exists(path("b.lvt")));
    QVERIFY(myFiles->open(path("a.lvt")));
    QVERIFY(!myFiles->saveTo(path("b.lvt")));
    QCOMPARE(activities.at(2).at(0).toString(), QStringLiteral("Das Dokument „a.lvt“ wird geöffnet…"));
    QVERIFY(myFiles->waitForDone());
    QVERIFY(!QFileInfo::exists(path("b.lvt")));
    // Nothing comes late.
    QCoreApplication::processEvents();
    QCOMPARE(activities.count(), 4);
}

void tst_LvEditorFiles::closingWaitsForTheSave()
{
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")));
    int calls = 0;
    QVERIFY(!myFiles->confirmLosingChanges([&] {
        ++calls;
        QVERIFY(myFiles->confirmLosingChanges({}));
    }));
    QCOMPARE(calls, 0);
    QTRY_COMPARE_WITH_TIMEOUT(calls, 1, longTimeout);
    QVERIFY(QFileInfo::exists(path("a.lvt")));
}

void tst_LvEditorFiles::closingIsForgottenWhenTheSaveFails()
{
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("no/a.lvt")));
    int calls = 0;
    QVERIFY(!myFiles->confirmLosingChanges([&calls] { ++calls; }));
    answerNextQuestion(QMessageBox::Ok);
    QVERIFY(!myFiles->waitForDone());
    // Nor does a later save close the window.
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    QCOMPARE(calls, 0);
}

void tst_LvEditorFiles::savingBeforeClosing()
{
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    myDocument->addTracks(list({"B"}));
    int calls = 0;
    answerNextQuestion(QMessageBox::Save);
    QVERIFY(!myFiles->confirmLosingChanges([&calls] { ++calls; }));
    QVERIFY(myFiles->waitForDone());
    QCOMPARE(calls, 1);
    QCOMPARE(names(saved("a.lvt").tracks()), QStringLiteral("A B"));
    myDocument->addTracks(list({"C"}));
    answerNextQuestion(QMessageBox::Cancel);
    QVERIFY(!myFiles->confirmLosingChanges([&calls] { ++calls; }));
    answerNextQuestion(QMessageBox::Discard);
    QVERIFY(myFiles->confirmLosingChanges([&calls] { ++calls; }));
    QVERIFY(!myFiles->isBusy());
    QCOMPARE(calls, 1);
}

void tst_LvEditorFiles::failedOpenLeavesTheDocument()
{
    myDocument->addTracks(list({"A"}));
    const LvTrackDocumentContent before = myDocument->content();
    QSignalSpy opened(myFiles, &LvEditorFiles::openingFinished);
    QVERIFY(myFiles->open(path("missing.lvt")));
    QString text;
    answerNextQuestion(QMessageBox::Ok, &text);
    QVERIFY(!myFiles->waitForDone());
    QVERIFY2(text.contains(QStringLiteral("missing.lvt")), qPrintable(text));
    QCOMPARE(opened, QList<QList<QVariant>>{{false}});
    QVERIFY(myDocument->content() == before);
    QVERIFY(myDocument->isModified());
    QVERIFY(myDocument->fileName().isEmpty());
    QVERIFY(myRecentFiles->fileNames().isEmpty());
}

void tst_LvEditorFiles::changedWhileOpening_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::addColumn<QString>("expected");
    QTest::newRow("given up") << QMessageBox::Discard << "X";
    QTest::newRow("kept") << QMessageBox::Cancel << "A B";
    QTest::newRow("saved before") << QMessageBox::Save << "X";
}

void tst_LvEditorFiles::changedWhileOpening()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QFETCH(QString, expected);
    QCOMPARE(LvTrackDocumentFile::write({LvGPXTrackSelection(list({"X"})), {true}}, path("x.lvt"),
                                        LvTrackDocumentFile::TrackStorage::Inline),
             QString());
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    QSignalSpy opened(myFiles, &LvEditorFiles::openingFinished);
    QVERIFY(myFiles->open(path("x.lvt")));
    myDocument->addTracks(list({"B"}));
    answerNextQuestion(answer);
    myFiles->waitForDone();
    QCOMPARE(opened, QList<QList<QVariant>>{{expected == QLatin1String("X")}});
    QCOMPARE(names(myDocument->selection().tracks()), expected);
    QCOMPARE(names(saved("a.lvt").tracks()),
             answer == QMessageBox::Save ? QStringLiteral("A B") : QStringLiteral("A"));
    QCOMPARE(myDocument->isModified(), answer == QMessageBox::Cancel);
}

void tst_LvEditorFiles::openingIsGivenUp()
{
    myDocument->addTracks(list({"A"}));
    QVERIFY(myFiles->saveTo(path("a.lvt")) && myFiles->waitForDone());
    myDocument->addTracks(list({"B"}));
    QSignalSpy opened(myFiles, &LvEditorFiles::openingFinished);
    QVERIFY(myFiles->open(path("a.lvt")));
    QVERIFY(myFiles->isReading());
    myFiles->cancelOpening();
    QVERIFY(!myFiles->isBusy());
    QCOMPARE(opened, QList<QList<QVariant>>{{false}});
    QTest::qWait(50); // the reading ends, and nobody hears of it
    QCOMPARE(names(myDocument->selection().tracks()), QStringLiteral("A B"));
    QVERIFY(myDocument->isModified());
    QCOMPARE(opened.count(), 1);
}

void tst_LvEditorFiles::lastOpeningCounts()
{
    for (const char* name : {"X", "Y"}) {
        QCOMPARE(LvTrackDocumentFile::write({LvGPXTrackSelection(list({name})), {true}},
                                            path(QLatin1String(name)),
                                            LvTrackDocumentFile::TrackStorage::Inline),
                 QString());
    }
    QSignalSpy opened(myFiles, &LvEditorFiles::openingFinished);
    QVERIFY(myFiles->open(path("X")));
    QVERIFY(myFiles->open(path("Y")));
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 2, longTimeout);
    QCOMPARE(opened, (QList<QList<QVariant>>{{false}, {true}}));
    QCOMPARE(names(myDocument->selection().tracks()), QStringLiteral("Y"));
}

void tst_LvEditorFiles::endWaitsForTheSave()
{
    myDocument->addTracks(manyTracks());
    QVERIFY(myFiles->saveTo(path("a.lvt")));
    myWindow.reset();
    QCOMPARE(saved("a.lvt"), myDocument->selection());
}

LV_TEST_MAIN(tst_LvEditorFiles)
#include "tst_LvEditorFiles.moc"
