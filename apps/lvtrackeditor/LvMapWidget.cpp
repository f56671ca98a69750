#include "LvMapWidget.h"

#include "LvMapBackgroundWorker.h"
#include "LvMapPicture.h"
#include "LvMapText.h"
#include "LvTrackBounds.h"
#include "LvTrackLayerWorker.h"

#include <QApplication>
#include <QFontInfo>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPinchGesture>
#include <QStyleOptionFocusRect>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace
{

// All lengths in logical pixels.
constexpr double tileSize = 256.0;
constexpr int layerMargin = 128; // drawn beyond each edge, so that nothing is missing while panning
constexpr double usedUpMargin = 64.0; // what is left of it when it is time for the next drawing
constexpr double maximumWorldsOnTop = 2.0; // of what LvMapView can show
constexpr double keyPanPixels = 80.0;

constexpr double keyZoomLevels = 1.0;
constexpr double wheelZoomLevels = 1.0;
constexpr double wheelNotch = 120.0; // eighths of a degree
constexpr double largestStep = 4.0; // levels; no gesture or wheel means more at once

constexpr int highlightFactor = 100; // a little darker and two and a half times as wide
constexpr int opaque = 255;
constexpr double legendPointSize = 24.0; // of the library's texts at factor 1

constexpr double markRadius = 7.0;
constexpr double markArm = 14.0;
constexpr QColor markColor(20, 20, 20);
constexpr QColor markSeamColor(255, 255, 255, 220);

double wrapped(double x)
{
    return x - std::floor(x);
}

/// The way from one normalised x to another, the short way round: -0.5 ... 0.5.
double shortWay(double from, double to)
{
    const double way = to - from;
    return way - std::round(way);
}

bool isZoomEqual(double a, double b)
{
    return std::abs(a - b) < 1e-9;
}

} // namespace

bool LvMapWidget::Layer::isUpToDate() const
{
    return requested.number == shown.request.number && (requested.number == 0 || shown.isComplete);
}

LvMapWidget::LvMapWidget(QWidget* parent)
    : QWidget(parent)
    , myMapWorker(new LvMapBackgroundWorker) // goes with its thread
    , myMapSource(QStringLiteral("none"))
{
    myMap.worker = myMapWorker;
    myTracks.worker = new LvTrackLayerWorker; // goes with its thread
    startThreads();

    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    grabGesture(Qt::PinchGesture);
    translateTexts();
    setMapSource(QStringLiteral("builtin"));
    fitTo({});
}

LvMapWidget::~LvMapWidget()
{
    for (const Layer* layer : {&myMap, &myTracks}) {
        layer->worker->disconnect(this);
        layer->worker->cancel();
    }
    for (QThread* thread : {&myMapThread, &myTrackThread}) {
        thread->quit();
    }
    for (QThread* thread : {&myMapThread, &myTrackThread}) {
        thread->wait();
    }
}

void LvMapWidget::setSelection(const LvGPXTrackSelection& shown)
{
    // The comparison knows the lines; halos, areas, markers and smoothing it leaves to equality.
    const LvGPXTrackSelectionComparisonResult changes = shown.compare(mySelection);
    const bool looksDifferent = changes.trackCountChanges() || changes.changingAspects()
        || shown.effectiveCroppingOpacity() != mySelection.effectiveCroppingOpacity()
        || shown.wouldChangeHaloToVisibleAgainst(mySelection) || shown != mySelection;
    mySelection = shown;
    if (looksDifferent) {
        requestTracks();
    }
}

void LvMapWidget::setMapSource(const QString& name)
{
    myOpeningSources += 1;
    myWasRendering = true;
    myMapWorker->requestSource(name);
}

void LvMapWidget::setAttribution(const QString& attribution)
{
    myAttribution = LvMapText::plainAttribution(attribution);
    update();
}

QString LvMapWidget::attribution() const
{
    return myAttribution.isEmpty() ? mySourceAttribution : myAttribution;
}

LvMapView LvMapWidget::view() const
{
    return LvMapView::aroundCenter(center(), myZoom, size().expandedTo(QSize(1, 1)));
}

LvGeoPosition LvMapWidget::center() const
{
    return {LvMapProjection::normalizedToLatitude(myCenter.y()),
            LvMapProjection::normalizedToLongitude(myCenter.x())};
}

double LvMapWidget::minimumZoom() const
{
    const double smallestWorld = (height() + 2.0 * layerMargin) / maximumWorldsOnTop;
    return std::log2(std::max(1.0, smallestWorld / tileSize));
}

void LvMapWidget::setCenterAndZoom(const LvGeoPosition& center, double zoom)
{
    if (!center.isValid() || !std::isfinite(zoom)) {
        return;
    }
    myFit.reset();
    setPlace({LvMapProjection::longitudeToNormalized(center.longitude().decimalDegrees()),
              LvMapView::normalizedY(center.latitude().decimalDegrees())},
             zoom);
}

void LvMapWidget::fitToTracks()
{
    fitTo(LvTrackBounds::ofSelection(mySelection));
}

void LvMapWidget::fitTo(const LvGeoPositionRect& area)
{
    myFit = area;
    applyFit();
    if (isVisible()) {
        myFit.reset();
    }
}

LvGeoPosition LvMapWidget::positionAt(const QPointF& point) const
{
    const QPointF normalized = normalizedAt(point);
    if (normalized.y() < 0.0 || normalized.y() > 1.0) {
        return {};
    }
    return {LvMapProjection::normalizedToLatitude(normalized.y()),
            LvMapProjection::normalizedToLongitude(wrapped(normalized.x()))};
}

QPointF LvMapWidget::pointOf(const LvGeoPosition& position) const
{
    return pointOfNormalized({LvMapProjection::longitudeToNormalized(position.longitude().decimalDegrees()),
                              LvMapView::normalizedY(position.latitude().decimalDegrees())});
}

void LvMapWidget::setMarkedPosition(const LvGeoPosition& position)
{
    myMarkedPosition = position;
    update();
}

void LvMapWidget::setPickingPosition(bool isPicking)
{
    if (isPicking == myIsPicking) {
        return;
    }
    myIsPicking = isPicking;
    updateCursor();
    if (!isPicking) {
        Q_EMIT pickingEnded();
    }
}

void LvMapWidget::setHighlightedRow(int row)
{
    if (row != myHighlightedRow) {
        myHighlightedRow = row;
        requestTracks();
    }
}

bool LvMapWidget::isRendering() const
{
    return myOpeningSources > 0 || !myMap.isUpToDate() || !myTracks.isUpToDate();
}

QSize LvMapWidget::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 35};
}

QSize LvMapWidget::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 30, fontMetrics().height() * 10};
}

void LvMapWidget::zoomIn()
{
    zoomAt(QRectF(rect()).center(), keyZoomLevels);
}

void LvMapWidget::zoomOut()
{
    zoomAt(QRectF(rect()).center(), -keyZoomLevels);
}

bool LvMapWidget::event(QEvent* event)
{
    if (event->type() == QEvent::Gesture) {
        gestureEvent(static_cast<QGestureEvent*>(event));
        return true;
    }
    if (event->type() == QEvent::NativeGesture) {
        nativeGestureEvent(static_cast<QNativeGestureEvent*>(event));
        return true;
    }
    return QWidget::event(event);
}

void LvMapWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    switch (event->type()) {
    case QEvent::LanguageChange:
        translateTexts();
        break;
    case QEvent::PaletteChange:
        if (mySelection.effectiveCroppingOpacity() < opaque) {
            requestTracks();
        }
        update();
        break;
    case QEvent::FontChange:
        update();
        break;
    default:
        break;
    }
}

void LvMapWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        panBy({keyPanPixels, 0.0});
        break;
    case Qt::Key_Right:
        panBy({-keyPanPixels, 0.0});
        break;
    case Qt::Key_Up:
        panBy({0.0, keyPanPixels});
        break;
    case Qt::Key_Down:
        panBy({0.0, -keyPanPixels});
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift on many keyboards
        zoomIn();
        break;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        zoomOut();
        break;
    case Qt::Key_Home:
        fitToTracks();
        break;
    case Qt::Key_Escape:
        if (myIsPicking) {
            setPickingPosition(false);
            break;
        }
        QWidget::keyPressEvent(event);
        break;
    default:
        QWidget::keyPressEvent(event);
        break;
    }
}

void LvMapWidget::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    Q_EMIT hoverLeft();
}

void LvMapWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !myIsPicking) {
        const bool isOut = event->modifiers().testFlag(Qt::ShiftModifier);
        zoomAt(event->position(), isOut ? -keyZoomLevels : keyZoomLevels);
    }
}

void LvMapWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF point = event->position();
    if (myPressPoint) {
        const bool isFar = (point - *myPressPoint).manhattanLength() >= QApplication::startDragDistance();
        if (isFar && !myIsDragging) {
            myIsDragging = true;
            updateCursor();
        }
        if (myIsDragging) {
            panBy(point - myLastDragPoint);
            myLastDragPoint = point;
        }
    }
    const LvGeoPosition position = positionAt(point);
    if (position.isValid()) {
        Q_EMIT positionHovered(position);
    } else {
        Q_EMIT hoverLeft();
    }
}

void LvMapWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    myPressPoint = event->position();
    myLastDragPoint = event->position();
}

void LvMapWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const bool isClick = myPressPoint && !myIsDragging;
    myPressPoint.reset();
    myIsDragging = false;
    updateCursor();
    const LvGeoPosition position = positionAt(event->position());
    if (isClick && myIsPicking && position.isValid()) {
        Q_EMIT positionPicked(position);
        setPickingPosition(false);
    }
}

void LvMapWidget::paintEvent(QPaintEvent* /*event*/)
{
    if (myMap.requested.pixelRatio != devicePixelRatioF()) {
        requestForView(); // on another screen now
    }
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    paintLayer(painter, myMap.shown);
    paintVeilAround(painter, targetOf(myTracks.shown));
    paintLayer(painter, myTracks.shown);
    painter.setRenderHint(QPainter::Antialiasing);
    paintLegend(painter);
    paintMark(painter);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void LvMapWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (myFit) {
        applyFit();
    }
    setPlace(myCenter, myZoom);
    requestForView();
    Q_EMIT viewChanged();
}

void LvMapWidget::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (myFit) {
        applyFit();
        myFit.reset();
    }
    requestForView();
}

void LvMapWidget::wheelEvent(QWheelEvent* event)
{
    zoomAt(event->position(), event->angleDelta().y() / wheelNotch * wheelZoomLevels);
    event->accept();
}

void LvMapWidget::translateTexts()
{
    setAccessibleName(tr("Karte"));
    setAccessibleDescription(tr("Karte mit den Spuren. Die Pfeiltasten verschieben sie, Plus und Minus "
                                "vergrößern und verkleinern sie, Pos1 zeigt alle Spuren."));
}

void LvMapWidget::startThreads()
{
    connect(myMapWorker, &LvMapLayerWorker::drawn, this, [this](const LvMapLayer& drawn) {
        accept(myMap, drawn);
        Q_EMIT mapDrawn();
        checkFinished();
    });
    connect(myTracks.worker, &LvMapLayerWorker::drawn, this, [this](const LvMapLayer& drawn) {
        accept(myTracks, drawn);
        Q_EMIT tracksDrawn();
        checkFinished();
    });
    connect(myMapWorker, &LvMapBackgroundWorker::sourceChanged, this,
            [this](const QString& name, const QString& attribution) {
                myOpeningSources -= 1;
                myMapSource = name;
                mySourceAttribution = attribution;
                request(myMap, LvMapLayerWorker::Urgency::Superseding);
                Q_EMIT mapSourceChanged(name);
                checkFinished();
            });
    connect(myMapWorker, &LvMapBackgroundWorker::sourceFailed, this,
            [this](const QString& /*name*/, const QString& message) {
                myOpeningSources -= 1;
                Q_EMIT mapSourceFailed(message);
                checkFinished();
            });
    connect(myMapWorker, &LvMapBackgroundWorker::messageRaised, this, &LvMapWidget::tileMessage);

    const auto start = [](QThread& thread, LvMapLayerWorker* worker, const QString& name) {
        thread.setObjectName(name);
        worker->moveToThread(&thread);
        connect(&thread, &QThread::finished, worker, &QObject::deleteLater);
        thread.start();
    };
    start(myMapThread, myMapWorker, QStringLiteral("map layer"));
    start(myTrackThread, myTracks.worker, QStringLiteral("track layer"));
}

double LvMapWidget::worldSize() const
{
    return tileSize * std::exp2(myZoom);
}

QPointF LvMapWidget::normalizedAt(const QPointF& point) const
{
    return myCenter + ((point - QPointF(width() / 2.0, height() / 2.0)) / worldSize());
}

QPointF LvMapWidget::pointOfNormalized(const QPointF& normalized) const
{
    const QPointF way(shortWay(myCenter.x(), normalized.x()), normalized.y() - myCenter.y());
    return QPointF(width() / 2.0, height() / 2.0) + (way * worldSize());
}

void LvMapWidget::setPlace(const QPointF& center, double zoom)
{
    const double possibleZoom = std::clamp(zoom, minimumZoom(), maximumZoom);
    const double halfHeight = std::min(0.5, height() / 2.0 / (tileSize * std::exp2(possibleZoom)));
    const QPointF possibleCenter(wrapped(center.x()), std::clamp(center.y(), halfHeight, 1.0 - halfHeight));
    if (possibleZoom == myZoom && possibleCenter.x() == myCenter.x() && possibleCenter.y() == myCenter.y()) {
        return;
    }
    myZoom = possibleZoom;
    myCenter = possibleCenter;
    update();
    requestForView();
    Q_EMIT viewChanged();
}

void LvMapWidget::applyFit()
{
    const LvMapView fitted = LvMapView::fittedTo(*myFit, size().expandedTo(QSize(1, 1)));
    setPlace(fitted.normalizedRect().center(), fitted.zoom());
}

void LvMapWidget::zoomAt(const QPointF& point, double levels)
{
    if (!std::isfinite(levels)) {
        return;
    }
    myFit.reset();
    const double zoom =
        std::clamp(myZoom + std::clamp(levels, -largestStep, largestStep), minimumZoom(), maximumZoom);
    const QPointF fixed = normalizedAt(point);
    const QPointF fromMiddle = point - QPointF(width() / 2.0, height() / 2.0);
    setPlace(fixed - (fromMiddle / (tileSize * std::exp2(zoom))), zoom);
}

void LvMapWidget::panBy(const QPointF& pixels)
{
    myFit.reset();
    setPlace(myCenter - (pixels / worldSize()), myZoom);
}

void LvMapWidget::gestureEvent(QGestureEvent* event)
{
    auto* pinch = static_cast<QPinchGesture*>(event->gesture(Qt::PinchGesture));
    if (pinch == nullptr) {
        return;
    }
    event->accept(pinch);
    // The fingers are no mouse button.
    myPressPoint.reset();
    myIsDragging = false;
    const QPinchGesture::ChangeFlags changes = pinch->changeFlags();
    if (changes.testFlag(QPinchGesture::CenterPointChanged)) {
        panBy(pinch->centerPoint() - pinch->lastCenterPoint());
    }
    if (changes.testFlag(QPinchGesture::ScaleFactorChanged)) {
        zoomAt(mapFromGlobal(pinch->centerPoint()), std::log2(pinch->scaleFactor()));
    }
}

void LvMapWidget::nativeGestureEvent(QNativeGestureEvent* event)
{
    if (event->gestureType() == Qt::ZoomNativeGesture) {
        zoomAt(event->position(), std::log2(1.0 + event->value()));
    }
}

void LvMapWidget::updateCursor()
{
    if (myIsDragging) {
        setCursor(Qt::ClosedHandCursor);
    } else if (myIsPicking) {
        setCursor(Qt::CrossCursor);
    } else {
        unsetCursor();
    }
}

QSize LvMapWidget::layerSize() const
{
    return ((QSizeF(size()) + QSizeF(2.0 * layerMargin, 2.0 * layerMargin)) * devicePixelRatioF()).toSize();
}

void LvMapWidget::requestForView()
{
    for (Layer* layer : {&myMap, &myTracks}) {
        const LvMapLayerRequest& last = layer->requested;
        const bool isOfThisScale = isZoomEqual(last.zoom, myZoom) && last.size == layerSize()
            && last.pixelRatio == devicePixelRatioF();
        if (last.number == 0 || !isOfThisScale) {
            request(*layer, LvMapLayerWorker::Urgency::Superseding);
            continue;
        }
        const QPointF moved =
            QPointF(shortWay(last.center.x(), myCenter.x()), myCenter.y() - last.center.y()) * worldSize();
        if (std::max(std::abs(moved.x()), std::abs(moved.y())) > layerMargin - usedUpMargin) {
            // What is being drawn is nearer than what is shown. Giving it up would leave nothing to be shown
            // while somebody keeps on panning.
            request(*layer, LvMapLayerWorker::Urgency::Patient);
        }
    }
}

void LvMapWidget::request(Layer& layer, LvMapLayerWorker::Urgency urgency)
{
    if (!isVisible()) {
        return; // showing it will ask
    }
    LvMapLayerRequest wanted;
    wanted.number = ++myLastNumber;
    wanted.center = myCenter;
    wanted.zoom = myZoom;
    wanted.size = layerSize();
    wanted.pixelRatio = devicePixelRatioF();
    if (&layer == &myTracks) {
        wanted.selection = drawnSelection();
        wanted.paper = palette().color(QPalette::Base);
    }
    layer.requested = wanted;
    myWasRendering = true;
    layer.worker->request(wanted, urgency);
}

void LvMapWidget::requestTracks()
{
    request(myTracks, LvMapLayerWorker::Urgency::Superseding);
}

LvGPXTrackSelection LvMapWidget::drawnSelection() const
{
    LvGPXTrackSelection drawn = mySelection;
    drawn.overrideColorOfTrack(myHighlightedRow, highlightFactor);
    return drawn;
}

void LvMapWidget::accept(Layer& layer, const LvMapLayer& drawn)
{
    layer.shown = drawn;
    update();
}

void LvMapWidget::checkFinished()
{
    if (myWasRendering && !isRendering()) {
        myWasRendering = false;
        Q_EMIT renderingFinished();
    }
}

QRectF LvMapWidget::targetOf(const LvMapLayer& layer) const
{
    if (layer.image.isNull()) {
        return {};
    }
    const LvMapLayerRequest& place = layer.request;
    const bool isOfThisScale = isZoomEqual(place.zoom, myZoom);
    const double scale = isOfThisScale ? 1.0 : std::exp2(myZoom - place.zoom);
    QRectF target(QPointF(0.0, 0.0), QSizeF(layer.image.size()) / place.pixelRatio * scale);
    target.moveCenter(pointOfNormalized(place.center));
    if (isOfThisScale) {
        // Pixel on pixel, or everything would look blurred.
        const double ratio = devicePixelRatioF();
        target.moveTo(std::round(target.x() * ratio) / ratio, std::round(target.y() * ratio) / ratio);
    }
    return target;
}

void LvMapWidget::paintLayer(QPainter& painter, const LvMapLayer& layer) const
{
    const QRectF target = targetOf(layer);
    // Only what can be seen: scaled up by many levels the target is enormous.
    const QRectF visible = target.intersected(QRectF(rect()));
    if (visible.isEmpty()) {
        return;
    }
    const double pixels = layer.image.width() / target.width();
    const QRectF source((visible.topLeft() - target.topLeft()) * pixels, visible.size() * pixels);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isZoomEqual(layer.request.zoom, myZoom));
    painter.drawImage(visible, layer.image, source);
}

void LvMapWidget::paintVeilAround(QPainter& painter, const QRectF& covered) const
{
    const int opacity = mySelection.effectiveCroppingOpacity();
    if (opacity >= opaque || covered.contains(QRectF(rect()))) {
        return;
    }
    QColor color = palette().color(QPalette::Base);
    color.setAlpha(opaque - std::max(0, opacity));
    QPainterPath path;
    path.addRect(QRectF(rect()));
    path.addRect(covered);
    painter.fillPath(path, color); // odd-even: without the covered part
}

void LvMapWidget::paintMark(QPainter& painter) const
{
    if (!myMarkedPosition.isValid()) {
        return;
    }
    QPainterPath path;
    path.addEllipse(QPointF(0.0, 0.0), markRadius, markRadius);
    for (const QPointF& arm : {QPointF(1, 0), QPointF(0, 1), QPointF(-1, 0), QPointF(0, -1)}) {
        path.moveTo(arm * markRadius / 2.0);
        path.lineTo(arm * markArm);
    }
    const QPointF nearest = pointOf(myMarkedPosition);
    const int copies = static_cast<int>(std::ceil(width() / 2.0 / worldSize())) + 1;
    for (int copy = -copies; copy <= copies; ++copy) {
        const QPointF point = nearest + QPointF(copy * worldSize(), 0.0);
        if (!QRectF(rect()).adjusted(-markArm, -markArm, markArm, markArm).contains(point)) {
            continue;
        }
        painter.save();
        painter.translate(point);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(markSeamColor, 4.5, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(path);
        painter.setPen(QPen(markColor, 1.8, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(path);
        painter.restore();
    }
}

void LvMapWidget::paintLegend(QPainter& painter) const
{
    // As large as the texts of the program.
    const double factor = QFontInfo(font()).pointSizeF() / legendPointSize;
    if (!(factor > 0.0)) {
        return;
    }
    LvMapPicture legend({}, view(), nullptr, factor);
    legend.setAttribution(attribution());
    legend.drawLegend(painter);
}
