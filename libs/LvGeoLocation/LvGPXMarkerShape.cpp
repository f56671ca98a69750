#include "LvGPXMarkerShape.h"

#include "LvXMLBuilder.h"

#include <QDomElement>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>

namespace
{

constexpr QLatin1String tagName("markerShape");

constexpr double penAllowance = 0.4; // share of the pen width by which thinly outlined markers grow
constexpr int largestCosmeticPenWidth = 9; // up to here the thin outline is one pixel wide
constexpr int thinPenDivisor = 5;
constexpr double crossArmDivisor = 5;
constexpr double previewPenWidth = 5.0;
constexpr int iconSize = 20;
constexpr int iconMargin = 12;
constexpr double pi = 3.14159265358979323846;
constexpr int usualStarPoints = 25; // the star of twelve rays, closed

} // namespace

template class LvEnumWrapper<LvGPXMarkerShapeEnum>;

LvGPXMarkerShape::LvGPXMarkerShape() = default;

LvGPXMarkerShape::LvGPXMarkerShape(LvGPXMarkerShapeEnum value)
    : LvEnumWrapper(value)
{
}

LvGPXMarkerShape::LvGPXMarkerShape(int value)
    : LvEnumWrapper(static_cast<LvGPXMarkerShapeEnum>(value))
{
}

LvGPXMarkerShape::LvGPXMarkerShape(quint32 value)
    : LvEnumWrapper(static_cast<LvGPXMarkerShapeEnum>(value))
{
}

LvGPXMarkerShape::LvGPXMarkerShape(const QString& keys)
    : LvEnumWrapper(LvGPXMarkerShape().enumToStringTable()->decodeCSV(keys))
{
}

LvGPXMarkerShape::LvGPXMarkerShape(const LvGPXMarkerShape& other) = default;
LvGPXMarkerShape::LvGPXMarkerShape(LvGPXMarkerShape&& other) noexcept = default;
LvGPXMarkerShape& LvGPXMarkerShape::operator=(const LvGPXMarkerShape& other) = default;
LvGPXMarkerShape& LvGPXMarkerShape::operator=(LvGPXMarkerShape&& other) noexcept = default;
LvGPXMarkerShape::~LvGPXMarkerShape() = default;

const QList<LvGPXMarkerShape>& LvGPXMarkerShape::allPointShapes()
{
    static const QList<LvGPXMarkerShape> myShapes{
        LvGPXMarkerShapeEnum::disk,  LvGPXMarkerShapeEnum::circle, LvGPXMarkerShapeEnum::star6,
        LvGPXMarkerShapeEnum::star9, LvGPXMarkerShapeEnum::star12, LvGPXMarkerShapeEnum::x,
        LvGPXMarkerShapeEnum::block, LvGPXMarkerShapeEnum::rect,   LvGPXMarkerShapeEnum::rhombus,
    };
    return myShapes;
}

const QList<LvGPXMarkerShape>& LvGPXMarkerShape::allLineStringShapes()
{
    static const QList<LvGPXMarkerShape> myShapes{LvGPXMarkerShapeEnum::unknown, LvGPXMarkerShapeEnum::arrow};
    return myShapes;
}

LvGPXMarkerShape LvGPXMarkerShape::fromXml(const QDomElement& parent)
{
    const QDomElement element = parent.firstChildElement(tagName);
    if (element.isNull()) {
        return LvGPXMarkerShapeEnum::disk;
    }
    return LvGPXMarkerShape(element.text());
}

QRectF LvGPXMarkerShape::targetRect(const QPointF& center, double radiusX, double radiusY)
{
    return {center.x() - radiusX, center.y() - radiusY, 2 * radiusX, 2 * radiusY};
}

void LvGPXMarkerShape::draw(QPainter* painter, const QPointF& center, double radiusX, double radiusY) const
{
    // The exact width of the caller's pen, read before the thin one takes its place.
    const double growth = hasCallersPen() ? 0.0 : penAllowance * painter->pen().widthF();
    const QPointF radius(radiusX + growth, radiusY + growth);
    const QRectF rect(center - radius, center + radius);
    painter->save();
    configurePainter(painter);
    drawShape(painter, rect);
    painter->restore();
}

QImage LvGPXMarkerShape::createImage(const QSize& size, int margin, const QColor& lineColor,
                                     const QColor& fillColor) const
{
    QImage image(size.width() + margin, size.height() + margin, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) {
        return image;
    }
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const int offset = margin / 2; // whole pixels keep edges sharp
    painter.translate(offset, offset);
    painter.setPen(QPen(QBrush(lineColor, Qt::SolidPattern), previewPenWidth, Qt::SolidLine, Qt::SquareCap,
                        Qt::BevelJoin));
    painter.setBrush(fillColor);
    const double radiusX = std::round(size.width() / 2.0);
    const double radiusY = std::round(size.height() / 2.0);
    draw(&painter, QPointF(radiusX, radiusY), radiusX, radiusY);
    return image;
}

QIcon LvGPXMarkerShape::createIcon(const QColor& lineColor, const QColor& fillColor) const
{
    if (!isValid() || reducedTo(LvGPXMarkerShapeEnum::arrow) == LvGPXMarkerShapeEnum::arrow) {
        return {};
    }
    return {QPixmap::fromImage(createImage(QSize(iconSize, iconSize), iconMargin, lineColor, fillColor))};
}

void LvGPXMarkerShape::fillTable(LvEnumToStringTable<LvGPXMarkerShapeEnum>* table) const
{
    table->insert(QStringLiteral("unknown"), LvGPXMarkerShapeEnum::unknown);
    table->insert(QStringLiteral("disk"), LvGPXMarkerShapeEnum::disk);
    table->insert(QStringLiteral("rect"), LvGPXMarkerShapeEnum::rect);
    table->insert(QStringLiteral("circle"), LvGPXMarkerShapeEnum::circle);
    table->insert(QStringLiteral("x"), LvGPXMarkerShapeEnum::x);
    table->insert(QStringLiteral("block"), LvGPXMarkerShapeEnum::block);
    table->insert(QStringLiteral("rhombus"), LvGPXMarkerShapeEnum::rhombus);
    table->insert(QStringLiteral("star6"), LvGPXMarkerShapeEnum::star6);
    table->insert(QStringLiteral("star9"), LvGPXMarkerShapeEnum::star9);
    table->insert(QStringLiteral("star12"), LvGPXMarkerShapeEnum::star12);
    table->insert(QStringLiteral("arrow"), LvGPXMarkerShapeEnum::arrow);
}

void LvGPXMarkerShape::toXml(QDomElement& parent) const
{
    LvXMLBuilder::buildDomElement(parent, tagName, enumToStringTable()->encodeCSV(value()));
}

void LvGPXMarkerShape::configurePainter(QPainter* painter) const
{
    painter->setRenderHint(QPainter::Antialiasing, true);
    if (hasCallersPen()) {
        return;
    }
    QPen pen = painter->pen();
    if (pen.width() <= largestCosmeticPenWidth) {
        pen.setWidth(1);
        pen.setCosmetic(true);
    } else {
        pen.setWidth(pen.width() / thinPenDivisor);
    }
    painter->setPen(pen);
}

void LvGPXMarkerShape::drawShape(QPainter* painter, const QRectF& rect) const
{
    switch (value()) {
    case LvGPXMarkerShapeEnum::x:
        drawX(painter, rect);
        break;
    case LvGPXMarkerShapeEnum::block:
    case LvGPXMarkerShapeEnum::rect:
        drawBlock(painter, rect);
        break;
    case LvGPXMarkerShapeEnum::rhombus:
        drawRhombus(painter, rect);
        break;
    case LvGPXMarkerShapeEnum::star6:
        drawStar(painter, rect, 6, 0.5);
        break;
    case LvGPXMarkerShapeEnum::star9:
        drawStar(painter, rect, 9, 0.3);
        break;
    case LvGPXMarkerShapeEnum::star12:
        drawStar(painter, rect, 12, 0.7);
        break;
    default:
        painter->drawEllipse(rect);
        break;
    }
}

void LvGPXMarkerShape::drawX(QPainter* painter, const QRectF& rect)
{
    const double armX = rect.width() / crossArmDivisor;
    const double armY = rect.height() / crossArmDivisor;
    // The notches of the corners stand at whole distances, the inner corners at exact ones; both are
    // intended.
    const double notchX = std::trunc(armX);
    const double notchY = std::trunc(armY);
    const double left = rect.x();
    const double top = rect.y();
    const double right = left + rect.width();
    const double bottom = top + rect.height();
    const double centerX = left + rect.width() / 2;
    const double centerY = top + rect.height() / 2;

    QPainterPath path(QPointF(left + notchX, top));
    path.lineTo(left, top + notchY);
    path.lineTo(centerX - armX, centerY);
    path.lineTo(left, bottom - notchY);
    path.lineTo(left + notchX, bottom);
    path.lineTo(centerX, centerY + armY);
    path.lineTo(right - notchX, bottom);
    path.lineTo(right, bottom - notchY);
    path.lineTo(centerX + armX, centerY);
    path.lineTo(right, top + notchY);
    path.lineTo(right - notchX, top);
    path.lineTo(centerX, centerY - armY);
    path.lineTo(left + notchX, top);
    painter->fillPath(path, painter->brush());
    painter->drawPath(path);
}

void LvGPXMarkerShape::drawBlock(QPainter* painter, const QRectF& rect)
{
    painter->fillRect(rect, painter->brush());
    painter->drawRects(&rect, 1);
}

void LvGPXMarkerShape::drawRhombus(QPainter* painter, const QRectF& rect)
{
    const double centerX = rect.x() + rect.width() / 2;
    const double centerY = rect.y() + rect.height() / 2;
    QPainterPath path(QPointF(centerX, rect.y()));
    path.lineTo(rect.x(), centerY);
    path.lineTo(centerX, rect.y() + rect.height());
    path.lineTo(rect.x() + rect.width(), centerY);
    path.lineTo(centerX, rect.y());
    painter->fillPath(path, painter->brush());
    painter->drawPath(path);
}

void LvGPXMarkerShape::drawStar(QPainter* painter, const QRectF& rect, int rays, double innerFactor)
{
    const double centerX = rect.x() + rect.width() / 2;
    const double centerY = rect.y() + rect.height() / 2;
    const double radiusX = rect.width() / 2;
    const double radiusY = rect.height() / 2;
    const int corners = 2 * std::max(rays, 0);
    QVarLengthArray<QPointF, usualStarPoints> points;
    points.reserve(corners + 1);
    for (int i = 0; i < corners; ++i) {
        const double angle = i * pi / rays;
        const double factor = i % 2 == 0 ? innerFactor : 1.0;
        points.append(QPointF(centerX + std::sin(angle) * radiusX * factor,
                              centerY + std::cos(angle) * radiusY * factor));
    }
    points.append(points.isEmpty() ? QPointF(centerX, centerY + radiusY * innerFactor) : points.first());
    painter->drawPolygon(points.constData(), corners + 1, Qt::WindingFill);
}

bool LvGPXMarkerShape::hasCallersPen() const
{
    // Disk and block are the solid twins of circle and rect: their outline is part of the figure.
    return (static_cast<quint32>(value())
            & (static_cast<quint32>(LvGPXMarkerShapeEnum::disk)
               | static_cast<quint32>(LvGPXMarkerShapeEnum::block)))
        != 0;
}
