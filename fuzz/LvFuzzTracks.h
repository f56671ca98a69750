#pragma once

#include <QList>

class LvGPXConfiguredTrackList;
class LvGPXTrack;
class LvGPXTrackConfiguration;
class LvGPXTrackElement;
class LvGPXTrackPoint;
class LvGeoPosition;
class QDomElement;

/// Rules that hold for tracks from anywhere; each reports what is broken through LvFuzz::expect().
namespace LvFuzz
{

/// All views of the points of one element fit together.
void checkElement(const LvGPXTrackElement& element);

/// The KML tuple of the point gives the point back, as exactly as the form is.
void checkPoint(const LvGPXTrackPoint& point);

/// checkElement() and checkPoint() for the track, its segments and its enclaves, and the order of tracks.
void checkTrack(const LvGPXTrack& track);

void checkTracks(const LvGPXConfiguredTrackList& tracks);

// Equal to the last bit; what is no number equals what is no number.
[[nodiscard]] bool isSamePosition(const LvGeoPosition& a, const LvGeoPosition& b);
[[nodiscard]] bool isSamePoint(const LvGPXTrackPoint& a, const LvGPXTrackPoint& b);
[[nodiscard]] bool isSamePoints(const QList<LvGPXTrackPoint>& a, const QList<LvGPXTrackPoint>& b);

/// The same for all that a track holds, its enclaves included.
[[nodiscard]] bool isSameTrack(const LvGPXTrack& a, const LvGPXTrack& b);
[[nodiscard]] bool isSameTracks(const QList<LvGPXTrack>& a, const QList<LvGPXTrack>& b);

/// The same for configurations, whose widths may be no numbers.
[[nodiscard]] bool isSame(const LvGPXTrackConfiguration& a, const LvGPXTrackConfiguration& b);

/// The track in an element, read in the plainest way: element by element through a tree. Includes are not
/// followed.
[[nodiscard]] LvGPXTrack plainTrack(const QDomElement& trk);

/// Whether a track is what the format can keep of the one that was written: no description, positions to
/// seven digits, no point at 0°/0°, milliseconds that come back as seconds.
[[nodiscard]] bool isWhatWasWritten(const LvGPXTrack& read, const LvGPXTrack& written);

/// The same for configurations, whose widths are written as whole pixels and colours with eight bits a
/// channel.
[[nodiscard]] bool isWhatWasWritten(const LvGPXTrackConfiguration& read,
                                    const LvGPXTrackConfiguration& written);

} // namespace LvFuzz
