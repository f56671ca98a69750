#include "LvGPXTrackConfiguration.h"

#include "LvGeoLocationSettings.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"
#include "LvXMLParser.h"

#include <QDebug>
#include <QDomDocument>
#include <QDomElement>

#include <algorithm>
#include <limits>

namespace
{

constexpr QRgb defaultLineRgb = 0xFF9100;
// The top byte looks like a translucent colour, but the constructor used for it ignores it: areas are opaque.
constexpr QRgb defaultFillRgb = 0x50FCA404;
constexpr double defaultLineWidth = 10.0;
constexpr int defaultSmoothingStrength = 100;
constexpr int defaultSmoothingSteps = 1;

constexpr int opaque = 255;
constexpr int halfOpaque = 128;
constexpr double kmlWidthFactor = 6.0;
constexpr double smallestKmlLineWidth = 0.1; // after the factor
constexpr double usualKmlLineWidth = 7.7;

constexpr QLatin1String pensizeTag("pensize");
constexpr QLatin1String colorTag("color");
constexpr QLatin1String fillcolorTag("fillcolor");
constexpr QLatin1String halosizeTag("halosize");
constexpr QLatin1String smoothingAttribute("smoothing");
constexpr QLatin1String smoothingStepsAttribute("smoothingSteps");

template <class T>
bool assign(T& target, const T& value)
{
    if (!(target != value)) {
        return false;
    }
    target = value;
    return true;
}

// Truncates towards zero. Widths in files may be any number; what an int cannot hold is limited to it.
int wholePixels(const LvDistance& width)
{
    const double value = width.value();
    if (!(value >= std::numeric_limits<int>::min())) {
        return value < 0 ? std::numeric_limits<int>::min() : 0; // 0 for "not a number"
    }
    return value >= std::numeric_limits<int>::max() ? std::numeric_limits<int>::max()
                                                    : static_cast<int>(value);
}

LvDistance readLineWidth(const QDomElement& element)
{
    const QDomElement size = element.firstChildElement(pensizeTag);
    return size.isNull() ? LvDistance(defaultLineWidth) : LvDistance(size.text().toDouble());
}

QColor readFillColor(const QDomElement& element, const QColor& lineColor)
{
    const QDomElement fill = element.firstChildElement(fillcolorTag);
    if (!fill.isNull()) {
        return LvXMLParser::readColor(fill.text());
    }
    QColor color = lineColor;
    color.setAlphaF(lineColor.alphaF() * 0.5F);
    return color;
}

LvDistance readHaloWidth(const QDomElement& element, const LvDistance& lineWidth,
                         const LvGPXTrackDisplayOptions& options)
{
    const QDomElement size = element.firstChildElement(halosizeTag);
    if (!size.isNull()) {
        return {size.text().toDouble()};
    }
    // Files from before there were halos get a visible one; this is intended.
    const bool isArea =
        options.reducedTo(LvGPXTrackDisplayOptionsEnum::fill) == LvGPXTrackDisplayOptionsEnum::fill;
    return isArea ? lineWidth : lineWidth * 2.0;
}

QColor withAlpha(const QColor& color, int alpha)
{
    QColor result = color;
    result.setAlpha(alpha);
    return result;
}

// An invisible line takes the colour of its area, twice as opaque, and an invisible area that of its line,
// half as opaque. Where both are invisible, the track is black.
void repairAlpha(QColor& lineColor, QColor& fillColor)
{
    const int lineAlpha = lineColor.alpha();
    const int fillAlpha = fillColor.alpha();
    if (lineAlpha == 0 && fillAlpha == 0) {
        lineColor = Qt::black;
        fillColor = withAlpha(Qt::black, halfOpaque);
    } else if (lineAlpha == 0) {
        lineColor = withAlpha(fillColor, fillAlpha < halfOpaque ? 2 * fillAlpha : opaque);
    } else if (fillAlpha == 0) {
        fillColor = withAlpha(lineColor, lineAlpha / 2);
    }
}

} // namespace

LvGPXTrackConfiguration::LvGPXTrackConfiguration()
    : LvGPXTrackConfiguration(QColor(defaultLineRgb), defaultLineWidth, QColor(defaultFillRgb), 0.0,
                              LvGPXTrackDisplayOptionsEnum::stroke, LvGPXMarkerShapeEnum::disk,
                              LvGPXTrackShapeEnum::automatic, LvPenStyle(Qt::SolidLine),
                              defaultSmoothingStrength, defaultSmoothingSteps)
{
}

// NOLINTBEGIN(modernize-pass-by-value) each is a few numbers: there is nothing to move
LvGPXTrackConfiguration::LvGPXTrackConfiguration(const QColor& lineColor, const LvDistance& lineWidth,
                                                 const QColor& fillColor, const LvDistance& haloWidth,
                                                 const LvGPXTrackDisplayOptions& displayOptions,
                                                 const LvGPXMarkerShape& markerShape,
                                                 const LvGPXTrackShape& trackShape,
                                                 const LvPenStyle& penStyle, int smoothingStrength,
                                                 int smoothingSteps)
    : myLineColor(lineColor)
    , myLineWidth(lineWidth)
    , myPenStyle(penStyle)
    , myFillColor(fillColor)
    , myHaloWidth(haloWidth)
    , myDisplayOptions(displayOptions)
    , myMarkerShape(markerShape)
    , myTrackShape(trackShape)
    , mySmoothingStrength(smoothingStrength)
    , mySmoothingSteps(smoothingSteps)
{
}

// NOLINTEND(modernize-pass-by-value)

LvGPXTrackConfiguration::LvGPXTrackConfiguration(const LvGPXTrackConfiguration& other) = default;
LvGPXTrackConfiguration::LvGPXTrackConfiguration(LvGPXTrackConfiguration&& other) noexcept = default;
LvGPXTrackConfiguration& LvGPXTrackConfiguration::operator=(const LvGPXTrackConfiguration& other) = default;
LvGPXTrackConfiguration&
LvGPXTrackConfiguration::operator=(LvGPXTrackConfiguration&& other) noexcept = default;
LvGPXTrackConfiguration::~LvGPXTrackConfiguration() = default;

LvGPXTrackConfiguration LvGPXTrackConfiguration::defaultValue()
{
    return {};
}

LvGPXTrackConfiguration LvGPXTrackConfiguration::currentDefaultConfiguration()
{
    return LvGeoLocationSettings::instance()->defaultTrackConfiguration();
}

LvGPXTrackConfiguration LvGPXTrackConfiguration::fromXml(const QDomElement& element)
{
    const auto options = LvGPXTrackDisplayOptions::fromXml(element);
    const LvDistance lineWidth = readLineWidth(element);
    const QColor lineColor = LvXMLParser::readColor(element.firstChildElement(colorTag).text());
    return {lineColor,
            lineWidth,
            readFillColor(element, lineColor),
            readHaloWidth(element, lineWidth, options),
            options,
            LvGPXMarkerShape::fromXml(element),
            LvGPXTrackShape::fromXml(element),
            LvPenStyle::fromXml(element),
            LvXMLParser::intAttribute(element, smoothingAttribute, defaultSmoothingStrength),
            LvXMLParser::intAttribute(element, smoothingStepsAttribute, defaultSmoothingSteps)};
}

LvGPXTrackConfiguration LvGPXTrackConfiguration::deserialize(const QString& text)
{
    QDomDocument document;
    if (!LvXMLLoader::parse(text, document)) {
        return fromXml({});
    }
    return fromXml(document.documentElement());
}

LvGPXTrackConfiguration LvGPXTrackConfiguration::fromKml(const QDomElement& style)
{
    const QDomElement line = style.firstChildElement(QStringLiteral("LineStyle"));
    const QDomElement area = style.firstChildElement(QStringLiteral("PolyStyle"));
    QColor lineColor = decodeColor(line);
    QColor fillColor = decodeColor(area);
    repairAlpha(lineColor, fillColor);

    LvDistance lineWidth = decodeWidth(line) * kmlWidthFactor;
    if (lineWidth < LvDistance(smallestKmlLineWidth)) {
        lineWidth = usualKmlLineWidth;
    }
    LvGPXTrackDisplayOptions options;
    if (area.isNull() || !line.isNull()) {
        options |= LvGPXTrackDisplayOptionsEnum::stroke;
    }
    if (!area.isNull()) {
        options |= LvGPXTrackDisplayOptionsEnum::fill;
    }
    return {lineColor,
            lineWidth,
            fillColor,
            area.isNull() ? lineWidth * 2.0 : lineWidth,
            options,
            LvGPXMarkerShapeEnum::disk,
            LvGPXTrackShapeEnum::automatic,
            LvPenStyle(Qt::SolidLine),
            defaultSmoothingStrength,
            defaultSmoothingSteps};
}

QColor LvGPXTrackConfiguration::decodeColor(const QDomElement& element)
{
    QString text = element.firstChildElement(colorTag).text();
    if (!text.startsWith(QLatin1Char('#'), Qt::CaseSensitive)) {
        text.prepend(QLatin1Char('#'));
    }
    return LvXMLParser::readColor(text);
}

double LvGPXTrackConfiguration::decodeWidth(const QDomElement& element)
{
    return LvXMLParser::doubleText(element, QStringLiteral("width"), 0.0);
}

QColor LvGPXTrackConfiguration::multiplyAlpha(const QColor& color, double factor)
{
    QColor result = color;
    result.setAlphaF(std::clamp(static_cast<float>(color.alphaF() * factor), 0.0F, 1.0F));
    return result;
}

bool LvGPXTrackConfiguration::operator==(const LvGPXTrackConfiguration& other) const
{
    return myLineColor == other.myLineColor && myLineWidth == other.myLineWidth
        && myFillColor == other.myFillColor && myHaloWidth == other.myHaloWidth
        && myDisplayOptions == other.myDisplayOptions && myMarkerShape == other.myMarkerShape
        && myTrackShape == other.myTrackShape && myPenStyle.value() == other.myPenStyle.value()
        && mySmoothingStrength == other.mySmoothingStrength && mySmoothingSteps == other.mySmoothingSteps;
}

bool LvGPXTrackConfiguration::operator!=(const LvGPXTrackConfiguration& other) const
{
    return !(*this == other);
}

bool LvGPXTrackConfiguration::hasDrawOption(const LvGPXTrackDisplayOptions& option) const
{
    return (myDisplayOptions & option) != LvGPXTrackDisplayOptionsEnum::none;
}

bool LvGPXTrackConfiguration::wouldChangeHaloToVisibleAgainst(const LvGPXTrackConfiguration& previous) const
{
    return previous.myHaloWidth.isNull() && !myHaloWidth.isNull();
}

bool LvGPXTrackConfiguration::setLineColor(const QColor& color)
{
    return assign(myLineColor, color);
}

bool LvGPXTrackConfiguration::setLineWidth(const LvDistance& width)
{
    return assign(myLineWidth, width);
}

bool LvGPXTrackConfiguration::setPenStyle(const LvPenStyle& style)
{
    return assign(myPenStyle, style);
}

bool LvGPXTrackConfiguration::setFillColor(const QColor& color)
{
    return assign(myFillColor, color);
}

bool LvGPXTrackConfiguration::setHaloWidth(const LvDistance& width)
{
    return assign(myHaloWidth, width);
}

bool LvGPXTrackConfiguration::setCurrentDisplayOptions(const LvGPXTrackDisplayOptions& options)
{
    return assign(myDisplayOptions, options);
}

bool LvGPXTrackConfiguration::setMarkerShape(const LvGPXMarkerShape& shape)
{
    return assign(myMarkerShape, shape);
}

bool LvGPXTrackConfiguration::setTrackShape(const LvGPXTrackShape& shape)
{
    return assign(myTrackShape, shape);
}

bool LvGPXTrackConfiguration::setSmoothingStrength(int strength)
{
    return assign(mySmoothingStrength, strength);
}

bool LvGPXTrackConfiguration::setSmoothingSteps(int steps)
{
    return assign(mySmoothingSteps, steps);
}

void LvGPXTrackConfiguration::toXml(QDomElement& element) const
{
    LvXMLBuilder::buildDomElement(element, pensizeTag, wholePixels(myLineWidth));
    LvXMLBuilder::buildDomElement(element, colorTag, myLineColor.name(QColor::HexArgb));
    LvXMLBuilder::buildDomElement(element, fillcolorTag, myFillColor.name(QColor::HexArgb));
    LvXMLBuilder::buildDomElement(element, halosizeTag, wholePixels(myHaloWidth));
    myDisplayOptions.toXml(element);
    myMarkerShape.toXml(element);
    myTrackShape.toXml(element);
    myPenStyle.toXml(element);
    element.setAttribute(smoothingAttribute, mySmoothingStrength);
    element.setAttribute(smoothingStepsAttribute, mySmoothingSteps);
}

QString LvGPXTrackConfiguration::serialize() const
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("config"));
    toXml(root);
    return document.toString(0);
}

QDebug operator<<(QDebug debug, const LvGPXTrackConfiguration& configuration)
{
    const auto width = [](const LvDistance& distance) {
        return distance.describe(LvDistanceUnit::Pixel, 1, true);
    };
    const auto key = [](const auto& wrapper) {
        return wrapper.enumToStringTable()->toString(wrapper.value());
    };
    const QDebugStateSaver saver(debug);
    debug.noquote().nospace() << QStringLiteral("LvGPXTrackConfiguration -- %1; %2; %3; %4; %5; %6; %7")
                                     .arg(configuration.lineColor().name(), width(configuration.lineWidth()),
                                          configuration.fillColor().name(), width(configuration.haloWidth()),
                                          key(configuration.currentDisplayOptions()),
                                          key(configuration.markerShape()), key(configuration.trackShape()));
    return debug;
}
