#include "LvGPXTrackSelectionComparisonResult.h"

LvGPXTrackSelectionComparisonResult::LvGPXTrackSelectionComparisonResult() = default;
LvGPXTrackSelectionComparisonResult::LvGPXTrackSelectionComparisonResult(
    const LvGPXTrackSelectionComparisonResult& other) = default;
LvGPXTrackSelectionComparisonResult::LvGPXTrackSelectionComparisonResult(
    LvGPXTrackSelectionComparisonResult&& other) noexcept = default;
LvGPXTrackSelectionComparisonResult&
LvGPXTrackSelectionComparisonResult::operator=(const LvGPXTrackSelectionComparisonResult& other) = default;
LvGPXTrackSelectionComparisonResult& LvGPXTrackSelectionComparisonResult::operator=(
    LvGPXTrackSelectionComparisonResult&& other) noexcept = default;
LvGPXTrackSelectionComparisonResult::~LvGPXTrackSelectionComparisonResult() = default;

QList<int> LvGPXTrackSelectionComparisonResult::changingTracks() const
{
    return myChangingTracks;
}

void LvGPXTrackSelectionComparisonResult::setChangingTracks(const QList<int>& rows)
{
    myChangingTracks = rows;
}

void LvGPXTrackSelectionComparisonResult::addChangingTrack(int row)
{
    myChangingTracks.append(row);
}

LvGPXTrackAspect LvGPXTrackSelectionComparisonResult::changingAspects() const
{
    return myChangingAspects;
}

void LvGPXTrackSelectionComparisonResult::setChangingAspects(const LvGPXTrackAspect& aspects)
{
    myChangingAspects = aspects;
}

void LvGPXTrackSelectionComparisonResult::addChangingAspects(const LvGPXTrackAspect& aspects)
{
    myChangingAspects |= aspects;
}

bool LvGPXTrackSelectionComparisonResult::trackCountChanges() const
{
    return myTrackCountChanges;
}

void LvGPXTrackSelectionComparisonResult::setTrackCountChanges(bool changes)
{
    myTrackCountChanges = changes;
}

LvGPXTrackSelectionComparisonResult&
LvGPXTrackSelectionComparisonResult::operator+=(const LvGPXTrackSelectionComparisonResult& other)
{
    const QList<int> rows = other.myChangingTracks; // a result may be added to itself
    myChangingTracks.append(rows);
    myChangingAspects |= other.myChangingAspects;
    myTrackCountChanges = myTrackCountChanges || other.myTrackCountChanges;
    return *this;
}

LvGPXTrackSelectionComparisonResult
LvGPXTrackSelectionComparisonResult::operator+(const LvGPXTrackSelectionComparisonResult& other) const
{
    LvGPXTrackSelectionComparisonResult sum(*this);
    sum += other;
    return sum;
}

bool LvGPXTrackSelectionComparisonResult::isMergeCompatible(
    const LvGPXTrackSelectionComparisonResult& other) const
{
    return myChangingAspects == other.myChangingAspects && myChangingTracks == other.myChangingTracks
        && !myTrackCountChanges;
}
