#pragma once

#include <QFlags>

/// The buttons that a row of a track list offers.
enum class LvGPXTrackEditOption : int {
    AddButton = 1,
    DeleteButton = 2,
    ZoomToButton = 4,
    EditButton = 8,
};

Q_DECLARE_FLAGS(LvGPXTrackEditOptions, LvGPXTrackEditOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(LvGPXTrackEditOptions)
