#include "LvConcurrent.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXMarkerShape.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSegment.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionList.h"
#include "LvMapProjection.h"
#include "LvTest.h"

#include <QColorSpace>
#include <QDateTime>
#include <QElapsedTimer>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QRandomGenerator>
#include <QSet>
#include <QThread>
#include <QThreadPool>

#include <atomic>
#include <cmath>
#include <functional>
#include <limits>
#include <mutex>
#include <numbers>
#include <random>
#include <type_traits>

namespace
{

using Option = TrackRenderOption;

constexpr int strokeOnly = 1;
constexpr int fillOnly = 2;
constexpr int strokeAndFill = 3;
constexpr int pointShape = 1;
constexpr int hopShape = 2;
constexpr int lineShape = 4;
constexpr int areaShape = 8;
constexpr int arrowMarker = 0x400;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// One degree is `pixelsPerDegree` pixels in both directions, 0°/0° lies at `origin`.
class FlatRenderer : public LvGPXTrackRenderer
{
public:
    FlatRenderer(const LvGPXTrackSelection& selection, const QSize& size, double factor = 1.0,
                 double pixelsPerDegree = 1.0, const QPointF& origin = QPointF())
        : LvGPXTrackRenderer(selection, size, factor)
        , myPixelsPerDegree(pixelsPerDegree)
        , myOrigin(origin)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myOrigin
            + QPointF(position.longitude().decimalDegrees(), -position.latitude().decimalDegrees())
            * myPixelsPerDegree;
    }

private:
    double myPixelsPerDegree;
    QPointF myOrigin;
};

/// As an application does it: the Mercator projection of a map section.
class MapRenderer : public LvGPXTrackRenderer
{
public:
    MapRenderer(const LvGPXTrackSelection& selection, const QSize& size, double south, double north,
                double west, double east, double factor = 1.0)
        : LvGPXTrackRenderer(selection, size, factor)
        , myProjection(LvGeoPositionRect(LvGeoPosition(south, west), LvGeoPosition(north, east)), size)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myProjection.projectate(position);
    }

private:
    LvMapProjection myProjection;
};

/// Whatever a function makes of a position.
class FunctionRenderer : public LvGPXTrackRenderer
{
public:
    using Function = std::function<QPointF(double latitude, double longitude)>;

    FunctionRenderer(const LvGPXTrackSelection& selection, const QSize& size, Function function)
        : LvGPXTrackRenderer(selection, size, 1.0)
        , myFunction(std::move(function))
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        return myFunction(position.latitude().decimalDegrees(), position.longitude().decimalDegrees());
    }

private:
    Function myFunction;
};

/// What a painter was asked to draw, with the state it had then.
struct Drawing {
    enum Kind { Path, Lines, Polygon, Ellipse, Rects };

    Kind kind;
    QPainterPath path; // in the coordinates before the transformation
    QPointF translation;
    QPen pen;
    QBrush brush;
};

class RecordingEngine : public QPaintEngine
{
public:
    RecordingEngine()
        : QPaintEngine(AllFeatures)
    {
    }

    bool begin(QPaintDevice* /*device*/) override { return true; }

    bool end() override { return true; }

    void updateState(const QPaintEngineState& change) override
    {
        myTranslation = QPointF(change.transform().dx(), change.transform().dy());
        myPen = change.pen();
        myBrush = change.brush();
    }

    void drawPath(const QPainterPath& path) override { add(Drawing::Path, path); }

    void drawLines(const QLineF* lines, int count) override
    {
        QPainterPath path;
        for (int i = 0; i < count; ++i) {
            path.moveTo(lines[i].p1());
            path.lineTo(lines[i].p2());
        }
        add(Drawing::Lines, path);
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode /*mode*/) override
    {
        QPainterPath path;
        path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
        add(Drawing::Polygon, path);
    }

    void drawEllipse(const QRectF& rect) override
    {
        QPainterPath path;
        path.addEllipse(rect);
        add(Drawing::Ellipse, path);
    }

    void drawRects(const QRectF* rects, int count) override
    {
        QPainterPath path;
        for (int i = 0; i < count; ++i) {
            path.addRect(rects[i]);
        }
        add(Drawing::Rects, path);
    }

    void drawPixmap(const QRectF& /*target*/, const QPixmap& /*pixmap*/, const QRectF& /*source*/) override {
    }

    [[nodiscard]] Type type() const override { return User; }

    QList<Drawing> drawings;

private:
    void add(Drawing::Kind kind, const QPainterPath& path)
    {
        drawings.append({kind, path, myTranslation, myPen, myBrush});
    }

    QPointF myTranslation;
    QPen myPen;
    QBrush myBrush;
};

class Recorder : public QPaintDevice
{
public:
    explicit Recorder(int width = 100)
        : myWidth(width)
    {
    }

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &myEngine; }

    [[nodiscard]] QList<Drawing> drawings() const { return myEngine.drawings; }

    [[nodiscard]] QList<double> translations() const
    {
        QList<double> result;
        for (const Drawing& drawing : myEngine.drawings) {
            result.append(drawing.translation.x());
        }
        return result;
    }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return myWidth;
        case PdmHeight:
            return 100;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        default:
            return 96;
        }
    }

private:
    int myWidth;
    mutable RecordingEngine myEngine;
};

QColor orange()
{
    return {255, 145, 0};
}

LvGPXTrackConfiguration configuration(int shape, int options = strokeOnly, int marker = 1,
                                      double width = 10.0, double halo = 0.0, const QColor& line = orange(),
                                      const QColor& fill = Qt::blue, int penStyle = 1, int strength = 100,
                                      int steps = 1)
{
    return {line,
            LvDistance(width),
            fill,
            LvDistance(halo),
            LvGPXTrackDisplayOptions(options),
            LvGPXMarkerShape(marker),
            LvGPXTrackShape(shape),
            LvPenStyle(penStyle),
            strength,
            steps};
}

LvGPXTrackSegment segment(const LvGeoPositionList& positions)
{
    QList<LvGPXTrackPoint> points;
    for (const LvGeoPosition& position : positions) {
        points.append(LvGPXTrackPoint(position, 0, QDateTime(), QString()));
    }
    return LvGPXTrackSegment(points);
}

LvGPXTrack track(const QList<LvGeoPositionList>& segments, int shape = lineShape)
{
    QList<LvGPXTrackSegment> list;
    for (const LvGeoPositionList& positions : segments) {
        list.append(segment(positions));
    }
    return LvGPXTrack(QStringLiteral("track"), QString(), list, LvGPXTrackShape(shape));
}

LvGPXTrack track(const LvGeoPositionList& positions, int shape = lineShape)
{
    return track(QList<LvGeoPositionList>{positions}, shape);
}

LvGPXTrackSelection select(const QList<LvGPXConfiguredTrack>& tracks, int croppingOpacity = 255)
{
    LvGPXTrackSelection selection{LvGPXConfiguredTrackList(tracks)};
    selection.setCroppingOpacity(croppingOpacity);
    return selection;
}

/// A renderer for calls that do not look at its selection.
FlatRenderer plain(double factor = 1.0)
{
    return {LvGPXTrackSelection(), QSize(100, 100), factor};
}

QList<QPointF> corners(const QPainterPath& path)
{
    QList<QPointF> result;
    for (int i = 0; i < path.elementCount(); ++i) {
        result.append(QPointF(path.elementAt(i).x, path.elementAt(i).y));
    }
    return result;
}

QImage blank(const QSize& size = QSize(100, 100))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

bool isEmpty(const QImage& image)
{
    return image == blank(image.size()).convertToFormat(image.format());
}

/// The tracks over a sheet with a graticule, so that a picture can be read as a map: lines every `step`
/// degrees, the 180° meridian and its copies in red, the prime meridian in grey.
QImage onMap(const LvGPXTrackRenderer& renderer, double step = 10.0, Option option = Option::Normal)
{
    QImage image(renderer.targetImageSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(236, 243, 248));
    QPainter painter(&image);
    for (int world = -4; world <= 4; ++world) {
        painter.save();
        painter.translate(world * renderer.aroundTheWorldOffset());
        for (double longitude = -180.0; longitude < 180.0; longitude += step) {
            const bool dateLine = longitude == -180.0;
            painter.setPen(QPen(dateLine ? QColor(220, 60, 60) : QColor(205, 215, 222), dateLine ? 2 : 1));
            painter.drawLine(renderer.project(LvGeoPosition(84.0, longitude)),
                             renderer.project(LvGeoPosition(-84.0, longitude)));
        }
        painter.setPen(QColor(205, 215, 222));
        for (double latitude = -80.0; latitude <= 80.0; latitude += step) {
            painter.drawLine(renderer.project(LvGeoPosition(latitude, -180.0)),
                             renderer.project(LvGeoPosition(latitude, 180.0)));
        }
        painter.restore();
    }
    painter.drawImage(0, 0, renderer.render(option));
    return image;
}

} // namespace

class tst_LvGPXTrackRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void type();
    void accessors();
    void optionSpellings();

    void solidPen_data();
    void solidPen();
    void penStyle();
    void brushAndColors_data();
    void brushAndColors();

    void polar_data();
    void polar();
    void angleOfPath();

    void drawPath_data();
    void drawPath();
    void drawPolygonPath_data();
    void drawPolygonPath();
    void drawLinePath_data();
    void drawLinePath();
    void arrowHead_data();
    void arrowHead();
    void arrowHeadOfEmptyPath();
    void painterIsRestored_data();
    void painterIsRestored();

    void dateLineCrossing_data();
    void dateLineCrossing();
    void dateLineCrossings();
    void dateLineOffsets();
    void pathsAreThoseOfTheLists_data();
    void pathsAreThoseOfTheLists();
    void projecting();
    void shifting();

    void thinning_data();
    void thinning();
    void pathOfSegments();
    void pathOverDateLine_data();
    void pathOverDateLine();
    void smoothing_data();
    void smoothing();
    void configuredPath_data();
    void configuredPath();
    void enclaves();

    void worldOffset();
    void visibleShifts_data();
    void visibleShifts();
    void repetition();

    void drawPoint_data();
    void drawPoint();
    void drawPointPlaces_data();
    void drawPointPlaces();
    void drawPointMarkers_data();
    void drawPointMarkers();
    void fallBackToPoint_data();
    void fallBackToPoint();
    void shapes_data();
    void shapes();
    void laterTracksOnTop();

    void imageFormats();
    void emptyImages();
    void foreground();
    void optionsOnImages_data();
    void optionsOnImages();
    void leavingOutCopies_data();
    void leavingOutCopies();

    void cropOpaque();
    void cropTable_data();
    void cropTable();
    void cropEffect();
    void cropFormats_data();
    void cropFormats();
    void cropKeepsWhatDescribesTheImage();
    void cropSizes_data();
    void cropSizes();
    void mergeCropping();

    void emptyTracks();
    void hostileSizes_data();
    void hostileSizes();
    void hostileProjection_data();
    void hostileProjection();

    void parallelRenderers();
    void parallelProjection();
    void sequentialProjection();

    void goldenMarkers_data();
    void goldenMarkers();
    void goldenStyles_data();
    void goldenStyles();
    void goldenDateLine_data();
    void goldenDateLine();
    void goldenWorldCopies();
    void goldenCropping_data();
    void goldenCropping();
    void goldenSmoothing();
};

Q_DECLARE_METATYPE(TrackRenderOption)

void tst_LvGPXTrackRenderer::type()
{
    QVERIFY(std::is_abstract_v<LvGPXTrackRenderer>);
    QVERIFY(std::has_virtual_destructor_v<LvGPXTrackRenderer>);
    QVERIFY((std::is_same_v<std::underlying_type_t<TrackRenderOption>, int>));
    QCOMPARE(static_cast<int>(TrackRenderOption::Normal), 0);
    QCOMPARE(static_cast<int>(TrackRenderOption::Foreground), 1);
}

void tst_LvGPXTrackRenderer::accessors()
{
    const LvGPXTrackSelection selection = select({{track({{1, 2}, {3, 4}}), configuration(lineShape)}}, 77);
    const FlatRenderer renderer(selection, QSize(123, 45), 2.5);
    QCOMPARE(renderer.targetImageSize(), QSize(123, 45));
    QCOMPARE(renderer.renderingFactor(), 2.5);
    QCOMPARE(renderer.scale(4.0), 10.0);
    QCOMPARE(renderer.scale(-1.0), -2.5);
    QVERIFY(renderer.selection() == selection);
    const FlatRenderer copy(renderer);
    QCOMPARE(copy.targetImageSize(), renderer.targetImageSize());
    QCOMPARE(copy.render(Option::Normal), renderer.render(Option::Normal));
}

void tst_LvGPXTrackRenderer::optionSpellings()
{
    QVERIFY(LvGPXTrackRenderer::Foreground == TrackRenderOption::Foreground);
    QVERIFY(LvGPXTrackRenderer::TrackRenderOption::Normal == ::TrackRenderOption::Normal);
    QCOMPARE(static_cast<int>(TrackRenderOption(7)), 7);
}

void tst_LvGPXTrackRenderer::solidPen_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("width");
    QTest::addColumn<int>("alpha");
    QTest::newRow("normal: line width, own alpha") << 0 << 1.0 << 10.0 << 100;
    QTest::newRow("foreground: with halo, opaque") << 1 << 1.0 << 16.5 << 255;
    QTest::newRow("other: with halo, own alpha") << 2 << 1.0 << 16.5 << 100;
    QTest::newRow("negative: as other") << -1 << 1.0 << 16.5 << 100;
    QTest::newRow("normal, scaled") << 0 << 2.5 << 25.0 << 100;
    QTest::newRow("foreground, scaled") << 1 << 0.5 << 8.25 << 255;
}

void tst_LvGPXTrackRenderer::solidPen()
{
    QFETCH(int, option);
    QFETCH(double, factor);
    QFETCH(double, width);
    QFETCH(int, alpha);
    const LvGPXTrackConfiguration config =
        configuration(lineShape, strokeOnly, 1, 10.0, 6.5, QColor(1, 2, 3, 100), Qt::blue, Qt::DashLine);
    const QPen pen = plain(factor).solidPenFromTrack(config, TrackRenderOption(option));
    QCOMPARE(pen.widthF(), width);
    QCOMPARE(pen.color(), QColor(1, 2, 3, alpha));
    QCOMPARE(pen.brush().style(), Qt::SolidPattern);
    QCOMPARE(pen.style(), Qt::SolidLine);
    QCOMPARE(pen.capStyle(), Qt::RoundCap);
    QCOMPARE(pen.joinStyle(), Qt::RoundJoin);
}

void tst_LvGPXTrackRenderer::penStyle()
{
    const LvGPXTrackConfiguration config =
        configuration(lineShape, strokeOnly, 1, 10.0, 6.5, QColor(1, 2, 3, 100), Qt::blue, Qt::DashLine);
    const FlatRenderer renderer = plain();
    QPen expected = renderer.solidPenFromTrack(config, Option::Normal);
    config.penStyle().modifyPen(expected);
    QCOMPARE(renderer.penFromTrack(config, Option::Normal), expected);
    QVERIFY(expected.style() != Qt::SolidLine);
    for (const int option : {1, 2, -1}) {
        const QPen pen = renderer.penFromTrack(config, TrackRenderOption(option));
        QCOMPARE(pen, renderer.solidPenFromTrack(config, TrackRenderOption(option)));
        QCOMPARE(pen.style(), Qt::SolidLine);
    }
}

void tst_LvGPXTrackRenderer::brushAndColors_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("lineAlpha");
    QTest::addColumn<int>("fillAlpha");
    QTest::newRow("normal") << 0 << 0 << 180;
    QTest::newRow("foreground") << 1 << 255 << 255;
    QTest::newRow("other") << 2 << 0 << 180;
}

void tst_LvGPXTrackRenderer::brushAndColors()
{
    QFETCH(int, option);
    QFETCH(int, lineAlpha);
    QFETCH(int, fillAlpha);
    const LvGPXTrackConfiguration config =
        configuration(lineShape, strokeOnly, 1, 10.0, 0.0, QColor(1, 2, 3, 0), QColor(4, 5, 6, 180));
    const FlatRenderer renderer = plain();
    const auto renderOption = TrackRenderOption(option);
    QCOMPARE(renderer.lineColor(config, renderOption), QColor(1, 2, 3, lineAlpha));
    QCOMPARE(renderer.fillColor(config, renderOption), QColor(4, 5, 6, fillAlpha));
    QCOMPARE(renderer.brushFromTrack(config, renderOption),
             QBrush(QColor(4, 5, 6, fillAlpha), Qt::SolidPattern));
    QCOMPARE(LvGPXTrackRenderer::adaptColor(QColor(7, 8, 9, 180), renderOption), QColor(7, 8, 9, fillAlpha));
}

void tst_LvGPXTrackRenderer::polar_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("unit");
    QTest::newRow("line to the right: back to the left") << 0.0 << QPointF(-1, 0);
    QTest::newRow("line upwards: back downwards") << 90.0 << QPointF(0, 1);
    QTest::newRow("line to the left: back to the right") << 180.0 << QPointF(1, 0);
    QTest::newRow("line downwards: back upwards") << 270.0 << QPointF(0, -1);
    QTest::newRow("30 degrees") << 30.0 << QPointF(-std::sqrt(0.75), 0.5);
}

void tst_LvGPXTrackRenderer::polar()
{
    QFETCH(double, angle);
    QFETCH(QPointF, unit);
    constexpr double tolerance = 1e-12;
    const QPointF vector = LvGPXTrackRenderer::carthesian(1.0, angle);
    QVERIFY((vector - unit).manhattanLength() < tolerance);
    const QPointF moved = LvGPXTrackRenderer::movePolar(QPointF(5, 7), 3.0, angle);
    QVERIFY((moved - (QPointF(5, 7) + 3.0 * unit)).manhattanLength() < tolerance);
}

void tst_LvGPXTrackRenderer::angleOfPath()
{
    QPainterPath up(QPointF(0, 100));
    up.lineTo(0, 0);
    QCOMPARE(LvGPXTrackRenderer::detectAngleOfPath(up), 90.0);

    // The bend lies at 97.5 % of the length: three of the five places before it, two behind it.
    QPainterPath bent(QPointF(0, 0));
    bent.lineTo(97.5, 0);
    bent.lineTo(97.5, -2.5);
    QVERIFY(std::abs(LvGPXTrackRenderer::detectAngleOfPath(bent) - (3 * 0.0 + 2 * 90.0) / 5.0) < 1e-9);
}

void tst_LvGPXTrackRenderer::drawPath_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("displayOptions");
    QTest::addColumn<bool>("drawn");
    QTest::newRow("normal, stroke") << 0 << strokeOnly << true;
    QTest::newRow("normal, fill only") << 0 << fillOnly << false;
    QTest::newRow("normal, nothing") << 0 << 0 << false;
    QTest::newRow("normal, both") << 0 << strokeAndFill << true;
    QTest::newRow("foreground, nothing") << 1 << 0 << true;
    QTest::newRow("foreground, stroke") << 1 << strokeOnly << true;
    QTest::newRow("other, stroke") << 2 << strokeOnly << true;
    QTest::newRow("other, fill only") << 2 << fillOnly << false;
    QTest::newRow("negative, nothing") << -1 << 0 << false;
}

void tst_LvGPXTrackRenderer::drawPath()
{
    QFETCH(int, option);
    QFETCH(int, displayOptions);
    QFETCH(bool, drawn);
    const LvGPXTrackConfiguration config =
        configuration(lineShape, displayOptions, 1, 10.0, 4.0, orange(), Qt::blue, Qt::DotLine);
    const FlatRenderer renderer = plain();
    QPainterPath path(QPointF(10, 10));
    path.lineTo(90, 10);
    path.lineTo(90, 90);
    Recorder recorder;
    QPainter painter(&recorder);
    painter.setBrush(Qt::red); // must not fill the line
    renderer.drawPath(&painter, path, config, TrackRenderOption(option));
    painter.end();
    const QList<Drawing> drawings = recorder.drawings();
    QCOMPARE(drawings.size(), drawn ? 1 : 0);
    if (drawn) {
        QCOMPARE(drawings.first().path, path);
        QCOMPARE(drawings.first().pen, renderer.penFromTrack(config, TrackRenderOption(option)));
        QCOMPARE(drawings.first().brush.style(), Qt::NoBrush);
    }
}

void tst_LvGPXTrackRenderer::drawPolygonPath_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("displayOptions");
    QTest::addColumn<QString>("drawn");
    QTest::newRow("normal, stroke") << 0 << strokeOnly << "outline";
    QTest::newRow("normal, fill only") << 0 << fillOnly << "area";
    QTest::newRow("normal, both: outline over the area") << 0 << strokeAndFill << "area outline";
    QTest::newRow("normal, nothing") << 0 << 0 << "";
    QTest::newRow("foreground, nothing") << 1 << 0 << "area outline";
    QTest::newRow("foreground, stroke") << 1 << strokeOnly << "area outline";
    QTest::newRow("other, fill only") << 2 << fillOnly << "area";
    QTest::newRow("other, both") << 2 << strokeAndFill << "area outline";
    QTest::newRow("other, nothing") << 3 << 0 << "";
}

void tst_LvGPXTrackRenderer::drawPolygonPath()
{
    QFETCH(int, option);
    QFETCH(int, displayOptions);
    QFETCH(QString, drawn);
    const LvGPXTrackConfiguration config = configuration(areaShape, displayOptions, arrowMarker, 10.0, 4.0,
                                                         orange(), QColor(0, 0, 255, 128), Qt::DotLine);
    const FlatRenderer renderer = plain();
    QPainterPath path(QPointF(10, 10));
    path.lineTo(90, 10);
    path.lineTo(90, 90);
    path.closeSubpath();
    Recorder recorder;
    QPainter painter(&recorder);
    renderer.drawPolygon(&painter, path, config, TrackRenderOption(option));
    painter.end();
    QStringList found;
    const QList<Drawing> drawings = recorder.drawings();
    for (const Drawing& drawing : drawings) {
        QCOMPARE(drawing.kind, Drawing::Path); // no arrow head on an area
        if (drawing.pen.style() == Qt::NoPen) {
            found.append(QStringLiteral("area"));
            QCOMPARE(drawing.brush, renderer.brushFromTrack(config, TrackRenderOption(option)));
        } else {
            found.append(QStringLiteral("outline"));
            QCOMPARE(drawing.brush.style(), Qt::NoBrush);
            QCOMPARE(drawing.pen, renderer.penFromTrack(config, TrackRenderOption(option)));
        }
    }
    QCOMPARE(found.join(' '), drawn);
}

void tst_LvGPXTrackRenderer::drawLinePath_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("displayOptions");
    QTest::addColumn<int>("marker");
    QTest::addColumn<int>("paths");
    QTest::addColumn<int>("barbs");
    QTest::newRow("arrow") << 0 << strokeOnly << arrowMarker << 1 << 2;
    QTest::newRow("arrow among other markers") << 0 << strokeOnly << (arrowMarker | 1) << 1 << 2;
    QTest::newRow("no arrow") << 0 << strokeOnly << 1 << 1 << 0;
    QTest::newRow("unknown marker") << 0 << strokeOnly << 0 << 1 << 0;
    QTest::newRow("arrow without its line") << 0 << fillOnly << arrowMarker << 0 << 0;
    QTest::newRow("foreground shows line and arrow") << 1 << 0 << arrowMarker << 1 << 2;
    QTest::newRow("other, arrow") << 2 << strokeOnly << arrowMarker << 1 << 2;
    QTest::newRow("other, arrow without its line") << 2 << 0 << arrowMarker << 0 << 0;
}

void tst_LvGPXTrackRenderer::drawLinePath()
{
    QFETCH(int, option);
    QFETCH(int, displayOptions);
    QFETCH(int, marker);
    QFETCH(int, paths);
    QFETCH(int, barbs);
    const LvGPXTrackConfiguration config =
        configuration(lineShape, displayOptions, marker, 10.0, 4.0, orange(), Qt::blue, Qt::DotLine);
    const FlatRenderer renderer = plain();
    QPainterPath path(QPointF(10, 10));
    path.lineTo(90, 10);
    Recorder recorder;
    QPainter painter(&recorder);
    renderer.drawLine(&painter, path, config, TrackRenderOption(option));
    painter.end();
    int foundPaths = 0;
    int foundBarbs = 0;
    const QList<Drawing> drawings = recorder.drawings();
    for (const Drawing& drawing : drawings) {
        (drawing.kind == Drawing::Lines ? foundBarbs : foundPaths) += 1;
        if (drawing.kind == Drawing::Lines) {
            QCOMPARE(drawing.pen, renderer.solidPenFromTrack(config, TrackRenderOption(option)));
            QCOMPARE(drawing.path.elementCount(), 2);
        }
    }
    QCOMPARE(foundPaths, paths);
    QCOMPARE(foundBarbs, barbs);
}

void tst_LvGPXTrackRenderer::arrowHead_data()
{
    QTest::addColumn<QPointF>("end");
    QTest::addColumn<double>("factor");
    QTest::addColumn<double>("length");
    QTest::newRow("short line: shortest barbs") << QPointF(5, 0) << 1.0 << 10.0;
    QTest::newRow("20 pixels: shortest barbs still") << QPointF(20, 0) << 1.0 << 10.0;
    QTest::newRow("half of the way") << QPointF(60, -80) << 1.0 << 50.0;
    QTest::newRow("200 pixels: longest barbs") << QPointF(0, 200) << 1.0 << 100.0;
    QTest::newRow("long line: longest barbs") << QPointF(-5000, 0) << 1.0 << 100.0;
    QTest::newRow("short, scaled") << QPointF(5, 0) << 2.5 << 25.0;
    QTest::newRow("half, scaled") << QPointF(60, 80) << 2.0 << 100.0;
    QTest::newRow("long, scaled") << QPointF(5000, 0) << 0.5 << 50.0;
}

void tst_LvGPXTrackRenderer::arrowHead()
{
    QFETCH(QPointF, end);
    QFETCH(double, factor);
    QFETCH(double, length);
    const QPointF start(300, 400);
    const QPointF tip = start + end;
    QPainterPath path(start);
    path.lineTo(tip);
    const LvGPXTrackConfiguration config =
        configuration(lineShape, strokeOnly, arrowMarker, 10.0, 4.0, orange(), Qt::blue, Qt::DotLine);
    Recorder recorder;
    QPainter painter(&recorder);
    const FlatRenderer renderer = plain(factor);
    renderer.drawArrowHead(&painter, path, config, Option::Normal);
    painter.end();
    const QList<Drawing> drawings = recorder.drawings();
    QCOMPARE(drawings.size(), 2);
    const double back = std::atan2(-end.y(), -end.x());
    const double sixth = std::numbers::pi / 6.0;
    for (const int side : {0, 1}) {
        QCOMPARE(drawings.at(side).kind, Drawing::Lines);
        QCOMPARE(drawings.at(side).pen, renderer.solidPenFromTrack(config, Option::Normal));
        const QList<QPointF> barb = corners(drawings.at(side).path);
        QCOMPARE(barb.size(), 2);
        QCOMPARE(barb.at(0), tip);
        const double angle = side == 0 ? back - sixth : back + sixth;
        const QPointF expected = tip + length * QPointF(std::cos(angle), std::sin(angle));
        QVERIFY2((barb.at(1) - expected).manhattanLength() < 1e-6,
                 qPrintable(QStringLiteral("%1,%2").arg(barb.at(1).x()).arg(barb.at(1).y())));
    }
}

void tst_LvGPXTrackRenderer::arrowHeadOfEmptyPath()
{
    Recorder recorder;
    QPainter painter(&recorder);
    plain().drawArrowHead(&painter, QPainterPath(), configuration(lineShape), Option::Foreground);
    painter.end();
    QVERIFY(recorder.drawings().isEmpty());
}

void tst_LvGPXTrackRenderer::painterIsRestored_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<int>("points");
    QTest::newRow("line with arrow") << lineShape << 3;
    QTest::newRow("area") << areaShape << 3;
    QTest::newRow("point") << pointShape << 1;
}

void tst_LvGPXTrackRenderer::painterIsRestored()
{
    QFETCH(int, shape);
    QFETCH(int, points);
    LvGeoPositionList positions;
    for (int i = 0; i < points; ++i) {
        positions.append(LvGeoPosition(-10.0 - 20.0 * i, 10.0 + 30.0 * (i % 2)));
    }
    const LvGPXConfiguredTrack drawn(track(positions), configuration(shape, strokeAndFill, arrowMarker | 1));
    QImage image = blank();
    QPainter painter(&image);
    painter.setPen(QPen(Qt::green, 3));
    painter.setBrush(Qt::yellow);
    painter.translate(2, 3);
    const QTransform transform = painter.transform();
    const QPainter::RenderHints hints = painter.renderHints();
    plain().drawTrack(&painter, drawn, Option::Normal);
    QCOMPARE(painter.pen(), QPen(Qt::green, 3));
    QCOMPARE(painter.brush(), QBrush(Qt::yellow));
    QCOMPARE(painter.transform(), transform);
    QCOMPARE(painter.renderHints(), hints);
    painter.end();
    QVERIFY(!isEmpty(image));
}

void tst_LvGPXTrackRenderer::dateLineCrossing_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<int>("crossing");
    QTest::newRow("eastwards over 180") << 179.0 << -179.0 << 1;
    QTest::newRow("westwards over 180") << -179.0 << 179.0 << -1;
    QTest::newRow("eastwards over 0") << -1.0 << 1.0 << 0;
    QTest::newRow("westwards over 0") << 1.0 << -1.0 << 0;
    QTest::newRow("equal") << 179.0 << 179.0 << 0;
    QTest::newRow("equal within the tolerance") << 0.0 << -5e-7 << 0;
    QTest::newRow("both east") << 10.0 << 170.0 << 0;
    QTest::newRow("both west") << -170.0 << -10.0 << 0;
    QTest::newRow("from the meridian itself") << 180.0 << -179.0 << 1;
    QTest::newRow("far, short way over 180") << 100.0 << -100.0 << 1;
    QTest::newRow("far, short way over 0") << 80.0 << -80.0 << 0;
    QTest::newRow("far back, short way over 180") << -100.0 << 100.0 << -1;
}

void tst_LvGPXTrackRenderer::dateLineCrossing()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(int, crossing);
    QCOMPARE(LvGPXTrackRenderer::checkDateLineCrossing(LvGeoPosition(10, from), LvGeoPosition(-20, to)),
             crossing);
}

void tst_LvGPXTrackRenderer::dateLineCrossings()
{
    const QList<LvGeoPositionList> lists{{{0, 178}, {0, -178}}, {}, {{0, 178}, {0, 179}}, {{0, -179}}};
    const QList<LvIntRange> ranges{LvIntRange(0, 1), LvIntRange(2, 1), LvIntRange(2, 3), LvIntRange(4, 4)};
    QList<int> crossings(5, 99);
    for (int number = 0; number < lists.size(); ++number) {
        LvGPXTrackRenderer::checkDateLineCrossings(number, lists, ranges, crossings.data());
    }
    // Across the border of two lists too, and over an empty list between them.
    QCOMPARE(crossings, QList<int>({0, 1, -1, 0, 1}));
}

void tst_LvGPXTrackRenderer::dateLineOffsets()
{
    const FlatRenderer renderer = plain();
    const QList<int> numbers{0, 1};
    const QList<LvIntRange> ranges{LvIntRange(0, 1), LvIntRange(2, 3)};
    QList<QPointF> offsets;
    const QList<LvGeoPositionList> none{{{0, 1}, {0, -1}}, {{0, 2}, {0, 3}}};
    QVERIFY(!renderer.createDateLineCrossingOffsets(none, ranges, numbers, offsets));
    const QList<LvGeoPositionList> some{{{0, 179}, {0, -179}}, {{0, -178}, {0, 178}}};
    QVERIFY(renderer.createDateLineCrossingOffsets(some, ranges, numbers, offsets));
    QCOMPARE(offsets, QList<QPointF>({{0, 0}, {360, 0}, {360, 0}, {0, 0}}));
    // A crossing that is taken back is one all the same.
    const QList<LvGeoPositionList> west{{{0, -179}, {0, 179}}, {{0, -179}, {0, 179}}};
    QVERIFY(renderer.createDateLineCrossingOffsets(west, ranges, numbers, offsets));
    QCOMPARE(offsets, QList<QPointF>({{0, 0}, {-360, 0}, {0, 0}, {-360, 0}}));
}

void tst_LvGPXTrackRenderer::pathsAreThoseOfTheLists_data()
{
    QTest::addColumn<QList<int>>("sizes"); // of the segments
    QTest::addColumn<int>("stepsToCrossing");
    QTest::newRow("one") << QList<int>{3} << 2;
    QTest::newRow("many tiny segments, empty ones among them")
        << QList<int>{1, 0, 2, 1, 0, 0, 3, 1, 1, 0, 5, 1, 40, 0} << 3;
    QTest::newRow("worth several threads") << QList<int>(3000, 3) << 500;
    QTest::newRow("long, a crossing at every border of its pieces") << QList<int>{50000} << 16384;
    QTest::newRow("long, never across") << QList<int>{20000, 0, 20000} << 1000000;
    QTest::newRow("long ones and tiny ones") << QList<int>{16384, 1, 16385, 0, 2, 33000, 1} << 4096;
}

void tst_LvGPXTrackRenderer::pathsAreThoseOfTheLists()
{
    QFETCH(const QList<int>, sizes);
    QFETCH(const int, stepsToCrossing);
    QRandomGenerator random(11);
    QList<LvGPXTrackSegment> segments;
    int number = 0;
    for (const int size : sizes) {
        QList<LvGPXTrackPoint> points;
        for (int index = 0; index < size; ++index, ++number) {
            // Near the 180° meridian and, every third time, near the prime one, which does not count.
            const bool isEast = number / stepsToCrossing % 2 == 0;
            const double distance = 0.5 + random.generateDouble();
            const double longitude = number / stepsToCrossing % 3 == 2 ? distance : 180.0 - distance;
            points.append(
                LvGPXTrackPoint(LvGeoPosition(random.generateDouble(), isEast ? longitude : -longitude), 0,
                                QDateTime(), QString()));
        }
        segments.append(LvGPXTrackSegment(points));
    }
    const LvGPXTrack track(QString(), QString(), segments, LvGPXTrackShapeEnum::linestring);

    // No threshold to speak of: every point is part of the path.
    const FlatRenderer renderer({}, QSize(10, 10), 1e-12);
    const QList<LvGeoPositionList> lists = track.chunkedPoints();
    QList<LvIntRange> ranges;
    QList<int> numbers;
    int count = 0;
    for (const LvGeoPositionList& list : lists) {
        ranges.append(LvIntRange(count, count + static_cast<int>(list.size()) - 1));
        numbers.append(static_cast<int>(numbers.size()));
        count += static_cast<int>(list.size());
    }
    QCOMPARE(count, number);
    QList<QPointF> expected(count);
    QList<QPointF> offsets;
    renderer.projectPointsPP(lists, ranges, numbers, expected.data());
    QCOMPARE(renderer.createDateLineCrossingOffsets(lists, ranges, numbers, offsets),
             count > stepsToCrossing);
    if (!offsets.isEmpty()) {
        LvGPXTrackRenderer::shiftProjected(LvIntRange(0, count - 1), offsets.constData(), expected.data());
    }

    // The path's last point is added once more, but paths leave out a line of no length.
    const QPainterPath path = renderer.createPainterPath(track, 100, 0);
    QCOMPARE(path.elementCount(), expected.size());
    for (int index = 0; index < path.elementCount(); ++index) {
        const QPainterPath::Element element = path.elementAt(index);
        QVERIFY2(element.x == expected.at(index).x() && element.y == expected.at(index).y(),
                 qPrintable(QString::number(index)));
    }
}

void tst_LvGPXTrackRenderer::projecting()
{
    const FlatRenderer renderer = plain();
    const QList<LvGeoPositionList> lists{{{1, 2}, {3, 4}}, {{5, 6}}};
    const QList<LvIntRange> ranges{LvIntRange(0, 1), LvIntRange(2, 2)};
    QList<QPointF> points(3);
    renderer.projectPoints(lists.at(1), ranges.at(1), points.data());
    QCOMPARE(points, QList<QPointF>({{0, 0}, {0, 0}, {6, -5}}));
    renderer.projectPointsPP(lists, ranges, {0, 1}, points.data());
    QCOMPARE(points, QList<QPointF>({{2, -1}, {4, -3}, {6, -5}}));
}

void tst_LvGPXTrackRenderer::shifting()
{
    QList<QPointF> points{{1, 1}, {2, 2}, {3, 3}};
    const QList<QPointF> offsets{{10, 0}, {20, 0}, {30, 1}};
    LvGPXTrackRenderer::shiftProjected(LvIntRange(1, 2), offsets.constData(), points.data());
    QCOMPARE(points, QList<QPointF>({{1, 1}, {22, 2}, {33, 4}}));
}

void tst_LvGPXTrackRenderer::thinning_data()
{
    QTest::addColumn<LvGeoPositionList>("positions");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QList<QPointF>>("path");
    QTest::newRow("one point") << LvGeoPositionList{{-1, 1}} << 1.0 << QList<QPointF>();
    QTest::newRow("no point") << LvGeoPositionList{} << 1.0 << QList<QPointF>();
    QTest::newRow("on the threshold")
        << LvGeoPositionList{{0, 1}, {-2, 3}, {0, 5}} << 1.0 << QList<QPointF>();
    QTest::newRow("over the threshold")
        << LvGeoPositionList{{0, 1}, {-2, 3.5}} << 1.0 << QList<QPointF>({{1, 0}, {3.5, 2}});
    QTest::newRow("both directions count")
        << LvGeoPositionList{{0, 1}, {2.5, -1}} << 1.0 << QList<QPointF>({{1, 0}, {-1, -2.5}});
    QTest::newRow("measured from the last appended point")
        << LvGeoPositionList{{0, 1}, {0, 4}, {0, 7}, {0, 10}, {0, 13}} << 1.0
        << QList<QPointF>({{1, 0}, {7, 0}, {13, 0}});
    QTest::newRow("ends at the last point")
        << LvGeoPositionList{{0, 1}, {0, 11}, {-1, 12}} << 1.0 << QList<QPointF>({{1, 0}, {11, 0}, {12, 1}});
    QTest::newRow("threshold grows with the factor")
        << LvGeoPositionList{{0, 1}, {0, 8}, {0, 14}} << 2.0 << QList<QPointF>({{1, 0}, {14, 0}});
    QTest::newRow("back to the start")
        << LvGeoPositionList{{0, 1}, {0, 3}, {0, 1}} << 1.0 << QList<QPointF>();
}

void tst_LvGPXTrackRenderer::thinning()
{
    QFETCH(LvGeoPositionList, positions);
    QFETCH(double, factor);
    QFETCH(QList<QPointF>, path);
    const QPainterPath found = plain(factor).createPainterPath(track(positions), 100, 1);
    QCOMPARE(corners(found), path);
    QCOMPARE(found.isEmpty(), path.isEmpty());
}

void tst_LvGPXTrackRenderer::pathOfSegments()
{
    // The segments of a track are one line.
    const LvGPXTrack two = track(QList<LvGeoPositionList>{{{0, 0}, {0, 10}}, {{-10, 10}, {-10, 20}}});
    const QPainterPath path = plain().createPainterPath(two, 100, 1);
    QCOMPARE(corners(path), QList<QPointF>({{0, 0}, {10, 0}, {10, 10}, {20, 10}}));
    QCOMPARE(path.toSubpathPolygons().size(), 1);

    // A segment without points, and one longer than any block of it.
    LvGeoPositionList many;
    for (int i = 0; i < 5000; ++i) {
        many.append(LvGeoPosition(0.0, i % 2 == 0 ? 10.0 : 20.0));
    }
    LvGPXTrack odd = track(QList<LvGeoPositionList>{{{0, 0}}, {}, many});
    const QPainterPath zigzag = plain().createPainterPath(odd, 100, 1);
    QCOMPARE(zigzag.elementCount(), 5001);
    QCOMPARE(corners(zigzag).last(), QPointF(20, 0));
}

void tst_LvGPXTrackRenderer::pathOverDateLine_data()
{
    QTest::addColumn<QList<LvGeoPositionList>>("segments");
    QTest::addColumn<QList<double>>("x");
    QTest::newRow("eastwards") << QList<LvGeoPositionList>{{{0, 170}, {0, -170}, {0, -150}}}
                               << QList<double>{170, 190, 210};
    QTest::newRow("westwards") << QList<LvGeoPositionList>{{{0, -170}, {0, 170}, {0, 150}}}
                               << QList<double>{-170, -190, -210};
    QTest::newRow("there and back") << QList<LvGeoPositionList>{{{0, 170}, {0, -170}, {0, 160}}}
                                    << QList<double>{170, 190, 160};
    QTest::newRow("across the border of segments")
        << QList<LvGeoPositionList>{{{0, 160}, {0, 170}}, {{0, -170}, {0, -160}}}
        << QList<double>{160, 170, 190, 200};
    QTest::newRow("westwards across the border")
        << QList<LvGeoPositionList>{{{0, -160}, {0, -170}}, {{0, 170}, {0, 160}}}
        << QList<double>{-160, -170, -190, -200};
    QTest::newRow("over the prime meridian")
        << QList<LvGeoPositionList>{{{0, 10}, {0, -10}, {0, 20}}} << QList<double>{10, -10, 20};
    QTest::newRow("twice around the world eastwards")
        << QList<LvGeoPositionList>{{{0, 0}, {0, 120}, {0, -120}, {0, 0}, {0, 120}, {0, -120}, {0, 0}}}
        << QList<double>{0, 120, 240, 360, 480, 600, 720};
}

void tst_LvGPXTrackRenderer::pathOverDateLine()
{
    QFETCH(QList<LvGeoPositionList>, segments);
    QFETCH(QList<double>, x);
    QList<double> found;
    const QPainterPath path = plain().createPainterPath(track(segments), 100, 1);
    for (const QPointF& corner : corners(path)) {
        found.append(corner.x());
        QCOMPARE(corner.y(), 0.0);
    }
    QCOMPARE(found, x);
}

void tst_LvGPXTrackRenderer::smoothing_data()
{
    QTest::addColumn<int>("strength");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QList<QPointF>>("path");
    QTest::newRow("100: as projected") << 100 << 1 << QList<QPointF>({{0, 0}, {50, 40}, {100, 0}});
    QTest::newRow("50: half way to the straight line")
        << 50 << 1 << QList<QPointF>({{0, 0}, {50, 20}, {100, 0}});
    QTest::newRow("0: the straight line") << 0 << 1 << QList<QPointF>({{0, 0}, {50, 0}, {100, 0}});
    QTest::newRow("200: away from the straight line")
        << 200 << 1 << QList<QPointF>({{0, 0}, {50, 80}, {100, 0}});
    QTest::newRow("as many steps as points: nothing to smooth")
        << 0 << 3 << QList<QPointF>({{0, 0}, {50, 40}, {100, 0}});
}

void tst_LvGPXTrackRenderer::smoothing()
{
    QFETCH(int, strength);
    QFETCH(int, steps);
    QFETCH(QList<QPointF>, path);
    const LvGPXTrack bent = track({{0, 0}, {-40, 50}, {0, 100}});
    QCOMPARE(corners(plain().createPainterPath(bent, strength, steps)), path);
    const LvGPXConfiguredTrack configured(
        bent, configuration(lineShape, strokeOnly, 1, 10.0, 0.0, orange(), Qt::blue, 1, strength, steps));
    QCOMPARE(corners(plain().createPainterPath(configured)), path);
}

void tst_LvGPXTrackRenderer::configuredPath_data()
{
    QTest::addColumn<LvGeoPositionList>("positions");
    QTest::addColumn<int>("shape");
    QTest::addColumn<bool>("closed");
    const LvGeoPositionList open{{0, 0}, {0, 50}, {-50, 50}};
    const LvGeoPositionList ring{{0, 0}, {0, 50}, {-50, 50}, {0, 0}};
    QTest::newRow("line as line") << open << lineShape << false;
    QTest::newRow("line as area") << open << areaShape << true;
    QTest::newRow("line as hop") << open << hopShape << false;
    QTest::newRow("ring as area ends where it starts") << ring << areaShape << false;
    QTest::newRow("ring as line") << ring << lineShape << false;
}

void tst_LvGPXTrackRenderer::configuredPath()
{
    QFETCH(LvGeoPositionList, positions);
    QFETCH(int, shape);
    QFETCH(bool, closed);
    const QPainterPath path =
        plain().createPainterPath(LvGPXConfiguredTrack(track(positions), configuration(shape)));
    QCOMPARE(path.elementCount(), static_cast<int>(positions.size()) + (closed ? 1 : 0));
    if (closed) {
        QCOMPARE(corners(path).last(), corners(path).first());
    }
}

void tst_LvGPXTrackRenderer::enclaves()
{
    LvGPXTrack innermost = track({{-40, 40}, {-40, 60}, {-60, 60}, {-40, 40}}, areaShape);
    LvGPXTrack inner = track({{-30, 30}, {-30, 70}, {-70, 70}, {-70, 30}, {-30, 30}}, areaShape);
    inner.addEnclave(innermost);
    LvGPXTrack outer = track({{-10, 10}, {-10, 90}, {-90, 90}, {-90, 10}, {-10, 10}}, areaShape);
    outer.addEnclave(inner);
    outer.addEnclave(track({{-15, 15}, {-15, 16}}, areaShape)); // too small for a path
    const LvGPXConfiguredTrack area(outer, configuration(areaShape, fillOnly));
    const QPainterPath path = plain().createPainterPath(area);
    QCOMPARE(path.toSubpathPolygons().size(), 2); // the enclave's enclave is not drawn
    const QImage image = FlatRenderer(select({area}), QSize(100, 100)).render(Option::Normal);
    QCOMPARE(image.pixelColor(20, 50), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(50, 50).alpha(), 0);
    QCOMPARE(image.pixelColor(57, 43).alpha(), 0);

    // Smoothed as strongly, and in as many steps, as the track around it.
    LvGPXTrack around = track({{0, 0}, {-90, 90}});
    const LvGPXTrack bent = track({{0, 0}, {-40, 50}, {0, 100}});
    around.addEnclave(bent);
    for (const int strength : {100, 50, 0}) {
        for (const int steps : {1, 3}) {
            const LvGPXConfiguredTrack smoothed(
                around,
                configuration(lineShape, strokeOnly, 1, 10.0, 0.0, orange(), Qt::blue, 1, strength, steps));
            QCOMPARE(corners(plain().createPainterPath(smoothed)).mid(2),
                     corners(plain().createPainterPath(bent, strength, steps)));
        }
    }
}

void tst_LvGPXTrackRenderer::worldOffset()
{
    QCOMPARE(plain().aroundTheWorldOffset(), QPointF(360, 0));
    const FlatRenderer scaled(LvGPXTrackSelection(), QSize(10, 10), 3.0, 2.5, QPointF(7, 7));
    QCOMPARE(scaled.aroundTheWorldOffset(), QPointF(900, 0));
    const FunctionRenderer turned(
        LvGPXTrackSelection(), QSize(10, 10),
        [](double latitude, double longitude) { return QPointF(longitude + latitude, 2.0 * longitude); });
    QCOMPARE(turned.aroundTheWorldOffset(), QPointF(360, 720));
}

void tst_LvGPXTrackRenderer::visibleShifts_data()
{
    QTest::addColumn<int>("deviceWidth");
    QTest::addColumn<double>("worldWidth");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("device narrower than the world") << 359 << 360.0 << -1 << 1;
    QTest::newRow("as wide as the world") << 360 << 360.0 << -2 << 2;
    QTest::newRow("two worlds and a bit") << 800 << 360.0 << -3 << 3;
    QTest::newRow("fractions of a pixel do not count") << 720 << 360.9 << -3 << 3;
    QTest::newRow("tiny world") << 100 << 1.5 << -101 << 101;
    QTest::newRow("world narrower than a pixel") << 100 << 0.9 << 0 << 0;
    QTest::newRow("world without width") << 100 << 0.0 << 0 << 0;
    QTest::newRow("wider than the integers") << 100 << 1e12 << -1 << 1;
    QTest::newRow("no number") << 100 << notANumber << 0 << 0;
    QTest::newRow("infinite") << 100 << infinity << 0 << 0;
}

void tst_LvGPXTrackRenderer::visibleShifts()
{
    QFETCH(int, deviceWidth);
    QFETCH(double, worldWidth);
    QFETCH(int, first);
    QFETCH(int, last);
    const FunctionRenderer renderer(LvGPXTrackSelection(), QSize(10, 10),
                                    [worldWidth](double latitude, double longitude) {
                                        return QPointF(longitude / 360.0 * worldWidth, latitude);
                                    });
    Recorder recorder(deviceWidth);
    QPainter painter(&recorder);
    const LvIntRange shifts = renderer.visibleShifts(&painter);
    QCOMPARE(shifts.firstIndex(), first);
    QCOMPARE(shifts.lastIndexEvenIfUnvalid(), last + 1);
}

void tst_LvGPXTrackRenderer::repetition()
{
    const LvGPXTrackSelection selection = select(
        {{track({{0, 0}, {0, 50}}), configuration(lineShape, strokeOnly, arrowMarker)},
         {track({{0, 0}, {0, 50}, {-9, 50}}), configuration(areaShape, strokeAndFill)},
         {LvGPXTrackPoint(LvGeoPosition(1, 2), 0, QDateTime(), QString()), configuration(pointShape)}});
    Recorder recorder(800);
    QPainter painter(&recorder);
    FlatRenderer(selection, QSize(10, 10)).renderWith(painter, Option::Normal);
    painter.end();
    QList<double> expected;
    for (const int perCopy : {3, 2, 1}) { // line and two barbs; area and outline; marker
        for (int shift = -3; shift <= 3; ++shift) {
            expected.append(QList<double>(perCopy, 360.0 * shift));
        }
    }
    QCOMPARE(recorder.translations(), expected);
}

void tst_LvGPXTrackRenderer::drawPoint_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("displayOptions");
    QTest::addColumn<bool>("outline");
    QTest::addColumn<bool>("area");
    QTest::newRow("normal, stroke") << 0 << strokeOnly << true << false;
    QTest::newRow("normal, fill") << 0 << fillOnly << false << true;
    QTest::newRow("normal, both") << 0 << strokeAndFill << true << true;
    QTest::newRow("normal, nothing") << 0 << 0 << false << false;
    QTest::newRow("normal, only the unnamed option") << 0 << 4 << false << false;
    QTest::newRow("foreground, nothing") << 1 << 0 << true << true;
    QTest::newRow("foreground, stroke") << 1 << strokeOnly << true << true;
    QTest::newRow("other, stroke") << 2 << strokeOnly << true << false;
    QTest::newRow("other, nothing") << 2 << 0 << false << false;
}

void tst_LvGPXTrackRenderer::drawPoint()
{
    QFETCH(int, option);
    QFETCH(int, displayOptions);
    QFETCH(bool, outline);
    QFETCH(bool, area);
    const LvGPXTrackConfiguration config = configuration(pointShape, displayOptions, 1, 10.0, 4.0, orange(),
                                                         QColor(0, 0, 255, 128), Qt::DotLine);
    const LvGPXConfiguredTrack point(LvGPXTrackPoint(LvGeoPosition(-20, 30), 0, QDateTime(), QString()),
                                     config);
    const FlatRenderer renderer = plain(2.0);
    Recorder recorder;
    QPainter painter(&recorder);
    renderer.drawPoint(&painter, point, TrackRenderOption(option));
    painter.end();
    const QList<Drawing> drawings = recorder.drawings();
    QCOMPARE(drawings.size(), outline || area ? 3 : 0);
    for (const Drawing& drawing : drawings) {
        QCOMPARE(drawing.kind, Drawing::Ellipse);
        QCOMPARE(drawing.path.boundingRect(), QRectF(10, 0, 40, 40)); // radius: line width times the factor
        QCOMPARE(drawing.pen,
                 outline ? renderer.penFromTrack(config, TrackRenderOption(option))
                         : QPen(QColor(Qt::transparent)));
        QCOMPARE(drawing.brush,
                 area ? renderer.brushFromTrack(config, TrackRenderOption(option))
                      : QBrush(Qt::transparent, Qt::SolidPattern));
    }
}

void tst_LvGPXTrackRenderer::drawPointPlaces_data()
{
    QTest::addColumn<LvGeoPositionList>("positions");
    QTest::addColumn<QList<QPointF>>("centres");
    QTest::newRow("no point") << LvGeoPositionList{} << QList<QPointF>();
    QTest::newRow("a single point") << LvGeoPositionList{{-20, 30}} << QList<QPointF>({{30, 20}});
    QTest::newRow("0/0 is a place, too") << LvGeoPositionList{{0, 0}} << QList<QPointF>({{0, 0}});
    QTest::newRow("latitude beyond 360") << LvGeoPositionList{{361, 30}} << QList<QPointF>();
    QTest::newRow("latitude at -360") << LvGeoPositionList{{-360, 30}} << QList<QPointF>({{30, 360}});
    QTest::newRow("longitude at 360") << LvGeoPositionList{{-20, 360}} << QList<QPointF>({{360, 20}});
    QTest::newRow("longitude below -360") << LvGeoPositionList{{20, -360.5}} << QList<QPointF>();
    QTest::newRow("unset position") << LvGeoPositionList{LvGeoPosition()} << QList<QPointF>();
    QTest::newRow("line as point: its middle")
        << LvGeoPositionList{{-10, 10}, {-20, 30}, {-30, 90}} << QList<QPointF>({{30, 20}});
    QTest::newRow("ring as point: its centre")
        << LvGeoPositionList{{-10, 10}, {-10, 50}, {-30, 50}, {-10, 10}} << QList<QPointF>({{30, 20}});
}

void tst_LvGPXTrackRenderer::drawPointPlaces()
{
    QFETCH(LvGeoPositionList, positions);
    QFETCH(QList<QPointF>, centres);
    QList<LvGPXTrackPoint> points;
    for (const LvGeoPosition& position : positions) {
        points.append(LvGPXTrackPoint(position, 0, QDateTime(), QString()));
    }
    const LvGPXTrack marked(QString(), QString(), {LvGPXTrackSegment(points)}, LvGPXTrackShape(lineShape));
    Recorder recorder;
    QPainter painter(&recorder);
    plain().drawPoint(&painter, LvGPXConfiguredTrack(marked, configuration(pointShape)), Option::Normal);
    painter.end();
    QList<QPointF> found;
    const QList<Drawing> drawings = recorder.drawings();
    for (const Drawing& drawing : drawings) {
        if (drawing.translation.isNull()) {
            found.append(drawing.path.boundingRect().center());
        }
    }
    QCOMPARE(found, centres);
}

void tst_LvGPXTrackRenderer::drawPointMarkers_data()
{
    QTest::addColumn<int>("marker");
    for (const LvGPXMarkerShape& shape : LvGPXMarkerShape::allPointShapes()) {
        const int marker = static_cast<int>(shape.value());
        QTest::addRow("marker %d", marker) << marker;
    }
}

void tst_LvGPXTrackRenderer::drawPointMarkers()
{
    QFETCH(int, marker);
    const LvGPXTrackConfiguration config =
        configuration(pointShape, strokeAndFill, marker, 15.0, 5.0, orange(), QColor(0, 0, 255, 128));
    const LvGPXConfiguredTrack point(LvGPXTrackPoint(LvGeoPosition(-50, 50), 0, QDateTime(), QString()),
                                     config);
    const FlatRenderer renderer = plain();
    QImage image = blank();
    QPainter painter(&image);
    renderer.drawPoint(&painter, point, Option::Normal);
    painter.end();
    QImage expected = blank();
    painter.begin(&expected);
    painter.setPen(renderer.penFromTrack(config, Option::Normal));
    painter.setBrush(renderer.brushFromTrack(config, Option::Normal));
    LvGPXMarkerShape(marker).draw(&painter, QPointF(50, 50), 15.0, 15.0);
    painter.end();
    QVERIFY(!isEmpty(expected));
    QCOMPARE(image, expected);
}

void tst_LvGPXTrackRenderer::fallBackToPoint_data()
{
    QTest::addColumn<int>("shape");
    QTest::newRow("line") << lineShape;
    QTest::newRow("hop") << hopShape;
    QTest::newRow("area") << areaShape;
}

void tst_LvGPXTrackRenderer::fallBackToPoint()
{
    QFETCH(int, shape);
    const LvGPXConfiguredTrack tiny(track({{-20, 30}, {-21, 31}, {-22, 32}}),
                                    configuration(shape, strokeOnly, 32, 10.0));
    Recorder recorder;
    QPainter painter(&recorder);
    const FlatRenderer renderer = plain();
    if (shape == areaShape) {
        renderer.drawPolygon(&painter, tiny, Option::Normal);
    } else {
        renderer.drawLine(&painter, tiny, Option::Normal);
    }
    painter.end();
    // A rectangle as marker: its area and its outline, in each of three copies, around the first point.
    const QList<Drawing> drawings = recorder.drawings();
    QVERIFY(!drawings.isEmpty());
    bool outlined = false;
    for (const Drawing& drawing : drawings) {
        QCOMPARE(drawing.path.boundingRect().center(), QPointF(30, 20));
        outlined = outlined || drawing.kind == Drawing::Rects;
    }
    QVERIFY(outlined);
}

void tst_LvGPXTrackRenderer::shapes_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QString>("drawnBy");
    QTest::newRow("line") << lineShape << "line";
    QTest::newRow("hop") << hopShape << "line";
    QTest::newRow("area") << areaShape << "area";
    QTest::newRow("point") << pointShape << "point";
    QTest::newRow("an unnamed value") << 5 << "line";
}

void tst_LvGPXTrackRenderer::shapes()
{
    QFETCH(int, shape);
    QFETCH(QString, drawnBy);
    const LvGPXConfiguredTrack drawn(track({{-20, 30}, {-21, 80}, {-50, 80}}),
                                     configuration(shape, strokeAndFill));
    const auto record = [](const std::function<void(QPainter&)>& draw) {
        Recorder recorder;
        QPainter painter(&recorder);
        draw(painter);
        painter.end();
        QStringList kinds;
        const QList<Drawing> drawings = recorder.drawings();
        for (const Drawing& drawing : drawings) {
            kinds.append(QStringLiteral("%1:%2:%3")
                             .arg(drawing.kind)
                             .arg(drawing.path.elementCount())
                             .arg(drawing.brush.style()));
        }
        return kinds;
    };
    const FlatRenderer renderer(select({drawn}), QSize(100, 100));
    const QStringList expected = record([&](QPainter& painter) {
        if (drawnBy == QStringLiteral("area")) {
            renderer.drawPolygon(&painter, drawn, Option::Normal);
        } else if (drawnBy == QStringLiteral("point")) {
            renderer.drawPoint(&painter, drawn, Option::Normal);
        } else {
            renderer.drawLine(&painter, drawn, Option::Normal);
        }
    });
    QVERIFY(!expected.isEmpty());
    QCOMPARE(record([&](QPainter& painter) { renderer.drawTrack(&painter, drawn, Option::Normal); }),
             expected);
    QCOMPARE(record([&](QPainter& painter) { renderer.renderWith(painter, Option::Normal); }), expected);
}

void tst_LvGPXTrackRenderer::laterTracksOnTop()
{
    const LvGPXTrack line = track({{-50, 10}, {-50, 90}});
    const LvGPXConfiguredTrack red(line, configuration(lineShape, strokeOnly, 1, 10.0, 0.0, Qt::red));
    const LvGPXConfiguredTrack green(line, configuration(lineShape, strokeOnly, 1, 10.0, 0.0, Qt::green));
    QCOMPARE(FlatRenderer(select({red, green}), QSize(100, 100)).render(Option::Normal).pixelColor(50, 50),
             QColor(Qt::green));
    QCOMPARE(FlatRenderer(select({green, red}), QSize(100, 100)).render(Option::Normal).pixelColor(50, 50),
             QColor(Qt::red));
}

void tst_LvGPXTrackRenderer::imageFormats()
{
    const LvGPXTrackSelection selection =
        select({{track({{-10, 10}, {-93, 91}}),
                 configuration(lineShape, strokeOnly, 1, 3.0, 0.0, QColor(255, 0, 0, 180))}});
    const FlatRenderer renderer(selection, QSize(100, 120));
    const auto paint = [&renderer](bool antialiasing) {
        QImage image = blank(QSize(100, 120));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, antialiasing);
        renderer.renderWith(painter, Option::Normal);
        painter.end();
        return image;
    };
    const QImage image = renderer.render(Option::Normal);
    QCOMPARE(image.format(), QImage::Format_ARGB32);
    QCOMPARE(image, paint(true).convertToFormat(QImage::Format_ARGB32));
    QCOMPARE(image.pixelColor(0, 0), QColor(0, 0, 0, 0));
    QCOMPARE(image.pixelColor(50, 50).alpha(), 180);
    QCOMPARE(image.pixelColor(50, 50).red(), 255);

    const QImage quick = renderer.renderQuickAndDirty(Option::Normal);
    QCOMPARE(quick.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(quick, paint(false));
    QVERIFY(quick != paint(true));
    QSet<int> alphas;
    for (int y = 0; y < quick.height(); ++y) {
        for (int x = 0; x < quick.width(); ++x) {
            alphas.insert(qAlpha(quick.pixel(x, y)));
        }
    }
    QCOMPARE(alphas, QSet<int>({0, 180})); // no blended edges
}

void tst_LvGPXTrackRenderer::emptyImages()
{
    const LvGPXTrackSelection selection = select({{track({{0, 0}, {0, 50}}), configuration(lineShape)}}, 0);
    // The last one has more pixels than there can be memory for.
    for (const QSize size :
         {QSize(0, 0), QSize(0, 10), QSize(10, 0), QSize(-5, 5), QSize(), QSize(1 << 30, 1 << 30)}) {
        const FlatRenderer renderer(selection, size);
        QVERIFY(renderer.render(Option::Normal).isNull());
        QVERIFY(renderer.renderForeground().isNull());
        QVERIFY(renderer.crop(QImage()).isNull());
        QImage background(4, 4, QImage::Format_RGB32);
        background.fill(Qt::white);
        QCOMPARE(renderer.crop(background).pixelColor(1, 1), QColor(255, 255, 255, 0));
    }
    const FlatRenderer none(LvGPXTrackSelection(), QSize(20, 10));
    QCOMPARE(none.render(Option::Foreground).size(), QSize(20, 10));
    QVERIFY(isEmpty(none.render(Option::Foreground)));
}

void tst_LvGPXTrackRenderer::foreground()
{
    const LvGPXTrackSelection selection = select(
        {{track({{-50, 10}, {-50, 90}}), configuration(lineShape, 0, 1, 4.0, 16.0, QColor(9, 8, 7, 60))}});
    const FlatRenderer renderer(selection, QSize(100, 100));
    QVERIFY(isEmpty(renderer.render(Option::Normal)));
    const QImage image = renderer.renderForeground();
    QCOMPARE(image, renderer.renderQuickAndDirty(Option::Foreground));
    QCOMPARE(image.pixelColor(50, 50), QColor(9, 8, 7));
    QCOMPARE(image.pixelColor(50, 41), QColor(9, 8, 7)); // the line and its halo are 20 pixels wide
    QCOMPARE(image.pixelColor(50, 38).alpha(), 0);
}

void tst_LvGPXTrackRenderer::optionsOnImages_data()
{
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("lineAlpha");
    QTest::addColumn<int>("haloAlpha");
    QTest::addColumn<int>("gapAlpha");
    QTest::newRow("normal: dashes, no halo") << 0 << 100 << 0 << 0;
    QTest::newRow("foreground: solid, opaque, with halo") << 1 << 255 << 255 << 255;
    QTest::newRow("other: solid, with halo, colours as configured") << 2 << 100 << 100 << 100;
    QTest::newRow("negative: as other") << -7 << 100 << 100 << 100;
}

void tst_LvGPXTrackRenderer::optionsOnImages()
{
    QFETCH(int, option);
    QFETCH(int, lineAlpha);
    QFETCH(int, haloAlpha);
    QFETCH(int, gapAlpha);
    // The dashes go from 10 to 42 and from 58 to 90, their round caps 4 pixels farther.
    const LvGPXTrackSelection selection =
        select({{track({{-50, 10}, {-50, 170}}),
                 configuration(lineShape, strokeOnly, 1, 8.0, 12.0, QColor(255, 0, 0, 100), Qt::blue,
                               Qt::DashLine)}});
    const QImage image = FlatRenderer(selection, QSize(200, 100)).render(TrackRenderOption(option));
    QCOMPARE(image.pixelColor(20, 50).alpha(), lineAlpha);
    QCOMPARE(image.pixelColor(20, 42).alpha(), haloAlpha);
    QCOMPARE(image.pixelColor(70, 50).alpha(), lineAlpha);
    QCOMPARE(image.pixelColor(50, 50).alpha(), gapAlpha);
}

void tst_LvGPXTrackRenderer::leavingOutCopies_data()
{
    QTest::addColumn<double>("pixelsPerDegree");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("factor");
    QTest::newRow("world narrower than the image") << 0.4 << QSize(300, 150) << 1.0;
    QTest::newRow("tiny worlds") << 0.05 << QSize(200, 40) << 0.3;
    QTest::newRow("world as wide as the image") << 1.0 << QSize(360, 180) << 1.0;
    QTest::newRow("zoomed") << 9.0 << QSize(300, 200) << 2.0;
    QTest::newRow("zoomed far") << 60.0 << QSize(200, 200) << 1.0;
    QTest::newRow("shrunk pens") << 2.0 << QSize(200, 200) << 0.05;
}

void tst_LvGPXTrackRenderer::leavingOutCopies()
{
    QFETCH(double, pixelsPerDegree);
    QFETCH(QSize, size);
    QFETCH(double, factor);
    std::mt19937 generator(20240229); // NOLINT(cert-msc51-cpp) the same tracks on every run
    std::uniform_real_distribution<double> latitude(-80, 80);
    std::uniform_real_distribution<double> longitude(-180, 180);
    std::uniform_int_distribution<int> dice(0, 999999);
    const QList<int> shapeValues{pointShape, hopShape, lineShape, areaShape};
    const QList<int> markers{0, 1, 2, 8, 16, 32, 64, 128, 256, 512, arrowMarker};
    for (int round = 0; round < 12; ++round) {
        QList<LvGPXConfiguredTrack> tracks;
        for (int number = 0; number < 8; ++number) {
            LvGeoPositionList positions;
            double lat = latitude(generator);
            double lon = longitude(generator);
            const int count = 1 + dice(generator) % 12;
            for (int i = 0; i < count; ++i) {
                positions.append(LvGeoPosition(lat, lon));
                lat = std::clamp(lat + latitude(generator) / 8.0, -80.0, 80.0);
                lon = std::remainder(lon + longitude(generator) / 4.0, 360.0);
            }
            const int style = 1 + dice(generator) % 5;
            tracks.append(
                {track(positions),
                 configuration(shapeValues.at(dice(generator) % 4), dice(generator) % 4,
                               markers.at(dice(generator) % markers.size()), 1.0 + dice(generator) % 20,
                               dice(generator) % 9, QColor(200, 30, 30, 40 + dice(generator) % 216),
                               QColor(30, 30, 200, 40 + dice(generator) % 216), style,
                               dice(generator) % 2 == 0 ? 100 : 40, 1)});
        }
        const QPointF origin(longitude(generator) * pixelsPerDegree + size.width() / 2.0,
                             latitude(generator) * pixelsPerDegree + size.height() / 2.0);
        const FlatRenderer renderer(select(tracks), size, factor, pixelsPerDegree, origin);
        for (const int option : {0, 1, 2}) {
            for (const bool antialiasing : {true, false}) {
                QImage everyCopy = blank(size);
                QPainter painter(&everyCopy);
                painter.setRenderHint(QPainter::Antialiasing, antialiasing);
                renderer.renderWith(painter, TrackRenderOption(option));
                painter.end();
                const QImage image = antialiasing ? renderer.render(TrackRenderOption(option))
                                                  : renderer.renderQuickAndDirty(TrackRenderOption(option));
                QCOMPARE(image, everyCopy.convertToFormat(image.format()));
            }
        }
    }
}

void tst_LvGPXTrackRenderer::cropOpaque()
{
    QImage background(30, 20, QImage::Format_RGB16);
    background.fill(Qt::green);
    const LvGPXConfiguredTrack line(track({{0, 0}, {0, 50}}), configuration(lineShape));
    const QImage unchanged = FlatRenderer(select({line}, 255), QSize(30, 20)).crop(background);
    QCOMPARE(unchanged.cacheKey(), background.cacheKey());
    QCOMPARE(unchanged.format(), QImage::Format_RGB16);
    // Without tracks there is nothing to crop to, whatever is stored.
    QCOMPARE(FlatRenderer(select({}, 0), QSize(30, 20)).crop(background).cacheKey(), background.cacheKey());
    QCOMPARE(FlatRenderer(select({line}, 254), QSize(30, 20)).crop(background).format(),
             QImage::Format_ARGB32);
}

void tst_LvGPXTrackRenderer::cropTable_data()
{
    QTest::addColumn<int>("opacity");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("100") << 100;
    QTest::newRow("128") << 128;
    QTest::newRow("254") << 254;
}

void tst_LvGPXTrackRenderer::cropTable()
{
    QFETCH(int, opacity);
    // A gentle slope gives covers of all kinds; colours below a transparent pixel must survive.
    const LvGPXConfiguredTrack line(track({{-100, 10}, {-20, 290}}),
                                    configuration(lineShape, 0, 1, 30.0, 10.0));
    const QSize size(300, 120);
    const FlatRenderer renderer(select({line}, opacity), size);
    const QImage mask = renderer.render(Option::Foreground);
    QImage background(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            background.setPixel(x, y, qRgba(x % 256, y, (x * y) % 256, (x + y) % 256));
        }
    }
    const QImage result = renderer.crop(background);
    QCOMPARE(result.format(), QImage::Format_ARGB32);
    QCOMPARE(result.size(), size);
    QSet<int> covers;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int cover = qAlpha(mask.pixel(x, y));
            covers.insert(cover);
            const int alpha = std::min(255, opacity + ((255 - opacity) * cover) / 255);
            QCOMPARE(result.pixel(x, y), qRgba(x % 256, y, (x * y) % 256, alpha));
        }
    }
    QVERIFY(covers.contains(0));
    QVERIFY(covers.contains(255));
    QVERIFY(covers.size() > 50);
}

void tst_LvGPXTrackRenderer::cropEffect()
{
    const LvGPXConfiguredTrack line(track({{-50, 10}, {-50, 90}}),
                                    configuration(lineShape, 0, 1, 10.0, 10.0));
    QImage background(100, 100, QImage::Format_RGB32);
    background.fill(QColor(10, 20, 30));
    const QImage hidden = FlatRenderer(select({line}, 0), QSize(100, 100)).crop(background);
    QCOMPARE(hidden.pixelColor(50, 50), QColor(10, 20, 30));
    QCOMPARE(hidden.pixelColor(50, 41), QColor(10, 20, 30)); // below the halo
    QCOMPARE(hidden.pixelColor(50, 10), QColor(10, 20, 30, 0));
    const QImage faded = FlatRenderer(select({line}, 128), QSize(100, 100)).crop(background);
    QCOMPARE(faded.pixelColor(50, 50).alpha(), 255);
    QCOMPARE(faded.pixelColor(50, 10).alpha(), 128);
}

void tst_LvGPXTrackRenderer::cropFormats_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<bool>("isCovered");
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        for (const bool isCovered : {true, false}) {
            QTest::addRow("format %d, %s", format, isCovered ? "a track" : "no track in sight")
                << static_cast<QImage::Format>(format) << isCovered;
        }
    }
}

void tst_LvGPXTrackRenderer::cropFormats()
{
    QFETCH(QImage::Format, format);
    QFETCH(bool, isCovered);
    const double place = isCovered ? 0.0 : 5000.0;
    const LvGPXConfiguredTrack line(track({{-10 - place, 10}, {-50 - place, 30}}),
                                    configuration(lineShape, 0, 1, 10.0, 5.0));
    const QSize size(61, 53);
    QImage painted(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            painted.setPixel(x, y, qRgba(4 * x, 4 * y, (x * y) % 256, (3 * x + y) % 256));
        }
    }
    const QImage background = painted.convertToFormat(format);
    const FlatRenderer renderer(select({line}, 90), size);
    const QImage mask = renderer.render(Option::Foreground);
    const QImage result = renderer.crop(background);
    QCOMPARE(result.format(), QImage::Format_ARGB32);
    QImage expected = background.convertToFormat(QImage::Format_ARGB32);
    bool isAnyCovered = false;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int cover = qAlpha(mask.pixel(x, y));
            isAnyCovered = isAnyCovered || cover > 0;
            const QRgb color = expected.pixel(x, y);
            expected.setPixel(x, y, qRgba(qRed(color), qGreen(color), qBlue(color), 90 + 165 * cover / 255));
        }
    }
    QCOMPARE(isAnyCovered, isCovered);
    QCOMPARE(result, expected);
    QCOMPARE(background, painted.convertToFormat(format)); // not written to
}

void tst_LvGPXTrackRenderer::cropKeepsWhatDescribesTheImage()
{
    const LvGPXConfiguredTrack line(track({{0, 0}, {0, 50}}), configuration(lineShape));
    for (const QImage::Format format : {QImage::Format_ARGB32, QImage::Format_RGB32, QImage::Format_RGB16}) {
        QImage background(30, 20, format);
        background.fill(Qt::green);
        background.setDevicePixelRatio(2.0);
        background.setDotsPerMeterX(3937);
        background.setDotsPerMeterY(1968);
        background.setOffset(QPoint(3, 4));
        background.setText(QStringLiteral("Title"), QStringLiteral("A map"));
        background.setColorSpace(QColorSpace::AdobeRgb);
        const QImage result = FlatRenderer(select({line}, 60), QSize(30, 20)).crop(background);
        QCOMPARE(result.devicePixelRatio(), 2.0);
        QCOMPARE(result.dotsPerMeterX(), 3937);
        QCOMPARE(result.dotsPerMeterY(), 1968);
        QCOMPARE(result.offset(), QPoint(3, 4));
        QCOMPARE(result.textKeys(), QStringList{QStringLiteral("Title")});
        QCOMPARE(result.text(QStringLiteral("Title")), QStringLiteral("A map"));
        QCOMPARE(result.colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
    }
}

void tst_LvGPXTrackRenderer::cropSizes_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("as the target") << QSize(100, 100);
    QTest::newRow("larger than the target") << QSize(150, 130);
    QTest::newRow("smaller than the target") << QSize(60, 70);
    QTest::newRow("one column") << QSize(1, 300);
    QTest::newRow("one row") << QSize(300, 1);
}

void tst_LvGPXTrackRenderer::cropSizes()
{
    QFETCH(QSize, size);
    const LvGPXConfiguredTrack all(track({{0, 0}, {0, 99}, {-99, 99}, {-99, 0}, {0, 0}}),
                                   configuration(areaShape, 0, 1, 10.0));
    const FlatRenderer renderer(select({all}, 40), QSize(100, 100));
    QImage background(size, QImage::Format_RGB32);
    background.fill(Qt::white);
    const QImage result = renderer.crop(background);
    QCOMPARE(result.size(), size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            QCOMPARE(qAlpha(result.pixel(x, y)), x < 100 && y < 100 ? 255 : 40);
        }
    }
}

void tst_LvGPXTrackRenderer::mergeCropping()
{
    std::array<uchar, 256> table = {};
    for (int i = 0; i < 256; ++i) {
        table.at(static_cast<size_t>(i)) = static_cast<uchar>(255 - i);
    }
    QImage mask(4, 6, QImage::Format_ARGB32);
    mask.fill(QColor(1, 2, 3, 50));
    QImage result(4, 6, QImage::Format_ARGB32);
    result.fill(QColor(9, 9, 9, 9));
    LvGPXTrackRenderer::mergeCropping(result, mask, LvIntRange(2, 3), table);
    for (int y = 0; y < 6; ++y) {
        for (int x = 0; x < 4; ++x) {
            QCOMPARE(result.pixel(x, y), qRgba(9, 9, 9, y == 2 || y == 3 ? 205 : 9));
        }
    }
    const QImage before = result;
    LvGPXTrackRenderer::mergeCropping(result, mask, LvIntRange(0, -1), table);
    QCOMPARE(result, before);
    LvGPXTrackRenderer::mergeCropping(result, mask, LvIntRange(-5, 100), table); // no row outside the image
    QCOMPARE(qAlpha(result.pixel(3, 5)), 205);
    QImage withoutAlpha(4, 6, QImage::Format_RGB16);
    withoutAlpha.fill(Qt::red);
    LvGPXTrackRenderer::mergeCropping(withoutAlpha, mask, LvIntRange(0, 5), table);
    QCOMPARE(withoutAlpha.pixelColor(1, 1), QColor(Qt::red));
    const QImage unchanged = result;
    LvGPXTrackRenderer::mergeCropping(result, withoutAlpha, LvIntRange(0, 5), table);
    QCOMPARE(result, unchanged);

    // The mask as renderForeground() makes it, and the table by its first byte.
    QImage premultiplied(4, 6, QImage::Format_ARGB32_Premultiplied);
    premultiplied.fill(QColor(200, 100, 0, 30));
    LvGPXTrackRenderer::mergeCropping(result, premultiplied, LvIntRange(0, 5), table.data());
    QCOMPARE(result.pixel(2, 2), qRgba(9, 9, 9, 225));
}

void tst_LvGPXTrackRenderer::emptyTracks()
{
    const LvGPXTrackSelection selection = select({
        LvGPXConfiguredTrack(LvGPXTrack(), configuration(lineShape)),
        LvGPXConfiguredTrack(LvGPXTrack(), configuration(areaShape, strokeAndFill)),
        LvGPXConfiguredTrack(LvGPXTrack(), configuration(pointShape)),
        LvGPXConfiguredTrack(track(QList<LvGeoPositionList>{{}, {}}), configuration(lineShape)),
        LvGPXConfiguredTrack(track(QList<LvGeoPositionList>{{}, {}}), configuration(areaShape)),
    });
    const FlatRenderer renderer(selection, QSize(50, 50), 1.0, 1.0, QPointF(25, 25));
    for (const int option : {0, 1, 2}) {
        QVERIFY(isEmpty(renderer.render(TrackRenderOption(option))));
    }
}

void tst_LvGPXTrackRenderer::hostileSizes_data()
{
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("drawn");
    QTest::newRow("at the limit") << 10000.0 << 10000.0;
    QTest::newRow("beyond the limit") << 10001.0 << 10000.0;
    QTest::newRow("a million") << 1e6 << 10000.0;
    QTest::newRow("1e300") << 1e300 << 10000.0;
    QTest::newRow("infinite") << infinity << 10000.0;
    QTest::newRow("minus infinity") << -infinity << -10000.0;
    QTest::newRow("no number") << notANumber << 0.0;
}

void tst_LvGPXTrackRenderer::hostileSizes()
{
    QFETCH(double, size);
    QFETCH(double, drawn);
    QList<LvGPXConfiguredTrack> tracks;
    for (const int shape : {pointShape, lineShape, areaShape}) {
        for (const int marker : {1, 8, 128, arrowMarker}) {
            const LvGPXTrackConfiguration config =
                configuration(shape, strokeAndFill, marker, size, 0.0, orange(), Qt::blue, Qt::DashDotLine);
            QCOMPARE(plain().solidPenFromTrack(config, Option::Normal).widthF(), drawn);
            tracks.append({track({{10, 10}, {20, 50}, {30, 90}}), config});
        }
    }
    QElapsedTimer timer;
    timer.start();
    const FlatRenderer renderer(select(tracks, 30), QSize(100, 100));
    for (const int option : {0, 1, 2}) {
        QCOMPARE(renderer.render(TrackRenderOption(option)).size(), QSize(100, 100));
    }
    QVERIFY(timer.elapsed() < 60000); // dashes of infinite length would never end
}

void tst_LvGPXTrackRenderer::hostileProjection_data()
{
    QTest::addColumn<double>("hostile");
    QTest::newRow("no number") << notANumber;
    QTest::newRow("infinite") << infinity;
    QTest::newRow("minus infinity") << -infinity;
    QTest::newRow("1e300") << 1e300;
    QTest::newRow("-1e300") << -1e300;
    QTest::newRow("1e18") << 1e18;
    QTest::newRow("beyond an int") << 3e9;
}

void tst_LvGPXTrackRenderer::hostileProjection()
{
    QFETCH(double, hostile);
    QList<LvGPXConfiguredTrack> tracks;
    for (const int shape : {pointShape, lineShape, areaShape}) {
        for (const int strength : {100, 50}) {
            const LvGPXTrackConfiguration config = configuration(
                shape, strokeAndFill, arrowMarker | 1, 10.0, 0.0, orange(), Qt::blue, Qt::DashLine, strength);
            tracks.append({track({{-10, 10}, {-50, 50}, {-50, 170}, {-50, -170}, {-90, 90}}), config});
            tracks.append({LvGPXTrackPoint(LvGeoPosition(-50, 50), 0, QDateTime(), QString()), config});
        }
    }
    const auto draw = [&tracks](const FunctionRenderer::Function& function) {
        const FunctionRenderer renderer(select(tracks, 30), QSize(100, 100), function);
        for (const int option : {0, 1, 2}) {
            if (renderer.render(TrackRenderOption(option)).size() != QSize(100, 100)
                || renderer.renderQuickAndDirty(TrackRenderOption(option)).size() != QSize(100, 100)) {
                return false;
            }
        }
        QImage background(100, 100, QImage::Format_RGB32);
        background.fill(Qt::white);
        return renderer.crop(background).size() == background.size();
    };
    // Everything, one coordinate, one point at each place of the track, and the world's width.
    QVERIFY(draw([hostile](double, double) { return QPointF(hostile, hostile); }));
    QVERIFY(draw([hostile](double latitude, double) { return QPointF(hostile, -latitude); }));
    QVERIFY(draw([hostile](double, double longitude) { return QPointF(longitude, hostile); }));
    for (const double place : {10.0, 50.0, 170.0, -170.0, 90.0, 180.0, -180.0}) {
        QVERIFY(draw([hostile, place](double latitude, double longitude) {
            return QPointF(longitude == place ? hostile : longitude, -latitude);
        }));
    }
    QVERIFY(draw([hostile](double latitude, double longitude) {
        return QPointF(longitude, std::abs(longitude) == 180.0 ? hostile : -latitude);
    }));

    // What is left of a line without its hostile point is drawn.
    const FunctionRenderer renderer(
        LvGPXTrackSelection(), QSize(100, 100), [hostile](double latitude, double longitude) {
            return longitude == 50.0 ? QPointF(hostile, hostile) : QPointF(longitude, -latitude);
        });
    if (!(std::abs(hostile) < 1e12)) {
        QCOMPARE(corners(renderer.createPainterPath(track({{-10, 10}, {-50, 50}, {-90, 90}}), 100, 1)),
                 QList<QPointF>({{10, 10}, {90, 90}}));
        QCOMPARE(corners(renderer.createPainterPath(track({{-50, 50}, {-10, 10}, {-90, 90}}), 100, 1)),
                 QList<QPointF>({{10, 10}, {90, 90}}));
        QCOMPARE(corners(renderer.createPainterPath(track({{-10, 10}, {-90, 90}, {-50, 50}}), 100, 1)),
                 QList<QPointF>({{10, 10}, {90, 90}}));
        QVERIFY(renderer.createPainterPath(track({{-10, 10}, {-50, 50}}), 100, 1).isEmpty());
        QVERIFY(renderer.createPainterPath(track({{-50, 50}, {-51, 50}}), 100, 1).isEmpty());
    }
}

namespace
{

/// Long enough to be cut into blocks, over the date line several times.
LvGPXTrackSelection longSelection(int croppingOpacity = 255)
{
    LvGeoPositionList positions;
    for (int i = 0; i < 20000; ++i) {
        positions.append(
            LvGeoPosition(40.0 * std::sin(i / 300.0) - 45.0, std::remainder(150.0 + i / 25.0, 360.0)));
    }
    return select(
        {{track(positions), configuration(lineShape, strokeAndFill, arrowMarker, 3.0, 3.0)},
         {track(positions), configuration(areaShape, fillOnly, 1, 3.0, 3.0, Qt::red, QColor(0, 0, 255, 60))}},
        croppingOpacity);
}

} // namespace

void tst_LvGPXTrackRenderer::parallelRenderers()
{
    const FlatRenderer renderer(longSelection(70), QSize(500, 100));
    QImage background(500, 100, QImage::Format_RGB32);
    background.fill(Qt::white);
    const QImage expected = renderer.render(Option::Normal);
    const QImage cropped = renderer.crop(background);
    QVERIFY(!isEmpty(expected));
    QList<int> jobs(24, 0);
    LvConcurrent::blockingMap(jobs, [&](int& equal) {
        const FlatRenderer own(longSelection(70), QSize(500, 100));
        equal = own.render(Option::Normal) == expected && renderer.render(Option::Normal) == expected
                && own.crop(background) == cropped
            ? 1
            : 0;
    });
    QCOMPARE(jobs, QList<int>(24, 1));
}

void tst_LvGPXTrackRenderer::parallelProjection()
{
    if (QThread::idealThreadCount() < 2) {
        QSKIP("One core only: nothing runs in parallel.");
    }
    // Two projections that wait for each other end only if they run at once.
    std::atomic<int> inside = 0;
    std::atomic<bool> met = false;
    const FunctionRenderer renderer(LvGPXTrackSelection(), QSize(10, 10),
                                    [&](double latitude, double longitude) {
                                        if (!met) {
                                            ++inside;
                                            for (int i = 0; i < 2000 && !met; ++i) {
                                                if (inside > 1) {
                                                    met = true;
                                                }
                                                QThread::usleep(100);
                                            }
                                            --inside;
                                        }
                                        return QPointF(longitude, -latitude);
                                    });
    const QList<LvGeoPositionList> lists{{{1, 2}}, {{3, 4}}, {{5, 6}}};
    QList<QPointF> points(3);
    renderer.projectPointsPP(lists, {LvIntRange(0, 0), LvIntRange(1, 1), LvIntRange(2, 2)}, {0, 1, 2},
                             points.data());
    QVERIFY(met);
    QCOMPARE(points, QList<QPointF>({{2, -1}, {4, -3}, {6, -5}}));
}

void tst_LvGPXTrackRenderer::sequentialProjection()
{
    // A worker thread that may not fan out does all the work itself.
    const int limit = LvConcurrent::maxRunningThreads;
    LvConcurrent::maxRunningThreads = 0;
    std::mutex mutex;
    QSet<Qt::HANDLE> threads;
    const FunctionRenderer renderer(longSelection(70), QSize(500, 100),
                                    [&mutex, &threads](double latitude, double longitude) {
                                        const std::scoped_lock lock(mutex);
                                        threads.insert(QThread::currentThreadId());
                                        return QPointF(longitude, -latitude);
                                    });
    Qt::HANDLE worker = nullptr;
    QImage image;
    QScopedPointer<QThread> thread(QThread::create([&] {
        worker = QThread::currentThreadId();
        image = renderer.render(Option::Normal);
    }));
    thread->start();
    const bool finished = thread->wait(QDeadlineTimer(60000));
    LvConcurrent::maxRunningThreads = limit;
    QVERIFY(finished);
    QCOMPARE(threads, QSet<Qt::HANDLE>({worker}));
    QCOMPARE(image, FlatRenderer(longSelection(70), QSize(500, 100)).render(Option::Normal));
}

void tst_LvGPXTrackRenderer::goldenMarkers_data()
{
    QTest::addColumn<int>("marker");
    for (const char* key : {"disk", "circle", "x", "block", "rect", "rhombus", "star6", "star9", "star12"}) {
        QTest::addRow("%s", key) << static_cast<int>(LvGPXMarkerShape(QString::fromLatin1(key)).value());
    }
}

void tst_LvGPXTrackRenderer::goldenMarkers()
{
    // A way with the marker at its start, as outline only, filled only, and both, in two sizes.
    QFETCH(int, marker);
    QList<LvGPXConfiguredTrack> tracks{
        {track({{47.2, 8.1}, {47.6, 9.0}, {47.3, 9.6}, {47.5, 10.6}, {47.2, 11.3}}),
         configuration(lineShape, strokeOnly, 0, 5.0, 0.0, QColor(90, 90, 90, 180))}};
    const auto mark = [&tracks, marker](double latitude, double longitude, int options, double width) {
        tracks.append({LvGPXTrackPoint(LvGeoPosition(latitude, longitude), 0, QDateTime(), QString()),
                       configuration(pointShape, options, marker, width, 0.0, QColor(170, 20, 60),
                                     QColor(255, 200, 40, 200))});
    };
    mark(47.2, 8.1, strokeAndFill, 24.0);
    mark(47.6, 9.0, strokeOnly, 16.0);
    mark(47.5, 10.6, fillOnly, 16.0);
    mark(47.2, 11.3, strokeAndFill, 8.0);
    const MapRenderer renderer(select(tracks), QSize(360, 160), 46.9, 47.9, 7.6, 11.8);
    QVERIFY(LvTest::matchesGolden(onMap(renderer, 0.5),
                                  QStringLiteral("track-marker-")
                                      + QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvGPXTrackRenderer::goldenStyles_data()
{
    QTest::addColumn<QList<LvGPXConfiguredTrack>>("tracks");
    QTest::addColumn<int>("option");
    const LvGeoPositionList way{{47.1, 8.0}, {47.6, 8.6}, {47.2, 9.4}, {47.65, 10.2}, {47.4, 11.2}};
    const LvGeoPositionList ring{{47.1, 8.2},  {47.65, 8.5},  {47.7, 10.9},
                                 {47.3, 11.3}, {47.05, 10.0}, {47.1, 8.2}};
    const QColor line(30, 90, 200, 180);
    const QColor fill(250, 160, 0, 120);
    const auto styled = [&](const LvGPXTrack& drawn, int shape, int options, int marker, double width,
                            double halo, int penStyle) {
        return QList<LvGPXConfiguredTrack>{
            {drawn, configuration(shape, options, marker, width, halo, line, fill, penStyle)}};
    };
    QTest::newRow("line") << styled(track(way), lineShape, strokeOnly, 0, 10, 0, 1) << 0;
    QTest::newRow("line-dashed") << styled(track(way), lineShape, strokeOnly, 0, 6, 0, Qt::DashLine) << 0;
    QTest::newRow("line-dotted") << styled(track(way), lineShape, strokeOnly, 0, 6, 0, Qt::DotLine) << 0;
    QTest::newRow("line-arrow") << styled(track(way), lineShape, strokeOnly, arrowMarker, 6, 0, 1) << 0;
    QTest::newRow("line-arrow-dashed")
        << styled(track(way), lineShape, strokeOnly, arrowMarker, 5, 0, Qt::DashLine) << 0;
    QTest::newRow("line-foreground") << styled(track(way), lineShape, strokeOnly, 0, 6, 14, Qt::DashLine)
                                     << 1;
    QTest::newRow("area-outline") << styled(track(ring), areaShape, strokeOnly, 0, 6, 0, 1) << 0;
    QTest::newRow("area-fill") << styled(track(ring), areaShape, fillOnly, 0, 6, 0, 1) << 0;
    QTest::newRow("area-both") << styled(track(ring), areaShape, strokeAndFill, 0, 6, 0, 1) << 0;
    QTest::newRow("area-dashed") << styled(track(ring), areaShape, strokeAndFill, 0, 4, 0, Qt::DashDotLine)
                                 << 0;
    QTest::newRow("line-as-area") << styled(track(way), areaShape, strokeAndFill, 0, 6, 0, 1) << 0;
    QTest::newRow("line-as-point") << styled(track(way), pointShape, strokeAndFill, 128, 14, 0, 1) << 0;

    LvGPXTrack lake = track(ring, areaShape);
    lake.addEnclave(track({{47.25, 8.9}, {47.5, 9.0}, {47.45, 9.6}, {47.2, 9.5}, {47.25, 8.9}}, areaShape));
    lake.addEnclave(track({{47.3, 10.2}, {47.5, 10.2}, {47.4, 10.6}, {47.3, 10.2}}, areaShape));
    QTest::newRow("area-enclaves") << styled(lake, areaShape, strokeAndFill, 0, 4, 0, 1) << 0;

    // The halo as an application draws it: the wide outline first, in another colour, and the line over it.
    QList<LvGPXConfiguredTrack> halo{
        {track(way), configuration(lineShape, strokeOnly, 0, 6.0 + 10.0, 0.0, QColor(255, 255, 255, 200))}};
    halo += styled(track(way), lineShape, strokeOnly, 0, 6, 10, 1);
    QTest::newRow("line-halo") << halo << 0;
}

void tst_LvGPXTrackRenderer::goldenStyles()
{
    QFETCH(QList<LvGPXConfiguredTrack>, tracks);
    QFETCH(int, option);
    const MapRenderer renderer(select(tracks), QSize(360, 160), 46.9, 47.9, 7.6, 11.8);
    QVERIFY(LvTest::matchesGolden(onMap(renderer, 0.5, TrackRenderOption(option)),
                                  QStringLiteral("track-") + QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvGPXTrackRenderer::goldenDateLine_data()
{
    QTest::addColumn<QList<LvGeoPositionList>>("segments");
    QTest::addColumn<int>("shape");
    QTest::newRow("east")
        << QList<LvGeoPositionList>{{{35, 140}, {45, 165}, {48, -170}, {40, -140}, {37, -122}}} << lineShape;
    QTest::newRow("west")
        << QList<LvGeoPositionList>{{{37, -122}, {40, -140}, {48, -170}, {45, 165}, {35, 140}}} << lineShape;
    QTest::newRow("segments") << QList<LvGeoPositionList>{{{-10, 135}, {-20, 172}},
                                                          {{-25, -172}, {0, -150}},
                                                          {{15, -165}, {0, 170}, {20, 140}}}
                              << lineShape;
    QTest::newRow("area")
        << QList<LvGeoPositionList>{{{10, 160}, {30, 170}, {25, -165}, {0, -150}, {-15, -175}, {10, 160}}}
        << areaShape;
}

void tst_LvGPXTrackRenderer::goldenDateLine()
{
    QFETCH(QList<LvGeoPositionList>, segments);
    QFETCH(int, shape);
    const LvGPXConfiguredTrack drawn(track(segments),
                                     configuration(shape, strokeAndFill, arrowMarker, 5.0, 0.0,
                                                   QColor(30, 90, 200, 180), QColor(250, 160, 0, 120)));
    const MapRenderer pacific(select({drawn}), QSize(400, 220), -30, 55, 120, -100);
    QVERIFY(LvTest::matchesGolden(
        onMap(pacific), QStringLiteral("track-date-line-") + QString::fromLatin1(QTest::currentDataTag())));
    const MapRenderer world(select({drawn}), QSize(400, 220), -60, 70, -180, 180);
    QVERIFY(LvTest::matchesGolden(
        onMap(world, 30), QStringLiteral("track-world-") + QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvGPXTrackRenderer::goldenWorldCopies()
{
    const QColor blue(30, 90, 200, 180);
    const LvGPXTrackSelection selection =
        select({{track({{35, 140}, {45, 165}, {48, -170}, {40, -140}, {37, -122}}),
                 configuration(lineShape, strokeOnly, arrowMarker, 3.0, 0.0, blue)},
                {track({{37, 10}, {20, 32}, {-35, 20}, {5, -8}, {37, 10}}),
                 configuration(areaShape, strokeAndFill, 0, 2.0, 0.0, blue, QColor(250, 160, 0, 120))},
                {LvGPXTrackPoint(LvGeoPosition(-34.6, -58.4), 0, QDateTime(), QString()),
                 configuration(pointShape, strokeAndFill, 256, 8.0, 0.0, Qt::red, Qt::yellow)}});
    // Three worlds and a half beside each other.
    const FlatRenderer renderer(selection, QSize(700, 110), 1.0, 200.0 / 360.0, QPointF(350, 55));
    QVERIFY(LvTest::matchesGolden(onMap(renderer, 30), QStringLiteral("track-world-copies")));
}

void tst_LvGPXTrackRenderer::goldenCropping_data()
{
    QTest::addColumn<int>("opacity");
    QTest::newRow("0") << 0;
    QTest::newRow("128") << 128;
}

void tst_LvGPXTrackRenderer::goldenCropping()
{
    QFETCH(int, opacity);
    const QColor blue(30, 90, 200, 180);
    const LvGPXTrackSelection selection =
        select({{track({{47.1, 8.0}, {47.6, 8.6}, {47.2, 9.4}, {47.65, 10.2}, {47.4, 11.2}}),
                 configuration(lineShape, strokeOnly, 0, 6.0, 16.0, blue)},
                {track({{47.05, 10.0}, {47.25, 10.1}, {47.2, 11.2}, {47.05, 10.0}}),
                 configuration(areaShape, strokeOnly, 0, 3.0, 3.0, blue)},
                {LvGPXTrackPoint(LvGeoPosition(47.7, 8.1), 0, QDateTime(), QString()),
                 configuration(pointShape, strokeOnly, 128, 14.0, 4.0, blue)}},
               opacity);
    const MapRenderer renderer(selection, QSize(360, 160), 46.9, 47.9, 7.6, 11.8);
    const MapRenderer sheet(LvGPXTrackSelection(), QSize(360, 160), 46.9, 47.9, 7.6, 11.8);
    const QImage cropped = renderer.crop(onMap(sheet, 0.1));
    QVERIFY(LvTest::matchesGolden(
        cropped, QStringLiteral("track-cropping-") + QString::fromLatin1(QTest::currentDataTag())));
}

void tst_LvGPXTrackRenderer::goldenSmoothing()
{
    LvGeoPositionList jittery;
    for (int i = 0; i <= 60; ++i) {
        jittery.append(
            LvGeoPosition(47.4 + 0.3 * std::sin(i / 10.0) + (i % 2 == 0 ? 0.05 : -0.05), 7.9 + i * 0.06));
    }
    const auto smoothed = [&jittery](int strength, int steps, const QColor& color) {
        return LvGPXConfiguredTrack(
            track(jittery),
            configuration(lineShape, strokeOnly, 0, 3.0, 0.0, color, Qt::blue, 1, strength, steps));
    };
    const LvGPXTrackSelection selection =
        select({smoothed(100, 1, QColor(150, 150, 150)), smoothed(40, 10, QColor(200, 40, 40)),
                smoothed(0, 10, QColor(30, 90, 200))});
    const MapRenderer renderer(selection, QSize(360, 160), 46.9, 47.9, 7.6, 11.8);
    QVERIFY(LvTest::matchesGolden(onMap(renderer, 0.5), QStringLiteral("track-smoothing")));
}

LV_TEST_MAIN(tst_LvGPXTrackRenderer)
#include "tst_LvGPXTrackRenderer.moc"
