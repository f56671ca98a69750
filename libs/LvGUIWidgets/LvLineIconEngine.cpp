#include "LvLineIconEngine.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace
{

constexpr qreal unitsPerSide = 16.0;

QColor lineColor(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::ButtonText);
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return palette.color(QPalette::Active, QPalette::ButtonText);
}

} // namespace

LvLineIconGrid::LvLineIconGrid(const QRectF& target)
    : myUnit(std::min(target.width(), target.height()) / unitsPerSide)
    , myPenWidth(std::max(1.0, std::round(myUnit)))
{
    const qreal side = unitsPerSide * myUnit;
    myOrigin = QPointF(std::floor(target.left() + (target.width() - side) / 2.0),
                       std::floor(target.top() + (target.height() - side) / 2.0));
}

QPointF LvLineIconGrid::at(qreal x, qreal y) const
{
    return myOrigin + QPointF(x, y) * myUnit;
}

QPointF LvLineIconGrid::snapped(qreal x, qreal y) const
{
    // The middle of an odd line lies in the middle of a pixel, that of an even one between two.
    const qreal shift = std::fmod(myPenWidth, 2.0) / 2.0;
    return myOrigin + QPointF(std::round(x * myUnit - shift) + shift, std::round(y * myUnit - shift) + shift);
}

LvLineIconEngine::LvLineIconEngine(Drawing drawing)
    : myDrawing(drawing)
{
}

LvLineIconEngine::LvLineIconEngine(const LvLineIconEngine& other) = default;
LvLineIconEngine::~LvLineIconEngine() = default;

void LvLineIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/)
{
    const LvLineIconGrid grid(rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(lineColor(mode), grid.penWidth(), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    myDrawing(*painter, grid);
    painter->restore();
}

QPixmap LvLineIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    if (size.isEmpty()) {
        return {};
    }
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, result.rect(), mode, state);
    return result;
}

QString LvLineIconEngine::key() const
{
    return QStringLiteral("LvLineIconEngine");
}

QIconEngine* LvLineIconEngine::clone() const
{
    return new LvLineIconEngine(*this);
}
