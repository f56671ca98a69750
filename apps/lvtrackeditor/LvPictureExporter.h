#pragma once

#include "LvGPXTrackSelection.h"
#include "LvMapView.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

class LvMapPicture;
class LvMapSource;
class QPainter;

/// How a picture is to be made of what the map shows.
struct LvPictureOptions {
    enum class Extent {
        Shown, ///< at least what the map shows
        AllTracks, ///< the tracks with some air around them
    };

    /// In pixels.
    QSize size;
    /// Multiplier of all line, marker and text sizes, above 0.
    double paintFactor = 1.0;
    Extent extent = Extent::Shown;
    bool hasScaleBar = true;
};

/**
 * Makes pictures of any size of what the map shows, in files or on paper.
 *
 * A value that has no ties to the map: pictures may be made in any thread. Each of them opens the map source
 * anew.
 */
class LvPictureExporter
{
    Q_DECLARE_TR_FUNCTIONS(LvPictureExporter)

public:
    /// @param shown the tracks that are shown
    /// @param view what the map shows, in its pixels
    /// @param mapSource "builtin", "none", a folder, an MBTiles file or the address of a tile server
    /// @param attribution the notice on the map; empty for the one that comes with the map
    LvPictureExporter(LvGPXTrackSelection shown, const LvMapView& view, QString mapSource,
                      QString attribution);

    /// Size of what the map shows.
    [[nodiscard]] QSize shownSize() const { return myView.size(); }

    [[nodiscard]] bool hasTracks() const { return !mySelection.isEmpty(); }

    /// What a picture with these options shows of the globe.
    [[nodiscard]] LvMapView viewFor(const LvPictureOptions& options) const;

    /// Draws the picture with a painter whose device has the size of the picture. Returns why that failed, a
    /// sentence for the user; an empty text on success. With a tile server it waits for the tiles.
    [[nodiscard]] QString draw(QPainter& painter, const LvPictureOptions& options) const;

    /// Writes a file of the kind that its suffix names (LvMapPicture::supportedSuffixes()). The file appears
    /// whole or not at all. Returns why that failed, a sentence for the user; an empty text on success. With
    /// a tile server it waits for the tiles.
    [[nodiscard]] QString save(const QString& fileName, const LvPictureOptions& options) const;

private:
    /// Makes the picture ready and hands it on. Returns why there is none, or what the receiver returns.
    QString withPicture(const LvPictureOptions& options,
                        const std::function<QString(LvMapPicture&)>& use) const;

    /// Opens the map and has it at hand for the view. Null for no map; then the text says whether that is an
    /// error.
    [[nodiscard]] std::unique_ptr<LvMapSource> openSource(const LvMapView& view, double paintFactor,
                                                          QString& errorText) const;

    LvGPXTrackSelection mySelection;
    LvMapView myView;
    QString myMapSource;
    QString myAttribution;
};
