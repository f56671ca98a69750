#pragma once

#include <QByteArray>

class LvGPXConfiguredTrackList;

/**
 * Tracks as GeoJSON (RFC 7946): one feature per track.
 *
 * A track is what it is drawn as: an area becomes a polygon with its enclaves as holes, a single point a
 * point, anything else a line. What crosses the 180° meridian is cut there, as readers expect it; an area
 * around a pole reaches up to it. Positions have seven decimals, and an elevation when any point of the track
 * has one. The properties are "name", "desc", and "coordTimes" with the time of each position (null where
 * there is none) when the track has times. Positions that are not set are skipped, and so are tracks without
 * any other.
 */
namespace LvGeoJsonExporter
{

/// The whole file, a FeatureCollection with one feature per line; empty when there is no point to write. May
/// be called from any thread.
QByteArray encode(const LvGPXConfiguredTrackList& tracks);

} // namespace LvGeoJsonExporter
