#pragma once

#include "LvGPXTrackSelection.h"

#include <QList>

/// What a document holds and a document file stores: the tracks with their styles, the cropping opacity, and
/// which tracks are shown. A plain value; copies share the tracks.
struct LvTrackDocumentContent {
    LvGPXTrackSelection selection;
    /// One entry per track of the selection.
    QList<bool> visibility;

    bool operator==(const LvTrackDocumentContent& other) const
    {
        return visibility == other.visibility && selection == other.selection;
    }
};
