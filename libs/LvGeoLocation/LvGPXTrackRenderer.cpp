#include "LvGPXTrackRenderer.h"

#include "LvConcurrent.h"
#include "LvCropFade.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackPointImpl.h"
#include "LvGPXTrackSmoothing.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionImpl.h"
#include "LvGeoPositionList.h"
#include "LvOutlineTiles.h"
#include "LvVectorRegisters.h"

#include <QColorSpace>
#include <QLineF>
#include <QPaintDevice>
#include <QPainter>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

namespace
{

constexpr int opaque = 255;
constexpr int unsmoothedStrength = 100; // per cent of each point's own place
constexpr double thinningPixels = 4.0;
constexpr double shortestBarbPixels = 10.0;
constexpr double longestBarbPixels = 100.0;
constexpr double barbAngleDegrees = 30.0;
constexpr std::array arrowAnglePlaces = {0.95, 0.96, 0.97, 0.98, 0.99};

// Farther than the other side of the world at every zoom level, yet near enough for the painter to compute
// with.
constexpr double farthestPixel = 1e12;

// Nearly the height of a poster in print. The toolkit draws outlines of a million pixels in seconds each, and
// dashes of infinite length never end.
constexpr double largestDrawnPixels = 10'000.0;

// By how much antialiasing, and the rounding of hairlines, may reach over the exact outline of a figure.
constexpr double outlineTolerancePixels = 2.0;

// Projecting this many points takes some ten microseconds; less is not worth a second thread.
constexpr int pointsWorthThreads = 2048;

// Of a long segment, so many points are one piece of work: each core gets some even of a short track.
constexpr int pointsOfRun = 16384;

// Tracks whose paths are made at once, in several threads. Fewer than the smallest number are left to the
// threads of each track.
constexpr qsizetype tracksPerBatch = 64;
constexpr qsizetype tracksWorthThreads = 4;

bool isDrawable(const QPointF& pixel)
{
    // False for what is not a number, too.
    return std::abs(pixel.x()) <= farthestPixel && std::abs(pixel.y()) <= farthestPixel;
}

/// The width or radius that is drawn for one that may come from any file: 0 for what is not a number.
double drawnSize(double pixels)
{
    return std::isnan(pixels) ? 0.0 : std::clamp(pixels, -largestDrawnPixels, largestDrawnPixels);
}

bool hasAlphaByte(const QImage& image)
{
    return image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
}

/// Whether the colours of a pixel are those that QImage::Format_ARGB32 would have in the same bytes.
bool hasPlainColorBytes(const QImage& image)
{
    return image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_RGB32;
}

/// An image of the same size and properties with whatever pixels: those are about to be written.
QImage sameWithoutPixels(const QImage& image)
{
    QImage same(image.size(), QImage::Format_ARGB32);
    same.setDevicePixelRatio(image.devicePixelRatio());
    same.setDotsPerMeterX(image.dotsPerMeterX());
    same.setDotsPerMeterY(image.dotsPerMeterY());
    same.setOffset(image.offset());
    same.setColorSpace(image.colorSpace());
    const QStringList keys = image.textKeys();
    for (const QString& key : keys) {
        same.setText(key, image.text(key));
    }
    return same;
}

bool hasStroke(const LvGPXTrackConfiguration& config, TrackRenderOption option)
{
    return option == TrackRenderOption::Foreground
        || config.hasDrawOption(LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum::stroke));
}

bool hasFill(const LvGPXTrackConfiguration& config, TrackRenderOption option)
{
    return option == TrackRenderOption::Foreground
        || config.hasDrawOption(LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum::fill));
}

bool hasArrow(const LvGPXTrackConfiguration& config)
{
    return config.markerShape().reducedTo(LvGPXMarkerShapeEnum::arrow) == LvGPXMarkerShapeEnum::arrow;
}

/// Length of an arrow's barbs before scaling.
double barbPixels(const QPointF& start, const QPointF& tip)
{
    return std::max(shortestBarbPixels, std::min(longestBarbPixels, QLineF(start, tip).length() / 2.0));
}

QPainterPath pathThrough(std::span<const QPointF> points)
{
    if (points.empty()) {
        return {};
    }
    QPainterPath path(points.front());
    path.reserve(static_cast<int>(points.size()));
    for (const QPointF& point : points.subspan(1)) {
        path.lineTo(point);
    }
    return path;
}

QPointF elementAt(const QPainterPath& path, int index)
{
    const QPainterPath::Element element = path.elementAt(index);
    return {element.x, element.y};
}

/// Restores the painter when it goes.
class LvPainterSaver
{
public:
    explicit LvPainterSaver(QPainter* painter)
        : myPainter(painter)
    {
        myPainter->save();
    }

    ~LvPainterSaver() { myPainter->restore(); }

    Q_DISABLE_COPY_MOVE(LvPainterSaver)

private:
    QPainter* myPainter;
};

} // namespace

/// Draws as a point what has neither path nor lines. Most tracks are plain lines of which tiles are all that
/// is wanted: then the path is made only when it is asked for.
struct LvGPXTrackRenderer::Figure {
    Figure(LvGPXTrackShapeEnum trackShape, QPainterPath trackPath)
        : shape(trackShape)
        , path(std::move(trackPath))
    {
    }

    Figure(LvGPXTrackShapeEnum trackShape, std::vector<QPointF>&& points)
        : shape(trackShape)
        , lines(points.empty() ? nullptr : LvOutlineTiles::linesOf(std::move(points)))
    {
    }

    Figure() = default;

    [[nodiscard]] bool isPoint() const { return lines == nullptr && path.isEmpty(); }

    [[nodiscard]] QRectF bounds() const { return lines != nullptr ? lines->bounds : path.controlPointRect(); }

    const QPainterPath& asPath()
    {
        if (path.isEmpty() && lines != nullptr) {
            path = pathThrough(lines->points);
        }
        return path;
    }

    const std::shared_ptr<const LvOutlineTiles::Lines>& asLines()
    {
        if (lines == nullptr) {
            lines = LvOutlineTiles::linesOf(path);
        }
        return lines;
    }

    LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::unknown;
    QPainterPath path;
    std::shared_ptr<const LvOutlineTiles::Lines> lines;
};

LvGPXTrackRenderer::LvGPXTrackRenderer(const LvGPXTrackSelection& selection, const QSize& targetImageSize,
                                       double renderingFactor)
    : mySelection(selection)
    , myTargetImageSize(targetImageSize)
    , myRenderingFactor(renderingFactor)
{
}

LvGPXTrackRenderer::~LvGPXTrackRenderer() = default;
LvGPXTrackRenderer::LvGPXTrackRenderer(const LvGPXTrackRenderer& other) = default;
LvGPXTrackRenderer::LvGPXTrackRenderer(LvGPXTrackRenderer&& other) noexcept = default;
LvGPXTrackRenderer& LvGPXTrackRenderer::operator=(const LvGPXTrackRenderer& other) = default;
LvGPXTrackRenderer& LvGPXTrackRenderer::operator=(LvGPXTrackRenderer&& other) noexcept = default;

const LvGPXTrackSelection& LvGPXTrackRenderer::selection() const
{
    return mySelection;
}

QSize LvGPXTrackRenderer::targetImageSize() const
{
    return myTargetImageSize;
}

double LvGPXTrackRenderer::renderingFactor() const
{
    return myRenderingFactor;
}

double LvGPXTrackRenderer::scale(double value) const
{
    return value * myRenderingFactor;
}

QImage LvGPXTrackRenderer::render(TrackRenderOption option) const
{
    return renderImage(option, QPainter::Antialiasing).convertToFormat(QImage::Format_ARGB32);
}

QImage LvGPXTrackRenderer::renderQuickAndDirty(TrackRenderOption option) const
{
    return renderImage(option, {});
}

QImage LvGPXTrackRenderer::renderForeground() const
{
    return renderQuickAndDirty(TrackRenderOption::Foreground);
}

QImage LvGPXTrackRenderer::renderImage(TrackRenderOption option, QPainter::RenderHints hints) const
{
    if (myTargetImageSize.isEmpty()) {
        return {};
    }
    QImage image(myTargetImageSize, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) { // more memory than there is
        return {};
    }
    if (!drawImage(image, option, hints)) {
        image.fill(Qt::transparent);
    }
    return image;
}

/// Returns false, and leaves the image as it was, if no track touches it. Else the image shows the tracks.
bool LvGPXTrackRenderer::drawImage(QImage& image, TrackRenderOption option, QPainter::RenderHints hints) const
{
    LvOutlineTiles tiles(image, hints);
    QPainter painter(&image);
    painter.setRenderHints(hints);
    drawTracks(&painter, option, tiles);
    tiles.flush();
    return !tiles.isUntouched();
}

/// What the tracks cover; a null image where they cover nothing.
QImage LvGPXTrackRenderer::maskOfTracks() const
{
    if (myTargetImageSize.isEmpty()) {
        return {};
    }
    QImage mask(myTargetImageSize, QImage::Format_ARGB32_Premultiplied);
    const bool isTouched =
        !mask.isNull() && drawImage(mask, TrackRenderOption::Foreground, QPainter::Antialiasing);
    return isTouched ? mask : QImage();
}

void LvGPXTrackRenderer::renderWith(QPainter& painter, TrackRenderOption option) const
{
    const LvGPXConfiguredTrackList tracks = mySelection.tracks();
    for (const LvGPXConfiguredTrack& track : tracks) {
        drawTrack(&painter, track, option);
    }
}

void LvGPXTrackRenderer::drawTracks(QPainter* painter, TrackRenderOption option, LvOutlineTiles& tiles) const
{
    const LvGPXConfiguredTrackList tracks = mySelection.tracks();
    const qsizetype batch = tracks.count() < tracksWorthThreads ? 1 : tracksPerBatch;
    for (qsizetype first = 0; first < tracks.count(); first += batch) {
        const qsizetype count = std::min(batch, tracks.count() - first);
        std::vector<Figure> figures(static_cast<size_t>(count));
        LvConcurrent::forEachIndex(count, [this, first, &tracks, &figures](qsizetype index) {
            figures[static_cast<size_t>(index)] = figureOf(tracks.at(first + index));
        });
        for (qsizetype index = 0; index < count; ++index) {
            drawFigure(painter, tracks.at(first + index), std::move(figures[static_cast<size_t>(index)]),
                       option, &tiles);
        }
    }
}

QImage LvGPXTrackRenderer::crop(const QImage& background) const
{
    const int opacity = mySelection.effectiveCroppingOpacity();
    if (opacity == opaque) {
        return background;
    }
    const QImage mask = maskOfTracks();
    const QImage source =
        hasPlainColorBytes(background) ? background : background.convertToFormat(QImage::Format_ARGB32);
    QImage result = sameWithoutPixels(source);
    if (result.isNull()) { // there is none, or more memory than there is
        return result;
    }
    const auto lowest = static_cast<quint32>(std::clamp(opacity, 0, opaque));
    // Threads write to the common pixels: asking one image for them from several threads would change its
    // counters unguarded.
    auto* pixels = reinterpret_cast<QRgb*>(result.bits());
    const qsizetype pixelsPerLine = result.bytesPerLine() / qsizetype{sizeof(QRgb)};
    const int width = result.width();
    const std::vector<QRgb> uncovered(static_cast<size_t>(width));
    QList<LvIntRange> pieces = LvIntRange::rowsOfImage(result).splitEvenlyForCpuCores();
    LvConcurrent::blockingMap(pieces, [=, &source, &mask, &uncovered](const LvIntRange& rows) {
        for (int row = rows.firstIndex(); row < rows.lastIndexEvenIfUnvalid(); ++row) {
            QRgb* line = pixels + row * pixelsPerLine;
            const auto* colors = reinterpret_cast<const QRgb*>(source.constScanLine(row));
            const int covered = row < mask.height() ? std::min(width, mask.width()) : 0;
            if (covered > 0) {
                const auto* covers = reinterpret_cast<const QRgb*>(mask.constScanLine(row));
                LvCropFade::fadeRow(line, colors, covers, covered, lowest);
            }
            LvCropFade::fadeRow(line + covered, colors + covered, uncovered.data(), width - covered, lowest);
        }
    });
    return result;
}

void LvGPXTrackRenderer::mergeCropping(QImage& result, const QImage& mask, const LvIntRange& rows,
                                       std::span<const uchar, 256> table)
{
    if (!hasAlphaByte(result) || (!mask.isNull() && !hasAlphaByte(mask))) {
        return;
    }
    const int end = std::min(rows.lastIndexEvenIfUnvalid(), result.height());
    const LvIntRange columns = LvIntRange::columnsOfImage(result);
    for (int row = std::max(0, rows.firstIndex()); row < end; ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(result.scanLine(row));
        const auto* covers =
            row < mask.height() ? reinterpret_cast<const QRgb*>(mask.constScanLine(row)) : nullptr;
        const int coveredEnd = covers != nullptr ? mask.width() : 0;
        for (int column = columns.firstIndex(); column < columns.lastIndexEvenIfUnvalid(); ++column) {
            const int cover = column < coveredEnd ? qAlpha(covers[column]) : 0;
            const QRgb alpha = table[static_cast<size_t>(cover)];
            pixels[column] = (pixels[column] & 0x00ffffffU) | (alpha << 24U);
        }
    }
}

void LvGPXTrackRenderer::mergeCropping(QImage& result, const QImage& mask, const LvIntRange& rows,
                                       const uchar* table)
{
    mergeCropping(result, mask, rows, std::span<const uchar, 256>(table, 256));
}

QPointF LvGPXTrackRenderer::aroundTheWorldOffset() const
{
    return project(LvGeoPosition(0.0, 180.0)) - project(LvGeoPosition(0.0, -180.0));
}

LvIntRange LvGPXTrackRenderer::visibleShifts(QPainter* painter) const
{
    const double worldWidth = std::trunc(aroundTheWorldOffset().x());
    if (!std::isfinite(worldWidth) || worldWidth == 0.0) {
        return {0, 0};
    }
    const QPaintDevice* device = painter != nullptr ? painter->device() : nullptr;
    const double deviceWidth = device != nullptr ? device->width() : 0.0;
    // Both are whole numbers that a double holds exactly, so this is their integer division, for worlds wider
    // than the integers as well. The last clamp leaves room for the one that is added.
    constexpr double most = std::numeric_limits<int>::max() - 1;
    const int worlds = static_cast<int>(std::clamp(std::trunc(deviceWidth / worldWidth), -most, most));
    return {-(worlds + 1), worlds + 1};
}

template <class Draw>
void LvGPXTrackRenderer::repeatAroundTheWorld(QPainter* painter, const QRectF& touched, LvOutlineTiles* tiles,
                                              const Draw& draw) const
{
    const QPointF world = aroundTheWorldOffset();
    const LvIntRange shifts = visibleShifts(painter);
    for (int shift = shifts.firstIndex(); shift < shifts.lastIndexEvenIfUnvalid(); ++shift) {
        const QPointF offset = shift == 0 ? QPointF() : shift * world;
        if (!isDrawable(offset)
            || (tiles != nullptr && !tiles->rect().intersects(touched.translated(offset)))) {
            continue;
        }
        if (tiles != nullptr) {
            tiles->clear();
        }
        const LvPainterSaver saver(painter);
        painter->translate(offset);
        draw(offset);
    }
}

LvGPXTrackRenderer::Figure LvGPXTrackRenderer::figureOf(const LvGPXConfiguredTrack& track) const
{
    const LvGPXTrackShapeEnum shape = track.effectiveShape().value();
    if (shape == LvGPXTrackShapeEnum::point) {
        return {shape, QPainterPath()};
    }
    if (shape == LvGPXTrackShapeEnum::linestring && track.track().enclaves().isEmpty()) {
        return {shape, linePoints(track.track(), track.smoothingStrength(), track.smoothingSteps())};
    }
    return {shape, createPainterPath(track)};
}

void LvGPXTrackRenderer::drawTrack(QPainter* painter, const LvGPXConfiguredTrack& track,
                                   TrackRenderOption option) const
{
    drawFigure(painter, track, figureOf(track), option, nullptr);
}

void LvGPXTrackRenderer::drawLine(QPainter* painter, const LvGPXConfiguredTrack& track,
                                  TrackRenderOption option) const
{
    drawFigure(painter, track, {LvGPXTrackShapeEnum::linestring, createPainterPath(track)}, option, nullptr);
}

void LvGPXTrackRenderer::drawPolygon(QPainter* painter, const LvGPXConfiguredTrack& track,
                                     TrackRenderOption option) const
{
    drawFigure(painter, track, {LvGPXTrackShapeEnum::polygon, createPainterPath(track)}, option, nullptr);
}

void LvGPXTrackRenderer::drawFigure(QPainter* painter, const LvGPXConfiguredTrack& track, Figure&& figure,
                                    TrackRenderOption option, LvOutlineTiles* tiles) const
{
    if (figure.isPoint()) {
        drawPoint(painter, track, option, tiles);
        return;
    }
    const LvGPXTrackConfiguration config = track.configuration();
    const bool isArea = figure.shape == LvGPXTrackShapeEnum::polygon;
    repeatAroundTheWorld(painter, touchedBy(figure.bounds(), config, option), tiles,
                         [&](const QPointF& offset) {
                             if (tiles != nullptr) {
                                 drawOnTiles(painter, offset, figure, config, option, *tiles);
                             } else if (isArea) {
                                 drawPolygon(painter, figure.asPath(), config, option);
                             } else {
                                 drawLine(painter, figure.asPath(), config, option);
                             }
                         });
}

/// Draws what drawPolygon() and drawLine() draw of a path, to the pixel.
void LvGPXTrackRenderer::drawOnTiles(QPainter* painter, const QPointF& offset, Figure& figure,
                                     const LvGPXTrackConfiguration& config, TrackRenderOption option,
                                     LvOutlineTiles& tiles) const
{
    const bool isArea = figure.shape == LvGPXTrackShapeEnum::polygon;
    if (isArea && hasFill(config, option)) {
        tiles.flush();
        fillPath(painter, figure.asPath(), config, option);
    }
    if (!hasStroke(config, option)) {
        return;
    }
    const QPen pen = penFromTrack(config, option);
    if (!LvOutlineTiles::isSuitable(pen) || !tiles.add(figure.asLines(), offset, pen)) {
        tiles.flush();
        drawPath(painter, figure.asPath(), config, option);
    }
    if (isArea || !hasArrow(config)) {
        return;
    }
    const double reach = std::abs(solidPenFromTrack(config, option).widthF())
        + std::abs(scale(longestBarbPixels)) + outlineTolerancePixels;
    const QPainterPath& path = figure.asPath();
    const QPointF tip = elementAt(path, path.elementCount() - 1) + offset;
    if (tiles.rect().adjusted(-reach, -reach, reach, reach).contains(tip)) {
        tiles.flush();
        drawArrowHead(painter, path, config, option);
    }
}

void LvGPXTrackRenderer::drawPoint(QPainter* painter, const LvGPXConfiguredTrack& track,
                                   TrackRenderOption option) const
{
    drawPoint(painter, track, option, nullptr);
}

void LvGPXTrackRenderer::drawPoint(QPainter* painter, const LvGPXConfiguredTrack& track,
                                   TrackRenderOption option, LvOutlineTiles* tiles) const
{
    const LvGPXTrackConfiguration config = track.configuration();
    const bool stroke = hasStroke(config, option);
    const bool fill = hasFill(config, option);
    if (!stroke && !fill) {
        return;
    }
    const LvGeoPositionList positions = track.drawingPoints();
    // Not the validity of the position: a point at exactly 0°/0° is a place on the map.
    if (positions.isEmpty() || !positions.first().latitude().isValid()
        || !positions.first().longitude().isValid()) {
        return;
    }
    const QPointF centre = project(positions.first());
    if (!isDrawable(centre)) {
        return;
    }
    const double size = drawnSize(scale(track.lineWidth().value()));
    const LvPainterSaver saver(painter);
    painter->setPen(stroke ? penFromTrack(config, option) : QPen(QColor(Qt::transparent)));
    painter->setBrush(fill ? brushFromTrack(config, option) : QBrush(Qt::transparent, Qt::SolidPattern));
    const double reach = std::abs(size) + painter->pen().widthF() + outlineTolerancePixels;
    const QRectF touched(centre - QPointF(reach, reach), centre + QPointF(reach, reach));
    repeatAroundTheWorld(painter, touched, tiles, [&](const QPointF& /*offset*/) {
        if (tiles != nullptr) {
            tiles->flush(); // later tracks lie on top
        }
        config.markerShape().draw(painter, centre, size, size);
    });
}

void LvGPXTrackRenderer::drawPath(QPainter* painter, const QPainterPath& path,
                                  const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    if (!hasStroke(config, option)) {
        return;
    }
    const LvPainterSaver saver(painter);
    painter->setPen(penFromTrack(config, option));
    painter->setBrush(Qt::NoBrush);
    LvVectorRegisters::clearUpperHalves();
    painter->drawPath(path);
}

void LvGPXTrackRenderer::drawLine(QPainter* painter, const QPainterPath& path,
                                  const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    drawPath(painter, path, config, option);
    if (hasArrow(config)) {
        drawArrowHead(painter, path, config, option);
    }
}

void LvGPXTrackRenderer::drawPolygon(QPainter* painter, const QPainterPath& path,
                                     const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    fillPath(painter, path, config, option);
    drawPath(painter, path, config, option);
}

void LvGPXTrackRenderer::fillPath(QPainter* painter, const QPainterPath& path,
                                  const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    if (hasFill(config, option)) {
        const LvPainterSaver saver(painter);
        painter->fillPath(path, brushFromTrack(config, option));
    }
}

void LvGPXTrackRenderer::drawArrowHead(QPainter* painter, const QPainterPath& path,
                                       const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    // A head without its line would look like a mark of its own.
    if (path.isEmpty() || !hasStroke(config, option)) {
        return;
    }
    const double angle = detectAngleOfPath(path);
    const QPointF start = elementAt(path, 0);
    const QPointF tip = elementAt(path, path.elementCount() - 1);
    const double length = scale(barbPixels(start, tip));
    const LvPainterSaver saver(painter);
    painter->setPen(solidPenFromTrack(config, option));
    for (const double direction : {barbAngleDegrees + angle, angle - barbAngleDegrees}) {
        const QLineF barb(tip, movePolar(tip, length, direction));
        painter->drawLines(&barb, 1);
    }
}

QRectF LvGPXTrackRenderer::touchedBy(const QRectF& points, const LvGPXTrackConfiguration& config,
                                     TrackRenderOption option) const
{
    const double reach = std::abs(solidPenFromTrack(config, option).widthF()) / 2.0 + outlineTolerancePixels
        + (hasArrow(config) ? std::abs(scale(longestBarbPixels)) : 0.0);
    return points.adjusted(-reach, -reach, reach, reach);
}

QPainterPath LvGPXTrackRenderer::createPainterPath(const LvGPXConfiguredTrack& track) const
{
    const int strength = track.smoothingStrength();
    const int steps = track.smoothingSteps();
    const LvGPXTrack outer = track.track();
    QPainterPath path = createPainterPath(outer, strength, steps);
    if (track.naturalShape().value() == LvGPXTrackShapeEnum::linestring
        && track.effectiveShape().value() == LvGPXTrackShapeEnum::polygon) {
        path.closeSubpath();
    }
    const QList<LvGPXTrack> enclaves = outer.enclaves();
    for (const LvGPXTrack& enclave : enclaves) {
        path.addPath(createPainterPath(enclave, strength, steps));
    }
    return path;
}

/// Points that follow each other in one list, and where they stand in the array of all of them.
struct LvGPXTrackRenderer::Run {
    const LvGPXTrackPoint* first;
    int count;
    int index;
    const LvGeoPosition* before; // of the point before the first one; null at the very beginning
};

/// A step over the 180° meridian to the point with that index.
struct LvGPXTrackRenderer::Crossing {
    int index;
    int worlds;
};

QPainterPath LvGPXTrackRenderer::createPainterPath(const LvGPXTrack& track, int strength, int steps) const
{
    return pathThrough(linePoints(track, strength, steps));
}

/// What createPainterPath() leads through; nothing or at least two points.
std::vector<QPointF> LvGPXTrackRenderer::linePoints(const LvGPXTrack& track, int strength, int steps) const
{
    // The shared points themselves are read, and `segments` keeps them alive: to copy a million positions
    // takes as long as to project them.
    const QList<LvGPXTrackSegment> segments = track.segments();
    std::vector<Run> runs;
    int count = 0;
    const LvGeoPosition* before = nullptr;
    for (const LvGPXTrackSegment& segment : segments) {
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (qsizetype first = 0; first < points.size(); first += pointsOfRun) {
            const int size = static_cast<int>(std::min<qsizetype>(points.size() - first, pointsOfRun));
            const LvGPXTrackPoint* begin = points.constData() + first;
            runs.push_back({begin, size, count, before});
            before = &begin[size - 1].myImpl->position();
            count += size;
        }
    }
    if (count == 0) {
        return {};
    }
    std::vector<QPointF> points(static_cast<size_t>(count));
    std::vector<Crossing> crossings = projectRuns(runs, points);
    if (!crossings.empty()) {
        shiftByCrossings(crossings, points);
    }
    if (strength != unsmoothedStrength) {
        LvVectorRegisters::clearUpperHalves();
        LvGPXTrackSmoothing(points.data(), count, strength / 100.0, steps).run();
    }
    thin(points);
    return points;
}

std::vector<LvGPXTrackRenderer::Crossing> LvGPXTrackRenderer::projectRuns(const std::vector<Run>& runs,
                                                                          std::span<QPointF> points) const
{
    // Runs of together enough points make an item: one item for each tiny segment would not pay.
    struct Item {
        size_t first;
        size_t end;
        std::vector<Crossing> crossings;
    };

    std::vector<Item> items;
    int pointsOfItem = pointsOfRun;
    for (size_t number = 0; number < runs.size(); ++number) {
        if (pointsOfItem >= pointsWorthThreads) {
            items.push_back({number, number, {}});
            pointsOfItem = 0;
        }
        items.back().end = number + 1;
        pointsOfItem += runs[number].count;
    }
    const auto project = [this, &runs, points](Item& item) {
        LvVectorRegisters::clearUpperHalves();
        for (size_t number = item.first; number < item.end; ++number) {
            projectRun(runs[number], points, item.crossings);
        }
    };
    if (items.size() == 1) {
        project(items.front());
    } else {
        LvConcurrent::blockingMap(items, project);
    }
    std::vector<Crossing> crossings;
    for (const Item& item : items) {
        crossings.insert(crossings.end(), item.crossings.begin(), item.crossings.end());
    }
    return crossings;
}

void LvGPXTrackRenderer::projectRun(const Run& run, std::span<QPointF> points,
                                    std::vector<Crossing>& crossings) const
{
    QPointF* pixel = points.data() + run.index;
    const LvGeoPosition* before = run.before;
    bool isFromEast = before != nullptr && before->isInEasternHemisphere();
    for (int number = 0; number < run.count; ++number) {
        const LvGeoPosition& position = run.first[number].myImpl->position();
        pixel[number] = project(position);
        // Nearly all steps stay within a hemisphere.
        const bool isInEast = position.myImpl->myLongitude.isInEasternHemisphere();
        if (isInEast != isFromEast && before != nullptr) {
            const int worlds = checkDateLineCrossing(*before, position);
            if (worlds != 0) {
                crossings.push_back({run.index + number, worlds});
            }
        }
        isFromEast = isInEast;
        before = &position;
    }
}

void LvGPXTrackRenderer::shiftByCrossings(const std::vector<Crossing>& crossings,
                                          std::span<QPointF> points) const
{
    const QPointF world = aroundTheWorldOffset();
    int worlds = 0;
    for (size_t number = 0; number < crossings.size(); ++number) {
        worlds += crossings[number].worlds;
        const size_t end =
            number + 1 < crossings.size() ? static_cast<size_t>(crossings[number + 1].index) : points.size();
        if (worlds == 0) {
            continue; // 0 times infinity is no number
        }
        for (size_t index = static_cast<size_t>(crossings[number].index); index < end; ++index) {
            points[index] += worlds * world;
        }
    }
}

/// Keeps what the path leads through, at the front of the same memory. Like QPainterPath::lineTo() it leaves
/// out what the toolkit takes for the same point as the one before.
void LvGPXTrackRenderer::thin(std::vector<QPointF>& points) const
{
    const auto start = std::find_if(points.begin(), points.end(), isDrawable);
    if (start == points.end()) {
        points.clear();
        return;
    }
    const double threshold = scale(thinningPixels);
    const QPointF destination = points.back();
    QPointF last = *start;
    auto kept = points.begin();
    *kept = last;
    bool anyAppended = false;
    // The comparison has a relative tolerance of 1e-12, and no coordinate is larger than its inverse.
    const bool areKeptApart = threshold >= thinningPixels;
    const auto append = [&kept](const QPointF& point) {
        if (point != *kept) {
            *++kept = point;
        }
    };
    for (auto point = std::next(start); point != points.end(); ++point) {
        if ((*point - last).manhattanLength() > threshold && isDrawable(*point)) {
            last = *point;
            if (areKeptApart) {
                *++kept = last;
            } else {
                append(last);
            }
            anyAppended = true;
        }
    }
    if (anyAppended && isDrawable(destination)) {
        append(destination);
    }
    points.erase(kept == points.begin() ? kept : std::next(kept), points.end());
}

QPen LvGPXTrackRenderer::solidPenFromTrack(const LvGPXTrackConfiguration& config,
                                           TrackRenderOption option) const
{
    const LvDistance width =
        option == TrackRenderOption::Normal ? config.lineWidth() : config.haloWidth() + config.lineWidth();
    return {QBrush(lineColor(config, option), Qt::SolidPattern), drawnSize(scale(width.value())),
            Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

QPen LvGPXTrackRenderer::penFromTrack(const LvGPXTrackConfiguration& config, TrackRenderOption option) const
{
    QPen pen = solidPenFromTrack(config, option);
    if (option == TrackRenderOption::Normal) {
        config.penStyle().modifyPen(pen);
    }
    return pen;
}

QBrush LvGPXTrackRenderer::brushFromTrack(const LvGPXTrackConfiguration& config, TrackRenderOption option)
{
    return {fillColor(config, option), Qt::SolidPattern};
}

QColor LvGPXTrackRenderer::lineColor(const LvGPXTrackConfiguration& config, TrackRenderOption option)
{
    return adaptColor(config.lineColor(), option);
}

QColor LvGPXTrackRenderer::fillColor(const LvGPXTrackConfiguration& config, TrackRenderOption option)
{
    return adaptColor(config.fillColor(), option);
}

QColor LvGPXTrackRenderer::adaptColor(const QColor& color, TrackRenderOption option)
{
    QColor adapted = color;
    if (option == TrackRenderOption::Foreground) {
        adapted.setAlpha(opaque);
    }
    return adapted;
}

double LvGPXTrackRenderer::detectAngleOfPath(const QPainterPath& path)
{
    double sum = 0.0;
    for (const double place : arrowAnglePlaces) {
        sum += path.angleAtPercent(place);
    }
    return sum / static_cast<double>(arrowAnglePlaces.size());
}

QPointF LvGPXTrackRenderer::carthesian(double length, double angle)
{
    // The image's y grows downwards, and barbs point backwards: so half a turn minus the angle.
    const double radians = (180.0 - angle) * std::numbers::pi / 180.0;
    return {length * std::cos(radians), length * std::sin(radians)};
}

QPointF LvGPXTrackRenderer::movePolar(const QPointF& point, double length, double angle)
{
    return point + carthesian(length, angle);
}

void LvGPXTrackRenderer::projectPoints(const LvGeoPositionList& positions, const LvIntRange& range,
                                       QPointF* points) const
{
    LvVectorRegisters::clearUpperHalves();
    const int first = range.firstIndex();
    const int end = range.lastIndexEvenIfUnvalid();
    for (int index = first; index < end; ++index) {
        points[index] = project(positions.at(index - first));
    }
}

void LvGPXTrackRenderer::projectPointsPP(const QList<LvGeoPositionList>& lists,
                                         const QList<LvIntRange>& ranges, const QList<int>& numbers,
                                         QPointF* points) const
{
    LvConcurrent::blockingMap(numbers, [this, &lists, &ranges, points](int number) {
        projectPoints(lists.at(number), ranges.at(number), points);
    });
}

void LvGPXTrackRenderer::shiftProjected(const LvIntRange& range, const QPointF* offsets, QPointF* points)
{
    for (int index = range.firstIndex(); index < range.lastIndexEvenIfUnvalid(); ++index) {
        points[index] += offsets[index];
    }
}

int LvGPXTrackRenderer::checkDateLineCrossing(const LvGeoPosition& a, const LvGeoPosition& b)
{
    // Nearly all steps stay within a hemisphere, so that is asked first.
    const bool fromEast = a.isInEasternHemisphere();
    if (fromEast == b.isInEasternHemisphere() || a.longitude() == b.longitude()
        || a.isEastOf(b) == fromEast) { // the last: over the prime meridian
        return 0;
    }
    return fromEast ? 1 : -1;
}

void LvGPXTrackRenderer::checkDateLineCrossings(int number, const QList<LvGeoPositionList>& lists,
                                                const QList<LvIntRange>& ranges, int* crossings)
{
    const LvGeoPositionList& list = lists.at(number);
    if (list.isEmpty()) {
        return;
    }
    int before = number - 1;
    while (before >= 0 && lists.at(before).isEmpty()) {
        --before;
    }
    int* crossing = crossings + ranges.at(number).firstIndex();
    *crossing = before < 0 ? 0 : checkDateLineCrossing(lists.at(before).last(), list.first());
    for (qsizetype index = 1; index < list.size(); ++index) {
        crossing[index] = checkDateLineCrossing(list.at(index - 1), list.at(index));
    }
}

bool LvGPXTrackRenderer::createDateLineCrossingOffsets(const QList<LvGeoPositionList>& lists,
                                                       const QList<LvIntRange>& ranges,
                                                       const QList<int>& numbers,
                                                       QList<QPointF>& offsets) const
{
    const int count = ranges.isEmpty() ? 0 : ranges.last().lastIndexEvenIfUnvalid();
    std::vector<int> crossings(static_cast<size_t>(count));
    LvConcurrent::blockingMap(numbers, [&lists, &ranges, &crossings](int number) {
        checkDateLineCrossings(number, lists, ranges, crossings.data());
    });
    if (std::all_of(crossings.begin(), crossings.end(), [](int crossing) { return crossing == 0; })) {
        return false;
    }
    const QPointF world = aroundTheWorldOffset();
    offsets.clear();
    offsets.reserve(count);
    int worlds = 0;
    for (const int crossing : crossings) {
        worlds += crossing;
        offsets.append(worlds == 0 ? QPointF() : worlds * world); // 0 times infinity is no number
    }
    return true;
}
