#include "LvTrackEditorWindow.h"

#include "LvActionIcons.h"
#include "LvBeelineDialog.h"
#include "LvEditorFiles.h"
#include "LvEditorMapMenu.h"
#include "LvEditorSettings.h"
#include "LvGPXTrackSelectionComparisonResult.h"
#include "LvMapWidget.h"
#include "LvMessagePanel.h"
#include "LvPreferencesDialog.h"
#include "LvRecentFiles.h"
#include "LvShortcutsDialog.h"
#include "LvStylePanel.h"
#include "LvTrackBounds.h"
#include "LvTrackDetailsPanel.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackListPanel.h"
#include "LvTrackProfileWidget.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QtConcurrent>

namespace
{

constexpr int messageMilliseconds = 8000;
constexpr int activityDelayMilliseconds = 200; // what is quicker than that is not shown
constexpr QSize defaultSize(1280, 860);
constexpr int quicklyMeasuredPoints = 10000; // a few milliseconds

QList<QUrl> localFiles(const QMimeData* data)
{
    QList<QUrl> urls;
    const QList<QUrl> all = data->urls();
    for (const QUrl& url : all) {
        if (url.isLocalFile()) {
            urls.append(url);
        }
    }
    return urls;
}

} // namespace

LvTrackEditorWindow::LvTrackEditorWindow(QWidget* parent)
    : QMainWindow(parent)
    , myRecentFiles(new LvRecentFiles(this))
    , myMap(new LvMapWidget(this))
    , myFiles(new LvEditorFiles(&myDocument, myMap, myRecentFiles, this))
    , myList(new LvTrackListPanel(this))
    , myStyle(new LvStylePanel(this))
    , myDetails(new LvTrackDetailsPanel(this))
    , myProfile(new LvTrackProfileWidget(this))
    , myMessages(new LvMessagePanel(this))
    , myMapMenu(new LvEditorMapMenu(myMap, this))
{
    setObjectName(QStringLiteral("LvTrackEditorWindow"));
    setAcceptDrops(true);
    setCentralWidget(myMap);
    buildDocks();
    buildStatusBar();
    buildFileMenu();
    buildEditMenu();
    buildTrackMenu();
    buildViewMenu();
    buildHelpMenu();
    buildToolBar();
    connectDocument();
    connectList();
    connectMap();
    connectPanels();
    connectLoading();
    connectFiles();
    restoreLayout();
    showSelection();
    showCurrentTrack();
    updateTitle();
    updateActions();
    myMap->setFocus();
}

LvTrackEditorWindow::~LvTrackEditorWindow()
{
    // The views outlive the document, which is a field: they must not hear of its end.
    myDocument.disconnect(this);
    myDocument.undoStack()->disconnect(this);
}

// Building

QDockWidget* LvTrackEditorWindow::addDock(const QString& name, const QString& title, QWidget* widget,
                                          Qt::DockWidgetArea area)
{
    auto* dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(widget);
    addDockWidget(area, dock);
    return dock;
}

void LvTrackEditorWindow::buildDocks()
{
    setDockNestingEnabled(true);
    // The list and the style use the whole height, the profile the width of the map.
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    addDock(QStringLiteral("tracksDock"), tr("Spuren"), myList, Qt::LeftDockWidgetArea);
    myStyleDock = addDock(QStringLiteral("styleDock"), tr("Stil"), myStyle, Qt::RightDockWidgetArea);
    myDetailsDock =
        addDock(QStringLiteral("detailsDock"), tr("Einzelheiten"), myDetails, Qt::RightDockWidgetArea);
    addDock(QStringLiteral("profileDock"), tr("Profil"), myProfile, Qt::BottomDockWidgetArea);
    myMessageDock =
        addDock(QStringLiteral("messagesDock"), tr("Meldungen"), myMessages, Qt::BottomDockWidgetArea);
    myMessageDock->hide();
}

void LvTrackEditorWindow::buildStatusBar()
{
    myPositionLabel = new QLabel(this);
    myPositionLabel->setAccessibleName(tr("Ort unter dem Zeiger"));
    myZoomLabel = new QLabel(this);
    myZoomLabel->setAccessibleName(tr("Vergrößerung der Karte"));
    myActivityLabel = new QLabel(this);
    myActivityLabel->setObjectName(QStringLiteral("activity"));
    myActivityLabel->setAccessibleName(tr("Was gerade gelesen oder geschrieben wird"));
    myActivityBar = new QProgressBar(this);
    myActivityBar->setAccessibleName(tr("Lesen oder Schreiben im Gange"));
    myActivityBar->setRange(0, 0); // how long it will take is not known
    myProgress = new QProgressBar(this);
    myProgress->setAccessibleName(tr("Fortschritt beim Öffnen"));
    myProgress->setFormat(tr("%v von %m Dateien"));
    myProgress->hide();
    myCancel = new QToolButton(this);
    myCancel->setText(tr("Abbrechen"));
    myCancel->setToolTip(tr("Öffnet keine weiteren Dateien mehr."));
    myCancel->hide();
    statusBar()->addPermanentWidget(myActivityLabel);
    statusBar()->addPermanentWidget(myActivityBar);
    statusBar()->addPermanentWidget(myProgress);
    statusBar()->addPermanentWidget(myCancel);
    statusBar()->addPermanentWidget(myPositionLabel);
    statusBar()->addPermanentWidget(myZoomLabel);
}

QAction* LvTrackEditorWindow::addAction(QMenu* menu, const QString& name, const QString& text,
                                        const QKeySequence& shortcut)
{
    QAction* action = menu->addAction(LvActionIcons::icon(name), text);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    myActions.append(action);
    return action;
}

QAction* LvTrackEditorWindow::addAction(QMenu* menu, const QString& name, const QString& text,
                                        const QKeySequence& shortcut, Slot slot)
{
    QAction* action = addAction(menu, name, text, shortcut);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void LvTrackEditorWindow::buildFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Datei"));
    QAction* startNew =
        addAction(menu, QStringLiteral("new"), tr("&Neu"), QKeySequence::New, &LvTrackEditorWindow::startNew);
    QAction* open = addAction(menu, QStringLiteral("open"), tr("Ö&ffnen…"), QKeySequence::Open,
                              &LvTrackEditorWindow::askForFiles);
    myRecentMenu = menu->addMenu(tr("&Zuletzt benutzt"));
    menu->addSeparator();
    QAction* save = addAction(menu, QStringLiteral("save"), tr("&Speichern"), QKeySequence::Save);
    connect(save, &QAction::triggered, myFiles, &LvEditorFiles::save);
    QAction* saveAs =
        addAction(menu, QStringLiteral("saveAs"), tr("Speichern &unter…"), QKeySequence::SaveAs);
    connect(saveAs, &QAction::triggered, myFiles, &LvEditorFiles::saveAs);
    myFileActions = {startNew, open, save, saveAs};
    menu->addSeparator();
    QMenu* exportMenu = menu->addMenu(LvActionIcons::icon(QStringLiteral("export")), tr("&Exportieren"));
    const auto addExport = [this](QMenu* parentMenu, const QString& name, const QString& text,
                                  const QKeySequence& shortcut, void (LvEditorFiles::*slot)()) {
        QAction* action = addAction(parentMenu, name, text, shortcut);
        connect(action, &QAction::triggered, myFiles, slot);
        myExportActions.append(action);
    };
    addExport(exportMenu, QStringLiteral("exportGpx"), tr("Spuren als &GPX…"), {}, &LvEditorFiles::exportGpx);
    addExport(exportMenu, QStringLiteral("exportGeoJson"), tr("Spuren als Geo&JSON…"), {},
              &LvEditorFiles::exportGeoJson);
    connect(addAction(exportMenu, QStringLiteral("picture"), tr("&Bild der Karte…"),
                      QKeySequence(Qt::CTRL | Qt::Key_E)),
            &QAction::triggered, myFiles, &LvEditorFiles::exportPicture);
    connect(addAction(menu, QStringLiteral("print"), tr("&Drucken…"), QKeySequence::Print),
            &QAction::triggered, myFiles, &LvEditorFiles::print);
    connect(addAction(menu, QStringLiteral("printPreview"), tr("Druck&vorschau…"), {}), &QAction::triggered,
            myFiles, &LvEditorFiles::previewPrint);
    menu->addSeparator();
    QAction* quit = addAction(menu, QStringLiteral("quit"), tr("&Beenden"), QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    connect(myRecentFiles, &LvRecentFiles::changed, this, &LvTrackEditorWindow::updateRecentFiles);
    updateRecentFiles();
}

void LvTrackEditorWindow::buildEditMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Bearbeiten"));
    QUndoStack* stack = myDocument.undoStack();
    QAction* undo = addAction(menu, QStringLiteral("undo"), tr("&Rückgängig"), QKeySequence::Undo);
    QAction* redo = addAction(menu, QStringLiteral("redo"), tr("&Wiederholen"), QKeySequence::Redo);
    undo->setEnabled(false);
    redo->setEnabled(false);
    connect(undo, &QAction::triggered, stack, &QUndoStack::undo);
    connect(redo, &QAction::triggered, stack, &QUndoStack::redo);
    connect(stack, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(stack, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    connect(stack, &QUndoStack::undoTextChanged, undo, [undo](const QString& text) {
        undo->setText(text.isEmpty() ? tr("&Rückgängig") : tr("&Rückgängig: %1").arg(text));
    });
    connect(stack, &QUndoStack::redoTextChanged, redo, [redo](const QString& text) {
        redo->setText(text.isEmpty() ? tr("&Wiederholen") : tr("&Wiederholen: %1").arg(text));
    });
    menu->addSeparator();
    QAction* clear = addAction(menu, QStringLiteral("clear"), tr("&Alle Spuren entfernen"), {});
    connect(clear, &QAction::triggered, &myDocument, &LvTrackDocument::clear);
    myContentActions.append(clear);
    menu->addSeparator();
    QAction* preferences =
        addAction(menu, QStringLiteral("preferences"), tr("&Einstellungen…"),
                  QKeySequence(Qt::CTRL | Qt::Key_Comma), &LvTrackEditorWindow::showPreferences);
    preferences->setMenuRole(QAction::PreferencesRole);
}

void LvTrackEditorWindow::buildTrackMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Spur"));
    const qsizetype first = myActions.count();
    addAction(menu, QStringLiteral("fit-track"), tr("Auf der Karte &zeigen"),
              QKeySequence(Qt::CTRL | Qt::Key_L), &LvTrackEditorWindow::zoomToCurrent);
    addAction(menu, QStringLiteral("toggleVisible"), tr("Ein- oder &ausblenden"),
              QKeySequence(Qt::CTRL | Qt::Key_H), &LvTrackEditorWindow::toggleCurrentVisible);
    addAction(menu, QStringLiteral("rename"), tr("Umbe&nennen"), QKeySequence(Qt::Key_F2),
              &LvTrackEditorWindow::renameCurrent);
    addAction(menu, QStringLiteral("up"), tr("Nach &oben"), QKeySequence(Qt::ALT | Qt::Key_Up),
              &LvTrackEditorWindow::moveCurrentUp);
    addAction(menu, QStringLiteral("down"), tr("Nach &unten"), QKeySequence(Qt::ALT | Qt::Key_Down),
              &LvTrackEditorWindow::moveCurrentDown);
    addAction(menu, QStringLiteral("delete"), tr("&Entfernen"), QKeySequence::Delete,
              &LvTrackEditorWindow::deleteCurrent);
    myTrackActions = myActions.mid(first);
    // The Delete key belongs to whatever text is being edited elsewhere.
    myTrackActions.last()->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    myList->addAction(myTrackActions.last());
    menu->addSeparator();
    addAction(menu, QStringLiteral("beeline"), tr("&Fluglinie…"), QKeySequence(Qt::CTRL | Qt::Key_B),
              &LvTrackEditorWindow::createBeeline);
}

void LvTrackEditorWindow::buildViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Ansicht"));
    connect(addAction(menu, QStringLiteral("zoom-in"), tr("Ver&größern"), QKeySequence::ZoomIn),
            &QAction::triggered, myMap, &LvMapWidget::zoomIn);
    connect(addAction(menu, QStringLiteral("zoom-out"), tr("Ver&kleinern"), QKeySequence::ZoomOut),
            &QAction::triggered, myMap, &LvMapWidget::zoomOut);
    connect(addAction(menu, QStringLiteral("fit-all"), tr("&Alle Spuren zeigen"),
                      QKeySequence(Qt::CTRL | Qt::Key_0)),
            &QAction::triggered, myMap, &LvMapWidget::fitToTracks);
    menu->addMenu(myMapMenu);
    menu->addSeparator();
    const QList<QDockWidget*> docks = findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    int number = 0;
    for (QDockWidget* dock : docks) {
        QAction* toggle = dock->toggleViewAction();
        toggle->setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+%1").arg(++number)));
        menu->addAction(toggle);
        myActions.append(toggle);
    }
    menu->addSeparator();
    QAction* fullScreen =
        addAction(menu, QStringLiteral("fullScreen"), tr("&Vollbild"), QKeySequence(Qt::Key_F11));
    fullScreen->setCheckable(true);
    connect(fullScreen, &QAction::toggled, this, [this](bool on) {
        setWindowState(on ? windowState() | Qt::WindowFullScreen : windowState() & ~Qt::WindowFullScreen);
    });
}

void LvTrackEditorWindow::buildHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Hilfe"));
    addAction(menu, QStringLiteral("help"), tr("&Tastenkürzel"), QKeySequence::HelpContents,
              &LvTrackEditorWindow::showShortcuts);
    QAction* about = addAction(menu, QStringLiteral("about"), tr("Ü&ber das Programm"), {},
                               &LvTrackEditorWindow::showAbout);
    about->setMenuRole(QAction::AboutRole);
    QAction* aboutQt = addAction(menu, QStringLiteral("aboutQt"), tr("Über &Qt"), {});
    aboutQt->setMenuRole(QAction::AboutQtRole);
    connect(aboutQt, &QAction::triggered, qApp, &QApplication::aboutQt);
}

void LvTrackEditorWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(tr("Werkzeuge"));
    bar->setObjectName(QStringLiteral("toolBar"));
    const auto add = [this, bar](std::initializer_list<const char*> names) {
        for (const char* name : names) {
            for (QAction* action : std::as_const(myActions)) {
                if (action->objectName() == QLatin1String(name)) {
                    bar->addAction(action);
                }
            }
        }
    };
    add({"open", "save", "picture", "print"});
    bar->addSeparator();
    add({"undo", "redo"});
    bar->addSeparator();
    add({"zoom-in", "zoom-out", "fit-all", "fit-track"});
    bar->addSeparator();
    add({"beeline"});
}

// Connecting

void LvTrackEditorWindow::connectDocument()
{
    connect(&myDocument, &LvTrackDocument::selectionChanged, this, &LvTrackEditorWindow::showSelection);
    connect(&myDocument, &LvTrackDocument::visibilityChanged, this, &LvTrackEditorWindow::showVisibility);
    connect(&myDocument, &LvTrackDocument::modifiedChanged, this, &LvTrackEditorWindow::updateTitle);
    connect(&myDocument, &LvTrackDocument::fileNameChanged, this, &LvTrackEditorWindow::updateTitle);
    connect(myFiles, &LvEditorFiles::messages, this, &LvTrackEditorWindow::tell);
}

void LvTrackEditorWindow::connectList()
{
    connect(myList, &LvTrackListPanel::currentRowChanged, this, &LvTrackEditorWindow::showCurrentTrack);
    connect(myList, &LvTrackListPanel::editRequested, this, [this](int row) {
        myList->setCurrentRow(row);
        myStyleDock->show();
        myStyleDock->raise();
        myStyle->setFocus();
    });
    connect(myList, &LvTrackListPanel::deleteRequested, &myDocument, &LvTrackDocument::removeTrack,
            Qt::QueuedConnection); // the button must not be destroyed while it is being pressed
    connect(myList, &LvTrackListPanel::zoomRequested, this, &LvTrackEditorWindow::zoomToRow);
    connect(myList, &LvTrackListPanel::markRequested, this, &LvTrackEditorWindow::markRow);
    connect(myList, &LvTrackListPanel::visibilityEdited, &myDocument, &LvTrackDocument::setVisible);
    connect(myList, &LvTrackListPanel::croppingOpacityEdited, &myDocument,
            &LvTrackDocument::setCroppingOpacity);
    connect(myList, &LvTrackListPanel::reordered, this, [this](const LvGPXConfiguredTrackList& tracks) {
        LvGPXTrackSelection selection = myDocument.selection();
        selection.setTracks(tracks);
        myDocument.setSelection(selection, tr("Spuren umordnen"));
    });
}

void LvTrackEditorWindow::connectMap()
{
    connect(myMap, &LvMapWidget::positionHovered, this, [this](const LvGeoPosition& position) {
        showPosition(position);
        myProfile->setMarkedPosition(position);
    });
    connect(myMap, &LvMapWidget::hoverLeft, this, [this] {
        showPosition(LvGeoPosition());
        myProfile->setMarkedPosition(LvGeoPosition());
    });
    connect(myMap, &LvMapWidget::viewChanged, this, &LvTrackEditorWindow::showZoom);
    connect(myMap, &LvMapWidget::mapSourceFailed, this, [this](const QString& message) {
        tell({message});
        const QString none = QStringLiteral("none");
        if (myMap->mapSource() == none && LvEditorSettings::instance()->mapSource() != none) {
            myMap->setMapSource(QStringLiteral("builtin")); // the remembered map is gone
        }
    });
    connect(myMap, &LvMapWidget::tileMessage, this, [this](const QString& message) { tell({message}); });
    showZoom();
}

void LvTrackEditorWindow::connectPanels()
{
    connect(myStyle, &LvStylePanel::configurationEdited, this,
            [this](const LvGPXTrackConfiguration& configuration, bool isForAll) {
                if (isForAll) {
                    myDocument.setConfigurationToAll(configuration);
                } else {
                    myDocument.setConfiguration(myList->currentRow(), configuration);
                }
            });
    connect(myDetails, &LvTrackDetailsPanel::nameEdited, this,
            [this](const QString& name) { myDocument.renameTrack(myList->currentRow(), name); });
    connect(myProfile, &LvTrackProfileWidget::positionHovered, myMap, &LvMapWidget::setMarkedPosition);
    connect(&myMeasuring, &QFutureWatcherBase::finished, this, [this] {
        if (!myMeasuring.future().isResultReadyAt(0)) {
            return; // given up for another track
        }
        myStatistics = myMeasuring.result();
        myProfile->setStatistics(*myStatistics);
        showCurrentTrack();
    });
    LvEditorSettings* settings = LvEditorSettings::instance();
    connect(settings, &LvEditorSettings::changed, this, [this, settings] {
        if (settings->mapSource() != myMap->mapSource()) {
            myMap->setMapSource(settings->mapSource());
        }
        myMap->setAttribution(settings->attribution());
    });
}

void LvTrackEditorWindow::connectLoading()
{
    connect(&myLoadJob, &LvTrackLoadJob::progress, this, [this](int done, int total) {
        myProgress->setRange(0, total);
        myProgress->setValue(done);
    });
    connect(&myLoadJob, &LvTrackLoadJob::loaded, this, &LvTrackEditorWindow::adoptTracks);
    connect(&myLoadJob, &LvTrackLoadJob::finished, this, [this](bool isCancelled) {
        myProgress->hide();
        myCancel->setVisible(myFiles->isReading());
        if (isCancelled) {
            statusBar()->showMessage(tr("Das Öffnen wurde abgebrochen."), messageMilliseconds);
        }
        Q_EMIT filesOpened();
    });
    connect(myCancel, &QToolButton::clicked, &myLoadJob, &LvTrackLoadJob::cancel);
}

void LvTrackEditorWindow::connectFiles()
{
    myActivityDelay.setSingleShot(true);
    myActivityDelay.setInterval(activityDelayMilliseconds);
    connect(&myActivityDelay, &QTimer::timeout, this, [this] {
        myActivityLabel->show();
        myActivityBar->show();
        myCancel->setVisible(myFiles->isReading() || myLoadJob.isRunning());
    });
    connect(myFiles, &LvEditorFiles::activityChanged, this, &LvTrackEditorWindow::showActivity);
    connect(myFiles, &LvEditorFiles::openingFinished, this, [this](bool hasOpened) {
        if (hasOpened) {
            myList->setCurrentRow(0);
            myMap->fitToTracks();
        }
        Q_EMIT filesOpened();
    });
    connect(myFiles, &LvEditorFiles::written, this, [this](const QString& fileName) {
        statusBar()->showMessage(tr("„%1“ ist geschrieben.").arg(QFileInfo(fileName).fileName()),
                                 messageMilliseconds);
    });
    connect(myCancel, &QToolButton::clicked, this, [this] {
        if (myFiles->isReading()) {
            myFiles->cancelOpening();
            statusBar()->showMessage(tr("Das Öffnen wurde abgebrochen."), messageMilliseconds);
        }
    });
    showActivity(QString());
}

void LvTrackEditorWindow::restoreLayout()
{
    const LvEditorSettings* settings = LvEditorSettings::instance();
    if (!restoreGeometry(settings->windowGeometry())) {
        resize(defaultSize);
    }
    restoreState(settings->windowState());
    myMap->setMapSource(settings->mapSource());
    myMap->setAttribution(settings->attribution());
}

// Files

void LvTrackEditorWindow::openFiles(const QStringList& fileNames)
{
    if (fileNames.isEmpty()) {
        return;
    }
    if (fileNames.count() == 1 && LvTrackDocumentFile::hasSuffix(fileNames.first())) {
        openDocument(fileNames.first());
        return;
    }
    for (auto name = fileNames.crbegin(); name != fileNames.crend(); ++name) {
        myRecentFiles->add(*name);
    }
    myProgress->setRange(0, static_cast<int>(fileNames.count()));
    myProgress->setValue(0);
    myProgress->show();
    myCancel->show();
    myLoadJob.start(fileNames);
}

void LvTrackEditorWindow::adoptTracks(const LvGPXConfiguredTrackList& tracks, const QStringList& lines)
{
    const bool wasEmpty = myDocument.selection().isEmpty();
    if (tracks.isValid()) {
        const int firstRow = static_cast<int>(myDocument.selection().count());
        myDocument.addTracks(tracks);
        myList->setCurrentRow(firstRow);
        if (wasEmpty) {
            myMap->fitToTracks();
        } else {
            myMap->fitTo(LvTrackBounds::ofSelection(LvGPXTrackSelection(tracks)));
        }
        statusBar()->showMessage(tracks.count() == 1 ? tr("Eine Spur geöffnet.")
                                                     : tr("%1 Spuren geöffnet.").arg(tracks.count()),
                                 messageMilliseconds);
    }
    tell(lines);
}

void LvTrackEditorWindow::openDocument(const QString& fileName)
{
    if (myFiles->confirmLosingChanges([this, fileName] { openDocument(fileName); })) {
        myFiles->open(fileName);
    } else if (!myFiles->isBusy()) {
        Q_EMIT filesOpened();
    }
}

void LvTrackEditorWindow::startNew()
{
    if (myFiles->confirmLosingChanges([this] { startNew(); })) {
        myFiles->startNew();
    }
}

void LvTrackEditorWindow::askForFiles()
{
    openFiles(myFiles->askForFiles());
}

void LvTrackEditorWindow::updateRecentFiles()
{
    myRecentMenu->clear();
    const QStringList names = myRecentFiles->fileNames();
    for (const QString& name : names) {
        QString text = QFileInfo(name).fileName();
        QAction* action = myRecentMenu->addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setStatusTip(name);
        action->setToolTip(name);
        connect(action, &QAction::triggered, this, [this, name] { openFiles({name}); });
    }
    if (!names.isEmpty()) {
        myRecentMenu->addSeparator();
        connect(myRecentMenu->addAction(tr("Liste &leeren")), &QAction::triggered, myRecentFiles,
                &LvRecentFiles::clear);
    }
    myRecentMenu->setEnabled(!names.isEmpty() && !myFiles->isBusy());
}

void LvTrackEditorWindow::closeEvent(QCloseEvent* event)
{
    if (!myFiles->confirmLosingChanges([this] { close(); })) {
        event->ignore();
        return;
    }
    myFiles->cancelOpening();
    myLoadJob.cancel();
    LvEditorSettings* settings = LvEditorSettings::instance();
    settings->setWindowGeometry(saveGeometry());
    settings->setWindowState(saveState());
    event->accept();
}

void LvTrackEditorWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void LvTrackEditorWindow::dropEvent(QDropEvent* event)
{
    const QList<QUrl> urls = localFiles(event->mimeData());
    if (urls.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    QStringList names;
    for (const QUrl& url : urls) {
        names.append(url.toLocalFile());
    }
    openFiles(names);
}

// Tracks

void LvTrackEditorWindow::deleteCurrent()
{
    myDocument.removeTrack(myList->currentRow());
}

void LvTrackEditorWindow::renameCurrent()
{
    myDetailsDock->show();
    myDetailsDock->raise();
    myDetails->editName();
}

void LvTrackEditorWindow::moveCurrentUp()
{
    moveCurrent(-1);
}

void LvTrackEditorWindow::moveCurrentDown()
{
    moveCurrent(1);
}

void LvTrackEditorWindow::moveCurrent(int distance)
{
    const int from = myList->currentRow();
    const int to = from + distance;
    if (from >= 0 && to >= 0 && to < myList->rowCount()) {
        myDocument.moveTrack(from, to);
        myList->setCurrentRow(to);
    }
}

void LvTrackEditorWindow::toggleCurrentVisible()
{
    const int row = myList->currentRow();
    myDocument.setVisible(row, !myDocument.isVisible(row));
}

void LvTrackEditorWindow::zoomToCurrent()
{
    zoomToRow(myList->currentRow());
}

void LvTrackEditorWindow::zoomToRow(int row)
{
    if (!myDocument.selection().isValidRow(row)) {
        return;
    }
    myDocument.setVisible(row, true);
    myMap->fitTo(LvTrackBounds::ofSelection(myDocument.selection().reduceToTrackNumber(row)));
    myList->blink(row);
}

void LvTrackEditorWindow::markRow(int row)
{
    myMarkedRow = row == myMarkedRow ? -1 : row;
    showVisibility();
}

void LvTrackEditorWindow::createBeeline()
{
    if (myBeelineDialog.isNull()) {
        myBeelineDialog = new LvBeelineDialog(this);
        myBeelineDialog->setAttribute(Qt::WA_DeleteOnClose);
        connect(myBeelineDialog, &LvBeelineDialog::pickRequested, myMap,
                [this] { myMap->setPickingPosition(true); });
        connect(myMap, &LvMapWidget::positionPicked, myBeelineDialog, &LvBeelineDialog::setPicked);
        connect(myBeelineDialog, &QDialog::finished, this, [this](int result) {
            myMap->setPickingPosition(false);
            if (result == QDialog::Accepted) {
                adoptTracks(LvGPXConfiguredTrack(myBeelineDialog->beeline(),
                                                 LvGPXTrackConfiguration::currentDefaultConfiguration()),
                            {});
            }
        });
    }
    myBeelineDialog->show(); // not modal: a place may be chosen on the map
    myBeelineDialog->raise();
    myBeelineDialog->activateWindow();
}

// Showing

void LvTrackEditorWindow::showSelection()
{
    myList->setSelection(myDocument.selection());
    showVisibility();
    showCurrentTrack();
    updateActions();
}

void LvTrackEditorWindow::showVisibility()
{
    if (!myDocument.selection().isValidRow(myMarkedRow)) {
        myMarkedRow = -1;
    }
    myList->setVisibility(myDocument.content().visibility);
    myMap->setSelection(myDocument.visibleSelection());
    myMap->setHighlightedRow(myDocument.visibleRow(myMarkedRow));
}

void LvTrackEditorWindow::showCurrentTrack()
{
    const int row = myList->currentRow();
    if (myDocument.selection().isValidRow(row)) {
        const LvGPXConfiguredTrack track = myDocument.selection().value(row);
        myStyle->setConfiguredTrack(track);
        showStatistics(track);
    } else {
        myMeasuredTrack = LvGPXTrack();
        myStatistics.reset();
        myStyle->clear();
        myDetails->clear();
        myProfile->clear();
    }
    updateActions();
}

void LvTrackEditorWindow::showStatistics(const LvGPXConfiguredTrack& track)
{
    if (myMeasuredTrack != track.track()) {
        myMeasuredTrack = track.track();
        myStatistics.reset();
        if (myMeasuredTrack.countPoints() <= quicklyMeasuredPoints) {
            myMeasuring.setFuture({}); // what is being computed is of another track
            myStatistics = LvTrackStatistics(myMeasuredTrack);
            myProfile->setStatistics(*myStatistics);
        } else {
            myProfile->clear();
            myMeasuring.setFuture(
                QtConcurrent::run([measured = myMeasuredTrack] { return LvTrackStatistics(measured); }));
        }
    }
    if (myStatistics.has_value()) {
        myDetails->setTrack(track, *myStatistics);
    } else {
        myDetails->clear(); // until they are there
    }
}

void LvTrackEditorWindow::showPosition(const LvGeoPosition& position)
{
    myPositionLabel->setText(position.isValid() ? QStringLiteral("%1   %2").arg(
                                 position.latitude().humanReadable(QStringLiteral("dms"), 1),
                                 position.longitude().humanReadable(QStringLiteral("dms"), 1))
                                                : QString());
}

void LvTrackEditorWindow::showZoom()
{
    myZoomLabel->setText(tr("Stufe %1").arg(locale().toString(myMap->zoom(), 'f', 1)));
}

void LvTrackEditorWindow::showActivity(const QString& text)
{
    myActivityLabel->setText(text);
    if (text.isEmpty()) {
        myActivityDelay.stop();
        myActivityLabel->hide();
        myActivityBar->hide();
        myCancel->setVisible(myLoadJob.isRunning());
    } else {
        myActivityDelay.start();
    }
    updateActions();
}

void LvTrackEditorWindow::updateTitle()
{
    const QString name =
        myDocument.fileName().isEmpty() ? tr("Unbenannt") : QFileInfo(myDocument.fileName()).fileName();
    setWindowTitle(tr("%1[*] – %2").arg(name, QApplication::applicationDisplayName()));
    setWindowModified(myDocument.isModified());
}

void LvTrackEditorWindow::updateActions()
{
    const bool hasTracks = !myDocument.selection().isEmpty();
    for (QAction* action : std::as_const(myContentActions)) {
        action->setEnabled(hasTracks);
    }
    for (QAction* action : std::as_const(myExportActions)) {
        action->setEnabled(hasTracks && !myFiles->isBusy());
    }
    for (QAction* action : std::as_const(myFileActions)) {
        action->setEnabled(!myFiles->isBusy());
    }
    myRecentMenu->setEnabled(!myRecentMenu->isEmpty() && !myFiles->isBusy());
    for (QAction* action : std::as_const(myTrackActions)) {
        action->setEnabled(hasTracks && myList->currentRow() >= 0);
    }
}

void LvTrackEditorWindow::tell(const QStringList& lines)
{
    if (lines.isEmpty()) {
        return;
    }
    myMessages->addMessages(lines);
    myMessageDock->show();
    myMessageDock->raise();
}

void LvTrackEditorWindow::showPreferences()
{
    LvPreferencesDialog dialog(this);
    dialog.addStandardPages();
    dialog.exec();
}

void LvTrackEditorWindow::showShortcuts()
{
    LvShortcutsDialog(myActions, this).exec();
}

void LvTrackEditorWindow::showAbout()
{
    QMessageBox::about(this, tr("Über das Programm"),
                       tr("<h3>%1 %2</h3>"
                          "<p>Zeigt GPS-Spuren auf einer Karte und gibt jeder einen eigenen Stil.</p>"
                          "<p>Die eingebaute Karte stammt von Natural Earth und ist gemeinfrei.</p>")
                           .arg(QApplication::applicationDisplayName(), QApplication::applicationVersion()));
}
