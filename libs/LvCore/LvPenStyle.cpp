#include "LvPenStyle.h"

#include <QDomDocument>
#include <QDomElement>
#include <QPen>
#include <QString>

namespace
{

constexpr QLatin1String tagName("penStyle");

} // namespace

LvPenStyle::LvPenStyle(int value)
    : myValue(value >= Qt::NoPen && value <= Qt::DashDotDotLine ? value : Qt::SolidLine)
{
}

LvPenStyle LvPenStyle::fromXml(const QDomElement& parent)
{
    bool isNumber = false;
    const int value = parent.firstChildElement(tagName).text().trimmed().toInt(&isNumber);
    return isNumber ? LvPenStyle(value) : LvPenStyle();
}

void LvPenStyle::modifyPen(QPen& pen) const
{
    pen.setStyle(static_cast<Qt::PenStyle>(myValue));
}

void LvPenStyle::toXml(QDomElement& parent) const
{
    QDomDocument document = parent.ownerDocument();
    QDomElement element = document.createElement(tagName);
    element.appendChild(document.createTextNode(QString::number(myValue)));
    parent.appendChild(element);
}
