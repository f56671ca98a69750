#pragma once

#include "lvgeolocation_export.h"

#include <QtGlobal>

/// The geometric kind of a track, as flags. The key strings in track files stand in LvGPXTrackShape.
enum class LVGEOLOCATION_EXPORT LvGPXTrackShapeEnum : quint32 {
    unknown = 0,
    point = 1,
    hop = 2, ///< a flight between two places
    linestring = 4,
    polygon = 8,
    automatic = 256, ///< to be decided from the points of the track
};
