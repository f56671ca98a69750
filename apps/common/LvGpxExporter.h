#pragma once

#include <QByteArray>
#include <QtGlobal>

class LvGPXConfiguredTrackList;

/**
 * Tracks as plain GPX 1.1, which other programs read: one "trk" per track with a "trkpt" per point.
 *
 * Enclaves become tracks of their own behind the track that they lie in; styles are left out, for the format
 * has none. Positions that are not set are skipped, and so is what has no point then.
 */
namespace LvGpxExporter
{

/// The whole file, valid against the schema of GPX 1.1; empty when there is no point to write. May be called
/// from any thread.
QByteArray encode(const LvGPXConfiguredTrackList& tracks);

/// At most so many bytes encode() returns, and hardly fewer. Known long before.
qint64 maximumSize(const LvGPXConfiguredTrackList& tracks);

} // namespace LvGpxExporter
