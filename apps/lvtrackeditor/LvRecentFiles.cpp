#include "LvRecentFiles.h"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace
{

constexpr QLatin1String recentFilesKey("recentFiles");

QStringList storedNames()
{
    const QSettings settings;
    return settings.value(recentFilesKey).toStringList();
}

/// One name for one file, however it was written. Symbolic links stay as the user knows them.
QString absoluteName(const QString& fileName)
{
    return QFileInfo(fileName).absoluteFilePath();
}

} // namespace

LvRecentFiles::LvRecentFiles(QObject* parent)
    : QObject(parent)
{
}

LvRecentFiles::~LvRecentFiles() = default;

QStringList LvRecentFiles::fileNames() const
{
    QStringList names = storedNames();
    names.removeIf([](const QString& name) { return !QFileInfo::exists(name); });
    return names;
}

void LvRecentFiles::add(const QString& fileName)
{
    if (fileName.isEmpty()) {
        return;
    }
    QStringList names = storedNames();
    names.removeAll(absoluteName(fileName));
    names.prepend(absoluteName(fileName));
    names.resize(std::min<qsizetype>(names.size(), maximumCount));
    store(names);
}

void LvRecentFiles::remove(const QString& fileName)
{
    QStringList names = storedNames();
    names.removeAll(absoluteName(fileName));
    store(names);
}

void LvRecentFiles::clear()
{
    store({});
}

void LvRecentFiles::store(const QStringList& fileNames)
{
    if (fileNames == storedNames()) {
        return;
    }
    QSettings settings;
    settings.setValue(recentFilesKey, fileNames);
    Q_EMIT changed();
}
