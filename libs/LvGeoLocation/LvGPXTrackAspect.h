#pragma once

#include <QFlags>

/// What differs between two configured tracks.
enum class LvGPXTrackAspectFlag : int {
    LineWidth = 1,
    LineColor = 2,
    Track = 4, ///< name, description, shape or geometry, as LvGPXTrack::operator!= sees it
};

Q_DECLARE_FLAGS(LvGPXTrackAspect, LvGPXTrackAspectFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(LvGPXTrackAspect)
