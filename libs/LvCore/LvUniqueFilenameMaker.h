#pragma once

#include "LvSingleton.h"
#include "lvcore_export.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <QSet>

/// The hash of a directory, so that a QSet can hold them: equal directories, however their paths are written,
/// have equal hashes.
[[nodiscard]] LVCORE_EXPORT size_t qHash(const QDir& directory, size_t seed = 0);

/**
 * Finds names for new files.
 *
 * A name is handed out only once in the life of the process, whether or not its file has been written, so
 * that two callers never write the same file. The first caller gets the wanted name, the others a number
 * behind the stem: "track.gps", "track_1.gps", "track_2.gps" and so on; names that are taken on disk are left
 * out. All functions may be called from any thread.
 */
class LVCORE_EXPORT LvUniqueFilenameMaker : public LvSingleton<LvUniqueFilenameMaker>
{
    Q_DISABLE_COPY_MOVE(LvUniqueFilenameMaker)
    friend class LvSingleton<LvUniqueFilenameMaker>;

public:
    /// A file that does not exist yet, named after the wanted one. It lies in the wanted directory where that
    /// is an allowed one, otherwise in the first of the allowed ones by path; without any allowed directory
    /// the result is an empty QFileInfo. Whether the directory exists or can be written is not asked; nothing
    /// is created.
    QFileInfo makeUniqueFileNameInSafeContainer(const QFileInfo& wanted, const QSet<QDir>& allowedDirs);

private:
    LvUniqueFilenameMaker();
    ~LvUniqueFilenameMaker();

    [[nodiscard]] bool reserve(const QString& path, const QString& identity);

    QMutex myMutex;
    QSet<QString> myReserved;
    QHash<QString, qint64> myLastNumbers;
};
