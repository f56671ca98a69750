#pragma once

#include "LvGPXTrackAspect.h"
#include "lvgeolocation_export.h"

#include <QList>

/**
 * How a track selection differs from the one drawn before: which rows changed, in which aspects, and whether
 * their number did. The rows are a multiset in the order they were found; nothing removes duplicates.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackSelectionComparisonResult
{
public:
    LvGPXTrackSelectionComparisonResult();
    LvGPXTrackSelectionComparisonResult(const LvGPXTrackSelectionComparisonResult& other);
    LvGPXTrackSelectionComparisonResult(LvGPXTrackSelectionComparisonResult&& other) noexcept;
    LvGPXTrackSelectionComparisonResult& operator=(const LvGPXTrackSelectionComparisonResult& other);
    LvGPXTrackSelectionComparisonResult& operator=(LvGPXTrackSelectionComparisonResult&& other) noexcept;
    virtual ~LvGPXTrackSelectionComparisonResult();

    [[nodiscard]] QList<int> changingTracks() const;
    void setChangingTracks(const QList<int>& rows);
    /// Appends the row, also when it is already there.
    void addChangingTrack(int row);

    [[nodiscard]] LvGPXTrackAspect changingAspects() const;
    void setChangingAspects(const LvGPXTrackAspect& aspects);
    void addChangingAspects(const LvGPXTrackAspect& aspects);

    [[nodiscard]] bool trackCountChanges() const;
    void setTrackCountChanges(bool changes);

    /// Appends the rows of the other result and unites the aspects and the count flags.
    LvGPXTrackSelectionComparisonResult& operator+=(const LvGPXTrackSelectionComparisonResult& other);
    [[nodiscard]] LvGPXTrackSelectionComparisonResult
    operator+(const LvGPXTrackSelectionComparisonResult& other) const;

    /// Whether one redrawing can serve both results: the same rows in the same order, the same aspects, and
    /// no change of the track count in this one. The count flag of the other is not looked at.
    [[nodiscard]] bool isMergeCompatible(const LvGPXTrackSelectionComparisonResult& other) const;

private:
    QList<int> myChangingTracks;
    LvGPXTrackAspect myChangingAspects;
    bool myTrackCountChanges = false;
};
