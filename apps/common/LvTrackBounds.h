#pragma once

#include "LvGeoPositionRect.h"

class LvGPXTrackElement;
class LvGPXTrackSelection;
class LvGeoPositionList;

/**
 * The smallest box around tracks, also where they cross the 180° meridian: then its west is greater than its
 * east.
 *
 * A line is followed from point to point the short way round, as it is drawn; between several tracks the
 * widest part of the globe that none of them touches is left out. Positions that count as not set are
 * skipped. Thread-safe.
 */
namespace LvTrackBounds
{

/// The box around one connected line; an invalid box when it has no valid position.
LvGeoPositionRect ofElement(const LvGPXTrackElement& element);

/// The box around all tracks of a selection; an invalid box when none of them has a valid position.
LvGeoPositionRect ofSelection(const LvGPXTrackSelection& selection);

} // namespace LvTrackBounds
