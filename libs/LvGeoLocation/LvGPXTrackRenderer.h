#pragma once

#include "LvDistance.h"
#include "LvGPXTrackSelection.h"
#include "LvIntRange.h"
#include "lvgeolocation_export.h"

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QSize>

#include <span>
#include <vector>

class LvGPXConfiguredTrack;
class LvGPXTrack;
class LvGPXTrackConfiguration;
class LvGeoPosition;
class LvGeoPositionList;
class LvOutlineTiles;

/**
 * What a drawing is for. Any other value draws lines as wide as their halo, with the colours as configured
 * and only where the display options ask for it.
 */
enum class TrackRenderOption : int {
    Normal = 0, ///< as configured: line width, pen style, colours, display options
    Foreground =
        1 ///< everything the track covers: with its halo, solid, opaque, outline and area always drawn
};

/**
 * Draws the tracks of a selection onto images and fades a map outside of them.
 *
 * Abstract: the application derives from it and says where a position lies on the image (see project()). Pen
 * widths, marker sizes, arrow heads and the thinning of lines are multiplied by the rendering factor. Every
 * track is drawn once per copy of the world that can touch the device, and runs on over the 180° meridian
 * into the next copy.
 *
 * Immutable, so several threads may draw with one renderer, each onto a device of its own. Long tracks are
 * projected, and images faded, in parallel where the rule of LvConcurrent allows it. Empty tracks draw
 * nothing. A projected point that is not finite, or farther than 1e12 pixels from the origin, is left out of
 * the drawing.
 */
class LVGEOLOCATION_EXPORT LvGPXTrackRenderer
{
public:
    using TrackRenderOption = ::TrackRenderOption;
    using enum ::TrackRenderOption;

    LvGPXTrackRenderer(const LvGPXTrackSelection& selection, const QSize& targetImageSize,
                       double renderingFactor);
    virtual ~LvGPXTrackRenderer();

    /// Pixel of a position in the unshifted copy of the world. Called from several threads at once; must
    /// repeat the world every aroundTheWorldOffset() pixels.
    [[nodiscard]] virtual QPointF project(const LvGeoPosition& position) const = 0;

    [[nodiscard]] const LvGPXTrackSelection& selection() const;
    [[nodiscard]] QSize targetImageSize() const;
    [[nodiscard]] double renderingFactor() const;

    /// The value times the rendering factor.
    [[nodiscard]] double scale(double value) const;

    /// All tracks on a transparent image of the target size, antialiased, as QImage::Format_ARGB32. A null
    /// image when the target size is empty.
    [[nodiscard]] QImage render(TrackRenderOption option) const;

    /// As render(), without antialiasing and as QImage::Format_ARGB32_Premultiplied.
    [[nodiscard]] QImage renderQuickAndDirty(TrackRenderOption option) const;

    /// renderQuickAndDirty() of the foreground: the mask of what the tracks cover.
    [[nodiscard]] QImage renderForeground() const;

    /// Draws all tracks in list order, so that later ones lie on top, in every visible copy of the world.
    void renderWith(QPainter& painter, TrackRenderOption option) const;

    /// The background, opaque under tracks, areas and halos and elsewhere faded to the selection's cropping
    /// opacity, as QImage::Format_ARGB32. Unchanged at opacity 255. The fading replaces the alpha of the
    /// background, which is taken to be opaque; what lies outside the target size counts as not covered.
    [[nodiscard]] QImage crop(const QImage& background) const;

    /// Replaces the alpha byte of each pixel of the given rows by the table's entry for the alpha byte of the
    /// mask; colour bytes stay. Rows and columns outside the mask count as alpha 0. Nothing happens unless
    /// the pixels of both images have an alpha byte in front of three colour bytes, premultiplied or not.
    static void mergeCropping(QImage& result, const QImage& mask, const LvIntRange& rows,
                              std::span<const uchar, 256> table);

    /// The same with the first of the table's 256 bytes.
    static void mergeCropping(QImage& result, const QImage& mask, const LvIntRange& rows, const uchar* table);

    /// The pixel vector from one copy of the world to its eastern neighbour.
    [[nodiscard]] QPointF aroundTheWorldOffset() const;

    /// The world copies that can touch the painter's device, from -(n + 1) to n + 1 where n is the number of
    /// whole worlds in the device's width. Only copy 0 when the world is narrower than one pixel, which no
    /// meaningful projection is.
    LvIntRange visibleShifts(QPainter* painter) const;

    // Drawing of one track, in every visible copy of the world.
    void drawTrack(QPainter* painter, const LvGPXConfiguredTrack& track, TrackRenderOption option) const;
    void drawLine(QPainter* painter, const LvGPXConfiguredTrack& track, TrackRenderOption option) const;
    void drawPolygon(QPainter* painter, const LvGPXConfiguredTrack& track, TrackRenderOption option) const;

    /// The marker of the track at its first drawing point; nothing when that point has an angle outside
    /// ±360°.
    void drawPoint(QPainter* painter, const LvGPXConfiguredTrack& track, TrackRenderOption option) const;

    // Drawing of a ready path, once.

    /// The outline, if the option or the display options ask for it.
    void drawPath(QPainter* painter, const QPainterPath& path, const LvGPXTrackConfiguration& config,
                  TrackRenderOption option) const;

    /// The outline and, when the marker shape asks for it, the arrow head.
    void drawLine(QPainter* painter, const QPainterPath& path, const LvGPXTrackConfiguration& config,
                  TrackRenderOption option) const;

    /// The area, if the option or the display options ask for it, and the outline over it.
    void drawPolygon(QPainter* painter, const QPainterPath& path, const LvGPXTrackConfiguration& config,
                     TrackRenderOption option) const;

    /// The two barbs at the path's end, where the outline is drawn too: half as long as the way from the
    /// path's first to its last element, but at least 10 and at most 100 pixels, times the rendering factor.
    void drawArrowHead(QPainter* painter, const QPainterPath& path, const LvGPXTrackConfiguration& config,
                       TrackRenderOption option) const;

    /// The track on the unshifted copy of the world, with its enclaves (but not theirs) as further subpaths;
    /// a line that is shown as an area is closed. Empty when the track is too small to be more than a point.
    [[nodiscard]] QPainterPath createPainterPath(const LvGPXConfiguredTrack& track) const;

    /// The track's points as one line, smoothed unless the strength is 100 (per cent of each point's own
    /// place that is kept), without points closer than 4 pixels (times the rendering factor, |dx| + |dy|) to
    /// the one before. Ends at the last point. Empty when no point is farther than that from the first.
    [[nodiscard]] QPainterPath createPainterPath(const LvGPXTrack& track, int strength, int steps) const;

    // Pens, brushes and colours.

    /// A round pen without pen style, as wide as the line, or as line and halo together if not `Normal`.
    /// Never wider than 10000 pixels, and 0 wide for a width that is no number; points are limited likewise.
    [[nodiscard]] QPen solidPenFromTrack(const LvGPXTrackConfiguration& config,
                                         TrackRenderOption option) const;

    /// The solid pen, for `Normal` with the configuration's pen style.
    [[nodiscard]] QPen penFromTrack(const LvGPXTrackConfiguration& config, TrackRenderOption option) const;

    [[nodiscard]] static QBrush brushFromTrack(const LvGPXTrackConfiguration& config,
                                               TrackRenderOption option);
    [[nodiscard]] static QColor lineColor(const LvGPXTrackConfiguration& config, TrackRenderOption option);
    [[nodiscard]] static QColor fillColor(const LvGPXTrackConfiguration& config, TrackRenderOption option);

    /// The colour, opaque for `Foreground`.
    [[nodiscard]] static QColor adaptColor(const QColor& color, TrackRenderOption option);

    // Geometry on the image. Angles are in degrees, counter-clockwise from the direction to the right.

    /// Direction of the path's end: the plain mean of its angles at 95, 96, 97, 98 and 99 % of its length.
    [[nodiscard]] static double detectAngleOfPath(const QPainterPath& path);

    /// The vector of the given length that points back along the angle.
    [[nodiscard]] static QPointF carthesian(double length, double angle);

    /// The point moved back along the angle.
    [[nodiscard]] static QPointF movePolar(const QPointF& point, double length, double angle);

    // From positions to pixels, for lists of positions: what createPainterPath() does with the points of a
    // track, to the bit. The lists of a track stand end to end in one array; `ranges` holds the array
    // indices of each list, and list numbers index both. Each list is worked on alone, so all of them may be
    // at once.

    /// Projects the positions of one list into its range of the array.
    void projectPoints(const LvGeoPositionList& positions, const LvIntRange& range, QPointF* points) const;

    /// Projects all lists in parallel.
    void projectPointsPP(const QList<LvGeoPositionList>& lists, const QList<LvIntRange>& ranges,
                         const QList<int>& numbers, QPointF* points) const;

    /// Adds the offsets to the points of one range.
    static void shiftProjected(const LvIntRange& range, const QPointF* offsets, QPointF* points);

    /// 1 when the step from a to b crosses the 180° meridian eastwards, -1 when it crosses it westwards, else
    /// 0.
    [[nodiscard]] static int checkDateLineCrossing(const LvGeoPosition& a, const LvGeoPosition& b);

    /// Writes the crossing of the step to each point of one list, from the point before it, which for the
    /// first one is the last point of the lists before.
    static void checkDateLineCrossings(int number, const QList<LvGeoPositionList>& lists,
                                       const QList<LvIntRange>& ranges, int* crossings);

    /// Writes for each point by how much the 180° meridian crossings up to it shift it. Returns whether there
    /// is any crossing; if not, the offsets are left alone.
    bool createDateLineCrossingOffsets(const QList<LvGeoPositionList>& lists, const QList<LvIntRange>& ranges,
                                       const QList<int>& numbers, QList<QPointF>& offsets) const;

protected:
    LvGPXTrackRenderer(const LvGPXTrackRenderer& other);
    LvGPXTrackRenderer(LvGPXTrackRenderer&& other) noexcept;
    LvGPXTrackRenderer& operator=(const LvGPXTrackRenderer& other);
    LvGPXTrackRenderer& operator=(LvGPXTrackRenderer&& other) noexcept;

private:
    struct Figure; // a track's shape and path
    struct Run;
    struct Crossing;

    // Where tiles are given, the painter paints onto their image: outlines are left to them, and copies of
    // the world that do not touch it are left out.
    [[nodiscard]] QImage renderImage(TrackRenderOption option, QPainter::RenderHints hints) const;
    [[nodiscard]] bool drawImage(QImage& image, TrackRenderOption option, QPainter::RenderHints hints) const;
    void drawTracks(QPainter* painter, TrackRenderOption option, LvOutlineTiles& tiles) const;
    [[nodiscard]] Figure figureOf(const LvGPXConfiguredTrack& track) const;
    void drawFigure(QPainter* painter, const LvGPXConfiguredTrack& track, Figure&& figure,
                    TrackRenderOption option, LvOutlineTiles* tiles) const;
    void drawOnTiles(QPainter* painter, const QPointF& offset, Figure& figure,
                     const LvGPXTrackConfiguration& config, TrackRenderOption option,
                     LvOutlineTiles& tiles) const;
    void drawPoint(QPainter* painter, const LvGPXConfiguredTrack& track, TrackRenderOption option,
                   LvOutlineTiles* tiles) const;
    void fillPath(QPainter* painter, const QPainterPath& path, const LvGPXTrackConfiguration& config,
                  TrackRenderOption option) const;
    template <class Draw>
    void repeatAroundTheWorld(QPainter* painter, const QRectF& touched, LvOutlineTiles* tiles,
                              const Draw& draw) const;
    [[nodiscard]] QRectF touchedBy(const QRectF& points, const LvGPXTrackConfiguration& config,
                                   TrackRenderOption option) const;
    [[nodiscard]] std::vector<QPointF> linePoints(const LvGPXTrack& track, int strength, int steps) const;
    [[nodiscard]] std::vector<Crossing> projectRuns(const std::vector<Run>& runs,
                                                    std::span<QPointF> points) const;
    void projectRun(const Run& run, std::span<QPointF> points, std::vector<Crossing>& crossings) const;
    void shiftByCrossings(const std::vector<Crossing>& crossings, std::span<QPointF> points) const;
    void thin(std::vector<QPointF>& points) const;
    [[nodiscard]] QImage maskOfTracks() const;

    LvGPXTrackSelection mySelection;
    QSize myTargetImageSize;
    double myRenderingFactor;
};
