#include "LvWorldMapSource.h"

#include "LvMapView.h"
#include "LvWorldMapData.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

// Calm colours: the tracks are what shall be seen.
constexpr QColor outsideColor(236, 240, 242);
constexpr QColor waterColor(206, 225, 236);
constexpr QColor landColor(247, 245, 240);
constexpr QColor coastColor(132, 163, 184);
constexpr QColor borderColor(176, 168, 160);
constexpr QColor graticuleColor(60, 90, 110, 30);

constexpr double coastWidth = 0.9;
constexpr double borderWidth = 1.0;
constexpr double graticuleWidth = 1.0;
constexpr double fullWidthWorld =
    1600.0; // pixels of a world at factor 1 from which on lines have their full width
constexpr double smallestWidthShare = 0.5;
constexpr double graticuleSpacing = 130.0; // at least so many pixels, at factor 1

constexpr double clipMargin = 16.0; // pixels around the picture that are drawn along, at factor 1
constexpr double thinningDistance = 0.5; // pixels, Manhattan
constexpr double smallLineSize = 6.0; // pixels; what is smaller keeps all of its points and stays visible

/// First and last of the world copies in which something between two normalised x can be seen.
struct CopyRange {
    int first;
    int last;
};

CopyRange visibleCopies(double left, double right, const QRectF& visible)
{
    return {static_cast<int>(std::ceil(visible.left() - right)),
            static_cast<int>(std::floor(visible.right() - left))};
}

/// Pixel positions of a line in one copy of the world, without points that nobody could tell apart.
QPolygonF toPixels(const LvWorldMapData::Line& line, const LvMapView& view, int copy)
{
    const double extent = std::max(line.bounds.width(), line.bounds.height()) * view.worldSize();
    const double threshold = extent < smallLineSize ? 0.0 : thinningDistance;
    QPolygonF pixels;
    pixels.reserve(line.points.size());
    for (const QPointF& point : line.points) {
        const QPointF pixel = view.pixelOfNormalized(point + QPointF(copy, 0.0));
        if (pixels.isEmpty() || (pixel - pixels.constLast()).manhattanLength() >= threshold) {
            pixels.append(pixel);
        }
    }
    if (!line.points.isEmpty()) {
        const QPointF last = view.pixelOfNormalized(line.points.constLast() + QPointF(copy, 0.0));
        if (pixels.constLast() != last) {
            pixels.append(last);
        }
    }
    return pixels;
}

enum class Edge { Left, Right, Top, Bottom };

bool isInside(const QPointF& point, const QRectF& rect, Edge edge)
{
    switch (edge) {
    case Edge::Left:
        return point.x() >= rect.left();
    case Edge::Right:
        return point.x() <= rect.right();
    case Edge::Top:
        return point.y() >= rect.top();
    case Edge::Bottom:
        return point.y() <= rect.bottom();
    }
    return true;
}

QPointF crossing(const QPointF& from, const QPointF& to, const QRectF& rect, Edge edge)
{
    const bool vertical = edge == Edge::Left || edge == Edge::Right;
    if (vertical) {
        const double x = edge == Edge::Left ? rect.left() : rect.right();
        return {x, from.y() + ((to.y() - from.y()) * (x - from.x()) / (to.x() - from.x()))};
    }
    const double y = edge == Edge::Top ? rect.top() : rect.bottom();
    return {from.x() + ((to.x() - from.x()) * (y - from.y()) / (to.y() - from.y())), y};
}

/// The part of a ring inside the rectangle (Sutherland and Hodgman, "Reentrant polygon clipping", 1974).
/// Edges that it adds run along the rectangle.
QPolygonF clippedRing(QPolygonF ring, const QRectF& rect)
{
    for (const Edge edge : {Edge::Left, Edge::Right, Edge::Top, Edge::Bottom}) {
        QPolygonF result;
        result.reserve(ring.size());
        for (qsizetype i = 0; i < ring.size(); ++i) {
            const QPointF& previous = ring.at(i == 0 ? ring.size() - 1 : i - 1);
            const QPointF& point = ring.at(i);
            const bool inside = isInside(point, rect, edge);
            if (inside != isInside(previous, rect, edge)) {
                result.append(crossing(previous, point, rect, edge));
            }
            if (inside) {
                result.append(point);
            }
        }
        ring = result;
    }
    return ring;
}

/// Cuts a segment to the rectangle (Liang and Barsky); false when nothing is left.
bool clipSegment(QPointF& from, QPointF& to, const QRectF& rect)
{
    const QPointF step = to - from;
    double first = 0.0;
    double last = 1.0;
    const std::array<std::array<double, 2>, 4> limits = {{{-step.x(), from.x() - rect.left()},
                                                          {step.x(), rect.right() - from.x()},
                                                          {-step.y(), from.y() - rect.top()},
                                                          {step.y(), rect.bottom() - from.y()}}};
    for (const auto& [speed, room] : limits) {
        if (speed == 0.0) {
            if (room < 0.0) {
                return false;
            }
        } else if (speed < 0.0) {
            first = std::max(first, room / speed);
        } else {
            last = std::min(last, room / speed);
        }
    }
    if (first > last) {
        return false;
    }
    to = last < 1.0 ? from + (step * last) : to;
    from = first > 0.0 ? from + (step * first) : from;
    return true;
}

void appendClippedLine(QPainterPath& path, const QPolygonF& line, const QRectF& rect)
{
    bool connected = false;
    for (qsizetype i = 1; i < line.size(); ++i) {
        QPointF from = line.at(i - 1);
        QPointF to = line.at(i);
        if (!clipSegment(from, to, rect)) {
            connected = false;
            continue;
        }
        if (!connected || path.currentPosition() != from) {
            path.moveTo(from);
        }
        path.lineTo(to);
        connected = true;
    }
}

bool overlapsVertically(const QRectF& bounds, const QRectF& visible)
{
    return bounds.bottom() >= visible.top() && bounds.top() <= visible.bottom();
}

/// Calls the function with each line of the list and each copy of the world in which it may be seen.
template <class Function>
void forEachVisible(const QList<LvWorldMapData::Line>& lines, const QRectF& visible, Function function)
{
    for (const LvWorldMapData::Line& line : lines) {
        if (!overlapsVertically(line.bounds, visible)) {
            continue;
        }
        const CopyRange copies = visibleCopies(line.bounds.left(), line.bounds.right(), visible);
        for (int copy = copies.first; copy <= copies.last; ++copy) {
            function(line, copy);
        }
    }
}

QPainterPath landPath(const QList<LvWorldMapData::Line>& rings, const LvMapView& view, const QRectF& visible,
                      const QRectF& clip)
{
    // One path for all of it: where two copies of the world meet, their common edge cancels out instead of
    // shining through.
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    forEachVisible(rings, visible, [&](const LvWorldMapData::Line& ring, int copy) {
        const QPolygonF pixels = clippedRing(toPixels(ring, view, copy), clip);
        if (pixels.size() > 2) {
            path.addPolygon(pixels);
            path.closeSubpath();
        }
    });
    return path;
}

QPainterPath linePath(const QList<LvWorldMapData::Line>& lines, const LvMapView& view, const QRectF& visible,
                      const QRectF& clip)
{
    QPainterPath path;
    forEachVisible(lines, visible, [&](const LvWorldMapData::Line& line, int copy) {
        appendClippedLine(path, toPixels(line, view, copy), clip);
    });
    return path;
}

double graticuleStep(const LvMapView& view, double paintFactor)
{
    const double smallest = graticuleSpacing * paintFactor * 360.0 / view.worldSize();
    for (const double step : {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 45.0}) {
        if (step >= smallest) {
            return step;
        }
    }
    return 90.0;
}

QPainterPath graticulePath(const LvMapView& view, double step)
{
    const QRectF visible = view.normalizedRect();
    const double top = view.pixelOfNormalized({0.0, 0.0}).y();
    const double bottom = view.pixelOfNormalized({0.0, 1.0}).y();
    QPainterPath path;
    const double firstMeridian = std::ceil(((visible.left() * 360.0) - 180.0) / step);
    for (double number = firstMeridian;; ++number) {
        const double x = view.pixelOf(0.0, number * step).x();
        if (x > view.size().width()) {
            break;
        }
        path.moveTo(x, std::max(0.0, top));
        path.lineTo(x, std::min<double>(view.size().height(), bottom));
    }
    const double count = std::floor(LvMapView::squareLatitude / step);
    for (double number = -count; number <= count; ++number) {
        const double y = view.pixelOf(number * step, 0.0).y();
        if (y >= 0.0 && y <= view.size().height()) {
            path.moveTo(0.0, y);
            path.lineTo(view.size().width(), y);
        }
    }
    return path;
}

} // namespace

bool LvWorldMapSource::isValid() const
{
    return true;
}

QString LvWorldMapSource::errorText() const
{
    return {};
}

QString LvWorldMapSource::attribution() const
{
    return {};
}

void LvWorldMapSource::draw(QPainter& painter, const LvMapView& view, double paintFactor)
{
    const LvWorldMapData& data = LvWorldMapData::builtIn();
    const QRectF picture(QPointF(0.0, 0.0), view.size());
    // Around a tiny picture the margin would hold dozens of worlds.
    const double margin =
        std::min(clipMargin * std::max(1.0, paintFactor), std::max(picture.width(), picture.height()));
    const QRectF clip = picture.adjusted(-margin, -margin, margin, margin);
    const QRectF visible(view.normalizedRect().topLeft() - QPointF(margin, margin) / view.worldSize(),
                         clip.size() / view.worldSize());

    painter.save();
    painter.setClipRect(picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(picture, outsideColor);
    const double top = view.pixelOfNormalized({0.0, 0.0}).y();
    const double bottom = view.pixelOfNormalized({0.0, 1.0}).y();
    painter.fillRect(QRectF(QPointF(0.0, top), QPointF(picture.right(), bottom)).intersected(picture),
                     waterColor);
    painter.fillPath(landPath(data.landRings(), view, visible, clip), landColor);

    // On a small world the outlines would hide the land.
    const double lineFactor =
        paintFactor * std::clamp(view.worldSize() / fullWidthWorld / paintFactor, smallestWidthShare, 1.0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(graticuleColor, graticuleWidth * lineFactor));
    painter.drawPath(graticulePath(view, graticuleStep(view, paintFactor)));

    QPen borderPen(borderColor, borderWidth * lineFactor);
    borderPen.setDashPattern({3.0, 2.5});
    borderPen.setCapStyle(Qt::FlatCap);
    painter.setPen(borderPen);
    painter.drawPath(linePath(data.borders(), view, visible, clip));

    painter.setPen(QPen(coastColor, coastWidth * lineFactor, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(linePath(data.coasts(), view, visible, clip));
    painter.restore();
}
