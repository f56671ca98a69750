#include "LvGPXTrackDisplayOptions.h"

#include "LvXMLBuilder.h"

#include <QDomElement>

namespace
{

constexpr QLatin1String tagName("displayOptions");

} // namespace

template class LvEnumWrapper<LvGPXTrackDisplayOptionsEnum>;

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions() = default;

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptionsEnum value)
    : LvEnumWrapper(value)
{
}

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(int value)
    : LvEnumWrapper(static_cast<LvGPXTrackDisplayOptionsEnum>(value))
{
}

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(quint32 value)
    : LvEnumWrapper(static_cast<LvGPXTrackDisplayOptionsEnum>(value))
{
}

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(const QString& keys)
    : LvEnumWrapper(LvGPXTrackDisplayOptions().enumToStringTable()->decodeCSV(keys))
{
}

LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(const LvGPXTrackDisplayOptions& other) = default;
LvGPXTrackDisplayOptions::LvGPXTrackDisplayOptions(LvGPXTrackDisplayOptions&& other) noexcept = default;
LvGPXTrackDisplayOptions&
LvGPXTrackDisplayOptions::operator=(const LvGPXTrackDisplayOptions& other) = default;
LvGPXTrackDisplayOptions&
LvGPXTrackDisplayOptions::operator=(LvGPXTrackDisplayOptions&& other) noexcept = default;
LvGPXTrackDisplayOptions::~LvGPXTrackDisplayOptions() = default;

LvGPXTrackDisplayOptions LvGPXTrackDisplayOptions::fromXml(const QDomElement& parent)
{
    const QDomElement element = parent.firstChildElement(tagName);
    if (element.isNull()) {
        return LvGPXTrackDisplayOptionsEnum::stroke;
    }
    return LvGPXTrackDisplayOptions(element.text());
}

void LvGPXTrackDisplayOptions::fillTable(LvEnumToStringTable<LvGPXTrackDisplayOptionsEnum>* table) const
{
    table->insert(QStringLiteral("stroke"), LvGPXTrackDisplayOptionsEnum::stroke);
    table->insert(QStringLiteral("fill"), LvGPXTrackDisplayOptionsEnum::fill);
}

void LvGPXTrackDisplayOptions::toXml(QDomElement& parent) const
{
    LvXMLBuilder::buildDomElement(parent, tagName, enumToStringTable()->encodeCSV(value()));
}
