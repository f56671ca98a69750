#pragma once

#include "LvGeoPosition.h"
#include "LvTrackDocument.h"
#include "LvTrackLoadJob.h"
#include "LvTrackStatistics.h"

#include <QFutureWatcher>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <optional>

class LvBeelineDialog;
class LvEditorFiles;
class LvEditorMapMenu;
class LvMapWidget;
class LvMessagePanel;
class LvRecentFiles;
class LvStylePanel;
class LvTrackDetailsPanel;
class LvTrackListPanel;
class LvTrackProfileWidget;
class QDockWidget;
class QLabel;
class QProgressBar;
class QToolButton;

/**
 * The window of the program: a document of tracks, the map that shows it, and panels that list, style and
 * explain its tracks.
 *
 * The document is the one place where tracks live. Views show what it holds and ask it for changes; every
 * change comes back through its signals.
 */
class LvTrackEditorWindow : public QMainWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackEditorWindow)

public:
    explicit LvTrackEditorWindow(QWidget* parent = nullptr);
    ~LvTrackEditorWindow() override;

    /// Opens track files beside what is there, or a single document in the place of what is there, after
    /// asking where changes would get lost; both off the user-interface thread.
    void openFiles(const QStringList& fileNames);

    [[nodiscard]] LvTrackDocument* document() { return &myDocument; }

    [[nodiscard]] LvEditorFiles* files() const { return myFiles; }

    [[nodiscard]] LvMapWidget* map() const { return myMap; }

    [[nodiscard]] LvTrackListPanel* trackList() const { return myList; }

    [[nodiscard]] LvMessagePanel* messages() const { return myMessages; }

    /// Whether track files are being loaded.
    [[nodiscard]] bool isLoading() const { return myLoadJob.isRunning(); }

Q_SIGNALS:
    /// All files of one openFiles() are there, or could not be read.
    void filesOpened();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    using Slot = void (LvTrackEditorWindow::*)();

    void buildDocks();
    void buildStatusBar();
    void buildFileMenu();
    void buildEditMenu();
    void buildTrackMenu();
    void buildViewMenu();
    void buildHelpMenu();
    void buildToolBar();
    void connectDocument();
    void connectList();
    void connectMap();
    void connectPanels();
    void connectLoading();
    void connectFiles();
    void restoreLayout();
    QDockWidget* addDock(const QString& name, const QString& title, QWidget* widget, Qt::DockWidgetArea area);
    /// An action with an icon where there is a drawing of that name.
    QAction* addAction(QMenu* menu, const QString& name, const QString& text, const QKeySequence& shortcut);
    QAction* addAction(QMenu* menu, const QString& name, const QString& text, const QKeySequence& shortcut,
                       Slot slot);

    void startNew();
    void askForFiles();
    void openDocument(const QString& fileName);
    void showPreferences();
    void showShortcuts();
    void showAbout();

    void deleteCurrent();
    void renameCurrent();
    void moveCurrentUp();
    void moveCurrentDown();
    void moveCurrent(int distance);
    void toggleCurrentVisible();
    void zoomToCurrent();
    void zoomToRow(int row);
    void markRow(int row);
    void createBeeline();

    void showSelection();
    void showVisibility();
    void showCurrentTrack();
    void showStatistics(const LvGPXConfiguredTrack& track);
    void showPosition(const LvGeoPosition& position);
    void showZoom();
    void showActivity(const QString& text);
    void updateTitle();
    void updateActions();
    void updateRecentFiles();
    void tell(const QStringList& lines);
    void adoptTracks(const LvGPXConfiguredTrackList& tracks, const QStringList& lines);

    LvTrackDocument myDocument;
    LvTrackLoadJob myLoadJob;
    LvRecentFiles* myRecentFiles;
    LvMapWidget* myMap;
    LvEditorFiles* myFiles;
    LvTrackListPanel* myList;
    LvStylePanel* myStyle;
    LvTrackDetailsPanel* myDetails;
    LvTrackProfileWidget* myProfile;
    LvMessagePanel* myMessages;
    LvEditorMapMenu* myMapMenu;
    QPointer<LvBeelineDialog> myBeelineDialog;
    int myMarkedRow = -1; // highlighted on the map
    LvGPXTrack myMeasuredTrack; // what the statistics are of, or will be
    std::optional<LvTrackStatistics> myStatistics; // none while they are being computed
    QFutureWatcher<LvTrackStatistics> myMeasuring;

    QDockWidget* myDetailsDock = nullptr;
    QDockWidget* myStyleDock = nullptr;
    QDockWidget* myMessageDock = nullptr;
    QLabel* myPositionLabel = nullptr;
    QLabel* myZoomLabel = nullptr;
    QLabel* myActivityLabel = nullptr; // what is read or written
    QProgressBar* myActivityBar = nullptr;
    QTimer myActivityDelay;
    QProgressBar* myProgress = nullptr;
    QToolButton* myCancel = nullptr;
    QMenu* myRecentMenu = nullptr;
    QList<QAction*> myActions; // in the order of the menus
    QList<QAction*> myTrackActions; // need a current track
    QList<QAction*> myContentActions; // need any track
    QList<QAction*> myExportActions; // the same, and that nothing is read or written
    QList<QAction*> myFileActions; // need that nothing is read or written
};
