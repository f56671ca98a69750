#include "LvIconRegistry.h"

#include "LvLineIconEngine.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPainterPath>

namespace
{

void drawDot(QPainter& painter, const QPointF& center, qreal radius)
{
    painter.save();
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(center, radius, radius);
    painter.restore();
}

void drawPencil(QPainter& painter, const LvLineIconGrid& grid)
{
    painter.drawPolygon(QPolygonF({grid.at(2.0, 14.0), grid.at(3.0, 10.0), grid.at(10.5, 2.5),
                                   grid.at(13.5, 5.5), grid.at(6.0, 13.0)}));
    painter.drawLine(grid.at(8.5, 4.5), grid.at(11.5, 7.5));
}

void drawBin(QPainter& painter, const LvLineIconGrid& grid)
{
    painter.drawLine(grid.snapped(2.0, 4.0), grid.snapped(14.0, 4.0));
    painter.drawPolyline(QPolygonF(
        {grid.snapped(6.0, 4.0), grid.snapped(6.0, 2.0), grid.snapped(10.0, 2.0), grid.snapped(10.0, 4.0)}));
    painter.drawPolyline(QPolygonF({grid.snapped(3.0, 4.0), grid.snapped(3.0, 14.0), grid.snapped(13.0, 14.0),
                                    grid.snapped(13.0, 4.0)}));
    painter.drawLine(grid.snapped(6.3, 7.0), grid.snapped(6.3, 11.0));
    painter.drawLine(grid.snapped(9.7, 7.0), grid.snapped(9.7, 11.0));
}

void drawRouteInFrame(QPainter& painter, const LvLineIconGrid& grid)
{
    for (const qreal x : {2.0, 14.0}) {
        for (const qreal y : {2.0, 14.0}) {
            const qreal inwardX = x < 8.0 ? x + 3.0 : x - 3.0;
            const qreal inwardY = y < 8.0 ? y + 3.0 : y - 3.0;
            painter.drawPolyline(
                QPolygonF({grid.snapped(inwardX, y), grid.snapped(x, y), grid.snapped(x, inwardY)}));
        }
    }
    QPainterPath route(grid.at(5.0, 11.0));
    route.cubicTo(grid.at(6.5, 4.0), grid.at(9.5, 12.0), grid.at(11.0, 5.0));
    painter.drawPath(route);
}

void drawRouteWithPlus(QPainter& painter, const LvLineIconGrid& grid)
{
    QPainterPath route(grid.at(3.0, 3.5));
    route.cubicTo(grid.at(10.0, 3.5), grid.at(8.0, 7.5), grid.at(5.5, 8.5));
    route.cubicTo(grid.at(1.0, 10.5), grid.at(4.0, 13.0), grid.at(13.0, 13.0));
    painter.drawPath(route);
    drawDot(painter, grid.at(3.0, 3.5), grid.length(1.7));
    drawDot(painter, grid.at(13.0, 13.0), grid.length(1.7));
    painter.drawLine(grid.snapped(9.5, 5.0), grid.snapped(14.5, 5.0));
    painter.drawLine(grid.snapped(12.0, 2.5), grid.snapped(12.0, 7.5));
}

void drawQuestionMark(QPainter& painter, const LvLineIconGrid& grid)
{
    painter.drawPolygon(QPolygonF({grid.snapped(2.0, 2.0), grid.snapped(14.0, 2.0), grid.snapped(14.0, 14.0),
                                   grid.snapped(2.0, 14.0)}));
    QPainterPath hook(grid.at(5.7, 6.3));
    hook.cubicTo(grid.at(5.7, 3.5), grid.at(10.3, 3.5), grid.at(10.3, 6.3));
    hook.cubicTo(grid.at(10.3, 8.2), grid.at(8.0, 7.7), grid.at(8.0, 9.6));
    painter.drawPath(hook);
    drawDot(painter, grid.at(8.0, 12.0), grid.length(0.9));
}

QIcon lineIcon(LvLineIconEngine::Drawing drawing)
{
    return QIcon(new LvLineIconEngine(drawing)); // the icon owns its engine
}

} // namespace

LvIconRegistry::LvIconRegistry()
    : myBuiltInIcons({{QStringLiteral("ico_editListItem"), lineIcon(drawPencil)},
                      {QStringLiteral("ico_deleteListItem"), lineIcon(drawBin)},
                      {QStringLiteral("ico_fit_map"), lineIcon(drawRouteInFrame)},
                      {QStringLiteral("ico_add_route"), lineIcon(drawRouteWithPlus)}})
    , myUnknownIcon(lineIcon(drawQuestionMark))
{
}

LvIconRegistry::~LvIconRegistry() = default;

QStringList LvIconRegistry::names() const
{
    QStringList names = myBuiltInIcons.keys();
    for (auto registered = myRegisteredIcons.keyBegin(); registered != myRegisteredIcons.keyEnd();
         ++registered) {
        if (!names.contains(*registered)) {
            names.append(*registered);
        }
    }
    names.sort();
    return names;
}

bool LvIconRegistry::contains(const QString& name) const
{
    return myRegisteredIcons.contains(name) || myBuiltInIcons.contains(name);
}

QIcon LvIconRegistry::icon(const QString& name) const
{
    const auto registered = myRegisteredIcons.constFind(name);
    return registered != myRegisteredIcons.constEnd() ? *registered
                                                      : myBuiltInIcons.value(name, myUnknownIcon);
}

void LvIconRegistry::registerIcon(const QString& name, const QIcon& icon)
{
    if (icon.isNull()) {
        myRegisteredIcons.remove(name);
    } else {
        myRegisteredIcons.insert(name, icon);
    }
}

void LvIconRegistry::setIcon(QAbstractButton* button, const QString& name) const
{
    if (button != nullptr) {
        button->setIcon(icon(name));
    }
}
