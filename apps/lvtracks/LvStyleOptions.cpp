#include "LvStyleOptions.h"

#include "LvDistance.h"
#include "LvFileHandler.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXFullShape.h"
#include "LvGPXTrackDisplayOptions.h"
#include "LvXMLLoader.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDomDocument>
#include <QFileInfo>

#include <array>

namespace
{

constexpr double largestWidth = 1000.0; // pixels at factor 1

// Strong, and apart from each other and from land and water.
constexpr std::array<QRgb, 8> filePalette = {0xD7263D, 0x1B6FC2, 0x2E933C, 0x8E44AD,
                                             0xE67E00, 0x00897B, 0xC2185B, 0x5D4037};

QString translated(const char* text)
{
    return QCoreApplication::translate("LvStyleOptions", text);
}

/// A width option: without a value when it is not given or wrong; wrong ones set the error text.
std::optional<double> widthOption(const QCommandLineParser& parser, const QString& name, QString& errorText)
{
    if (!parser.isSet(name)) {
        return {};
    }
    bool isNumber = false;
    const double width = parser.value(name).toDouble(&isNumber);
    if (!isNumber || !(width >= 0.0 && width <= largestWidth)) {
        errorText = translated("--%1 needs a number from 0 to %2").arg(name, QString::number(largestWidth));
        return {};
    }
    return width;
}

} // namespace

void LvStyleOptions::addOptions(QCommandLineParser& parser)
{
    parser.addOptions({
        {QStringLiteral("color"),
         translated(
             "Line colour: a name, #RRGGBB or #AARRGGBB; \"auto\" gives each file a colour of its own."),
         QStringLiteral("COLOR")},
        {QStringLiteral("width"), translated("Line width in pixels, and radius of point markers."),
         QStringLiteral("WIDTH")},
        {QStringLiteral("halo"), translated("Width of the halo around lines in pixels, 0 for none."),
         QStringLiteral("WIDTH")},
        {QStringLiteral("fill"),
         translated("Fill areas and point markers with a colour; \"none\" fills nothing."),
         QStringLiteral("COLOR")},
        {QStringLiteral("marker"),
         translated(
             "Marker of points: disk, circle, x, block, rect, rhombus, star6, star9 or star12; \"arrow\" "
             "puts an arrow head on lines. Several ones are separated by commas."),
         QStringLiteral("MARKER")},
        {QStringLiteral("style"),
         translated(
             "File with a serialised track configuration, which replaces the style of all tracks; the other "
             "style options change it further."),
         QStringLiteral("FILE")},
    });
}

QString LvStyleOptions::read(const QCommandLineParser& parser)
{
    myStyleFileName = parser.value(QStringLiteral("style"));
    QString errorText = readColors(parser);
    if (errorText.isEmpty()) {
        errorText = readWidths(parser);
    }
    return errorText.isEmpty() ? readMarker(parser) : errorText;
}

QString LvStyleOptions::loadStyleFile()
{
    if (myStyleFileName.isEmpty()) {
        return {};
    }
    const QFileInfo file(myStyleFileName);
    if (!file.exists()) {
        return translated("not found");
    }
    const std::optional<QByteArray> bytes = LvFileHandler::readBytes(file);
    if (!bytes) {
        return translated("not readable");
    }
    const QString text = LvFileHandler::decodeText(*bytes);
    QDomDocument document;
    QString message;
    if (!LvXMLLoader::parse(text, document, &message)) {
        return translated("not readable as XML: %1").arg(message);
    }
    if (document.documentElement().tagName() != QLatin1String("config")) {
        return translated("no serialised track configuration (root element \"config\")");
    }
    myConfiguration = LvGPXTrackConfiguration::deserialize(text);
    return {};
}

void LvStyleOptions::apply(LvGPXConfiguredTrack& track, qsizetype fileNumber) const
{
    LvGPXTrackConfiguration configuration = myConfiguration.value_or(track.configuration());
    if (myHasColorPerFile) {
        const auto index = static_cast<std::size_t>(fileNumber) % filePalette.size();
        configuration.setLineColor(QColor(filePalette.at(index)));
    }
    if (myColor) {
        configuration.setLineColor(*myColor);
    }
    LvGPXTrackDisplayOptions options = configuration.currentDisplayOptions();
    if (myFillColor) {
        configuration.setFillColor(*myFillColor);
        options |= LvGPXTrackDisplayOptionsEnum::fill;
    }
    if (myHasNoFill) {
        options &= LvGPXTrackDisplayOptionsEnum::stroke;
    }
    configuration.setCurrentDisplayOptions(options);
    if (myWidth) {
        configuration.setLineWidth(LvDistance(*myWidth));
    }
    if (myHaloWidth) {
        configuration.setHaloWidth(LvDistance(*myHaloWidth));
    }
    // A style without a shape of its own leaves that to the track.
    track = LvGPXConfiguredTrack(track.track(), configuration);
    if (myMarker) {
        const LvGPXFullShape shape(track.effectiveShape(), *myMarker);
        configuration = track.configuration();
        configuration.setMarkerShape(shape.normalized().markerShape());
        track.setConfiguration(configuration);
    }
}

QString LvStyleOptions::readColors(const QCommandLineParser& parser)
{
    const QString color = parser.value(QStringLiteral("color"));
    if (color == QLatin1String("auto")) {
        myHasColorPerFile = true;
    } else if (parser.isSet(QStringLiteral("color"))) {
        if (!QColor::isValidColor(color)) {
            return translated("--color: \"%1\" is no colour").arg(color);
        }
        myColor = QColor(color);
    }
    const QString fill = parser.value(QStringLiteral("fill"));
    if (fill == QLatin1String("none")) {
        myHasNoFill = true;
    } else if (parser.isSet(QStringLiteral("fill"))) {
        if (!QColor::isValidColor(fill)) {
            return translated("--fill: \"%1\" is no colour").arg(fill);
        }
        myFillColor = QColor(fill);
    }
    return {};
}

QString LvStyleOptions::readWidths(const QCommandLineParser& parser)
{
    QString errorText;
    myWidth = widthOption(parser, QStringLiteral("width"), errorText);
    myHaloWidth = widthOption(parser, QStringLiteral("halo"), errorText);
    return errorText;
}

QString LvStyleOptions::readMarker(const QCommandLineParser& parser)
{
    if (!parser.isSet(QStringLiteral("marker"))) {
        return {};
    }
    const QString text = parser.value(QStringLiteral("marker"));
    LvGPXMarkerShape marker;
    const QStringList keys = text.split(QLatin1Char(','));
    for (const QString& key : keys) {
        const LvGPXMarkerShape part(key);
        if (!part.isValid()) {
            return translated("--marker: \"%1\" is no marker").arg(key);
        }
        marker |= part;
    }
    myMarker = marker;
    return {};
}
