#include "LvGPXTrackFileRegistryKey.h"

#include "LvOwnDirectory.h"

#include <QHashFunctions>

// NOLINTNEXTLINE(modernize-pass-by-value) copies are as cheap
LvGPXTrackFileRegistryKey::LvGPXTrackFileRegistryKey(const LvGPXTrack& track, const QDir& dir)
    : myTrack(track)
    , myDir(LvOwnDirectory::copyOf(dir))
{
}

LvGPXTrackFileRegistryKey::LvGPXTrackFileRegistryKey(const LvGPXTrackFileRegistryKey& other) = default;
LvGPXTrackFileRegistryKey::LvGPXTrackFileRegistryKey(LvGPXTrackFileRegistryKey&& other) noexcept = default;
LvGPXTrackFileRegistryKey&
LvGPXTrackFileRegistryKey::operator=(const LvGPXTrackFileRegistryKey& other) = default;
LvGPXTrackFileRegistryKey&
LvGPXTrackFileRegistryKey::operator=(LvGPXTrackFileRegistryKey&& other) noexcept = default;
LvGPXTrackFileRegistryKey::~LvGPXTrackFileRegistryKey() = default;

bool LvGPXTrackFileRegistryKey::isValid() const
{
    return !LvOwnDirectory::areEqual(myDir, QDir(QString())) && myTrack.isValid();
}

LvGPXTrack LvGPXTrackFileRegistryKey::track() const
{
    return myTrack;
}

QDir LvGPXTrackFileRegistryKey::dir() const
{
    return LvOwnDirectory::copyOf(myDir);
}

size_t LvGPXTrackFileRegistryKey::hash() const
{
    return qHash(*this, 0);
}

bool LvGPXTrackFileRegistryKey::operator==(const LvGPXTrackFileRegistryKey& other) const
{
    return myTrack == other.myTrack && LvOwnDirectory::areEqual(myDir, other.myDir);
}

size_t qHash(const LvGPXTrackFileRegistryKey& key, size_t seed)
{
    return ::qHash(key.track().countPoints(), seed);
}
