#include "LvTrackProfilePlot.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr double leastElevationSpanMetres = 10.0; // a flat track must not look like mountains
constexpr double leastSpeedSpanKmh = 5.0;
constexpr double linesPerTick = 1.8; // height of a line of text to the distance of two marks
constexpr double gapsPerTick = 2.0; // width of a label to the distance of two marks
constexpr double curveWidth = 1.6;
constexpr double cursorDotRadius = 3.5;
constexpr double pageShare = 0.1; // of the width, for the page keys
constexpr int gridAlpha = 50;
constexpr int areaAlpha = 70;
constexpr int darkLightness = 128;

/// Blue and orange are told apart by everyone; on a dark ground both have to be light.
constexpr QRgb elevationOnLight = 0xFF1565C0;
constexpr QRgb elevationOnDark = 0xFF64B5F6;
constexpr QRgb speedOnLight = 0xFFBF4E00;
constexpr QRgb speedOnDark = 0xFFFFB74D;

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

LvTrackProfilePlot::LvTrackProfilePlot(QWidget* parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(tr("Höhen- und Geschwindigkeitsprofil"));
    setWhatsThis(
        tr("Mit der Maus oder den Pfeiltasten bewegt man sich an der Spur entlang; Bild auf und Bild "
           "ab machen größere Schritte, Pos1 und Ende führen zum Anfang und zum Ende."));
}

LvTrackProfilePlot::~LvTrackProfilePlot() = default;

void LvTrackProfilePlot::setStatistics(const LvTrackStatistics& statistics)
{
    myStatistics = statistics;
    myCursorIndex = -1;
    setAccessibleDescription({});
    invalidateLayout();
}

void LvTrackProfilePlot::setAxis(Axis axis)
{
    if (myAxis != axis) {
        myAxis = axis;
        invalidateLayout();
    }
}

void LvTrackProfilePlot::setCursorIndex(qsizetype index)
{
    if (index < 0 || index >= myStatistics.points().size()) {
        index = -1;
    }
    if (myCursorIndex != index) {
        myCursorIndex = index;
        update();
    }
}

double LvTrackProfilePlot::horizontalPixel(qsizetype index)
{
    updateLayout();
    if (isEmpty() || index < 0 || index >= myStatistics.points().size()) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return pixelOf(myStatistics.points().at(index));
}

QSize LvTrackProfilePlot::sizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 60, metrics.height() * 10};
}

QSize LvTrackProfilePlot::minimumSizeHint() const
{
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 24, metrics.height() * 5};
}

bool LvTrackProfilePlot::event(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LocaleChange) {
        invalidateLayout();
        updateGeometry();
    }
    return QWidget::event(event);
}

void LvTrackProfilePlot::paintEvent(QPaintEvent* /*event*/)
{
    updateLayout();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isEmpty()) {
        drawMessage(painter);
    } else {
        drawAxes(painter);
        painter.save();
        painter.setClipRect(myPlotRect.adjusted(-curveWidth, -curveWidth, curveWidth, curveWidth));
        drawCurve(painter, myElevation, elevationColor(), true);
        drawCurve(painter, mySpeed, speedColor(), false);
        painter.restore();
        drawCursor(painter);
    }
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void LvTrackProfilePlot::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    invalidateLayout();
}

void LvTrackProfilePlot::mouseMoveEvent(QMouseEvent* event)
{
    moveCursor(nearestIndex(event->position().x()));
}

void LvTrackProfilePlot::mousePressEvent(QMouseEvent* event)
{
    // Touch screens send no movement before.
    moveCursor(nearestIndex(event->position().x()));
}

void LvTrackProfilePlot::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    moveCursor(-1);
}

void LvTrackProfilePlot::keyPressEvent(QKeyEvent* event)
{
    updateLayout();
    if (isEmpty()) {
        QWidget::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
        moveCursorBy(-1.0);
        break;
    case Qt::Key_Right:
        moveCursorBy(1.0);
        break;
    case Qt::Key_PageUp:
        moveCursorBy(-pageShare * myPlotRect.width());
        break;
    case Qt::Key_PageDown:
        moveCursorBy(pageShare * myPlotRect.width());
        break;
    case Qt::Key_Home:
        moveCursor(myShownPoints.first());
        break;
    case Qt::Key_End:
        moveCursor(myShownPoints.last());
        break;
    case Qt::Key_Escape:
        if (myCursorIndex < 0) {
            QWidget::keyPressEvent(event);
        }
        moveCursor(-1);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void LvTrackProfilePlot::invalidateLayout()
{
    myIsLayoutValid = false;
    update();
}

void LvTrackProfilePlot::updateLayout()
{
    if (myIsLayoutValid) {
        return;
    }
    myIsLayoutValid = true;
    myShownPoints.clear();
    myHighestHorizontal = 0.0;
    myElevation = {};
    mySpeed = {};
    const QList<LvTrackProfilePoint>& points = myStatistics.points();
    for (qsizetype i = 0; i < points.size(); ++i) {
        const double value = horizontalValue(points.at(i));
        if (!std::isnan(value)) {
            myShownPoints.append(i);
            myHighestHorizontal = value; // never decreases
        }
    }
    if (isEmpty()) {
        return;
    }
    const QFontMetricsF metrics(font());
    const int ticks = std::max(
        2, static_cast<int>((height() - 3.0 * metrics.height()) / (linesPerTick * metrics.height())));
    if (myStatistics.hasElevations()) {
        const double lowest = *myStatistics.lowestMetres();
        const double highest = std::max(*myStatistics.highestMetres(), lowest + leastElevationSpanMetres);
        myElevation.ticks = LvAxisTicks::enclosing(lowest, highest, ticks);
    }
    if (myStatistics.highestSpeedKmh()) {
        mySpeed.ticks =
            LvAxisTicks::enclosing(0.0, std::max(*myStatistics.highestSpeedKmh(), leastSpeedSpanKmh), ticks);
    }
    for (Curve* curve : {&myElevation, &mySpeed}) {
        if (!curve->ticks.values().isEmpty()) {
            curve->lowest = curve->ticks.values().first();
            curve->highest = curve->ticks.values().last();
        }
    }
    updatePlotRect();
    gather(myElevation, &LvTrackProfilePoint::elevationMetres);
    gather(mySpeed, &LvTrackProfilePoint::speedKmh);
}

void LvTrackProfilePlot::updatePlotRect()
{
    const QFontMetricsF metrics(font());
    const double gap = metrics.averageCharWidth();
    const auto widest = [&](const LvAxisTicks& ticks, const QString& unit) {
        double width = ticks.values().isEmpty() ? 0.0 : metrics.horizontalAdvance(unit);
        for (const double value : ticks.values()) {
            width = std::max(width, metrics.horizontalAdvance(ticks.label(value)));
        }
        return width;
    };
    const double left = widest(myElevation.ticks, tr("m")) + 2.0 * gap;
    const auto ticksFor = [this](int mostTicks) {
        return isTimeShown() ? LvAxisTicks::seconds(0.0, myHighestHorizontal, mostTicks)
                             : LvAxisTicks::numbers(0.0, myHighestHorizontal, mostTicks);
    };
    // The room for the marks depends on their labels, and those on the number of marks: two rounds are
    // enough.
    double label = metrics.horizontalAdvance(QStringLiteral("0:00"));
    for (int round = 0; round < 2; ++round) {
        const double available = width() - left - 4.0 * gap;
        myHorizontalTicks = ticksFor(std::max(2, static_cast<int>(available / (label * gapsPerTick + gap))));
        label = widest(myHorizontalTicks, {});
    }
    const double unit = metrics.horizontalAdvance(isTimeShown() ? tr("h") : tr("km"));
    const double right = std::max(widest(mySpeed.ticks, tr("km/h")), label / 2.0 + gap + unit) + 2.0 * gap;
    const double line = metrics.height();
    // Whole pixels, so that the columns are those of the screen.
    myPlotRect = QRectF(QPointF(std::ceil(left), std::ceil(line * 1.5)),
                        QPointF(std::floor(width() - right), std::floor(height() - line * 1.5)));
    if (myPlotRect.width() < 1.0 || myPlotRect.height() < 1.0) {
        myPlotRect.setSize({std::max(1.0, myPlotRect.width()), std::max(1.0, myPlotRect.height())});
    }
}

void LvTrackProfilePlot::gather(Curve& curve, double LvTrackProfilePoint::*value) const
{
    if (curve.ticks.values().isEmpty()) {
        return;
    }
    curve.columns.resize(static_cast<qsizetype>(std::ceil(myPlotRect.width())) + 1);
    for (const qsizetype index : myShownPoints) {
        const LvTrackProfilePoint& point = myStatistics.points().at(index);
        const double current = point.*value;
        if (std::isnan(current)) {
            continue;
        }
        const auto place = static_cast<qsizetype>(std::lround(pixelOf(point) - myPlotRect.left()));
        Column& column = curve.columns[std::clamp<qsizetype>(place, 0, curve.columns.size() - 1)];
        if (column.firstRun < 0) {
            column = {current, current, current, current, point.run, point.run};
        } else {
            column.last = current;
            column.lowest = std::min(column.lowest, current);
            column.highest = std::max(column.highest, current);
            column.lastRun = point.run;
        }
    }
}

void LvTrackProfilePlot::drawAxes(QPainter& painter) const
{
    const QFontMetricsF metrics(font());
    const double line = metrics.height();
    const double gap = metrics.averageCharWidth();
    const QColor textColor = palette().color(QPalette::Text);
    const QPen gridPen(withAlpha(textColor, gridAlpha), 1.0);

    const auto drawVertical = [&](const Curve& curve, const QColor& color, bool isLeft, const QString& unit) {
        if (curve.ticks.values().isEmpty()) {
            return;
        }
        const double x = isLeft ? 0.0 : myPlotRect.right() + gap;
        const double width = isLeft ? myPlotRect.left() - gap : this->width() - x;
        const int alignment =
            static_cast<int>(Qt::AlignVCenter) | static_cast<int>(isLeft ? Qt::AlignRight : Qt::AlignLeft);
        for (const double value : curve.ticks.values()) {
            const double y = verticalPixel(curve, value);
            painter.setPen(color);
            painter.drawText(QRectF(x, y - line / 2.0, width, line), alignment, curve.ticks.label(value));
            // The grid belongs to the elevation; two grids would be a jumble.
            if (isLeft || myElevation.ticks.values().isEmpty()) {
                painter.setPen(gridPen);
                painter.drawLine(QPointF(myPlotRect.left(), y), QPointF(myPlotRect.right(), y));
            }
        }
        painter.setPen(color);
        painter.drawText(QRectF(x, 0.0, width, line), alignment, unit);
    };
    drawVertical(myElevation, elevationColor(), true, tr("m"));
    drawVertical(mySpeed, speedColor(), false, tr("km/h"));

    const double top = myPlotRect.bottom() + line * 0.25;
    for (const double value : myHorizontalTicks.values()) {
        const double x = myPlotRect.left() + value / myHighestHorizontal * myPlotRect.width();
        painter.setPen(gridPen);
        painter.drawLine(QPointF(x, myPlotRect.top()), QPointF(x, myPlotRect.bottom()));
        painter.setPen(textColor);
        const QString label = myHorizontalTicks.label(value);
        const double width = metrics.horizontalAdvance(label) + 2.0;
        painter.drawText(QRectF(x - width / 2.0, top, width, line), Qt::AlignCenter, label);
    }
    painter.setPen(textColor);
    painter.drawText(QRectF(myPlotRect.right(), top, width() - myPlotRect.right() - gap / 2.0, line),
                     Qt::AlignRight | Qt::AlignVCenter, isTimeShown() ? tr("h") : tr("km"));
}

void LvTrackProfilePlot::drawCurve(QPainter& painter, const Curve& curve, const QColor& color,
                                   bool isFilled) const
{
    // Single lines and rectangles instead of one path: filling and stroking paths that zigzag from column to
    // column takes seconds.
    QList<QLineF> lines;
    lines.reserve(2 * curve.columns.size());
    const QColor areaColor = withAlpha(color, areaAlpha);
    qsizetype before = -1; // the last column with a value
    QPointF end;
    for (qsizetype i = 0; i < curve.columns.size(); ++i) {
        const Column& column = curve.columns.at(i);
        if (column.firstRun < 0) {
            continue;
        }
        const bool isConnected = before >= 0 && column.firstRun == curve.columns.at(before).lastRun;
        // Two points per column say all that can be seen; which one comes first follows the curve.
        const bool isFalling = column.first > column.last;
        const double x = myPlotRect.left() + static_cast<double>(i);
        const QPointF first(x, verticalPixel(curve, isFalling ? column.highest : column.lowest));
        const QPointF last(x, verticalPixel(curve, isFalling ? column.lowest : column.highest));
        if (isConnected) {
            lines.append(QLineF(end, first));
        }
        if (first != last) {
            lines.append(QLineF(first, last));
        } else if (!isConnected) {
            lines.append(QLineF(first - QPointF(0.5, 0.0), last)); // a lonely point is seen, too
        }
        if (isFilled) {
            fillColumns(painter, curve, isConnected ? before : i, i, areaColor);
        }
        before = i;
        end = last;
    }
    painter.setPen(QPen(color, curveWidth, Qt::SolidLine, Qt::FlatCap));
    painter.drawLines(lines);
}

void LvTrackProfilePlot::fillColumns(QPainter& painter, const Curve& curve, qsizetype from, qsizetype to,
                                     const QColor& color) const
{
    const double start = verticalPixel(curve, curve.columns.at(from).highest);
    const double end = verticalPixel(curve, curve.columns.at(to).highest);
    // Smooth edges would leave seams between neighbours.
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (qsizetype i = from == to ? from : from + 1; i <= to; ++i) {
        const double share =
            from == to ? 1.0 : static_cast<double>(i - from) / static_cast<double>(to - from);
        const double top = start + (end - start) * share;
        painter.fillRect(
            QRectF(myPlotRect.left() + static_cast<double>(i) - 0.5, top, 1.0, myPlotRect.bottom() - top),
            color);
    }
    painter.setRenderHint(QPainter::Antialiasing);
}

void LvTrackProfilePlot::drawCursor(QPainter& painter) const
{
    if (myCursorIndex < 0) {
        return;
    }
    const LvTrackProfilePoint& point = myStatistics.points().at(myCursorIndex);
    const double x = pixelOf(point);
    if (std::isnan(x)) {
        return;
    }
    painter.setPen(QPen(palette().color(QPalette::Text), 1.0));
    painter.drawLine(QPointF(x, myPlotRect.top()), QPointF(x, myPlotRect.bottom()));
    const auto drawDot = [&](const Curve& curve, double value, const QColor& color) {
        if (!curve.ticks.values().isEmpty() && !std::isnan(value)) {
            painter.setBrush(color);
            painter.drawEllipse(QPointF(x, verticalPixel(curve, value)), cursorDotRadius, cursorDotRadius);
        }
    };
    drawDot(myElevation, point.elevationMetres, elevationColor());
    drawDot(mySpeed, point.speedKmh, speedColor());
}

void LvTrackProfilePlot::drawMessage(QPainter& painter) const
{
    if (myStatistics.points().isEmpty()) {
        return;
    }
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Für diese Spur gibt es kein Profil: Sie hat weder Höhen noch Zeiten, oder sie führt "
                        "nirgendwohin."));
}

void LvTrackProfilePlot::moveCursor(qsizetype index)
{
    if (index == myCursorIndex) {
        return;
    }
    setCursorIndex(index);
    Q_EMIT cursorMoved(myCursorIndex);
}

void LvTrackProfilePlot::moveCursorBy(double pixels)
{
    const double current = myCursorIndex < 0 ? std::numeric_limits<double>::quiet_NaN()
                                             : pixelOf(myStatistics.points().at(myCursorIndex));
    if (std::isnan(current)) {
        moveCursor(pixels > 0.0 ? myShownPoints.first() : myShownPoints.last());
        return;
    }
    // The next point that is at least so far away, so that every step is seen.
    const double target = current + pixels;
    const auto isLeftOf = [this](qsizetype index, double pixel) {
        return pixelOf(myStatistics.points().at(index)) < pixel;
    };
    auto found = std::lower_bound(myShownPoints.cbegin(), myShownPoints.cend(), target, isLeftOf);
    if (pixels < 0.0) {
        const bool isExact =
            found != myShownPoints.cend() && pixelOf(myStatistics.points().at(*found)) <= target;
        if (!isExact) {
            found = found == myShownPoints.cbegin() ? found : found - 1;
        }
    }
    moveCursor(found == myShownPoints.cend() ? myShownPoints.last() : *found);
}

bool LvTrackProfilePlot::isTimeShown() const
{
    return myAxis == Axis::Time && myStatistics.hasTimes();
}

bool LvTrackProfilePlot::isEmpty() const
{
    return myHighestHorizontal <= 0.0 || !(myStatistics.hasElevations() || myStatistics.highestSpeedKmh());
}

double LvTrackProfilePlot::horizontalValue(const LvTrackProfilePoint& point) const
{
    return isTimeShown() ? point.elapsedSeconds : point.distanceKm;
}

double LvTrackProfilePlot::pixelOf(const LvTrackProfilePoint& point) const
{
    return myPlotRect.left() + horizontalValue(point) / myHighestHorizontal * myPlotRect.width();
}

double LvTrackProfilePlot::verticalPixel(const Curve& curve, double value) const
{
    return myPlotRect.bottom()
        - (value - curve.lowest) / (curve.highest - curve.lowest) * myPlotRect.height();
}

qsizetype LvTrackProfilePlot::nearestIndex(double pixel)
{
    updateLayout();
    if (isEmpty()) {
        return -1;
    }
    const auto found = std::lower_bound(
        myShownPoints.cbegin(), myShownPoints.cend(), pixel,
        [this](qsizetype index, double limit) { return pixelOf(myStatistics.points().at(index)) < limit; });
    if (found == myShownPoints.cbegin()) {
        return *found;
    }
    if (found == myShownPoints.cend()) {
        return myShownPoints.last();
    }
    const double after = pixelOf(myStatistics.points().at(*found)) - pixel;
    const double before = pixel - pixelOf(myStatistics.points().at(*(found - 1)));
    return before <= after ? *(found - 1) : *found;
}

QColor LvTrackProfilePlot::elevationColor() const
{
    const bool isDark = palette().color(QPalette::Base).lightness() < darkLightness;
    return QColor::fromRgb(isDark ? elevationOnDark : elevationOnLight);
}

QColor LvTrackProfilePlot::speedColor() const
{
    const bool isDark = palette().color(QPalette::Base).lightness() < darkLightness;
    return QColor::fromRgb(isDark ? speedOnDark : speedOnLight);
}
