#pragma once

#include "LvGPXTrackSelection.h"
#include "LvMapView.h"

#include <QCoreApplication>
#include <QImage>
#include <QRectF>
#include <QString>

class LvMapSource;
class LvOsmScaleRenderer;
class QPainter;

/**
 * A finished picture: map, tracks, scale bar and attribution, on an image or in a file.
 *
 * Scale bar and attribution are drawn smaller than the paint factor asks for where they would not fit into
 * the picture or would cover each other.
 *
 * Tracks with a halo get a light seam of its width. Where the selection fades the map (cropping opacity below
 * 255) the halo shows the map instead.
 */
class LvMapPicture
{
    Q_DECLARE_TR_FUNCTIONS(LvMapPicture)

public:
    /// @param source the map below the tracks, or null for none; it must outlive the picture
    /// @param paintFactor multiplier of all line, marker and text sizes, above 0
    LvMapPicture(LvGPXTrackSelection selection, LvMapView view, LvMapSource* source, double paintFactor);

    [[nodiscard]] const LvGPXTrackSelection& selection() const { return mySelection; }

    /// Shows another part of the globe.
    void setView(const LvMapView& view) { myView = view; }

    /// The notice in the lower right corner; empty for none. By default the one that the map source asks for.
    void setAttribution(const QString& attribution) { myAttribution = attribution; }

    [[nodiscard]] QString attribution() const { return myAttribution; }

    /// Whether the scale bar is drawn; it is by default.
    void setScaleBarVisible(bool isVisible) { myIsScaleBarVisible = isVisible; }

    /// The suffixes that save() knows, in lower case: "png", "jpg", "jpeg", "svg", "pdf".
    static QStringList supportedSuffixes();

    /// Whether scale bar or attribution cover a part of the tracks.
    [[nodiscard]] bool isLegendOnTracks() const;

    /// Pixels at the lower edge that scale bar and attribution need at most, wherever the map is.
    [[nodiscard]] int legendHeight() const;

    /// Draws the picture with a painter whose device has the size of the view. False when there is not enough
    /// memory for it, which only a faded map needs.
    bool draw(QPainter& painter) const;

    /// Draws scale bar and attribution alone, over a map that is there already.
    void drawLegend(QPainter& painter) const;

    /// The picture as an image; transparent where there is no map. A null image when there is not enough
    /// memory.
    [[nodiscard]] QImage toImage() const;

    /// Writes the picture into a file of the kind that its suffix names. The file appears whole or not at
    /// all. Returns why that failed, one line; an empty text on success.
    [[nodiscard]] QString save(const QString& fileName) const;

private:
    struct Legend;

    /// Sets the text of the attribution for the whole process as well: it is measured.
    [[nodiscard]] Legend legend() const;
    [[nodiscard]] LvOsmScaleRenderer scaleRenderer(double factor) const;
    [[nodiscard]] QRectF scaleBox(double factor) const;
    [[nodiscard]] QRect pictureRect() const;
    [[nodiscard]] static QImage transparentImage(const QSize& size);
    void drawMap(QPainter& painter) const;
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
