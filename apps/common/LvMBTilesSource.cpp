#include "LvMBTilesSource.h"

#include "LvMapText.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <atomic>
#include <sqlite3.h>

namespace
{

constexpr int deepestZoom = 30;
constexpr int maximumTileBytes = 16 * 1024 * 1024;
constexpr int maximumRowBytes = maximumTileBytes + 1024 * 1024;
constexpr int stepsBetweenLooks = 10000; // of the database's machine; some tenths of a millisecond

QString uniqueConnectionName()
{
    static std::atomic<int> myCounter = 0;
    return QStringLiteral("LvMBTilesSource-%1").arg(++myCounter);
}

/// The open database behind the connection; null when it does not come from the library that is linked here.
sqlite3* handleOf(const QSqlDatabase& database)
{
    QSqlQuery query(database);
    const bool isOurs = query.exec(QStringLiteral("SELECT sqlite_source_id()")) && query.next()
        && query.value(0).toString() == QLatin1String(sqlite3_sourceid());
    const QVariant handle = database.driver()->handle();
    return isOurs && qstrcmp(handle.typeName(), "sqlite3*") == 0
        ? *static_cast<sqlite3* const*>(handle.constData())
        : nullptr;
}

} // namespace

LvMBTilesSource::LvMBTilesSource(const QString& fileName)
    : myConnectionName(uniqueConnectionName())
{
    myErrorText = open(fileName); // fills other fields too, so they have to exist before
}

LvMBTilesSource::~LvMBTilesSource()
{
    QSqlDatabase::removeDatabase(myConnectionName);
}

bool LvMBTilesSource::isValid() const
{
    return myErrorText.isEmpty();
}

QString LvMBTilesSource::errorText() const
{
    return myErrorText;
}

QString LvMBTilesSource::attribution() const
{
    return myAttribution;
}

int LvMBTilesSource::minimumZoom() const
{
    return myMinimumZoom;
}

int LvMBTilesSource::maximumZoom() const
{
    return myMaximumZoom;
}

QImage LvMBTilesSource::loadTile(const LvTileKey& key)
{
    QSqlQuery query(QSqlDatabase::database(myConnectionName));
    // The size is asked of the database, so that an absurd entry is never read.
    query.prepare(QStringLiteral("SELECT tile_data FROM tiles WHERE zoom_level = ? AND tile_column = ? "
                                 "AND tile_row = ? AND length(tile_data) <= ?"));
    query.addBindValue(key.zoom);
    query.addBindValue(key.column);
    query.addBindValue((1 << key.zoom) - 1 - key.row);
    query.addBindValue(maximumTileBytes);
    return hasRow(query) ? decodeTile(query.value(0).toByteArray()) : QImage();
}

QString LvMBTilesSource::open(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (!info.exists()) {
        return tr("nicht gefunden");
    }
    if (!info.isFile()) {
        return tr("keine gewöhnliche Datei");
    }
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), myConnectionName);
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    database.setDatabaseName(info.absoluteFilePath());
    if (!database.open()) {
        return tr("lässt sich nicht öffnen: %1").arg(database.lastError().databaseText().simplified());
    }
    limit(database);
    QSqlQuery query(database);
    const bool isPrepared = query.prepare(
        QStringLiteral("SELECT zoom_level, tile_column, tile_row, length(tile_data) FROM tiles LIMIT 1"));
    const bool hasTile = isPrepared && hasRow(query);
    if (query.lastError().isValid()) {
        return tr("keine MBTiles-Datei: %1").arg(query.lastError().databaseText().simplified());
    }
    if (!hasTile) {
        return tr("eine MBTiles-Datei ohne Kacheln");
    }
    const QString format = metadata(QStringLiteral("format")).toLower();
    if (format == QLatin1String("pbf") || format == QLatin1String("mvt")) {
        return tr("eine MBTiles-Datei mit Vektorkacheln; nur Bilder lassen sich zeichnen");
    }
    myName = metadata(QStringLiteral("name"));
    myAttribution = LvMapText::plainAttribution(metadata(QStringLiteral("attribution")));
    myMinimumZoom = zoomLimit(QStringLiteral("minzoom"), QStringLiteral("min"));
    myMaximumZoom = zoomLimit(QStringLiteral("maxzoom"), QStringLiteral("max"));
    return myMaximumZoom < myMinimumZoom ? tr("eine MBTiles-Datei mit widersprüchlichen Zoomstufen")
                                         : QString();
}

QString LvMBTilesSource::metadata(const QString& key)
{
    QSqlQuery query(QSqlDatabase::database(myConnectionName));
    query.prepare(QStringLiteral("SELECT value FROM metadata WHERE name = ?"));
    query.addBindValue(key);
    return hasRow(query) ? query.value(0).toString() : QString();
}

int LvMBTilesSource::zoomLimit(const QString& key, const QString& function)
{
    bool isNumber = false;
    int zoom = metadata(key).toInt(&isNumber);
    if (!isNumber) {
        QSqlQuery query(QSqlDatabase::database(myConnectionName));
        query.prepare(QStringLiteral("SELECT %1(zoom_level) FROM tiles").arg(function));
        zoom = hasRow(query) ? query.value(0).toInt() : 0;
    }
    return std::clamp(zoom, 0, deepestZoom);
}

void LvMBTilesSource::limit(const QSqlDatabase& database)
{
    sqlite3* handle = handleOf(database);
    if (handle == nullptr) {
        return;
    }
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, maximumRowBytes);
    // Views of the file may call what only computes, nothing that reaches out of it.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_progress_handler(handle, stepsBetweenLooks, isOutOfTime, this);
}

bool LvMBTilesSource::hasRow(QSqlQuery& query)
{
    if (myIsOutOfTime) {
        return false;
    }
    query.setForwardOnly(true);
    myQueryTime.start();
    return query.exec() && query.next();
}

int LvMBTilesSource::isOutOfTime(void* source)
{
    auto* self = static_cast<LvMBTilesSource*>(source);
    self->myIsOutOfTime = self->myIsOutOfTime || self->myQueryTime.elapsed() > longestQueryMilliseconds;
    return self->myIsOutOfTime ? 1 : 0;
}
