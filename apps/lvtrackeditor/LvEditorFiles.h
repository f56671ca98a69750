#pragma once

#include <QObject>
#include <QStringList>

class LvMapWidget;
class LvPictureExporter;
class LvRecentFiles;
class LvTrackDocument;
class QWidget;

/**
 * What the file menu does with the document: asks for names, warns before changes get lost, writes documents,
 * tracks and pictures, and tells the user when that fails.
 */
class LvEditorFiles : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvEditorFiles)

public:
    /// @param map what pictures show; it and the document must outlive this object
    /// @param window the parent of all dialogues
    LvEditorFiles(LvTrackDocument* document, LvMapWidget* map, LvRecentFiles* recentFiles, QWidget* window);
    ~LvEditorFiles() override;

    /// The files that the user chose to open; empty when there are none.
    [[nodiscard]] QStringList askForFiles();

    /// False when the document has changes that the user wants to keep and has not saved.
    bool confirmLosingChanges();

    /// Reads a document in the place of the present one. Returns whether that worked.
    bool open(const QString& fileName);
    void startNew();
    /// Writes into the document's file, or asks for a name when it has none yet.
    bool save();
    bool saveAs();
    bool saveTo(const QString& fileName);

    void exportPicture();
    void exportGpx();
    void exportGeoJson();
    void print();
    void previewPrint();

Q_SIGNALS:
    /// Lines for the user that stop nothing.
    void messages(const QStringList& lines);

private:
    void exportTracks(const QString& title, const QString& filter, const QString& suffix);
    [[nodiscard]] QString askSaveName(const QString& title, const QString& filter, const QString& suffix);
    bool report(const QString& errorText);
    /// For pictures of what the map shows now.
    [[nodiscard]] LvPictureExporter pictureExporter() const;
    /// What pictures and prints are called.
    [[nodiscard]] QString title() const;

    LvTrackDocument* myDocument;
    LvMapWidget* myMap;
    LvRecentFiles* myRecentFiles;
    QWidget* myWindow;
};
