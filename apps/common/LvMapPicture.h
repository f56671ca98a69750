#pragma once

#include "LvGPXTrackSelection.h"
#include "LvMapView.h"

#include <QImage>
#include <QString>

class LvGPXTrackRenderer;
class LvMapSource;
class QPainter;

/**
 * A finished picture: map, tracks, scale bar and attribution, on an image or in a file.
 *
 * Tracks with a halo get a light seam of its width. Where the selection fades the map (cropping opacity below
 * 255) the halo shows the map instead.
 */
class LvMapPicture
{
public:
    /// @param source the map below the tracks, or null for none; it must outlive the picture
    /// @param paintFactor multiplier of all line, marker and text sizes, above 0
    LvMapPicture(const LvGPXTrackSelection& selection, const LvMapView& view, LvMapSource* source,
                 double paintFactor);

    /// The notice in the lower right corner; empty for none. By default the one that the map source asks for.
    void setAttribution(const QString& attribution) { myAttribution = attribution; }

    [[nodiscard]] QString attribution() const { return myAttribution; }

    /// Whether the scale bar is drawn; it is by default.
    void setScaleBarVisible(bool isVisible) { myIsScaleBarVisible = isVisible; }

    /// The suffixes that save() knows, in lower case: "png", "jpg", "jpeg", "svg", "pdf".
    static QStringList supportedSuffixes();

    /// Draws the picture with a painter whose device has the size of the view.
    void draw(QPainter& painter) const;

    /// The picture as an image; transparent where there is no map. A null image when there is not enough
    /// memory.
    [[nodiscard]] QImage toImage() const;

    /// Writes the picture into a file of the kind that its suffix names. The file appears whole or not at
    /// all. Returns why that failed, one line; an empty text on success.
    [[nodiscard]] QString save(const QString& fileName) const;

private:
    [[nodiscard]] QImage transparentImage() const;
    void drawMap(QPainter& painter) const;
    void drawTracks(QPainter& painter, const LvGPXTrackRenderer& renderer) const;
    void drawLegend(QPainter& painter) const;
    [[nodiscard]] QByteArray encodeImage(const QString& suffix) const;
    [[nodiscard]] QByteArray encodeSvg() const;
    [[nodiscard]] QByteArray encodePdf() const;

    LvGPXTrackSelection mySelection;
    LvMapView myView;
    LvMapSource* mySource;
    QString myAttribution;
    double myPaintFactor;
    bool myIsScaleBarVisible = true;
};
