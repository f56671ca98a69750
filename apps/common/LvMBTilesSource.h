#pragma once

#include "LvTiledMapSource.h"

#include <QCoreApplication>

/**
 * Map tiles in an MBTiles file: an SQLite database with the tables "metadata" and "tiles", the rows counted
 * from the south. Only raster tiles are drawn.
 *
 * The file is opened for reading only, through a database connection of its own, which belongs to the thread
 * that made the source.
 */
class LvMBTilesSource : public LvTiledMapSource
{
    Q_DECLARE_TR_FUNCTIONS(LvMBTilesSource)

public:
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
    [[nodiscard]] QString metadata(const QString& key) const;
    [[nodiscard]] int zoomLimit(const QString& key, const QString& function) const;

    QString myConnectionName;
    QString myErrorText;
    QString myName;
    QString myAttribution;
    int myMinimumZoom = 0;
    int myMaximumZoom = -1;
};
