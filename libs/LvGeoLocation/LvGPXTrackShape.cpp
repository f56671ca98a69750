#include "LvGPXTrackShape.h"

#include "LvXMLBuilder.h"

#include <QCoreApplication>
#include <QDomElement>

namespace
{

constexpr QLatin1String tagName("trackShape");

// A flag of points and hops that has no name and is only carried along.
constexpr auto namelessOption = static_cast<LvGPXTrackDisplayOptionsEnum>(4);

} // namespace

template class LvEnumWrapper<LvGPXTrackShapeEnum>;

LvGPXTrackShape::LvGPXTrackShape() = default;

LvGPXTrackShape::LvGPXTrackShape(LvGPXTrackShapeEnum value)
    : LvEnumWrapper(value)
{
}

LvGPXTrackShape::LvGPXTrackShape(int value)
    : LvEnumWrapper(static_cast<LvGPXTrackShapeEnum>(value))
{
}

LvGPXTrackShape::LvGPXTrackShape(quint32 value)
    : LvEnumWrapper(static_cast<LvGPXTrackShapeEnum>(value))
{
}

LvGPXTrackShape::LvGPXTrackShape(const QString& keys)
    : LvEnumWrapper(LvGPXTrackShape().enumToStringTable()->decodeCSV(keys))
{
}

LvGPXTrackShape::LvGPXTrackShape(const LvGPXTrackShape& other) = default;
LvGPXTrackShape::LvGPXTrackShape(LvGPXTrackShape&& other) noexcept = default;
LvGPXTrackShape& LvGPXTrackShape::operator=(const LvGPXTrackShape& other) = default;
LvGPXTrackShape& LvGPXTrackShape::operator=(LvGPXTrackShape&& other) noexcept = default;
LvGPXTrackShape::~LvGPXTrackShape() = default;

LvGPXTrackShape LvGPXTrackShape::decodeKml(const QDomElement& placemark)
{
    if (!placemark.firstChildElement(QStringLiteral("Polygon")).isNull()) {
        return LvGPXTrackShapeEnum::polygon;
    }
    if (!placemark.firstChildElement(QStringLiteral("LineString")).isNull()) {
        return LvGPXTrackShapeEnum::linestring;
    }
    if (!placemark.firstChildElement(QStringLiteral("Point")).isNull()) {
        return LvGPXTrackShapeEnum::point;
    }
    const QDomElement shape = placemark.firstChildElement(QStringLiteral("shape"));
    if (!shape.isNull()) {
        return LvGPXTrackShape(shape.text());
    }
    return LvGPXTrackShapeEnum::automatic;
}

LvGPXTrackShape LvGPXTrackShape::fromXml(const QDomElement& parent)
{
    const QDomElement element = parent.firstChildElement(tagName);
    if (element.isNull()) {
        return LvGPXTrackShapeEnum::automatic;
    }
    return LvGPXTrackShape(element.text());
}

QList<LvGPXTrackShape> LvGPXTrackShape::possibleShapes() const
{
    switch (value()) {
    case LvGPXTrackShapeEnum::point:
        return {LvGPXTrackShapeEnum::point};
    case LvGPXTrackShapeEnum::hop:
        return {LvGPXTrackShapeEnum::hop};
    case LvGPXTrackShapeEnum::linestring:
        return {LvGPXTrackShapeEnum::polygon, LvGPXTrackShapeEnum::linestring};
    case LvGPXTrackShapeEnum::polygon:
        return {LvGPXTrackShapeEnum::point, LvGPXTrackShapeEnum::polygon};
    default:
        return {};
    }
}

QList<LvGPXMarkerShape> LvGPXTrackShape::createMarkerShapes() const
{
    switch (value()) {
    case LvGPXTrackShapeEnum::point:
        return LvGPXMarkerShape::allPointShapes();
    case LvGPXTrackShapeEnum::linestring:
        return LvGPXMarkerShape::allLineStringShapes();
    default:
        return {LvGPXMarkerShapeEnum::unknown};
    }
}

LvGPXTrackDisplayOptions LvGPXTrackShape::defaultDisplayOptions()
{
    return LvGPXTrackDisplayOptionsEnum::stroke;
}

LvGPXTrackDisplayOptions LvGPXTrackShape::availableDisplayOptions() const
{
    LvGPXTrackDisplayOptions options;
    switch (value()) {
    case LvGPXTrackShapeEnum::point:
        options |= LvGPXTrackDisplayOptionsEnum::stroke;
        options |= LvGPXTrackDisplayOptionsEnum::fill;
        options |= namelessOption;
        break;
    case LvGPXTrackShapeEnum::hop:
        options |= LvGPXTrackDisplayOptionsEnum::stroke;
        options |= namelessOption;
        break;
    case LvGPXTrackShapeEnum::linestring:
        options |= LvGPXTrackDisplayOptionsEnum::stroke;
        break;
    case LvGPXTrackShapeEnum::polygon:
        options |= LvGPXTrackDisplayOptionsEnum::stroke;
        options |= LvGPXTrackDisplayOptionsEnum::fill;
        break;
    default:
        break;
    }
    return options;
}

QString LvGPXTrackShape::humanReadable(const LvGPXMarkerShape& marker) const
{
    switch (value()) {
    case LvGPXTrackShapeEnum::point:
        return QCoreApplication::translate("LvGPXTrackShape", "Punkt");
    case LvGPXTrackShapeEnum::linestring:
        if (marker.reducedTo(LvGPXMarkerShapeEnum::arrow) == LvGPXMarkerShapeEnum::arrow) {
            return QCoreApplication::translate("LvGPXTrackShape", "Pfeil");
        }
        return QCoreApplication::translate("LvGPXTrackShape", "Strecke");
    case LvGPXTrackShapeEnum::polygon:
        return QCoreApplication::translate("LvGPXTrackShape", "Fläche");
    case LvGPXTrackShapeEnum::hop:
        return QCoreApplication::translate("LvGPXTrackShape", "Fluglinie");
    case LvGPXTrackShapeEnum::automatic:
        return QCoreApplication::translate("LvGPXTrackShape", "Automatisch erkannt");
    case LvGPXTrackShapeEnum::unknown:
        return QCoreApplication::translate("LvGPXTrackShape", "unbekannt");
    }
    return {};
}

QString LvGPXTrackShape::toolTip() const
{
    switch (value()) {
    case LvGPXTrackShapeEnum::point:
        return QCoreApplication::translate(
            "LvGPXTrackShape", "Ein Punkt kann als verschiedene vorgefertigte Formen gezeichnet werden.");
    case LvGPXTrackShapeEnum::linestring:
        return QCoreApplication::translate("LvGPXTrackShape",
                                           "Alle Punkte werden zu einer Strecke verbunden.");
    case LvGPXTrackShapeEnum::polygon:
        return QCoreApplication::translate("LvGPXTrackShape",
                                           "Alle Punkte werden als Außenlinie einer Fläche betrachtet.");
    case LvGPXTrackShapeEnum::hop:
        return QCoreApplication::translate("LvGPXTrackShape",
                                           "Die beiden Punkt werden als Fluglinie betrachtet.");
    case LvGPXTrackShapeEnum::automatic:
        return QCoreApplication::translate("LvGPXTrackShape", "Die Form wird automatisch erkannt.");
    case LvGPXTrackShapeEnum::unknown:
        return QCoreApplication::translate("LvGPXTrackShape", "Wir wissen die Form nicht.");
    }
    return {};
}

void LvGPXTrackShape::fillTable(LvEnumToStringTable<LvGPXTrackShapeEnum>* table) const
{
    table->insert(QStringLiteral("point"), LvGPXTrackShapeEnum::point);
    table->insert(QStringLiteral("linestring"), LvGPXTrackShapeEnum::linestring);
    table->insert(QStringLiteral("polygon"), LvGPXTrackShapeEnum::polygon);
    table->insert(QStringLiteral("hop"), LvGPXTrackShapeEnum::hop);
    table->insert(QStringLiteral("auto"), LvGPXTrackShapeEnum::automatic);
    table->insert(QStringLiteral("unknown"), LvGPXTrackShapeEnum::unknown);
}

void LvGPXTrackShape::toXml(QDomElement& parent) const
{
    LvXMLBuilder::buildDomElement(parent, tagName, enumToStringTable()->encodeCSV(value()));
}
