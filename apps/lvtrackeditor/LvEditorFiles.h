#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <functional>

class LvMapWidget;
class LvPictureExporter;
class LvRecentFiles;
class LvTrackDocument;
struct LvTrackDocumentContent;
struct LvTrackDocumentReading;
class QWidget;

/**
 * What the file menu does with the document: asks for names, warns before changes get lost, reads and writes
 * documents, writes tracks and pictures, and tells the user when that fails.
 *
 * Documents and tracks are read and written on a worker thread, one after the other, while the user interface
 * goes on. What is written is the content at the moment when that began. The results come through the event
 * loop.
 */
class LvEditorFiles : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvEditorFiles)

public:
    /// @param map what pictures show; it and the document must outlive this object
    /// @param window the parent of all dialogues
    LvEditorFiles(LvTrackDocument* document, LvMapWidget* map, LvRecentFiles* recentFiles, QWidget* window);
    /// Waits for what is being written or read.
    ~LvEditorFiles() override;

    /// The files that the user chose to open; empty when there are none.
    [[nodiscard]] QStringList askForFiles();

    /// Whether the document may be replaced or closed: true when nothing would get lost by that, or when the
    /// user does not mind. False when the user wants to keep the changes, and while something is written. The
    /// function is called when that has been written, to ask again; never when it could not be written.
    [[nodiscard]] bool confirmLosingChanges(const std::function<void()>& whenWritten);

    /// Begins to read a document in the place of the present one. Should that be changed until the reading is
    /// done, the user is asked then. Gives up the reading of another one. Returns whether it has begun: not
    /// while something is written.
    bool open(const QString& fileName);
    /// Gives up reading: the present document stays.
    void cancelOpening();
    void startNew();
    /// Begins to write into the document's file, or asks for a name when it has none yet. Returns whether it
    /// has begun; not while something is read or written.
    bool save();
    bool saveAs();
    bool saveTo(const QString& fileName);

    /// Whether something is read or written.
    [[nodiscard]] bool isBusy() const { return myActivity != Activity::None; }

    [[nodiscard]] bool isReading() const { return myActivity == Activity::Reading; }

    /// Waits without the event loop until nothing is read or written any more. Returns whether the last
    /// reading or writing went well.
    bool waitForDone();

    void exportPicture();
    void exportGpx();
    void exportGeoJson();
    void print();
    void previewPrint();

Q_SIGNALS:
    /// Lines for the user that stop nothing.
    void messages(const QStringList& lines);
    /// What is being read or written now, a sentence for the user; empty for nothing.
    void activityChanged(const QString& text);
    /// The end of an open(); the document is another one, or the old one.
    void openingFinished(bool hasOpened);
    /// A document or an export is in its file.
    void written(const QString& fileName);

private:
    enum class Activity { None, Reading, Writing };
    /// What remains to be done in this thread; returns whether all went well.
    using Finish = std::function<bool()>;

    /// Lets a worker do the work, which must not touch this object.
    void start(Activity activity, const QString& text, const std::function<Finish()>& work);
    void finish();
    bool finishOpening(const QString& fileName, const LvTrackDocumentContent& before,
                       const LvTrackDocumentReading& reading);
    void adopt(const QString& fileName, const LvTrackDocumentReading& reading);
    bool finishWriting(const QString& fileName, const QString& errorText);
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
    Activity myActivity = Activity::None;
    bool myWentWell = true;
    std::function<void()> myWhenWritten;
    QFuture<Finish> myTask;
    QFutureWatcher<Finish> myWatcher;
    QThreadPool myPool; // the last field: its workers end before the others
};
