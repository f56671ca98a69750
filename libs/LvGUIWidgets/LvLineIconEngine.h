#pragma once

#include <QIconEngine>
#include <QPointF>

class QPainter;

/// The square on which a line icon is drawn: 16 x 16 units, whatever its size in pixels.
class LvLineIconGrid
{
public:
    /// The largest square in the middle of the rectangle.
    explicit LvLineIconGrid(const QRectF& target);

    /// A whole number of pixels, about one unit.
    [[nodiscard]] qreal penWidth() const { return myPenWidth; }

    [[nodiscard]] qreal length(qreal units) const { return units * myUnit; }

    /// The point for curves and slanted lines, which are smooth anyway.
    [[nodiscard]] QPointF at(qreal x, qreal y) const;

    /// The point for horizontal and vertical lines: their edges fall on the edges of pixels.
    [[nodiscard]] QPointF snapped(qreal x, qreal y) const;

private:
    QPointF myOrigin;
    qreal myUnit;
    qreal myPenWidth;
};

/// An icon of lines in the text colour of the application's palette at the time of drawing, so that it is
/// readable on light and dark. It is drawn anew for every size.
class LvLineIconEngine : public QIconEngine
{
public:
    /// Draws with the pen and brush that the painter has: lines in the text colour, no filling.
    using Drawing = void (*)(QPainter& painter, const LvLineIconGrid& grid);

    explicit LvLineIconEngine(Drawing drawing);
    LvLineIconEngine(LvLineIconEngine&&) = delete;
    LvLineIconEngine& operator=(const LvLineIconEngine&) = delete;
    LvLineIconEngine& operator=(LvLineIconEngine&&) = delete;
    ~LvLineIconEngine() override;

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QString key() const override;
    [[nodiscard]] QIconEngine* clone() const override;

protected:
    LvLineIconEngine(const LvLineIconEngine& other);

private:
    Drawing myDrawing;
};
