#pragma once

#include "LvGPXConfiguredTrackList.h"

#include <QCoreApplication>
#include <QString>

/// What came out of one file.
struct LvLoadedTracks {
    /// The tracks with at least one point.
    LvGPXConfiguredTrackList tracks;
    /// How many further tracks of the file have no point and were left out.
    int emptyTracks = 0;
    /// Why there is no track at all, one line; empty when there is one.
    QString errorText;
};

/**
 * Loads track files through the track selection factories and tells what they keep to themselves: why nothing
 * came out of a file.
 */
class LvTrackLoader
{
    Q_DECLARE_TR_FUNCTIONS(LvTrackLoader)

public:
    LvTrackLoader() = delete;

    /// Loads a GPX, KML or KMZ file. The name is that of a local file and may hold any characters. Only
    /// regular files are opened.
    static LvLoadedTracks load(const QString& fileName);
};
