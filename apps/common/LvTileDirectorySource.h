#pragma once

#include "LvTiledMapSource.h"

#include <QCoreApplication>
#include <QDir>

/**
 * Map tiles in a folder: "{z}/{x}/{y}.png", or with the suffix "jpg", "jpeg" or "webp" in place of "png".
 *
 * A file "metadata.json" in the folder, as tile tools write it, may name an "attribution".
 */
class LvTileDirectorySource : public LvTiledMapSource
{
    Q_DECLARE_TR_FUNCTIONS(LvTileDirectorySource)

public:
    explicit LvTileDirectorySource(const QString& directory);

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QString errorText() const override;
    [[nodiscard]] QString attribution() const override;

protected:
    [[nodiscard]] int minimumZoom() const override;
    [[nodiscard]] int maximumZoom() const override;
    [[nodiscard]] QImage loadTile(const LvTileKey& key) override;

private:
    QDir myDirectory;
    QString myAttribution;
    int myMinimumZoom = 0;
    int myMaximumZoom = -1; // no zoom level at all
};
