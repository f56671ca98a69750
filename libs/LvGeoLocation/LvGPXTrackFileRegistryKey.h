#pragma once

#include "LvGPXTrack.h"
#include "lvgeolocation_export.h"

#include <QDir>
#include <QtGlobal>

/// A track as it is, and the directory that holds its file. A changed track is a different key.
class LVGEOLOCATION_EXPORT LvGPXTrackFileRegistryKey
{
public:
    LvGPXTrackFileRegistryKey(const LvGPXTrack& track, const QDir& dir);
    LvGPXTrackFileRegistryKey(const LvGPXTrackFileRegistryKey& other);
    LvGPXTrackFileRegistryKey(LvGPXTrackFileRegistryKey&& other) noexcept;
    LvGPXTrackFileRegistryKey& operator=(const LvGPXTrackFileRegistryKey& other);
    LvGPXTrackFileRegistryKey& operator=(LvGPXTrackFileRegistryKey&& other) noexcept;
    virtual ~LvGPXTrackFileRegistryKey();

    /// Whether the track is valid and the directory is not the empty one, `QDir(QString())`, which the
    /// toolkit takes for the current directory.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] LvGPXTrack track() const;
    [[nodiscard]] QDir dir() const;

    /// The same for all tracks with the same number of points: equality decides.
    [[nodiscard]] size_t hash() const;

    [[nodiscard]] bool operator==(const LvGPXTrackFileRegistryKey& other) const;

private:
    LvGPXTrack myTrack;
    QDir myDir;
};

/// The hash of the key for QHash; with seed 0 it is the key's own hash().
LVGEOLOCATION_EXPORT size_t qHash(const LvGPXTrackFileRegistryKey& key, size_t seed = 0);
