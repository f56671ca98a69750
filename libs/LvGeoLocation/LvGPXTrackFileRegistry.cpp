#include "LvGPXTrackFileRegistry.h"

#include "LvUniqueFilenameMaker.h"

#include <QDir>
#include <QMutexLocker>
#include <QReadLocker>
#include <QSet>
#include <QWriteLocker>

LvGPXTrackFileRegistry::LvGPXTrackFileRegistry() = default;
LvGPXTrackFileRegistry::~LvGPXTrackFileRegistry() = default;

void LvGPXTrackFileRegistry::registerFile(const LvGPXTrackFileRegistryKey& key, const QString& fileName)
{
    const QMutexLocker locker(&myMutex);
    const QWriteLocker filesLocker(&myFilesLock);
    myFiles.insert(key, fileName);
}

QString LvGPXTrackFileRegistry::fileName(const LvGPXTrackFileRegistryKey& key) const
{
    const QReadLocker locker(&myFilesLock);
    return myFiles.value(key);
}

QFileInfo LvGPXTrackFileRegistry::createFileInfo(const LvGPXTrackFileRegistryKey& key,
                                                 const QString& fileName)
{
    return QFileInfo(key.dir(),
                     fileName); // NOLINT(modernize-return-braced-init-list) the constructor is explicit
}

QString LvGPXTrackFileRegistry::createAssignedFile(const LvGPXTrackFileRegistryKey& key)
{
    {
        const QMutexLocker locker(&myMutex);
        QString known = fileName(key); // not constant: it is moved out
        if (!known.isEmpty()) {
            return known;
        }
    }
    // Writing may take long, so the mutex is free meanwhile.
    const QFileInfo candidate = createFileInfo(key, QStringLiteral("track.gps"));
    const QFileInfo unique = LvUniqueFilenameMaker::instance()->makeUniqueFileNameInSafeContainer(
        candidate, QSet<QDir>{key.dir()});
    saveTrackInFile(key, unique);
    registerFile(key, unique.fileName());
    return unique.fileName();
}

void LvGPXTrackFileRegistry::saveTrackInFile(const LvGPXTrackFileRegistryKey& key, const QFileInfo& file)
{
    key.track().saveBelow(QStringLiteral("includedTrack"), file);
}
