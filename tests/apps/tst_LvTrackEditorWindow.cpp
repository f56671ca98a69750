#include "LvEditorFiles.h"
#include "LvEditorSettings.h"
#include "LvGPXTrackMultiFunctionDelegateWidget.h"
#include "LvGeoLocationSettings.h"
#include "LvMapWidget.h"
#include "LvMessagePanel.h"
#include "LvTest.h"
#include "LvTrackDetailsPanel.h"
#include "LvTrackEditorWindow.h"
#include "LvTrackListPanel.h"
#include "LvTrackRowsModel.h"
#include "LvTranslations.h"

#include <QAccessible>
#include <QAction>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QSignalSpy>
#include <QSlider>
#include <QStyleFactory>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace
{

constexpr int longTimeout = 60000;

QAction* action(const LvTrackEditorWindow& window, const QString& name)
{
    return window.findChild<QAction*>(name);
}

QUrl sampleUrl(const QString& name)
{
    return QUrl::fromLocalFile(LvTest::sampleFile(name));
}

/// Drops files on the window as a file manager does. Returns whether the window took them.
bool dropFiles(LvTrackEditorWindow& window, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint middle = window.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent drop(QPointF(middle), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    return drop.isAccepted();
}

bool openSamples(LvTrackEditorWindow& window, const QStringList& names)
{
    QSignalSpy opened(&window, &LvTrackEditorWindow::filesOpened);
    QList<QUrl> urls;
    for (const QString& name : names) {
        urls.append(sampleUrl(name));
    }
    return dropFiles(window, urls) && (opened.count() > 0 || opened.wait(longTimeout));
}

QStringList namesOf(const LvTrackEditorWindow& window)
{
    QStringList names;
    const QAbstractItemModel* model = window.trackList()->view()->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        names.append(model->index(row, 0).data().toString());
    }
    return names;
}

QStringList namesOf(const LvGPXTrackSelection& selection)
{
    QStringList names;
    const LvGPXConfiguredTrackList tracks = selection.tracks();
    for (const LvGPXConfiguredTrack& track : tracks) {
        names.append(track.name());
    }
    return names;
}

LvGPXTrackMultiFunctionDelegateWidget* firstRowWidget(const LvTrackEditorWindow& window)
{
    const auto rows = window.trackList()->view()->findChildren<LvGPXTrackMultiFunctionDelegateWidget*>();
    LvGPXTrackMultiFunctionDelegateWidget* first = nullptr;
    for (LvGPXTrackMultiFunctionDelegateWidget* row : rows) {
        if (row->isVisible() && (first == nullptr || row->y() < first->y())) {
            first = row;
        }
    }
    return first;
}

/// Presses a button of the message box that will appear.
void answerNextQuestion(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, [button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        QVERIFY(box->button(button) != nullptr);
        box->button(button)->click();
    });
}

QPalette darkPalette()
{
    QPalette palette(QColor(49, 54, 59), QColor(35, 38, 41));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    return palette;
}

} // namespace

class tst_LvTrackEditorWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void wholeSession();
    void brokenFileStopsNothing();
    void dropOfTextIsRefused();
    void rowsAreDragged();
    void keysMoveRows();
    void deleteByButtonAndUndo();
    void spaceHidesTrack();
    void markButtonHighlights();
    void zoomButtonFitsAndBlinks();
    void fadingFollowsSlider();
    void longTrackIsMeasuredAside();
    void closeAsks();
    void closeWaitsForTheSave();
    void actionsWaitForTheSave();
    void activityIsShown();
    void documentIsOpenedAfterTheSave();
    void everyActionIsReachable();
    void everyWidgetHasAName();
    void pictures_data();
    void pictures();
};

void tst_LvTrackEditorWindow::init()
{
    LvEditorSettings::instance()->setWindowState({});
    LvEditorSettings::instance()->setWindowGeometry({});
    LvEditorSettings::instance()->setMapSource(QStringLiteral("builtin"));
}

void tst_LvTrackEditorWindow::wholeSession()
{
    QTemporaryDir folder;
    const QString documentName = folder.filePath(QStringLiteral("session.lvt"));
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!window.isWindowModified());

    // Drops files.
    QVERIFY(openSamples(window,
                        {QStringLiteral("brocken-hike.gpx"), QStringLiteral("lake-islands.gpx"),
                         QStringLiteral("german-bight.kml"), QStringLiteral("iceland.kmz")}));
    const LvGPXTrackSelection opened = window.document()->selection();
    QVERIFY(opened.count() >= 4);
    QCOMPARE(namesOf(window), namesOf(opened));
    QVERIFY(window.isWindowModified());
    QCOMPARE(window.map()->selection(), opened);

    // Reorders.
    window.trackList()->setCurrentRow(0);
    action(window, QStringLiteral("down"))->trigger();
    LvGPXTrackSelection reordered = opened;
    reordered.moveTrack(0, 1);
    QCOMPARE(window.document()->selection(), reordered);
    QCOMPARE(namesOf(window), namesOf(reordered));
    QCOMPARE(window.trackList()->currentRow(), 1);

    // Styles.
    LvGPXTrackConfiguration style = reordered.configuration(1);
    style.setLineColor(QColor(10, 20, 200, 180));
    style.setLineWidth(LvDistance(7.0));
    window.document()->setConfiguration(1, style);
    QCOMPARE(window.document()->selection().configuration(1).lineColor(), QColor(10, 20, 200, 180));
    QCOMPARE(window.map()->selection(), window.document()->selection());

    // Undoes the deletion of everything.
    const LvGPXTrackSelection styled = window.document()->selection();
    action(window, QStringLiteral("clear"))->trigger();
    QCOMPARE(window.trackList()->rowCount(), 0);
    QVERIFY(!action(window, QStringLiteral("clear"))->isEnabled());
    action(window, QStringLiteral("undo"))->trigger();
    QCOMPARE(window.document()->selection(), styled);
    QCOMPARE(namesOf(window), namesOf(styled));

    // Saves and reopens.
    window.document()->setVisible(0, false);
    window.document()->setCroppingOpacity(77);
    const LvTrackDocumentContent saved = window.document()->content();
    QVERIFY(window.files()->saveTo(documentName));
    QVERIFY(window.files()->waitForDone());
    QVERIFY(!window.isWindowModified());
    QVERIFY(window.windowTitle().startsWith(QStringLiteral("session.lvt")));

    LvTrackEditorWindow second;
    QSignalSpy openedAgain(&second, &LvTrackEditorWindow::filesOpened);
    second.openFiles({documentName});
    QVERIFY(openedAgain.wait(longTimeout));
    QCOMPARE(second.document()->content().visibility, saved.visibility);
    QCOMPARE(second.document()->selection().nominalCroppingOpacity(), 77);
    QCOMPARE(second.document()->selection(), saved.selection);
    QCOMPARE(namesOf(second), namesOf(saved.selection));
    QVERIFY(!second.isWindowModified());
    QCOMPARE(second.map()->selection().count(), saved.selection.count() - 1);
}

void tst_LvTrackEditorWindow::brokenFileStopsNothing()
{
    QTemporaryDir folder;
    QFile broken(folder.filePath(QStringLiteral("broken.gpx")));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("<gpx><trk>");
    broken.close();

    LvTrackEditorWindow window;
    window.show();
    QSignalSpy opened(&window, &LvTrackEditorWindow::filesOpened);
    window.openFiles({broken.fileName(), LvTest::sampleFile(QStringLiteral("brocken-hike.gpx"))});
    QVERIFY(opened.wait(longTimeout));
    QVERIFY(window.document()->selection().isValid());
    QCOMPARE(window.messages()->messages().count(), 1);
    QVERIFY(window.messages()->messages().first().contains(QStringLiteral("broken.gpx")));
    QVERIFY(window.messages()->isVisible());
}

void tst_LvTrackEditorWindow::dropOfTextIsRefused()
{
    LvTrackEditorWindow window;
    QMimeData text;
    text.setText(QStringLiteral("no file"));
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    QVERIFY(!enter.isAccepted());
}

void tst_LvTrackEditorWindow::rowsAreDragged()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window,
                        {QStringLiteral("lake-islands.gpx"), QStringLiteral("date-line.gpx"),
                         QStringLiteral("brocken-hike.gpx")}));
    window.document()->setVisible(0, false);
    const LvTrackDocumentContent before = window.document()->content();
    const int last = static_cast<int>(before.selection.count()) - 1;
    QVERIFY(last >= 2);

    QAbstractItemModel* model = window.trackList()->view()->model();
    // Both columns are selected; the row must stand once in what is dragged.
    window.trackList()->view()->selectRow(0);
    QModelIndexList dragged;
    const QModelIndexList selected = window.trackList()->view()->selectionModel()->selectedIndexes();
    for (const QModelIndex& index : selected) {
        if (index.flags().testFlag(Qt::ItemIsDragEnabled)) {
            dragged.append(index);
        }
    }
    QCOMPARE(dragged.count(), 1);
    const std::unique_ptr<QMimeData> data(model->mimeData(dragged));
    QVERIFY(model->dropMimeData(data.get(), Qt::MoveAction, -1, -1, model->index(last, 0)));

    LvGPXTrackSelection expected = before.selection;
    expected.moveTrack(0, last);
    QCOMPARE(window.document()->selection(), expected);
    QCOMPARE(namesOf(window), namesOf(expected));
    QCOMPARE(window.trackList()->currentRow(), last);
    QVERIFY(!window.document()->isVisible(last)); // goes with its track
    QVERIFY(window.document()->isVisible(0));
    window.document()->undoStack()->undo();
    QCOMPARE(window.document()->content(), before);
    QCOMPARE(namesOf(window), namesOf(before.selection));
}

void tst_LvTrackEditorWindow::keysMoveRows()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(openSamples(window,
                        {QStringLiteral("lake-islands.gpx"), QStringLiteral("date-line.gpx"),
                         QStringLiteral("brocken-hike.gpx")}));
    const LvGPXTrackSelection before = window.document()->selection();
    window.trackList()->setCurrentRow(1);
    window.trackList()->view()->setFocus();
    QTest::keyClick(window.trackList()->view(), Qt::Key_Up, Qt::AltModifier);
    LvGPXTrackSelection expected = before;
    expected.moveTrack(1, 0);
    QCOMPARE(window.document()->selection(), expected);
    QCOMPARE(window.trackList()->currentRow(), 0);
    QTest::keyClick(window.trackList()->view(), Qt::Key_Up, Qt::AltModifier); // at the top already
    QCOMPARE(window.document()->selection(), expected);
    QTest::keyClick(window.trackList()->view(), Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(window.document()->selection(), before);
    QCOMPARE(window.trackList()->currentRow(), 1);
}

void tst_LvTrackEditorWindow::deleteByButtonAndUndo()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window, {QStringLiteral("lake-islands.gpx"), QStringLiteral("brocken-hike.gpx")}));
    const LvGPXTrackSelection before = window.document()->selection();
    QTRY_VERIFY(firstRowWidget(window) != nullptr); // rows get their widgets when they are painted
    const QList<QToolButton*> buttons = firstRowWidget(window)->findChildren<QToolButton*>();
    QCOMPARE(buttons.count(), 4); // the second one of a row removes it
    QTest::mouseClick(buttons.at(1), Qt::LeftButton);
    QTRY_COMPARE(window.document()->selection().count(), before.count() - 1);
    LvGPXTrackSelection expected = before;
    expected.removeAt(0);
    QCOMPARE(window.document()->selection(), expected);
    action(window, QStringLiteral("undo"))->trigger();
    QCOMPARE(window.document()->selection(), before);
    QCOMPARE(namesOf(window), namesOf(before));
}

void tst_LvTrackEditorWindow::spaceHidesTrack()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window, {QStringLiteral("lake-islands.gpx"), QStringLiteral("brocken-hike.gpx")}));
    QAbstractItemModel* model = window.trackList()->view()->model();
    const QModelIndex box = model->index(0, LvTrackRowsModel::visibilityColumn);
    QCOMPARE(box.data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
    window.trackList()->view()->setCurrentIndex(box);
    QTest::keyClick(window.trackList()->view(), Qt::Key_Space);
    QVERIFY(!window.document()->isVisible(0));
    QCOMPARE(box.data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Unchecked));
    QCOMPARE(window.map()->selection().count(), window.document()->selection().count() - 1);
    window.document()->undoStack()->undo();
    QVERIFY(window.document()->isVisible(0));
    QCOMPARE(box.data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
}

void tst_LvTrackEditorWindow::markButtonHighlights()
{
    LvTrackEditorWindow window;
    QVERIFY(openSamples(window, {QStringLiteral("lake-islands.gpx"), QStringLiteral("brocken-hike.gpx")}));
    const int last = static_cast<int>(window.document()->selection().count()) - 1;
    QCOMPARE(window.map()->highlightedRow(), -1);
    Q_EMIT window.trackList()->markRequested(last);
    QCOMPARE(window.map()->highlightedRow(), last);
    window.document()->setVisible(0, false);
    QCOMPARE(window.map()->highlightedRow(), last - 1); // the map counts the tracks it shows
    Q_EMIT window.trackList()->markRequested(last);
    QCOMPARE(window.map()->highlightedRow(), -1);
}

void tst_LvTrackEditorWindow::zoomButtonFitsAndBlinks()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(openSamples(window, {QStringLiteral("lake-islands.gpx"), QStringLiteral("brocken-hike.gpx")}));
    const int row = static_cast<int>(window.document()->selection().count()) - 1;
    Q_EMIT window.trackList()->zoomRequested(row);
    const LvGeoPositionRect box = window.document()->selection().value(row).boundingBox();
    QVERIFY(box.contains(window.map()->center()));
    const QRectF shown(QPointF(0, 0), QSizeF(window.map()->size()));
    QVERIFY(shown.contains(window.map()->pointOf(box.northWest())));
    QVERIFY(shown.contains(window.map()->pointOf(box.southEast())));
}

void tst_LvTrackEditorWindow::fadingFollowsSlider()
{
    LvTrackEditorWindow window;
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    auto* slider = window.findChild<QSlider*>(QStringLiteral("croppingOpacity"));
    QVERIFY(slider != nullptr);
    slider->setValue(200);
    slider->setValue(120);
    QCOMPARE(window.map()->selection().effectiveCroppingOpacity(), 120);
    window.document()->undoStack()->undo(); // one step for one movement of the slider
    QCOMPARE(window.document()->selection().nominalCroppingOpacity(), 255);
    QCOMPARE(slider->value(), 255);
}

void tst_LvTrackEditorWindow::longTrackIsMeasuredAside()
{
    LvTrackEditorWindow window;
    auto* details = window.findChild<LvTrackDetailsPanel*>();
    QVERIFY(details != nullptr);
    QVERIFY(!details->widget()->isEnabled());
    QList<LvGPXTrackPoint> points;
    const QDateTime start(QDate(2024, 6, 15), QTime(8, 0), Qt::UTC);
    constexpr int count = 30000;
    for (int i = 0; i < count; ++i) {
        points.append(LvGPXTrackPoint(LvGeoPosition(50.0 + i * 1e-5, 8.0), 100, start.addSecs(i), QString()));
    }
    const LvGPXTrack longTrack(QStringLiteral("long"), QString(), {LvGPXTrackSegment(points)},
                               LvGPXTrackShape(4));
    window.document()->addTracks(LvGPXConfiguredTrack(longTrack, LvGPXTrackConfiguration::defaultValue()));
    QVERIFY(!details->widget()->isEnabled()); // not known yet
    QTRY_VERIFY_WITH_TIMEOUT(details->widget()->isEnabled(), longTimeout);
    window.document()->clear();
    QVERIFY(!details->widget()->isEnabled());
}

void tst_LvTrackEditorWindow::closeAsks()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    answerNextQuestion(QMessageBox::Cancel);
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    answerNextQuestion(QMessageBox::Discard);
    QVERIFY(window.close());
}

void tst_LvTrackEditorWindow::closeWaitsForTheSave()
{
    QTemporaryDir folder;
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    QVERIFY(window.files()->saveTo(folder.filePath(QStringLiteral("a.lvt"))));
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), longTimeout); // and nobody was asked
    QVERIFY(QFileInfo::exists(folder.filePath(QStringLiteral("a.lvt"))));

    // Answering that it shall be saved is the same.
    window.show();
    window.document()->setCroppingOpacity(99);
    answerNextQuestion(QMessageBox::Save);
    QVERIFY(!window.close());
    QTRY_VERIFY_WITH_TIMEOUT(!window.isVisible(), longTimeout);
    QVERIFY(!window.document()->isModified());

    // What is changed while it is saved is asked for again.
    window.show();
    QVERIFY(window.files()->save());
    QVERIFY(!window.close());
    window.document()->setCroppingOpacity(98);
    answerNextQuestion(QMessageBox::Cancel);
    QVERIFY(window.files()->waitForDone());
    QVERIFY(window.isVisible());
    QVERIFY(window.document()->isModified());
}

void tst_LvTrackEditorWindow::actionsWaitForTheSave()
{
    QTemporaryDir folder;
    LvTrackEditorWindow window;
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    const QStringList names = {QStringLiteral("new"),       QStringLiteral("open"),
                               QStringLiteral("save"),      QStringLiteral("saveAs"),
                               QStringLiteral("exportGpx"), QStringLiteral("exportGeoJson")};
    const auto areEnabled = [&](bool expected) {
        return std::all_of(names.cbegin(), names.cend(), [&](const QString& name) {
            return action(window, name)->isEnabled() == expected;
        });
    };
    QVERIFY(areEnabled(true));
    QVERIFY(window.files()->saveTo(folder.filePath(QStringLiteral("a.lvt"))));
    QVERIFY(areEnabled(false));
    QVERIFY(action(window, QStringLiteral("delete"))->isEnabled()); // tracks may be changed meanwhile
    window.document()->setCroppingOpacity(9);
    QVERIFY(areEnabled(false));
    QVERIFY(window.files()->waitForDone());
    QVERIFY(areEnabled(true));
    QVERIFY(window.isWindowModified());
}

void tst_LvTrackEditorWindow::activityIsShown()
{
    QTemporaryDir folder;
    LvTrackEditorWindow window;
    window.show();
    auto* label = window.findChild<QLabel*>(QStringLiteral("activity"));
    QVERIFY(label != nullptr);
    QVERIFY(!label->isVisible());
    // As long as this lasts: the signal stands for work that takes any time.
    Q_EMIT window.files()->activityChanged(QStringLiteral("Das dauert."));
    QVERIFY(!label->isVisible());
    QTRY_VERIFY_WITH_TIMEOUT(label->isVisible(), longTimeout);
    QCOMPARE(label->text(), QStringLiteral("Das dauert."));
    Q_EMIT window.files()->activityChanged(QString());
    QVERIFY(!label->isVisible());
}

void tst_LvTrackEditorWindow::documentIsOpenedAfterTheSave()
{
    QTemporaryDir folder;
    const QString first = folder.filePath(QStringLiteral("first.lvt"));
    const QString second = folder.filePath(QStringLiteral("second.lvt"));
    LvTrackEditorWindow window;
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    QVERIFY(window.files()->saveTo(first) && window.files()->waitForDone());
    QVERIFY(openSamples(window, {QStringLiteral("iceland.kmz")}));
    const LvGPXTrackSelection both = window.document()->selection();
    QVERIFY(window.files()->saveTo(second));
    QSignalSpy opened(&window, &LvTrackEditorWindow::filesOpened);
    QVERIFY(dropFiles(window, {QUrl::fromLocalFile(first)}));
    QTRY_COMPARE_WITH_TIMEOUT(opened.count(), 1, longTimeout);
    QCOMPARE(window.document()->fileName(), first);
    QCOMPARE(namesOf(window), namesOf(window.document()->selection()));
    QVERIFY(window.document()->selection().count() < both.count());
    window.openFiles({second});
    QVERIFY(opened.wait(longTimeout));
    QCOMPARE(window.document()->selection(), both);
}

void tst_LvTrackEditorWindow::everyActionIsReachable()
{
    LvTrackEditorWindow window;
    QSet<QAction*> inMenus;
    QSet<QKeySequence> shortcuts;
    const QList<QMenu*> menus = window.menuBar()->findChildren<QMenu*>();
    for (const QMenu* menu : menus) {
        QSet<QChar> mnemonics;
        const QList<QAction*> actions = menu->actions();
        for (QAction* entry : actions) {
            inMenus.insert(entry);
            if (entry->isSeparator()) {
                continue;
            }
            QVERIFY2(!entry->text().isEmpty(), qPrintable(menu->title()));
            const qsizetype mark = entry->text().indexOf(QLatin1Char('&'));
            if (mark >= 0) {
                const QChar mnemonic = entry->text().at(mark + 1).toLower();
                QVERIFY2(!mnemonics.contains(mnemonic), qPrintable(entry->text()));
                mnemonics.insert(mnemonic);
            }
            const QList<QKeySequence> keys = entry->shortcuts();
            for (const QKeySequence& key : keys) {
                QVERIFY2(!shortcuts.contains(key), qPrintable(key.toString()));
                shortcuts.insert(key);
            }
        }
    }
    for (const char* name :
         {"new",       "open",          "save",    "saveAs",     "exportGpx", "exportGeoJson", "picture",
          "print",     "printPreview",  "quit",    "undo",       "redo",      "clear",         "preferences",
          "fit-track", "toggleVisible", "rename",  "up",         "down",      "delete",        "beeline",
          "zoom-in",   "zoom-out",      "fit-all", "fullScreen", "help",      "about",         "aboutQt"}) {
        QVERIFY2(inMenus.contains(action(window, QLatin1String(name))), name);
    }
}

void tst_LvTrackEditorWindow::everyWidgetHasAName()
{
    LvTrackEditorWindow window;
    window.show();
    QVERIFY(openSamples(window, {QStringLiteral("brocken-hike.gpx")}));
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets) {
        if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0
            || widget->objectName().startsWith(QStringLiteral("qt_"))) {
            continue;
        }
        QAccessibleInterface* accessible =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        QVERIFY(accessible != nullptr);
        QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(),
                 qPrintable(QStringLiteral("%1 %2 in %3")
                                .arg(QLatin1String(widget->metaObject()->className()), widget->objectName(),
                                     QLatin1String(widget->parentWidget()->metaObject()->className()))));
    }
}

void tst_LvTrackEditorWindow::pictures_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<QString>("fileMenu");
    const QLocale german(QLocale::German);
    const QLocale english(QLocale::English);
    QTest::newRow("editor-german-light") << german << false << QStringLiteral("&Datei");
    QTest::newRow("editor-german-dark") << german << true << QStringLiteral("&Datei");
    QTest::newRow("editor-english-light") << english << false << QStringLiteral("&File");
    QTest::newRow("editor-english-dark") << english << true << QStringLiteral("&File");
}

// With LV_SCREENSHOTS=<folder> in the environment the pictures are kept there.
void tst_LvTrackEditorWindow::pictures()
{
    QFETCH(QLocale, locale);
    QFETCH(bool, isDark);
    QFETCH(QString, fileMenu);
    QLocale::setDefault(locale);
    LvTranslations::install(locale);
    LvTranslations::install(locale, QStringLiteral("LvAppsCommon"));
    LvTranslations::install(locale, QStringLiteral("lvtrackeditor"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(isDark ? darkPalette() : QPalette(QColor(239, 240, 241)));

    LvTrackEditorWindow window;
    QCOMPARE(window.menuBar()->actions().first()->text(), fileMenu);
    window.resize(1440, 900);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(openSamples(window,
                        {QStringLiteral("german-bight.kml"), QStringLiteral("weser-route.gpx"),
                         QStringLiteral("lake-islands.gpx"), QStringLiteral("brocken-hike.gpx")}));
    window.trackList()->setCurrentRow(window.trackList()->rowCount() - 1);
    QTRY_VERIFY_WITH_TIMEOUT(!window.map()->isRendering(), longTimeout);
    const QImage picture = window.grab().toImage();
    const QColor background = picture.pixelColor(4, picture.height() - 4);
    QCOMPARE(background.lightness() < 128, isDark);
    const QString folder = qEnvironmentVariable("LV_SCREENSHOTS");
    if (!folder.isEmpty()) {
        QVERIFY(picture.save(
            QDir(folder).filePath(QLatin1String(QTest::currentDataTag()) + QStringLiteral(".png"))));
    }
}

LV_TEST_MAIN(tst_LvTrackEditorWindow)

#include "tst_LvTrackEditorWindow.moc"
