#pragma once

#include "LvGPXTrackFileRegistryKey.h"
#include "LvSingleton.h"
#include "lvgeolocation_export.h"

#include <QFileInfo>
#include <QHash>
#include <QObject>
#include <QReadWriteLock>
#include <QRecursiveMutex>
#include <QString>

/**
 * Remembers which file of a directory holds which track, so that saving a track again reuses its file, and a
 * track that was read from a file of its own is written back to it.
 *
 * One per process; it only ever grows. An edited track is another key and gets a new file. All functions are
 * safe to call from any thread.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackFileRegistry : public QObject, public LvSingleton<LvGPXTrackFileRegistry>
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvGPXTrackFileRegistry)

public:
    ~LvGPXTrackFileRegistry() override;

    /// Remembers the file name, relative to the key's directory, in place of an earlier one.
    void registerFile(const LvGPXTrackFileRegistryKey& key, const QString& fileName);

    /// The remembered file name; empty when there is none. Does not wait for a createAssignedFile() that is
    /// at work on another thread: until that has finished, its file is not found.
    [[nodiscard]] QString fileName(const LvGPXTrackFileRegistryKey& key) const;

    /// The file of that name in the key's directory; it need not exist.
    [[nodiscard]] static QFileInfo createFileInfo(const LvGPXTrackFileRegistryKey& key,
                                                  const QString& fileName);

    /// The name of the file, relative to the key's directory, that holds the track. When none is remembered,
    /// the track is written into a new file named after "track.gps". A failure to write is not reported, the
    /// name is returned and remembered all the same. Two threads that save the same new track at the same
    /// time may each write a file; the later one is remembered.
    QString createAssignedFile(const LvGPXTrackFileRegistryKey& key);

    /// Writes the track of the key, with everything in it, as the only child of a root element
    /// "includedTrack". A failure is not reported.
    static void saveTrackInFile(const LvGPXTrackFileRegistryKey& key, const QFileInfo& file);

private:
    friend class LvSingleton<LvGPXTrackFileRegistry>;

    LvGPXTrackFileRegistry();

    mutable QRecursiveMutex myMutex; // one change of myFiles after the other
    QHash<LvGPXTrackFileRegistryKey, QString> myFiles;
    // Guards the memory of myFiles for the moment of a look-up or an insert. fileName() takes only this one,
    // not the mutex, and so neither waits for a change as a whole nor sees half of one.
    mutable QReadWriteLock myFilesLock;
};
