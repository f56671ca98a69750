#pragma once

#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrackSelectionComparisonResult.h"
#include "lvgeolocation_export.h"

#include <QList>

#include <initializer_list>

class QDir;
class QDomElement;

/**
 * An ordered list of configured tracks: what a track file gives, and the rows of a track selection.
 *
 * A plain value on an implicitly shared list; use std::as_const in loops that only read.
 */
class LVGEOLOCATION_EXPORT LvGPXConfiguredTrackList
{
public:
    using value_type = LvGPXConfiguredTrack; // NOLINT(readability-identifier-naming) the container interface
    using iterator = QList<LvGPXConfiguredTrack>::iterator; // NOLINT(readability-identifier-naming) see above
    using const_iterator = // NOLINT(readability-identifier-naming) see above
        QList<LvGPXConfiguredTrack>::const_iterator;

    LvGPXConfiguredTrackList();
    // NOLINTNEXTLINE(google-explicit-constructor) a list of one
    LvGPXConfiguredTrackList(const LvGPXConfiguredTrack& track);
    // NOLINTNEXTLINE(google-explicit-constructor) nothing is lost or added
    LvGPXConfiguredTrackList(const QList<LvGPXConfiguredTrack>& tracks);
    LvGPXConfiguredTrackList(std::initializer_list<LvGPXConfiguredTrack> tracks);
    /// Reads every child element of the given name, in document order.
    /// @param dir the directory that names of included files are relative to
    LvGPXConfiguredTrackList(const QDomElement& parent, const QString& tagName, const QDir& dir);
    LvGPXConfiguredTrackList(const LvGPXConfiguredTrackList& other);
    LvGPXConfiguredTrackList(LvGPXConfiguredTrackList&& other) noexcept;
    LvGPXConfiguredTrackList& operator=(const LvGPXConfiguredTrackList& other);
    LvGPXConfiguredTrackList& operator=(LvGPXConfiguredTrackList&& other) noexcept;
    virtual ~LvGPXConfiguredTrackList();

    /// Asks the user for a track file and reads it; empty when the user cancels or nothing can be read.
    /// For the user interface thread.
    [[nodiscard]] static LvGPXConfiguredTrackList fromFile();

    bool operator==(const LvGPXConfiguredTrackList& other) const;

    /// Whether there is at least one track.
    [[nodiscard]] bool isValid() const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] qsizetype count() const;
    /// Whether 0 <= row < count.
    [[nodiscard]] bool checkRange(int row) const;

    /// The track at a valid row.
    [[nodiscard]] const LvGPXConfiguredTrack& at(qsizetype row) const;
    [[nodiscard]] const LvGPXConfiguredTrack& operator[](qsizetype row) const;
    /// The track at a valid row, for changing it; detaches.
    [[nodiscard]] LvGPXConfiguredTrack& operator[](qsizetype row);
    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const;
    [[nodiscard]] iterator begin();
    [[nodiscard]] iterator end();

    void append(const LvGPXConfiguredTrack& track);
    void append(const LvGPXConfiguredTrackList& tracks);
    /// Removes the track at a valid row.
    void removeAt(int row);
    /// Moves one track so that it ends at row "to"; those between shift by one. Both rows must be valid.
    void moveTrack(int from, int to);

    /// The configuration at a row; the user's default for a row out of range.
    [[nodiscard]] LvGPXTrackConfiguration configuration(int row) const;
    /// Configures one track and returns true; false for a row out of range or when the row has that
    /// configuration. An unknown track shape counts as automatic; see
    /// LvGPXConfiguredTrack::setConfiguration() for the rest.
    bool setConfiguration(int row, const LvGPXTrackConfiguration& configuration);

    /// The rows that both lists have and whose tracks differ, and in what. Says nothing about a different
    /// length.
    [[nodiscard]] LvGPXTrackSelectionComparisonResult compare(const LvGPXConfiguredTrackList& other) const;
    /// Whether any row that both lists have gets a halo where the previous one had none.
    [[nodiscard]] bool wouldChangeHaloToVisibleAgainst(const LvGPXConfiguredTrackList& previous) const;

    /// Appends each track as a child of the given name, in list order; see LvGPXConfiguredTrack::toXml().
    void toXml(QDomElement& parent, const QString& tagName, const QDir& dir) const;

private:
    QList<LvGPXConfiguredTrack> myTracks;
};
