#include "LvUniqueFilenameMaker.h"

#include <QMutexLocker>

#include <algorithm>

namespace
{

/// One text for all spellings of a directory: relative or absolute, through symbolic links, with a slash at
/// its end. It stays the same when a missing directory is created: the links on the way to it count already.
QString identityOf(const QDir& directory)
{
    QString existing = QDir::cleanPath(directory.absolutePath());
    QString missing;
    while (!QFileInfo::exists(existing)) {
        const qsizetype slash = existing.lastIndexOf(QLatin1Char('/'));
        if (slash <= 0) {
            return existing + missing;
        }
        missing.prepend(QStringView(existing).sliced(slash));
        existing.truncate(slash);
    }
    return QFileInfo(existing).canonicalFilePath() + missing;
}

QDir chooseDirectory(const QDir& wanted, const QSet<QDir>& allowed)
{
    if (allowed.contains(wanted)) {
        return wanted;
    }
    // The order of a set differs from run to run, that of the paths does not.
    return *std::min_element(allowed.cbegin(), allowed.cend(), [](const QDir& left, const QDir& right) {
        return left.absolutePath() < right.absolutePath();
    });
}

/// The name without its directories; names that stand for a directory are none for a file.
QString safeName(const QFileInfo& wanted)
{
    const QString name = wanted.fileName();
    const bool isName = !name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral("..");
    return isName ? name : QStringLiteral("unnamed");
}

QString numberedName(const QString& name, qint64 number)
{
    if (number == 0) {
        return name;
    }
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const qsizetype stem = dot > 0 ? dot : name.size(); // the name of a hidden file has no suffix
    return name.left(stem) + QLatin1Char('_') + QString::number(number) + name.mid(stem);
}

} // namespace

size_t qHash(const QDir& directory, size_t seed)
{
    return qHash(identityOf(directory), seed);
}

LvUniqueFilenameMaker::LvUniqueFilenameMaker() = default;
LvUniqueFilenameMaker::~LvUniqueFilenameMaker() = default;

QFileInfo LvUniqueFilenameMaker::makeUniqueFileNameInSafeContainer(const QFileInfo& wanted,
                                                                   const QSet<QDir>& allowedDirs)
{
    if (allowedDirs.isEmpty()) {
        return {};
    }
    // Before anything else: directories that several threads pass remember without a guard what they find
    // out.
    const QMutexLocker locker(&myMutex);
    const QDir directory = chooseDirectory(wanted.dir(), allowedDirs);
    const QString identity = identityOf(directory) + QLatin1Char('/');
    const QString name = safeName(wanted);
    // Numbers up to the last one are spent: a folder of many files is not searched from its start each time.
    qint64& number = myLastNumbers.insert(identity + name, myLastNumbers.value(identity + name, -1)).value();
    QString candidate;
    do {
        candidate = numberedName(name, ++number);
    } while (!reserve(directory.filePath(candidate), identity + candidate));
    return QFileInfo(directory, candidate);
}

bool LvUniqueFilenameMaker::reserve(const QString& path, const QString& identity)
{
    const QFileInfo file(path);
    if (myReserved.contains(identity) || file.exists()
        || file.isSymLink()) { // a dangling link does not "exist"
        return false;
    }
    myReserved.insert(identity);
    return true;
}
