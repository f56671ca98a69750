#include "LvMapSource.h"

#include "LvMBTilesSource.h"
#include "LvTileDirectorySource.h"
#include "LvWorldMapSource.h"

#include <QFileInfo>

LvMapSource::~LvMapSource() = default;

std::unique_ptr<LvMapSource> LvMapSource::create(const QString& name)
{
    if (name == QLatin1String("none")) {
        return nullptr;
    }
    if (name == QLatin1String("builtin")) {
        return std::make_unique<LvWorldMapSource>();
    }
    if (QFileInfo(name).isDir()) {
        return std::make_unique<LvTileDirectorySource>(name);
    }
    return std::make_unique<LvMBTilesSource>(name);
}
