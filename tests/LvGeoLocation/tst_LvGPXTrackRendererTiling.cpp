// render() and renderQuickAndDirty() draw in tiles, leave out what cannot be seen and use several threads. No
// pixel may differ from what renderWith() draws with one painter on one image.

#include "LvCropFade.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvMapProjection.h"
#include "LvTest.h"

#include <QDateTime>
#include <QDirIterator>
#include <QPainter>
#include <QThreadPool>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <random>
#include <vector>

namespace
{

using Option = TrackRenderOption;

constexpr double placesPerDegree = 1000.0;
constexpr double listLongitude = 10.0;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double painterLimit = 32767.0; // beyond it the painter cuts outlines at the image

/// Draws points that were given as pixels: the latitudes of its tracks are places in a list.
class PixelRenderer : public LvGPXTrackRenderer
{
public:
    PixelRenderer(const LvGPXTrackSelection& selection, const QSize& size, double factor,
                  const std::vector<QPointF>& pixels, const QPointF& world)
        : LvGPXTrackRenderer(selection, size, factor)
        , myPixels(pixels)
        , myWorld(world)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        const double longitude = position.longitude().decimalDegrees();
        if (longitude != listLongitude) {
            return myWorld * (longitude / 360.0);
        }
        return myPixels.at(
            static_cast<size_t>(std::lround(position.latitude().decimalDegrees() * placesPerDegree)));
    }

private:
    std::vector<QPointF> myPixels;
    QPointF myWorld;
};

class MapRenderer : public LvGPXTrackRenderer
{
public:
    MapRenderer(const LvGPXTrackSelection& selection, const QSize& size, double factor,
                const LvGeoPositionRect& box)
        : LvGPXTrackRenderer(selection, size, factor)
        , myProjection(box, size)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myProjection.projectate(position);
    }

private:
    LvMapProjection myProjection;
};

QImage plain(const LvGPXTrackRenderer& renderer, Option option, QPainter::RenderHints hints)
{
    QImage image(renderer.targetImageSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHints(hints);
    renderer.renderWith(painter, option);
    painter.end();
    return image;
}

/// Empty when both pictures are equal, else where the first difference is.
QString difference(const QImage& actual, const QImage& expected)
{
    if (actual == expected) {
        return {};
    }
    int count = 0;
    QPoint first;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            if (actual.pixel(x, y) != expected.pixel(x, y) && count++ == 0) {
                first = QPoint(x, y);
            }
        }
    }
    return QStringLiteral("%1 pixels differ, the first at %2, %3: %4 instead of %5")
        .arg(count)
        .arg(first.x())
        .arg(first.y())
        .arg(actual.pixel(first), 8, 16)
        .arg(expected.pixel(first), 8, 16);
}

/// What is wrong with the two pictures that the renderer makes.
QString differences(const LvGPXTrackRenderer& renderer, Option option)
{
    const QImage smooth = plain(renderer, option, QPainter::Antialiasing);
    QString text = difference(renderer.render(option), smooth.convertToFormat(QImage::Format_ARGB32));
    if (text.isEmpty()) {
        text = difference(renderer.renderQuickAndDirty(option), plain(renderer, option, {}));
    }
    return text;
}

/// Random choices with a fixed seed.
class Dice
{
public:
    explicit Dice(quint32 seed)
        : myEngine(seed)
    {
    }

    double between(double low, double high)
    {
        // Not std::uniform_real_distribution, whose numbers depend on the library.
        return low + (high - low) * (static_cast<double>(myEngine() >> 8U) / static_cast<double>(1U << 24U));
    }

    int below(int count) { return static_cast<int>(myEngine() % static_cast<quint32>(count)); }

    bool oneIn(int count) { return below(count) == 0; }

    template <class List>
    auto oneOf(const List& list)
    {
        return *std::next(std::begin(list), below(static_cast<int>(std::size(list))));
    }

private:
    std::mt19937 myEngine;
};

using Pixels = std::vector<QPointF>;
using Figure = std::function<Pixels(Dice&, const QSize&)>;

QPointF anywhere(Dice& dice, const QSize& size, double margin)
{
    return {dice.between(-margin, size.width() + margin), dice.between(-margin, size.height() + margin)};
}

Pixels walk(Dice& dice, const QSize& size)
{
    constexpr double steps[] = {0.5, 3.0, 5.0, 9.0, 40.0, 300.0};
    const double step = dice.oneOf(steps);
    const double bend = dice.between(0.0, 3.0);
    double direction = dice.between(0.0, 7.0);
    Pixels pixels{anywhere(dice, size, 50.0)};
    for (int count = 2 + dice.below(250); count > 0; --count) {
        direction += dice.between(-bend, bend);
        pixels.push_back(pixels.back() + step * QPointF(std::cos(direction), std::sin(direction)));
    }
    return pixels;
}

/// Whole pixels and right angles, on which rows and joins fall together.
Pixels blocks(Dice& dice, const QSize& size)
{
    Pixels pixels{anywhere(dice, size, 10.0).toPoint()};
    for (int count = 2 + dice.below(150); count > 0; --count) {
        const double way = dice.below(25) - 12;
        pixels.push_back(pixels.back() + (dice.oneIn(2) ? QPointF(way, 0.0) : QPointF(0.0, way)));
    }
    return pixels;
}

/// To and fro, often exactly back.
Pixels zigzag(Dice& dice, const QSize& size)
{
    const QPointF a = anywhere(dice, size, 300.0);
    const QPointF b = anywhere(dice, size, 300.0);
    Pixels pixels;
    for (int count = 3 + dice.below(20); count > 0; --count) {
        const double spread = dice.oneIn(3) ? 0.0 : 20.0;
        pixels.push_back((count % 2 == 0 ? a : b)
                         + QPointF(dice.between(-spread, spread), dice.between(-spread, spread)));
    }
    return pixels;
}

/// Rounds that end where they began, some of them so short that all neighbours are the same.
Pixels rounds(Dice& dice, const QSize& size)
{
    const QPointF centre = anywhere(dice, size, 100.0);
    const int corners = 2 + dice.below(dice.oneIn(2) ? 4 : 80);
    const double radius = dice.between(5.0, dice.oneIn(2) ? 60.0 : 600.0);
    const double ripple = dice.oneIn(2) ? 0.0 : 0.3;
    Pixels pixels;
    for (int corner = 0; corner < corners; ++corner) {
        const double angle = 6.283185 * corner / corners;
        const double length = radius * dice.between(1.0 - ripple, 1.0);
        pixels.push_back(centre + length * QPointF(std::cos(angle), std::sin(angle)));
    }
    const Pixels once = pixels;
    for (int more = dice.below(3); more > 0; --more) {
        pixels.insert(pixels.end(), once.begin(), once.end());
    }
    pixels.push_back(once.front());
    return pixels;
}

/// Walks through the image that now and then leave it by far.
Pixels excursions(Dice& dice, const QSize& size)
{
    constexpr double distances[] = {1e3, 3e4, 4e4, 1e5, 1e6, 1e8, 9e8, 1e11, 1e13};
    const double farthest = dice.oneOf(distances);
    Pixels pixels;
    for (int count = 2 + dice.below(12); count > 0; --count) {
        pixels.push_back(dice.oneIn(4) ? QPointF(dice.between(-farthest, farthest),
                                                 dice.oneIn(2) ? dice.between(-farthest, farthest)
                                                               : dice.between(0.0, size.height()))
                                       : anywhere(dice, size, 80.0));
    }
    return pixels;
}

/// A line whose outline ends about where the painter's range of coordinates does.
Pixels aroundTheLimit(Dice& dice, const QSize& size)
{
    Pixels pixels = walk(dice, size);
    const bool isFarFromTheImage = dice.oneIn(2); // so that no tile sees the way to the limit
    const QPointF outside(-300.0, -300.0);
    if (isFarFromTheImage) {
        pixels.push_back(outside);
        pixels.push_back(outside - QPointF(0.0, dice.oneIn(2) ? painterLimit : painterLimit - 400.0));
        pixels.push_back(outside);
        const Pixels back = walk(dice, size);
        pixels.insert(pixels.end(), back.begin(), back.end());
        return pixels;
    }
    const double edge = painterLimit + dice.between(-40.0, 40.0);
    switch (dice.below(4)) {
    case 0:
        pixels.emplace_back(edge, dice.between(0.0, size.height()));
        break;
    case 1:
        pixels.emplace_back(dice.between(0.0, size.width()), edge);
        break;
    case 2:
        pixels.emplace_back(-edge, dice.between(0.0, size.height()));
        break;
    default:
        // Within the limit on both sides, but too wide in all.
        pixels.emplace_back(-edge / 2.0, dice.between(0.0, size.height()));
        pixels.emplace_back(edge / 2.0, dice.between(0.0, size.height()));
        break;
    }
    const Pixels more = walk(dice, size);
    pixels.insert(pixels.end(), more.begin(), more.end());
    return pixels;
}

/// Lines through the whole picture.
Pixels scribble(Dice& dice, const QSize& size)
{
    Pixels pixels;
    for (int count = 2 + dice.below(40); count > 0; --count) {
        pixels.push_back(anywhere(dice, size, dice.oneIn(5) ? 2000.0 : 0.0));
    }
    return pixels;
}

/// Steps of no length, nearly none, and on one straight line.
Pixels tinySteps(Dice& dice, const QSize& size)
{
    constexpr double steps[] = {0.0, 1e-13, 1e-9, 1e-7, 1e-4, 0.3, 4.0};
    const QPointF straight(dice.between(-1.0, 1.0), dice.between(-1.0, 1.0));
    Pixels pixels{anywhere(dice, size, 20.0)};
    for (int count = 3 + dice.below(120); count > 0; --count) {
        const double step = dice.oneOf(steps);
        pixels.push_back(
            pixels.back()
            + step * (dice.oneIn(2) ? straight : QPointF(dice.between(-1, 1), dice.between(-1, 1))));
    }
    if (dice.oneIn(2)) {
        pixels.push_back(pixels.front() + QPointF(dice.oneOf(steps), 0.0));
    }
    return pixels;
}

Pixels hostile(Dice& dice, const QSize& size)
{
    const double numbers[] = {notANumber, infinity, -infinity, 1e300,        -1e300,
                              1e12,       -1e12,    9.9e11,    2147483648.0, 0.0};
    Pixels pixels;
    for (int count = 2 + dice.below(30); count > 0; --count) {
        QPointF pixel = anywhere(dice, size, 50.0);
        if (dice.oneIn(5)) {
            pixel.setX(dice.oneOf(numbers));
        }
        if (dice.oneIn(8)) {
            pixel.setY(dice.oneOf(numbers));
        }
        pixels.push_back(pixel);
    }
    return pixels;
}

Pixels anyFigure(Dice& dice, const QSize& size)
{
    const Figure figures[] = {walk, blocks, zigzag, rounds, excursions, scribble, tinySteps};
    return dice.oneOf(figures)(dice, size);
}

QSize anySize(Dice& dice)
{
    const QSize sizes[] = {{1, 1},    {1, 9},    {7, 1},     {40, 30},   {128, 64}, {129, 65},
                           {127, 63}, {200, 90}, {257, 129}, {300, 140}, {530, 90}, {90, 270}};
    return dice.oneOf(sizes);
}

LvGPXTrackConfiguration anyConfiguration(Dice& dice, bool isPlainLine)
{
    constexpr double widths[] = {1.01, 1.5, 2.0, 3.0, 5.0, 7.3, 10.0, 18.0, 40.0};
    constexpr double oddWidths[] = {0.0, -3.0, 0.4, 0.999, 1.0, 1.001, 10.0, 300.0};
    constexpr int alphas[] = {255, 255, 180, 90, 1, 0};
    LvGPXTrackConfiguration config = LvGPXTrackConfiguration::defaultValue();
    config.setTrackShape(LvGPXTrackShapeEnum::linestring);
    config.setMarkerShape(LvGPXMarkerShapeEnum::unknown);
    config.setLineWidth(dice.oneOf(widths));
    config.setHaloWidth(dice.oneIn(2) ? 0.0 : 4.5);
    config.setLineColor(QColor(dice.below(256), dice.below(256), dice.below(256), dice.oneOf(alphas)));
    config.setFillColor(QColor(dice.below(256), dice.below(256), dice.below(256), dice.oneOf(alphas)));
    config.setPenStyle(LvPenStyle(Qt::SolidLine));
    config.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(1));
    if (isPlainLine) {
        return config;
    }
    const LvGPXTrackShapeEnum shapes[] = {LvGPXTrackShapeEnum::point, LvGPXTrackShapeEnum::linestring,
                                          LvGPXTrackShapeEnum::hop, LvGPXTrackShapeEnum::polygon,
                                          LvGPXTrackShapeEnum::polygon};
    const quint32 markers[] = {0, 1, 2, 4, 8, 16, 32, 64, 128, 256, 0x400, 0x400};
    config.setTrackShape(dice.oneOf(shapes));
    config.setMarkerShape(LvGPXMarkerShape(dice.oneOf(markers)));
    config.setPenStyle(LvPenStyle(dice.below(6)));
    config.setCurrentDisplayOptions(LvGPXTrackDisplayOptions(dice.below(4)));
    if (dice.oneIn(3)) {
        config.setLineWidth(dice.oneOf(oddWidths));
    }
    if (dice.oneIn(3)) {
        config.setSmoothingStrength(dice.below(101));
        config.setSmoothingSteps(1 + dice.below(8));
    }
    return config;
}

/// Appends the pixels to those of the renderer and gives the positions that stand for them.
QList<LvGPXTrackPoint> positionsOf(const Pixels& pixels, Pixels& all)
{
    QList<LvGPXTrackPoint> points;
    for (const QPointF& pixel : pixels) {
        const double place = static_cast<double>(all.size()) / placesPerDegree;
        points.append(LvGPXTrackPoint(LvGeoPosition(place, listLongitude), 0, QDateTime(), QString()));
        all.push_back(pixel);
    }
    return points;
}

LvGPXTrack trackOf(const Pixels& pixels, Pixels& all, LvGPXTrackShapeEnum shape)
{
    return {QStringLiteral("track"),
            QString(),
            {LvGPXTrackSegment(positionsOf(pixels, all))},
            LvGPXTrackShape(shape)};
}

class ThreadCount
{
public:
    explicit ThreadCount(int count)
        : myUsual(QThreadPool::globalInstance()->maxThreadCount())
    {
        QThreadPool::globalInstance()->setMaxThreadCount(count);
    }

    ~ThreadCount() { QThreadPool::globalInstance()->setMaxThreadCount(myUsual); }

    Q_DISABLE_COPY_MOVE(ThreadCount)

private:
    int myUsual;
};

} // namespace

class tst_LvGPXTrackRendererTiling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void generatedTracks_data();
    void generatedTracks();
    void largePictures_data();
    void largePictures();
    void acrossTheDateLine_data();
    void acrossTheDateLine();
    void realTracks();
    void manyTracks();
    void fading();
    void fadingOfRows();
    void croppedPictures();
};

void tst_LvGPXTrackRendererTiling::generatedTracks_data()
{
    QTest::addColumn<Figure>("figure");
    QTest::addColumn<bool>("isPlainLine"); // outlines only, as the tiles take them
    QTest::addColumn<int>("pictures");
    QTest::newRow("walks") << Figure(walk) << true << 200;
    QTest::newRow("blocks") << Figure(blocks) << true << 200;
    QTest::newRow("to and fro") << Figure(zigzag) << true << 100;
    QTest::newRow("rounds") << Figure(rounds) << true << 300;
    QTest::newRow("excursions") << Figure(excursions) << true << 80;
    QTest::newRow("around the painter's limit") << Figure(aroundTheLimit) << true << 100;
    QTest::newRow("scribble") << Figure(scribble) << true << 60;
    QTest::newRow("tiny steps") << Figure(tinySteps) << true << 200;
    QTest::newRow("hostile") << Figure(hostile) << true << 200;
    QTest::newRow("anything in any style") << Figure(anyFigure) << false << 400;
    QTest::newRow("hostile in any style") << Figure(hostile) << false << 100;
}

void tst_LvGPXTrackRendererTiling::generatedTracks()
{
    QFETCH(const Figure, figure);
    QFETCH(const bool, isPlainLine);
    QFETCH(const int, pictures);
    constexpr double factors[] = {1.0, 1.0, 2.0, 0.5, 0.01, 0.0};
    constexpr double worlds[] = {1e9, 1e9, 1e6, 900.0, 300.0, -150.0, 0.0};
    constexpr Option options[] = {Option::Normal, Option::Normal, Option::Foreground, static_cast<Option>(2)};
    constexpr int threadCounts[] = {1, 2, 8};
    for (int picture = 0; picture < LvTest::generatedCases(pictures); ++picture) {
        Dice dice(static_cast<quint32>(picture));
        const ThreadCount threads(threadCounts[picture % 3]);
        const QSize size = anySize(dice);
        Pixels pixels;
        LvGPXTrackSelection selection;
        for (int count = 1 + dice.below(3); count > 0; --count) {
            const LvGPXTrackShapeEnum natural =
                dice.oneIn(2) ? LvGPXTrackShapeEnum::linestring : LvGPXTrackShapeEnum::polygon;
            LvGPXTrack track = trackOf(figure(dice, size), pixels, natural);
            for (int enclaves = dice.below(6) - 3; enclaves > 0; --enclaves) {
                track.addEnclave(trackOf(figure(dice, size), pixels, LvGPXTrackShapeEnum::polygon));
            }
            selection.addTrack(LvGPXConfiguredTrack(track, anyConfiguration(dice, isPlainLine)));
        }
        const double factor = dice.oneOf(factors);
        const QPointF world(dice.oneOf(worlds), dice.oneIn(5) ? 30.0 : 0.0);
        const PixelRenderer renderer(selection, size, factor, pixels, world);
        const QString wrong = differences(renderer, dice.oneOf(options));
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(QStringLiteral("picture %1, %2 x %3: %4")
                                .arg(picture)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(wrong)));
    }
}

void tst_LvGPXTrackRendererTiling::largePictures_data()
{
    QTest::addColumn<int>("alpha");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("threads");
    QTest::newRow("opaque, one thread") << 255 << 5.0 << 10.0 << 1;
    QTest::newRow("opaque, eight threads") << 255 << 5.0 << 10.0 << 8;
    QTest::newRow("translucent") << 180 << 5.0 << 10.0 << 8;
    QTest::newRow("zoomed in") << 180 << 40.0 << 10.0 << 8;
    QTest::newRow("zoomed in, far beyond the painter's range") << 180 << 300.0 << 10.0 << 8;
    QTest::newRow("thin") << 180 << 7.0 << 1.5 << 8;
    QTest::newRow("broad") << 180 << 20.0 << 50.0 << 8;
}

void tst_LvGPXTrackRendererTiling::largePictures()
{
    QFETCH(const int, alpha);
    QFETCH(const double, step);
    QFETCH(const double, width);
    QFETCH(const int, threads);
    const ThreadCount count(threads);
    const QSize size(1300, 700);
    Dice dice(7);
    Pixels line{QPointF(650.0, 350.0)};
    double direction = 0.0;
    while (line.size() < 3'000) {
        direction += dice.between(-1.0, 1.0);
        line.push_back(line.back() + step * QPointF(std::cos(direction), std::sin(direction)));
    }
    Pixels pixels;
    LvGPXTrackConfiguration config = anyConfiguration(dice, true);
    config.setLineWidth(width);
    config.setLineColor(QColor(10, 90, 200, alpha));
    LvGPXTrackSelection selection;
    selection.addTrack(LvGPXConfiguredTrack(trackOf(line, pixels, LvGPXTrackShapeEnum::linestring), config));
    config.setLineColor(QColor(200, 90, 20, alpha));
    std::transform(line.begin(), line.end(), line.begin(), [](const QPointF& p) { return p.transposed(); });
    selection.addTrack(LvGPXConfiguredTrack(trackOf(line, pixels, LvGPXTrackShapeEnum::linestring), config));
    const PixelRenderer renderer(selection, size, 1.0, pixels, QPointF(5000.0, 0.0));
    QCOMPARE(differences(renderer, Option::Normal), QString());
    QVERIFY(plain(renderer, Option::Normal, {}) != plain(renderer, Option::Normal, QPainter::Antialiasing));
}

void tst_LvGPXTrackRendererTiling::acrossTheDateLine_data()
{
    QTest::addColumn<double>("west");
    QTest::addColumn<double>("east");
    QTest::addColumn<QSize>("size");
    QTest::newRow("around the meridian") << 170.0 << -170.0 << QSize(300, 200);
    QTest::newRow("the whole world") << -180.0 << 180.0 << QSize(400, 200);
    QTest::newRow("the world several times") << -180.0 << 180.0 << QSize(700, 60);
    QTest::newRow("close") << 179.9 << -179.95 << QSize(300, 150);
}

void tst_LvGPXTrackRendererTiling::acrossTheDateLine()
{
    QFETCH(const double, west);
    QFETCH(const double, east);
    QFETCH(const QSize, size);
    for (quint32 seed = 0; seed < 20; ++seed) {
        Dice dice(seed);
        LvGPXTrackSelection selection;
        for (int tracks = 0; tracks < 4; ++tracks) {
            double latitude = dice.between(-60.0, 60.0);
            double longitude = dice.between(150.0, 210.0);
            const double step = dice.oneOf(std::initializer_list<double>{0.01, 1.0, 15.0});
            QList<LvGPXTrackPoint> points;
            for (int count = 80; count > 0; --count) {
                latitude = std::clamp(latitude + dice.between(-step, step), -90.0, 90.0); // to the poles
                longitude += dice.between(-step, step);
                points.append(LvGPXTrackPoint(LvGeoPosition(latitude, std::remainder(longitude, 360.0)), 0,
                                              QDateTime(), QString()));
            }
            const LvGPXTrack track(QStringLiteral("track"), QString(), {LvGPXTrackSegment(points)},
                                   LvGPXTrackShape(LvGPXTrackShapeEnum::linestring));
            selection.addTrack(LvGPXConfiguredTrack(track, anyConfiguration(dice, dice.oneIn(2))));
        }
        const MapRenderer renderer(selection, size, 1.0,
                                   LvGeoPositionRect(LvGeoPosition(-50.0, west), LvGeoPosition(50.0, east)));
        QCOMPARE(differences(renderer, Option::Normal), QString());
    }
}

void tst_LvGPXTrackRendererTiling::realTracks()
{
    const QString corpus = LvTest::corpusDirectory();
    if (corpus.isEmpty()) {
        QSKIP("No real tracks beside the repository.");
    }
    int tracks = 0;
    QDirIterator files(corpus, {QStringLiteral("*.gpx")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        Dice dice(4);
        LvGPXTrackSelection selection;
        const QList<LvGPXTrack> read = LvGPXTrackFile(file).tracks();
        for (const LvGPXTrack& track : read) {
            LvGPXTrackConfiguration config = anyConfiguration(dice, true);
            config.setTrackShape(track.naturalShape());
            selection.addTrack(LvGPXConfiguredTrack(track, config));
        }
        const LvGeoPositionRect box = read.isEmpty() ? LvGeoPositionRect() : read.first().boundingBox();
        if (!box.isValid()) {
            continue;
        }
        tracks += static_cast<int>(read.size());
        const MapRenderer renderer(selection, QSize(700, 300), 1.0, box);
        QVERIFY2(differences(renderer, Option::Normal).isEmpty(), qPrintable(file.fileName()));
        const LvGeoPosition centre = box.center();
        const LvGeoPositionRect part(LvGeoPosition(centre.latitude().decimalDegrees() - 0.002,
                                                   centre.longitude().decimalDegrees() - 0.003),
                                     LvGeoPosition(centre.latitude().decimalDegrees() + 0.002,
                                                   centre.longitude().decimalDegrees() + 0.003));
        const MapRenderer closer(selection, QSize(400, 300), 1.0, part);
        QVERIFY2(differences(closer, Option::Normal).isEmpty(), qPrintable(file.fileName()));
    }
    QVERIFY(tracks > 10);
}

void tst_LvGPXTrackRendererTiling::manyTracks()
{
    // More than are prepared at once, with markers, areas and dashes between the lines: the order counts.
    for (const int threads : {1, 2, 8}) {
        const ThreadCount count(threads);
        Dice dice(static_cast<quint32>(threads));
        const QSize size(700, 400);
        Pixels pixels;
        LvGPXTrackSelection selection;
        for (int track = 0; track < 150; ++track) {
            selection.addTrack(
                LvGPXConfiguredTrack(trackOf(walk(dice, size), pixels, LvGPXTrackShapeEnum::linestring),
                                     anyConfiguration(dice, !dice.oneIn(5))));
        }
        const PixelRenderer renderer(selection, size, 1.0, pixels, QPointF(900.0, 0.0));
        QCOMPARE(differences(renderer, Option::Normal), QString());
        QCOMPARE(differences(renderer, Option::Foreground), QString());
    }
}

void tst_LvGPXTrackRendererTiling::fading()
{
    for (quint32 opacity = 0; opacity < 256; ++opacity) {
        for (quint32 cover = 0; cover < 256; ++cover) {
            QCOMPARE(LvCropFade::fadedAlpha(opacity, cover), opacity + ((255 - opacity) * cover) / 255);
        }
    }
}

void tst_LvGPXTrackRendererTiling::fadingOfRows()
{
    // All covers at every place within a group of pixels, and rows whose length is no multiple of a group.
    for (const int shift : {0, 1, 2, 3}) {
        std::vector<QRgb> mask;
        std::vector<QRgb> source;
        for (quint32 cover = 0; cover < 256U + static_cast<quint32>(shift); ++cover) {
            mask.push_back((cover << 24U) | 0x00abcdefU);
            source.push_back(0x12345678U + cover * 0x01010101U);
        }
        const int count = static_cast<int>(mask.size()) - shift;
        for (quint32 opacity = 0; opacity < 256; ++opacity) {
            std::vector<QRgb> row(mask.size(), 0xdeadbeefU);
            LvCropFade::fadeRow(row.data(), source.data() + shift, mask.data() + shift, count, opacity);
            for (int i = 0; i < count; ++i) {
                const auto at = static_cast<size_t>(i + shift);
                const quint32 alpha = opacity + ((255 - opacity) * (mask[at] >> 24U)) / 255;
                QCOMPARE(row[static_cast<size_t>(i)], (alpha << 24U) | (source[at] & 0x00ffffffU));
            }
            for (auto i = static_cast<size_t>(count); i < row.size(); ++i) {
                QCOMPARE(row[i], 0xdeadbeefU);
            }
        }
    }
}

void tst_LvGPXTrackRendererTiling::croppedPictures()
{
    Dice dice(3);
    for (const int opacity : {0, 1, 64, 200, 254}) {
        Pixels pixels;
        LvGPXTrackSelection selection;
        selection.setCroppingOpacity(opacity);
        const QSize size(203, 101);
        selection.addTrack(
            LvGPXConfiguredTrack(trackOf(walk(dice, size), pixels, LvGPXTrackShapeEnum::linestring),
                                 anyConfiguration(dice, true)));
        const PixelRenderer renderer(selection, size, 1.0, pixels, QPointF(1e6, 0.0));
        for (const QSize& mapSize : {size, QSize(300, 80), QSize(90, 150), QSize(1, 1), QSize(3, 200)}) {
            for (const QImage::Format format :
                 {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_RGB888, QImage::Format_RGB16}) {
                QImage map(mapSize, format);
                map.fill(QColor(120, 30, 200));
                map.setDevicePixelRatio(2.0);
                const QImage cropped = renderer.crop(map);
                const QImage mask = renderer.render(Option::Foreground);
                const QImage before = map.convertToFormat(QImage::Format_ARGB32);
                QCOMPARE(cropped.format(), QImage::Format_ARGB32);
                QCOMPARE(cropped.devicePixelRatio(), 2.0);
                for (int y = 0; y < mapSize.height(); ++y) {
                    for (int x = 0; x < mapSize.width(); ++x) {
                        const int cover = mask.valid(x, y) ? qAlpha(mask.pixel(x, y)) : 0;
                        const int alpha = opacity + ((255 - opacity) * cover) / 255;
                        const QRgb color = before.pixel(x, y);
                        QCOMPARE(cropped.pixel(x, y), qRgba(qRed(color), qGreen(color), qBlue(color), alpha));
                    }
                }
            }
        }
    }
}

LV_TEST_MAIN(tst_LvGPXTrackRendererTiling)

#include "tst_LvGPXTrackRendererTiling.moc"
