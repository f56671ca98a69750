#pragma once

#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackElement.h"
#include "LvGPXTrackSelectionComparisonResult.h"
#include "lvgeolocation_export.h"

#include <QString>

class QDir;
class QDomElement;

/**
 * The configured tracks that are shown on a map at one time, with the opacity of the fade outside of them.
 * What an import produces, what the map view draws and what a document stores.
 *
 * A plain value; copies share the tracks.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackSelection : public LvGPXTrackElement
{
public:
    /// No tracks, cropping opacity 255.
    LvGPXTrackSelection();
    /// The tracks, cropping opacity 255.
    LvGPXTrackSelection( // NOLINT(google-explicit-constructor) a selection of these tracks
        const LvGPXConfiguredTrackList& tracks);
    /// Reads the attribute "croppingOpacity" of the element (255 when it is missing) and, below its first
    /// child "gpxtrack", the tracks "locationTrack" (an older name) followed by "configuredTrack".
    /// @param dir the directory that names of included files are relative to
    /// @param prefix stands in front of every one of these names, empty for plain documents
    LvGPXTrackSelection(const QDomElement& element, const QDir& dir, const QString& prefix = QString());
    LvGPXTrackSelection(const LvGPXTrackSelection& other);
    LvGPXTrackSelection(LvGPXTrackSelection&& other) noexcept;
    LvGPXTrackSelection& operator=(const LvGPXTrackSelection& other);
    LvGPXTrackSelection& operator=(LvGPXTrackSelection&& other) noexcept;
    ~LvGPXTrackSelection() override;

    [[nodiscard]] LvGeoPositionList allPoints() const override;
    [[nodiscard]] QList<LvGeoPositionList> chunkedPoints() const override;
    /// Whether there is exactly one track and that is a single point.
    [[nodiscard]] bool isSinglePoint() const override;
    /// The first point of the first track, valid or not; the default position without tracks.
    [[nodiscard]] LvGeoPosition firstPoint() const override;
    /// The last point of the last track that has a valid one; the default position when none has. On purpose
    /// unlike firstPoint(), which does not search.
    [[nodiscard]] LvGeoPosition lastPoint() const override;
    [[nodiscard]] QList<QDateTime> allTimeStamps() const override;
    bool
    visitTrackPoints(const std::function<void(const QList<LvGPXTrackPoint>& points)>& visit) const override;

    bool operator==(const LvGPXTrackSelection& other) const;
    bool operator!=(const LvGPXTrackSelection& other) const;

    /// Whether there is at least one track.
    [[nodiscard]] bool isValid() const;
    /// Whether there is at least one track.
    [[nodiscard]] bool containsAnyMarking() const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] qsizetype count() const;
    /// Whether 0 <= row < count.
    [[nodiscard]] bool isValidRow(int row) const;
    /// Whether 0 <= row < count.
    [[nodiscard]] bool checkRange(int row) const;

    [[nodiscard]] LvGPXConfiguredTrackList tracks() const;
    /// The track at a row; a default-constructed one for a row out of range.
    [[nodiscard]] LvGPXConfiguredTrack value(int row) const;
    /// The configuration at a row; the user's default for a row out of range.
    [[nodiscard]] LvGPXTrackConfiguration configuration(int row) const;

    /// Appends the track with the user's default configuration.
    void addTrack(const LvGPXTrack& track);
    void addTrack(const LvGPXConfiguredTrack& track);
    void addTracks(const LvGPXConfiguredTrackList& tracks);
    /// Appends the tracks of the other selection; the cropping opacity stays.
    void addSelection(const LvGPXTrackSelection& other);
    void setTracks(const LvGPXConfiguredTrackList& tracks);
    /// Removes the track at a valid row.
    void removeAt(int row);
    /// Moves one track so that it ends at row "to"; does nothing unless both rows are valid and differ.
    void moveTrack(int from, int to);

    /// Configures one track and returns true; false for a row out of range or when the row has that
    /// configuration. An unknown track shape keeps the current one, see
    /// LvGPXConfiguredTrack::setConfiguration().
    bool setConfiguration(int row, const LvGPXTrackConfiguration& configuration);
    /// Configures every track; returns whether any row changed.
    bool setConfiguration(const LvGPXTrackConfiguration& configuration);

    /// The opacity as set, 0 to 255.
    [[nodiscard]] int nominalCroppingOpacity() const;
    /// The opacity to draw with: 255 without tracks, else the nominal one.
    [[nodiscard]] int effectiveCroppingOpacity() const;
    /// Stores the opacity as it is; returns whether it changed.
    bool setCroppingOpacity(int opacity);

    /// What has to be redrawn when this selection takes the place of the previous one. Every changed row
    /// stands twice in the result, as in 1, 3, 1, 3: a multiset of rows to refresh.
    [[nodiscard]] LvGPXTrackSelectionComparisonResult compare(const LvGPXTrackSelection& previous) const;
    /// Whether any row that both selections have gets a halo where the previous one had none.
    [[nodiscard]] bool wouldChangeHaloToVisibleAgainst(const LvGPXTrackSelection& previous) const;

    /// Highlights one track: multiplies red, green and blue of its fill and line colour by factor / 128
    /// (limited to 0 ... 255, alpha stays) and widens its line to (factor + 128) / 85 of its width, never
    /// narrowing it. Does nothing for a row out of range.
    void overrideColorOfTrack(int row, int factor);
    /// A copy with the track at the row only; an unchanged copy for a row out of range.
    [[nodiscard]] LvGPXTrackSelection reduceToTrackNumber(int row) const;

    /// Writes the attribute "croppingOpacity" and the child "gpxtrack" with one "configuredTrack" per track.
    /// @param dir an existing directory makes each track a file of its own in it, see LvGPXTrack::toXml()
    void toXml(QDomElement& element, const QDir& dir) const;

private:
    LvGPXConfiguredTrackList myTracks;
    qint32 myCroppingOpacity;
};
