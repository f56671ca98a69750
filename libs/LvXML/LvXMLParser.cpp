#include "LvXMLParser.h"

#include <algorithm>

namespace
{

constexpr qsizetype opaqueColorLength = 7; // "#RRGGBB"
constexpr qsizetype alphaColorLength = 9; // "#AARRGGBB"
constexpr int hexadecimal = 16;

bool isHexDigit(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= u'0' && code <= u'9') || (code >= u'a' && code <= u'f') || (code >= u'A' && code <= u'F');
}

bool readBool(const QString& text, bool defaultValue)
{
    const QString word = text.trimmed();
    if (word == QLatin1String("1") || word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (word == QLatin1String("0") || word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) {
        return false;
    }
    return defaultValue;
}

} // namespace

double LvXMLParser::doubleAttribute(const QDomElement& element, const QString& name, double defaultValue)
{
    return element.hasAttribute(name) ? element.attribute(name).toDouble() : defaultValue;
}

int LvXMLParser::intAttribute(const QDomElement& element, const QString& name, int defaultValue)
{
    bool isNumber = false;
    const int number = element.attribute(name).toInt(&isNumber);
    return isNumber ? number : defaultValue;
}

QString LvXMLParser::stringAttribute(const QDomElement& element, const QString& name,
                                     const QString& defaultValue)
{
    return element.attribute(name, defaultValue);
}

bool LvXMLParser::boolAttribute(const QDomElement& element, const QString& name, bool defaultValue)
{
    return readBool(element.attribute(name), defaultValue);
}

QString LvXMLParser::text(const QDomElement& element, const QString& child, const QString& defaultValue)
{
    const QDomElement found = element.firstChildElement(child);
    return found.isNull() ? defaultValue : found.text();
}

double LvXMLParser::doubleText(const QDomElement& element, const QString& child, double defaultValue)
{
    const QDomElement found = element.firstChildElement(child);
    return found.isNull() ? defaultValue : found.text().toDouble();
}

int LvXMLParser::intText(const QDomElement& element, const QString& child, int defaultValue)
{
    const QDomElement found = element.firstChildElement(child);
    return found.isNull() ? defaultValue : found.text().toInt();
}

bool LvXMLParser::boolText(const QDomElement& element, const QString& child, bool defaultValue)
{
    return readBool(text(element, child), defaultValue);
}

QDateTime LvXMLParser::dateTimeText(const QDomElement& element, const QString& child, Qt::DateFormat format,
                                    const QDateTime& defaultValue)
{
    const QDomElement found = element.firstChildElement(child);
    return found.isNull() ? defaultValue : QDateTime::fromString(found.text().trimmed(), format);
}

QColor LvXMLParser::readColor(const QString& text)
{
    const QColor unreadable(0, 0, 0, 0);
    if ((text.size() != opaqueColorLength && text.size() != alphaColorLength) || text.front() != u'#') {
        return unreadable;
    }
    const QStringView digits = QStringView(text).mid(1);
    if (!std::all_of(digits.begin(), digits.end(), isHexDigit)) {
        return unreadable;
    }
    const QRgb value = digits.toUInt(nullptr, hexadecimal);
    return text.size() == opaqueColorLength ? QColor::fromRgb(value) : QColor::fromRgba(value);
}
