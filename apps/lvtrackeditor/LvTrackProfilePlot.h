#pragma once

#include "LvAxisTicks.h"
#include "LvTrackStatistics.h"

#include <QColor>
#include <QList>
#include <QRectF>
#include <QWidget>

/**
 * Draws the elevation and the speed along a track, with a cursor that follows the mouse and the arrow keys.
 *
 * The points are gathered once per pixel column when the track, the axis or the size changes; after that
 * painting costs no more than the width of the widget, whatever the length of the track.
 */
class LvTrackProfilePlot : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvTrackProfilePlot)

public:
    /// What the horizontal axis shows.
    enum class Axis { Distance, Time };

    explicit LvTrackProfilePlot(QWidget* parent = nullptr);
    ~LvTrackProfilePlot() override;

    /// Shows another track; the cursor goes away.
    void setStatistics(const LvTrackStatistics& statistics);

    [[nodiscard]] const LvTrackStatistics& statistics() const { return myStatistics; }

    /// A track without times is shown over the distance all the same.
    void setAxis(Axis axis);

    /// The index of a point of the statistics; -1 without cursor.
    [[nodiscard]] qsizetype cursorIndex() const { return myCursorIndex; }

    /// Moves the cursor without a signal; -1 removes it.
    void setCursorIndex(qsizetype index);

    /// Where the plot shows the point, in pixels from the left of the widget; not a number for a point that
    /// is not shown.
    [[nodiscard]] double horizontalPixel(qsizetype index);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user has moved the cursor; -1 when it has gone away.
    void cursorMoved(qsizetype index);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// The values of a curve that fall into one pixel column.
    struct Column {
        double first = 0.0;
        double last = 0.0;
        double lowest = 0.0;
        double highest = 0.0;
        int firstRun = -1; // -1 while the column is empty
        int lastRun = -1;
    };

    struct Curve {
        QList<Column> columns;
        LvAxisTicks ticks; // no ticks: nothing to show
        double lowest = 0.0;
        double highest = 1.0;
    };

    void invalidateLayout();
    void updateLayout();
    void updatePlotRect();
    void gather(Curve& curve, double LvTrackProfilePoint::*value) const;
    void drawAxes(QPainter& painter) const;
    void drawCurve(QPainter& painter, const Curve& curve, const QColor& color, bool isFilled) const;
    /// Fills the area below the curve behind one column up to another one; below the column itself when they
    /// are the same.
    void fillColumns(QPainter& painter, const Curve& curve, qsizetype from, qsizetype to,
                     const QColor& color) const;
    void drawCursor(QPainter& painter) const;
    void drawMessage(QPainter& painter) const;
    void moveCursor(qsizetype index);
    void moveCursorBy(double pixels);

    [[nodiscard]] bool isTimeShown() const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] double horizontalValue(const LvTrackProfilePoint& point) const;
    [[nodiscard]] double pixelOf(const LvTrackProfilePoint& point) const;
    [[nodiscard]] double verticalPixel(const Curve& curve, double value) const;
    [[nodiscard]] qsizetype nearestIndex(double pixel);
    [[nodiscard]] QColor elevationColor() const;
    [[nodiscard]] QColor speedColor() const;

    LvTrackStatistics myStatistics;
    Axis myAxis = Axis::Distance;
    qsizetype myCursorIndex = -1;

    bool myIsLayoutValid = false;
    QRectF myPlotRect;
    QList<qsizetype> myShownPoints; // by their place on the horizontal axis
    double myHighestHorizontal = 0.0;
    LvAxisTicks myHorizontalTicks;
    Curve myElevation;
    Curve mySpeed;
};
