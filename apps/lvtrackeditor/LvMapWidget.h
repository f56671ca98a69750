#pragma once

#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvMapLayer.h"
#include "LvMapLayerWorker.h"
#include "LvMapView.h"

#include <QPointF>
#include <QString>
#include <QThread>
#include <QWidget>

#include <optional>

class LvMapBackgroundWorker;
class LvTrackLayerWorker;
class QGestureEvent;
class QNativeGestureEvent;

/**
 * A map with tracks on it that people move and zoom.
 *
 * It is drawn in two layers, map and tracks, by two threads of its own; the widget shows what they drew last,
 * moved and scaled to the present view, until they have caught up. So it never waits for a drawing.
 */
class LvMapWidget : public QWidget
{
    Q_OBJECT

public:
    static constexpr double maximumZoom = 21.0;

    explicit LvMapWidget(QWidget* parent = nullptr);
    /// Waits for the track or map that is being drawn at this moment.
    ~LvMapWidget() override;
    Q_DISABLE_COPY_MOVE(LvMapWidget)

    /// The tracks that are shown. They are drawn anew only when the change can be seen.
    void setSelection(const LvGPXTrackSelection& shown);

    [[nodiscard]] LvGPXTrackSelection selection() const { return mySelection; }

    /// Shows another map below the tracks: "builtin", "none", a folder of map tiles, an MBTiles file, or the
    /// address of a tile server as LvTileUrlTemplate knows it. It is opened later, in another thread: then
    /// comes either mapSourceChanged(), or mapSourceFailed() and the map stays as it is.
    void setMapSource(const QString& name);

    /// The map that is shown; "none" until the first one is open.
    [[nodiscard]] QString mapSource() const { return myMapSource; }

    /// The notice of the map's owner, plain text or HTML; empty for the one that comes with the map.
    void setAttribution(const QString& attribution);

    /// The notice that is shown.
    [[nodiscard]] QString attribution() const;

    /// What the widget shows, in logical pixels.
    [[nodiscard]] LvMapView view() const;
    [[nodiscard]] LvGeoPosition center() const;

    /// Level of web maps: the world is 256 · 2^zoom logical pixels wide. Mostly with a fraction.
    [[nodiscard]] double zoom() const { return myZoom; }

    /// The smallest zoom: two worlds on top of each other fill the height, and a world is never smaller than
    /// 256 logical pixels.
    [[nodiscard]] double minimumZoom() const;

    /// Moves the view. The zoom is limited to what is possible, and the place to the world, so that the map
    /// fills the height where it can. Does nothing when the position is invalid.
    void setCenterAndZoom(const LvGeoPosition& center, double zoom);

    /// Shows all tracks; the whole world when there are none.
    void fitToTracks();

    /// Shows the area with some air around it; the whole world when it is invalid. Before the widget has been
    /// shown, its size is not known: then the area is fitted again when it is.
    void fitTo(const LvGeoPositionRect& area);

    /// The place under a point of the widget; longitudes within ±180°. An invalid position above the upper
    /// and below the lower edge of the world.
    [[nodiscard]] LvGeoPosition positionAt(const QPointF& point) const;

    /// Where a place is shown, in the copy of the world that is nearest to the middle.
    [[nodiscard]] QPointF pointOf(const LvGeoPosition& position) const;

    /// Marks a place with a cross-hair; an invalid position for none.
    void setMarkedPosition(const LvGeoPosition& position);

    [[nodiscard]] LvGeoPosition markedPosition() const { return myMarkedPosition; }

    /// Lets people choose a place: the next click sends positionPicked() and ends it, Esc ends it as well.
    void setPickingPosition(bool isPicking);

    [[nodiscard]] bool isPickingPosition() const { return myIsPicking; }

    /// Shows one track of the selection stronger than the others; -1 for none.
    void setHighlightedRow(int row);

    [[nodiscard]] int highlightedRow() const { return myHighlightedRow; }

    /// Whether something better than what is shown is still on its way: a drawing, a map or tiles of it.
    [[nodiscard]] bool isRendering() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// By one level, around the middle.
    void zoomIn();
    void zoomOut();

Q_SIGNALS:
    /// The part of the world that is shown has changed, or the size of the widget.
    void viewChanged();
    /// The mouse is over a place of the map.
    void positionHovered(const LvGeoPosition& position);
    /// The mouse is no longer over the map.
    void hoverLeft();
    void positionPicked(const LvGeoPosition& position);
    /// After positionPicked(), or when nothing was picked.
    void pickingEnded();
    void mapSourceChanged(const QString& name);
    /// @param message why the map cannot be shown, a whole sentence
    void mapSourceFailed(const QString& message);
    /// Something about the tile server that people should know, a whole sentence.
    void tileMessage(const QString& message);
    /// A newly drawn map is shown.
    void mapDrawn();
    /// Newly drawn tracks are shown.
    void tracksDrawn();
    /// Everything is drawn: isRendering() has become false.
    void renderingFinished();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    /// What is wanted of one layer, and what has come.
    struct Layer {
        LvMapLayerWorker* worker = nullptr; // belongs to its thread
        LvMapLayerRequest requested;
        LvMapLayer shown;

        [[nodiscard]] bool isUpToDate() const;
    };

    void translateTexts();
    void startThreads();

    // The view.
    [[nodiscard]] double worldSize() const;
    [[nodiscard]] QPointF normalizedAt(const QPointF& point) const;
    [[nodiscard]] QPointF pointOfNormalized(const QPointF& normalized) const;
    void setPlace(const QPointF& center, double zoom);
    void applyFit();
    void zoomAt(const QPointF& point, double levels);
    void panBy(const QPointF& pixels);
    void gestureEvent(QGestureEvent* event);
    void nativeGestureEvent(QNativeGestureEvent* event);
    void updateCursor();

    // The layers.
    [[nodiscard]] QSize layerSize() const;
    void requestForView();
    void request(Layer& layer, LvMapLayerWorker::Urgency urgency);
    void requestTracks();
    [[nodiscard]] LvGPXTrackSelection drawnSelection() const;
    void accept(Layer& layer, const LvMapLayer& drawn);
    void checkFinished();

    // Painting.
    [[nodiscard]] QRectF targetOf(const LvMapLayer& layer) const;
    void paintLayer(QPainter& painter, const LvMapLayer& layer) const;
    void paintVeilAround(QPainter& painter, const QRectF& covered) const;
    void paintMark(QPainter& painter) const;
    void paintLegend(QPainter& painter) const;

    QThread myMapThread;
    QThread myTrackThread;
    LvMapBackgroundWorker* myMapWorker;
    Layer myMap;
    Layer myTracks;
    quint64 myLastNumber = 0;
    int myOpeningSources = 0;
    bool myWasRendering = false;

    QPointF myCenter = QPointF(0.5, 0.5); // normalised, x in 0 ... 1
    double myZoom = 0.0;
    std::optional<LvGeoPositionRect> myFit; // to be repeated when the size is known

    LvGPXTrackSelection mySelection;
    int myHighlightedRow = -1;
    QString myMapSource;
    QString mySourceAttribution;
    QString myAttribution;
    LvGeoPosition myMarkedPosition;

    bool myIsPicking = false;
    bool myIsDragging = false;
    std::optional<QPointF> myPressPoint;
    QPointF myLastDragPoint;
};
