// Drawing: long tracks at several zooms, many tracks, and the fading of a map outside of the tracks, compared
// with the plain way to the same pixels and with other programs. Areas and smoothed paths for themselves.

#include "LvBenchmarkInputs.h"
#include "LvBenchmarkProgram.h"
#include "LvCropFade.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvGeoPositionRect.h"
#include "LvMapProjection.h"
#include "LvPlainProjection.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QThreadPool>

#include <cmath>
#include <malloc.h>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

#ifdef LV_HAS_CAIRO
#include <cairo.h>
#endif
#ifdef LV_HAS_MAPNIK
#include "LvMapnikPeer.h"
#endif
#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace
{

constexpr QSize pictureSize(1920, 1080);
constexpr QSize croppedSize(3840, 2160);
constexpr double lineWidth = 10.0;
constexpr double thinningPixels = 4.0;
constexpr int croppingOpacity = 80;
constexpr int largestRecycledBytes = 32 << 20;

class MapRenderer : public LvGPXTrackRenderer
{
public:
    MapRenderer(const LvGPXTrackSelection& selection, const QSize& size, const LvGeoPositionRect& box)
        : LvGPXTrackRenderer(selection, size, 1.0)
        , myProjection(box, size)
        , myPlainProjection(box, size)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myProjection.projectate(position);
    }

    [[nodiscard]] QPointF projectPlainly(const LvGeoPosition& position) const
    {
        return myPlainProjection.pixelOf(position.latitude().decimalDegrees(),
                                         position.longitude().decimalDegrees());
    }

    [[nodiscard]] LvGeoPositionRect shownBox() const { return myProjection.resultBoundingBox(); }

private:
    LvMapProjection myProjection;
    LvPlainProjection myPlainProjection;
};

LvGPXTrack trackOf(const std::vector<LvBenchmarkInputs::Degrees>& places, LvGPXTrackShapeEnum shape)
{
    QList<LvGPXTrackPoint> points;
    points.reserve(static_cast<qsizetype>(places.size()));
    for (const LvBenchmarkInputs::Degrees& place : places) {
        points.append(
            LvGPXTrackPoint(LvGeoPosition(place.latitude, place.longitude), 0, QDateTime(), QString()));
    }
    return {QStringLiteral("walk"), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShape(shape)};
}

LvGPXTrackSelection walks(qint64 tracks, qint64 pointsPerTrack,
                          LvGPXTrackShapeEnum shape = LvGPXTrackShapeEnum::linestring, int smoothing = 100)
{
    LvGPXTrackConfiguration configuration = LvGPXTrackConfiguration::defaultValue();
    configuration.setTrackShape(shape);
    configuration.setLineColor(Qt::blue);
    configuration.setLineWidth(lineWidth);
    configuration.setHaloWidth(0.0);
    configuration.setSmoothingStrength(smoothing);
    LvGPXTrackSelection selection;
    for (qint64 number = 0; number < tracks; ++number) {
        const auto places = tracks == 1
            ? LvBenchmarkInputs::walk(pointsPerTrack)
            : LvBenchmarkInputs::walk(pointsPerTrack, static_cast<quint32>(number + 1));
        selection.addTrack(LvGPXConfiguredTrack(trackOf(places, shape), configuration));
    }
    return selection;
}

LvGeoPositionRect boundingBox(const LvGPXTrackSelection& selection)
{
    LvGeoPositionList corners;
    for (int index = 0; index < selection.count(); ++index) {
        const LvGeoPositionRect box = selection.value(index).track().boundingBox();
        corners.append(LvGeoPosition(box.south().decimalDegrees(), box.west().decimalDegrees()));
        corners.append(LvGeoPosition(box.north().decimalDegrees(), box.east().decimalDegrees()));
    }
    return corners.boundingBox();
}

/// What a picture shows when it is magnified around a place.
LvGeoPositionRect magnified(const LvGeoPositionRect& box, const LvGeoPosition& centre, double factor)
{
    const double height = (box.north().decimalDegrees() - box.south().decimalDegrees()) / factor / 2.0;
    const double width = (box.east().decimalDegrees() - box.west().decimalDegrees()) / factor / 2.0;
    const double latitude = centre.latitude().decimalDegrees();
    const double longitude = centre.longitude().decimalDegrees();
    return {LvGeoPosition(latitude - height, longitude - width),
            LvGeoPosition(latitude + height, longitude + width)};
}

LvGeoPosition middleOf(const LvGPXTrackSelection& selection)
{
    const LvGeoPositionList positions = selection.value(0).track().allPoints();
    return positions.at(positions.size() / 2);
}

std::vector<LvBenchmarkInputs::Degrees> degreesOf(const LvGPXTrack& track)
{
    std::vector<LvBenchmarkInputs::Degrees> result;
    const LvGeoPositionList positions = track.allPoints();
    for (const LvGeoPosition& position : positions) {
        result.push_back({position.latitude().decimalDegrees(), position.longitude().decimalDegrees()});
    }
    return result;
}

/// A desktop program has always painted before. That is not without effect: some of the toolkit's loops leave
/// the vector registers in a state in which the mathematical library is many times slower.
void paintSomething()
{
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 3.0));
    painter.drawEllipse(QRectF(20.0, 20.0, 150.0, 120.0));
    benchmark::DoNotOptimize(image.constBits());
}

#ifdef __x86_64__
__attribute__((target("avx"))) void clearUpperRegisterHalves()
{
    _mm256_zeroupper();
}
#endif

/// The formula of the projection for numbers that lie side by side, and nothing else.
void projectBarely(benchmark::State& state, const std::vector<LvBenchmarkInputs::Degrees>& places)
{
    std::vector<QPointF> pixels(places.size());
    for (auto _ : state) {
#ifdef __x86_64__
        if (__builtin_cpu_supports("avx")) {
            clearUpperRegisterHalves();
        }
#endif
        for (size_t index = 0; index < places.size(); ++index) {
            const LvBenchmarkInputs::Degrees& place = places[index];
            pixels[index] = {(place.longitude + 180.0) / 360.0,
                             std::log(std::tan((90.0 - place.latitude) * std::numbers::pi / 360.0))};
        }
        benchmark::DoNotOptimize(pixels.data());
    }
}

void makePath(benchmark::State& state, const MapRenderer& renderer)
{
    const LvGPXConfiguredTrack track = renderer.selection().value(0);
    for (auto _ : state) {
        state.PauseTiming();
        paintSomething();
        state.ResumeTiming();
        const QPainterPath path = renderer.createPainterPath(track);
        benchmark::DoNotOptimize(path.elementCount());
    }
}

void render(benchmark::State& state, const MapRenderer& renderer)
{
    const int drawn = renderer.createPainterPath(renderer.selection().value(0)).elementCount();
    state.SetLabel(QStringLiteral("%L1 points left in the first path").arg(drawn).toStdString());
    for (auto _ : state) {
        const QImage image = renderer.render(TrackRenderOption::Normal);
        benchmark::DoNotOptimize(image.constBits());
    }
}

template <class Draw>
QImage drawnOnOwnImage(const Draw& draw)
{
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

/// By the renderer, with a painter that it does not know.
QImage drawnWithForeignPainter(const MapRenderer& renderer)
{
    return drawnOnOwnImage(
        [&](QPainter& painter) { renderer.renderWith(painter, TrackRenderOption::Normal); });
}

/// The points without those that are too close to the one before; empty where all are.
QPainterPath thinned(const std::vector<QPointF>& pixels)
{
    QPainterPath path(pixels.front());
    QPointF last = pixels.front();
    for (const QPointF& pixel : pixels) {
        if ((pixel - last).manhattanLength() > thinningPixels) {
            path.lineTo(pixel);
            last = pixel;
        }
    }
    if (path.elementCount() <= 1) {
        return {};
    }
    path.lineTo(pixels.back());
    return path;
}

/// Point by point, the way every program begins with: project, leave out what is too close, stroke each world
/// copy.
QImage drawnPlainly(const MapRenderer& renderer)
{
    return drawnOnOwnImage([&](QPainter& painter) {
        const QPointF world = renderer.aroundTheWorldOffset();
        const LvIntRange shifts = renderer.visibleShifts(&painter);
        for (int number = 0; number < renderer.selection().count(); ++number) {
            const LvGPXConfiguredTrack track = renderer.selection().value(number);
            std::vector<QPointF> pixels;
            const LvGeoPositionList positions = track.track().allPoints();
            pixels.reserve(static_cast<size_t>(positions.size()));
            for (const LvGeoPosition& position : positions) {
                pixels.push_back(renderer.projectPlainly(position));
            }
            const QPainterPath path = thinned(pixels);
            if (path.isEmpty()) {
                renderer.drawPoint(&painter, track, TrackRenderOption::Normal);
                continue;
            }
            painter.setPen(renderer.penFromTrack(track.configuration(), TrackRenderOption::Normal));
            for (int shift = shifts.firstIndex(); shift < shifts.lastIndexEvenIfUnvalid(); ++shift) {
                painter.save();
                painter.translate(shift * world);
                painter.drawPath(path);
                painter.restore();
            }
        }
    });
}

void drawImage(benchmark::State& state, const MapRenderer& renderer, QImage (*draw)(const MapRenderer&))
{
    for (auto _ : state) {
        const QImage image = draw(renderer);
        benchmark::DoNotOptimize(image.constBits());
    }
}

#ifdef LV_HAS_CAIRO
/// The stroke alone: the points are projected and thinned already.
void strokeWithCairo(benchmark::State& state, const MapRenderer& renderer)
{
    std::vector<QPainterPath> paths;
    for (int number = 0; number < renderer.selection().count(); ++number) {
        paths.push_back(renderer.createPainterPath(renderer.selection().value(number)));
    }
    for (auto _ : state) {
        cairo_surface_t* surface =
            cairo_image_surface_create(CAIRO_FORMAT_ARGB32, pictureSize.width(), pictureSize.height());
        cairo_t* context = cairo_create(surface);
        cairo_set_source_rgb(context, 0.0, 0.0, 1.0);
        cairo_set_line_width(context, lineWidth);
        cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
        cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
        for (const QPainterPath& path : paths) {
            for (int index = 0; index < path.elementCount(); ++index) {
                const QPainterPath::Element element = path.elementAt(index);
                if (element.isMoveTo()) {
                    cairo_move_to(context, element.x, element.y);
                } else {
                    cairo_line_to(context, element.x, element.y);
                }
            }
            cairo_stroke(context);
        }
        cairo_surface_flush(surface);
        benchmark::DoNotOptimize(cairo_image_surface_get_data(surface));
        cairo_destroy(context);
        cairo_surface_destroy(surface);
    }
}
#endif

#ifdef LV_HAS_MAPNIK
void drawWithMapnik(benchmark::State& state, const MapRenderer& renderer, LvMapnikPeer::Way way)
{
    QList<QList<QPointF>> lines;
    for (int number = 0; number < renderer.selection().count(); ++number) {
        QList<QPointF> line;
        for (const LvBenchmarkInputs::Degrees& place :
             degreesOf(renderer.selection().value(number).track())) {
            line.append(QPointF(place.longitude, place.latitude));
        }
        lines.append(line);
    }
    const LvMapnikPeer peer(lines, pictureSize, lineWidth, way);
    const LvGeoPositionRect box = renderer.shownBox();
    const QPointF southWest(box.west().decimalDegrees(), box.south().decimalDegrees());
    const QPointF northEast(box.east().decimalDegrees(), box.north().decimalDegrees());
    for (auto _ : state) {
        if (peer.draw(southWest, northEast) == 0) {
            state.SkipWithError("nothing was drawn");
            break;
        }
    }
}
#endif

using Renderer = std::shared_ptr<const MapRenderer>;

void checkPixels(LvBenchmarkProgram& program, const QString& scene, const MapRenderer& renderer)
{
    const QImage image = renderer.render(TrackRenderOption::Normal);
    const bool isEqual = image == drawnPlainly(renderer) && image == drawnWithForeignPainter(renderer);
    program.addFact(QStringLiteral("%1: pixels").arg(scene), QStringLiteral("both plain ways"),
                    QStringLiteral("equal"), QString::fromLatin1(isEqual ? "equal" : "different"), isEqual);
    if (!isEqual) {
        program.fail(QStringLiteral("%1: the pixels differ.").arg(scene));
    }
}

/// @param goal the part of the plain way's time that drawing may take
void addScene(LvBenchmarkProgram& program, const QString& scene, const Renderer& renderer, qint64 points,
              double goal)
{
    const QString ours = QStringLiteral("draw/") + scene;
    const QString plain = QStringLiteral("plain/") + scene;
    const QString foreign = QStringLiteral("foreign painter/") + scene;
    program.add(ours, points, [renderer](benchmark::State& state) { render(state, *renderer); });
    program.add(plain, points,
                [renderer](benchmark::State& state) { drawImage(state, *renderer, drawnPlainly); });
    program.add(foreign, points, [renderer](benchmark::State& state) {
        drawImage(state, *renderer, drawnWithForeignPainter);
    });
    program.addRatio(scene, ours, QStringLiteral("the plain way, point by point"), plain, goal);
    program.addRatio(scene, ours, QStringLiteral("renderWith() on a painter of one's own"), foreign);
    checkPixels(program, scene, *renderer);
#ifdef LV_HAS_MAPNIK
    const std::pair<LvMapnikPeer::Way, QString> ways[] = {
        {LvMapnikPeer::Way::Default, QStringLiteral("Mapnik from degrees")},
        {LvMapnikPeer::Way::Simplifying, QStringLiteral("Mapnik from degrees, simplifying")},
        {LvMapnikPeer::Way::Clipping, QStringLiteral("Mapnik from degrees, clipping")}};
    for (const auto& [way, comparedWith] : ways) {
        const QString mapnik = comparedWith + QLatin1Char('/') + scene;
        program.add(mapnik, points, [renderer, way = way](benchmark::State& state) {
            drawWithMapnik(state, *renderer, way);
        });
        program.addRatio(scene, ours, comparedWith, mapnik, 1.0);
    }
#endif
#ifdef LV_HAS_CAIRO
    const QString cairo = QStringLiteral("cairo/") + scene;
    program.add(cairo, points, [renderer](benchmark::State& state) { strokeWithCairo(state, *renderer); });
    program.addRatio(scene, ours, QStringLiteral("cairo, the stroke alone"), cairo);
#endif
}

void addDrawing(LvBenchmarkProgram& program)
{
    const qint64 points = program.points();
    const LvGPXTrackSelection one = walks(1, points);
    const LvGeoPositionRect box = boundingBox(one);
    const auto whole = std::make_shared<const MapRenderer>(one, pictureSize, box);

    program.add(QStringLiteral("path"), points,
                [whole](benchmark::State& state) { makePath(state, *whole); });
    program.add(QStringLiteral("bare loop"), points,
                [one](benchmark::State& state) { projectBarely(state, degreesOf(one.value(0).track())); });
    program.addRatio(QStringLiteral("projecting and thinning"), QStringLiteral("path"),
                     QStringLiteral("the bare loop of logarithms and tangents"), QStringLiteral("bare loop"),
                     1.5);

    const LvGeoPosition centre = middleOf(one);
    addScene(program, QStringLiteral("whole track"), whole, points, 1.0 / 5.0);
    addScene(program, QStringLiteral("8 x zoomed in"),
             std::make_shared<const MapRenderer>(one, pictureSize, magnified(box, centre, 8.0)), points,
             1.0 / 20.0);
    addScene(program, QStringLiteral("64 x zoomed in"),
             std::make_shared<const MapRenderer>(one, pictureSize, magnified(box, centre, 64.0)), points,
             1.0 / 100.0);
    const qint64 tracks = program.isQuick() ? 100 : 1000;
    const LvGPXTrackSelection many = walks(tracks, points / tracks);
    addScene(program, QStringLiteral("%L1 tracks").arg(tracks),
             std::make_shared<const MapRenderer>(many, pictureSize, boundingBox(many)), points, 1.0 / 4.0);

    QStringList sizes;
    const qint64 largest = program.isLarge() ? points * 10 : points;
    for (qint64 size = points / 100; size <= largest; size *= 10) {
        const QString name =
            size == points ? QStringLiteral("draw/whole track") : QStringLiteral("draw/%1 points").arg(size);
        sizes.append(name);
        if (size != points) {
            const LvGPXTrackSelection selection = walks(1, size);
            const auto renderer =
                std::make_shared<const MapRenderer>(selection, pictureSize, boundingBox(selection));
            program.add(name, size, [renderer](benchmark::State& state) { render(state, *renderer); });
        }
    }
    program.addGrowth(QStringLiteral("drawing %L1 to %L2 points, per point").arg(points / 100).arg(largest),
                      sizes, 1.5);
}

void crop(benchmark::State& state, const MapRenderer& renderer, const QImage& background)
{
    QThreadPool* pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    pool->setMaxThreadCount(1);
    for (auto _ : state) {
        const QImage image = renderer.crop(background);
        benchmark::DoNotOptimize(image.constBits());
    }
    pool->setMaxThreadCount(threads);
}

/// What cropping does once the mask of the tracks is drawn, in one thread.
void fade(benchmark::State& state, const QImage& background, const QImage& mask)
{
    for (auto _ : state) {
        QImage image(background.size(), QImage::Format_ARGB32);
        for (int row = 0; row < image.height(); ++row) {
            LvCropFade::fadeRow(reinterpret_cast<QRgb*>(image.scanLine(row)),
                                reinterpret_cast<const QRgb*>(background.constScanLine(row)),
                                reinterpret_cast<const QRgb*>(mask.constScanLine(row)), image.width(),
                                croppingOpacity);
        }
        benchmark::DoNotOptimize(image.constBits());
    }
}

void addCropping(LvBenchmarkProgram& program)
{
    const qint64 pixels = qint64{croppedSize.width()} * croppedSize.height();
    LvGPXTrackSelection selection = walks(1, 1000);
    selection.setCroppingOpacity(croppingOpacity);
    const LvGeoPositionRect box = boundingBox(selection);
    const LvGeoPosition far(box.south().decimalDegrees() - 1.0, box.west().decimalDegrees() - 1.0);
    const auto across = std::make_shared<const MapRenderer>(selection, croppedSize, box);
    const auto beside = std::make_shared<const MapRenderer>(selection, croppedSize, magnified(box, far, 1.0));
    QImage background(croppedSize, QImage::Format_ARGB32);
    background.fill(Qt::darkGreen);
    program.add(QStringLiteral("crop/across"), pixels,
                [across, background](benchmark::State& state) { crop(state, *across, background); });
    program.add(QStringLiteral("crop/beside"), pixels,
                [beside, background](benchmark::State& state) { crop(state, *beside, background); });
    const QImage mask =
        across->render(TrackRenderOption::Foreground).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    program.add(QStringLiteral("crop/fade"), pixels,
                [background, mask](benchmark::State& state) { fade(state, background, mask); });
    program.add(QStringLiteral("crop/copy"), pixels, [background](benchmark::State& state) {
        for (auto _ : state) {
            const QImage image = background.copy();
            benchmark::DoNotOptimize(image.constBits());
        }
    });
    const QString reference = QStringLiteral("copying the image");
    program.addRatio(QStringLiteral("crop 3840 x 2160, its mask drawn before"), QStringLiteral("crop/fade"),
                     reference, QStringLiteral("crop/copy"), 2.5);
    program.addRatio(QStringLiteral("crop 3840 x 2160, tracks beside the image"),
                     QStringLiteral("crop/beside"), reference, QStringLiteral("crop/copy"), 2.5);
    program.addRatio(QStringLiteral("crop 3840 x 2160, a track of 1,000 points across it"),
                     QStringLiteral("crop/across"), reference, QStringLiteral("crop/copy"));
}

/// Without a row in the table.
void addOthers(LvBenchmarkProgram& program)
{
    const qint64 points = program.points() / 100;
    const LvGPXTrackSelection area = walks(1, points, LvGPXTrackShapeEnum::polygon);
    const auto areaRenderer = std::make_shared<const MapRenderer>(area, pictureSize, boundingBox(area));
    program.add(QStringLiteral("area"), points,
                [areaRenderer](benchmark::State& state) { render(state, *areaRenderer); });
    const LvGPXTrackSelection smoothed = walks(1, points, LvGPXTrackShapeEnum::linestring, 50);
    const auto smoothedRenderer =
        std::make_shared<const MapRenderer>(smoothed, pictureSize, boundingBox(smoothed));
    program.add(QStringLiteral("smoothed path"), points,
                [smoothedRenderer](benchmark::State& state) { makePath(state, *smoothedRenderer); });
}

} // namespace

// Painting needs an application, and the loops fan out only where its main thread asks.
int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Images as large as these otherwise come from the system anew each time, or not, by what was measured
    // before.
    mallopt(M_MMAP_THRESHOLD, largestRecycledBytes);
    mallopt(M_TRIM_THRESHOLD, 32 * largestRecycledBytes);
    const QGuiApplication application(argc, argv);
    LvBenchmarkProgram program(argc, argv);
    paintSomething();
    addDrawing(program);
    addCropping(program);
    addOthers(program);
    return program.run();
}
