#pragma once

#include "lvgeolocation_export.h"

#include <QtGlobal>

/**
 * The figure that marks a point, and the arrow head of a line, as flags. The key strings in track files stand
 * in LvGPXMarkerShape.
 *
 * The value 4 is left out on purpose: it has no key, and normalising a full shape clears it.
 */
enum class LVGEOLOCATION_EXPORT LvGPXMarkerShapeEnum : quint32 {
    unknown = 0,
    disk = 1, ///< the solid twin of circle
    circle = 2,
    x = 8,
    block = 16, ///< the solid twin of rect
    rect = 32,
    rhombus = 64,
    star6 = 128,
    star9 = 256,
    star12 = 512,
    arrow = 1024, ///< an arrow head at the end of a line
};
