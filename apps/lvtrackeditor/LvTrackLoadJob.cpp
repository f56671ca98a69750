#include "LvTrackLoadJob.h"

#include "LvGPXConfiguredTrack.h"
#include "LvTrackDocumentFile.h"
#include "LvTrackLoader.h"

#include <QDir>
#include <QPointer>

#include <atomic>
#include <utility>
#include <vector>

namespace
{

struct LoadedFile {
    LvGPXConfiguredTrackList tracks;
    QStringList messages;
};

LoadedFile loadDocument(const QString& fileName)
{
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
    LoadedFile file{reading.content.selection.tracks(), reading.warnings};
    if (!reading.errorText.isEmpty()) {
        file.messages.append(reading.errorText);
    }
    return file;
}

LoadedFile load(const QString& fileName)
{
    if (LvTrackDocumentFile::hasSuffix(fileName)) {
        return loadDocument(fileName);
    }
    const LvLoadedTracks loaded = LvTrackLoader::load(fileName);
    const QString shownName = QDir::toNativeSeparators(fileName);
    LoadedFile file{loaded.tracks, {}};
    if (!loaded.errorText.isEmpty()) {
        file.messages.append(QStringLiteral("%1: %2").arg(shownName, loaded.errorText));
    } else if (loaded.emptyTracks == 1) {
        file.messages.append(
            LvTrackLoadJob::tr("%1: Eine Spur ohne Punkte wurde ausgelassen.").arg(shownName));
    } else if (loaded.emptyTracks > 1) {
        file.messages.append(LvTrackLoadJob::tr("%1: %2 Spuren ohne Punkte wurden ausgelassen.")
                                 .arg(shownName, QString::number(loaded.emptyTracks)));
    }
    return file;
}

} // namespace

/// What the job and its workers share. Each worker writes the entry of its own file and nothing else.
struct LvTrackLoadJob::Run {
    explicit Run(const QStringList& names)
        : fileNames(names)
        , files(static_cast<std::size_t>(names.size()))
    {
    }

    const QStringList fileNames;
    std::vector<LoadedFile> files;
    std::atomic<std::size_t> nextIndex = 0;
    std::atomic<std::size_t> doneCount = 0;
    std::atomic<bool> isReportPending = false;
    std::atomic<bool> isCancelled = false;
};

LvTrackLoadJob::LvTrackLoadJob(QObject* parent)
    : QObject(parent)
{
}

LvTrackLoadJob::~LvTrackLoadJob()
{
    if (myRun) {
        myRun->isCancelled = true;
    }
    myPool.waitForDone(); // the workers refer to this object
}

void LvTrackLoadJob::start(const QStringList& fileNames)
{
    cancel();
    const auto run = std::make_shared<Run>(fileNames);
    myRun = run;
    const auto report = [this, run] {
        QMetaObject::invokeMethod(
            this, [this, run] { collect(run); }, Qt::QueuedConnection);
    };
    if (fileNames.isEmpty()) {
        report();
        return;
    }
    // As many workers as threads, each of which takes the next file until there is none: cancelling has no
    // queue to empty.
    const int workerCount = static_cast<int>(std::min<qsizetype>(myPool.maxThreadCount(), fileNames.size()));
    for (int worker = 0; worker < workerCount; ++worker) {
        myPool.start([run, report] {
            for (std::size_t index = run->nextIndex++; index < run->files.size() && !run->isCancelled;
                 index = run->nextIndex++) {
                run->files[index] = load(run->fileNames.at(static_cast<qsizetype>(index)));
                ++run->doneCount;
                if (!run->isReportPending.exchange(true)) {
                    report();
                }
            }
        });
    }
}

void LvTrackLoadJob::cancel()
{
    if (!myRun) {
        return;
    }
    myRun->isCancelled = true;
    myRun.reset();
    QMetaObject::invokeMethod(
        this, [this] { Q_EMIT finished(true); }, Qt::QueuedConnection);
}

void LvTrackLoadJob::collect(const std::shared_ptr<Run>& run)
{
    if (run != myRun) {
        return; // cancelled meanwhile
    }
    run->isReportPending = false; // before counting: a file that is done from now on reports again
    const auto total = static_cast<int>(run->files.size());
    const auto done = static_cast<int>(run->doneCount);
    const QPointer<LvTrackLoadJob> self(this); // receivers may cancel, start anew, or delete the job
    Q_EMIT progress(done, total);
    if (!self || run != myRun || done < total) {
        return;
    }
    myRun.reset();
    LvGPXConfiguredTrackList tracks;
    QStringList messages;
    for (const LoadedFile& file : run->files) {
        tracks.append(file.tracks);
        messages += file.messages;
    }
    Q_EMIT loaded(tracks, messages);
    if (self) {
        Q_EMIT finished(false);
    }
}
