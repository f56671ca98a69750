#pragma once

#include "lvgeolocation_export.h"

#include <QtGlobal>

/**
 * Which parts of a track are drawn, as flags. The key strings in track files stand in
 * LvGPXTrackDisplayOptions.
 *
 * Points and hops also allow the value 4. It has neither a name nor a drawing rule and is only kept in
 * memory.
 */
enum class LVGEOLOCATION_EXPORT LvGPXTrackDisplayOptionsEnum : quint32 {
    none = 0,
    stroke = 1, ///< draw the outline
    fill = 2, ///< fill the enclosed area
};
