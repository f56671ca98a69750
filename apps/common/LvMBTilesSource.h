#pragma once

#include "LvTiledMapSource.h"

#include <QCoreApplication>
#include <QElapsedTimer>

class QSqlDatabase;
class QSqlQuery;

/**
 * Map tiles in an MBTiles file: an SQLite database with the tables "metadata" and "tiles", the rows counted
 * from the south. Only raster tiles are drawn.
 *
 * The file is opened for reading only, through a database connection of its own, which belongs to the thread
 * that made the source. Its tables may be views, which a hostile file can make endless: a query that takes
 * longer than longestQueryMilliseconds is ended, and none is made after it.
 */
class LvMBTilesSource : public LvTiledMapSource
{
    Q_DECLARE_TR_FUNCTIONS(LvMBTilesSource)

public:
    /// How long one query may take.
    static constexpr qint64 longestQueryMilliseconds = 3000;

    explicit LvMBTilesSource(const QString& fileName);
    ~LvMBTilesSource() override;
    Q_DISABLE_COPY_MOVE(LvMBTilesSource)

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QString errorText() const override;
    [[nodiscard]] QString attribution() const override;

    /// Name of the map from the metadata.
    [[nodiscard]] QString name() const { return myName; }

protected:
    [[nodiscard]] int minimumZoom() const override;
    [[nodiscard]] int maximumZoom() const override;
    [[nodiscard]] QImage loadTile(const LvTileKey& key) override;

private:
    /// Opens the file and reads the metadata; returns why that failed.
    QString open(const QString& fileName);
    [[nodiscard]] QString metadata(const QString& key);
    [[nodiscard]] int zoomLimit(const QString& key, const QString& function);

    /// Makes the database refuse absurd values and end endless queries.
    void limit(const QSqlDatabase& database);

    /// Runs a prepared query and goes to its first row, of which there has to be one.
    bool hasRow(QSqlQuery& query);

    /// For the database, which asks from time to time: not 0 when the query has taken too long.
    static int isOutOfTime(void* source);

    QString myConnectionName;
    QString myErrorText;
    QString myName;
    QString myAttribution;
    int myMinimumZoom = 0;
    int myMaximumZoom = -1;
    QElapsedTimer myQueryTime;
    bool myIsOutOfTime = false;
};
