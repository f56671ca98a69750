#include "LvTileDirectorySource.h"

#include "LvMapText.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace
{

constexpr int deepestZoom = 30; // more would not fit into the whole numbers of a tile key
constexpr qint64 maximumFileSize = 16 * 1024 * 1024;

QByteArray readSmallFile(const QString& name)
{
    const QFileInfo info(name);
    QFile file(name);
    if (!info.isFile() || info.size() > maximumFileSize || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return file.read(maximumFileSize);
}

} // namespace

LvTileDirectorySource::LvTileDirectorySource(const QString& directory)
    : myDirectory(directory)
{
    int smallest = deepestZoom + 1;
    const QStringList folders = myDirectory.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folder : folders) {
        bool isNumber = false;
        const int zoom = folder.toInt(&isNumber);
        if (isNumber && zoom >= 0 && zoom <= deepestZoom && folder == QString::number(zoom)) {
            smallest = std::min(smallest, zoom);
            myMaximumZoom = std::max(myMaximumZoom, zoom);
        }
    }
    myMinimumZoom = std::min(smallest, deepestZoom);
    const QByteArray metadata = readSmallFile(myDirectory.filePath(QStringLiteral("metadata.json")));
    myAttribution = LvMapText::plainAttribution(
        QJsonDocument::fromJson(metadata).object().value(QLatin1String("attribution")).toString());
}

bool LvTileDirectorySource::isValid() const
{
    return myMaximumZoom >= 0;
}

QString LvTileDirectorySource::errorText() const
{
    return isValid() ? QString() : tr("kein Ordner einer Zoomstufe darin ({z}/{x}/{y}.png)");
}

QString LvTileDirectorySource::attribution() const
{
    return myAttribution;
}

int LvTileDirectorySource::minimumZoom() const
{
    return myMinimumZoom;
}

int LvTileDirectorySource::maximumZoom() const
{
    return myMaximumZoom;
}

QImage LvTileDirectorySource::loadTile(const LvTileKey& key)
{
    const QString stem = QStringLiteral("%1/%2/%3.").arg(key.zoom).arg(key.column).arg(key.row);
    for (const char* suffix : {"png", "jpg", "jpeg", "webp"}) {
        const QByteArray bytes = readSmallFile(myDirectory.filePath(stem + QLatin1String(suffix)));
        if (!bytes.isEmpty()) {
            return decodeTile(bytes);
        }
    }
    return {};
}
