#pragma once

#include "LvGPXConfiguredTrackList.h"

#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <memory>

/**
 * Loads many track files on worker threads, while the user interface goes on.
 *
 * GPX, KML and KMZ files, and documents, of which the tracks are taken. The tracks come in the order of the
 * files, whichever file was read first. One job may be started again when it has finished.
 */
class LvTrackLoadJob : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackLoadJob)

public:
    explicit LvTrackLoadJob(QObject* parent = nullptr);
    /// Cancels; waits for the files that are being read at this moment.
    ~LvTrackLoadJob() override;

    /// Begins to load; cancels what is still running. All signals come later, from the event loop.
    void start(const QStringList& fileNames);

    /// Drops what has been loaded and ends with finished(true). The files that are being read at this moment
    /// are read to their end, but nobody hears of them. Does nothing when the job is not running.
    void cancel();

    [[nodiscard]] bool isRunning() const { return myRun != nullptr; }

Q_SIGNALS:
    /// So many files are done; not sent for each one when they come quickly.
    void progress(int done, int total);
    /// Once, when all files are done: their tracks, and one line for each file that gave nothing or not
    /// everything. Not after a cancel().
    void loaded(const LvGPXConfiguredTrackList& tracks, const QStringList& messages);
    /// The last signal of a run.
    void finished(bool cancelled);

private:
    struct Run;

    void collect(const std::shared_ptr<Run>& run);

    std::shared_ptr<Run> myRun; // null when nothing runs
    QThreadPool myPool;
};
