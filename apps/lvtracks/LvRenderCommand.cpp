#include "LvRenderCommand.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvLatitudeRange.h"
#include "LvLongitudeRange.h"
#include "LvMapPicture.h"
#include "LvMapSource.h"
#include "LvProgressBar.h"
#include "LvTrackBounds.h"
#include "LvTrackLoader.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

constexpr int largestSide = 30000; // pixels; the painter's coordinates end a little beyond
constexpr qint64 largestArea = 1 << 28; // pixels: an image of 1 GiB, of which several are needed
constexpr double largestLegendShare =
    0.25; // of the height that scale bar and attribution may have for themselves
constexpr double smallestFactor = 0.01;
constexpr double largestFactor = 100.0;
constexpr double largestZoom = 24.0;
constexpr int opaque = 255;

QString translated(const char* text)
{
    return QCoreApplication::translate("LvRenderCommand", text);
}

/// Exactly so many numbers separated by commas; empty when the text is anything else.
QList<double> numbers(const QString& text, qsizetype count)
{
    QList<double> result;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString& part : parts) {
        bool isNumber = false;
        const double number = part.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(number)) {
            return {};
        }
        result.append(number);
    }
    return result.size() == count ? result : QList<double>();
}

bool isLatitude(double degrees)
{
    return degrees >= -90.0 && degrees <= 90.0;
}

bool isLongitude(double degrees)
{
    return degrees >= -180.0 && degrees <= 180.0;
}

} // namespace

QString LvRenderCommand::name() const
{
    return QStringLiteral("render");
}

void LvRenderCommand::addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        translated("Draws tracks on a map, with a scale bar and the attribution that the map needs. Without\n"
                   "--bbox or --center the picture shows all tracks."));
    parser.addOptions({
        {{QStringLiteral("o"), QStringLiteral("output")},
         translated("Picture to write; its suffix (png, jpg, svg or pdf) decides on the kind."),
         QStringLiteral("FILE")},
        {QStringLiteral("size"),
         translated("Size of the picture in pixels, by default %1.").arg(QLatin1String("1600x1000")),
         QStringLiteral("WIDTHxHEIGHT"), QStringLiteral("1600x1000")},
        {QStringLiteral("scale"),
         translated(
             "Paint factor: multiplies all line, marker and text sizes; the size of the picture stays. "
             "By default 1."),
         QStringLiteral("FACTOR"), QStringLiteral("1")},
        {QStringLiteral("bbox"),
         translated("Area to show, in degrees. A west greater than the east crosses the 180° meridian."),
         QStringLiteral("WEST,SOUTH,EAST,NORTH")},
        {QStringLiteral("center"), translated("Middle of the picture, in degrees; needs --zoom."),
         QStringLiteral("LATITUDE,LONGITUDE")},
        {QStringLiteral("zoom"),
         translated("Zoom level of web maps: the world is 256 * 2^ZOOM pixels wide; fractions are allowed."),
         QStringLiteral("ZOOM")},
        {QStringLiteral("map"),
         translated("Map below the tracks: \"builtin\" (default), \"none\", a folder of tiles "
                    "{z}/{x}/{y}.png, or an "
                    "MBTiles file."),
         QStringLiteral("MAP"), QStringLiteral("builtin")},
        {QStringLiteral("attribution"),
         translated("Notice in the lower right corner instead of the one that the map brings along; an empty "
                    "text for "
                    "none."),
         QStringLiteral("TEXT")},
        {QStringLiteral("cropping"),
         translated(
             "How opaque the map is away from tracks, areas and halos: 255 (default) as it is, 0 invisible."),
         QStringLiteral("0..255"), QStringLiteral("255")},
    });
    LvStyleOptions::addOptions(parser);
    parser.addOption({QStringLiteral("quiet"), translated("Show no progress bar.")});
}

LvExitCode LvRenderCommand::run(const QCommandLineParser& parser, const QStringList& fileNames)
{
    QString errorText = readOptions(parser);
    if (!errorText.isEmpty()) {
        return wrongUsage(errorText);
    }
    errorText = myStyle.loadStyleFile();
    if (!errorText.isEmpty()) {
        printFileError(myStyle.styleFileName(), errorText);
        return LvExitCode::Failure;
    }
    const std::unique_ptr<LvMapSource> map = LvMapSource::create(myMapName);
    if (map && !map->isValid()) {
        printFileError(myMapName, map->errorText());
        return LvExitCode::Failure;
    }

    LvGPXTrackSelection selection;
    const qsizetype failedCount = load(fileNames, !parser.isSet(QStringLiteral("quiet")), selection);
    if (selection.isEmpty()) {
        return LvExitCode::Failure;
    }
    selection.setCroppingOpacity(myCroppingOpacity);

    LvMapPicture picture(selection, viewFor(selection), map.get(), myPaintFactor);
    if (myAttribution) {
        picture.setAttribution(*myAttribution);
    }
    makeRoomForLegend(picture);
    errorText = picture.save(myOutputName);
    if (!errorText.isEmpty()) {
        printFileError(myOutputName, errorText);
        return LvExitCode::Failure;
    }
    return exitCodeFor(failedCount, fileNames.size());
}

QString LvRenderCommand::readOptions(const QCommandLineParser& parser)
{
    QString errorText = readOutput(parser);
    if (errorText.isEmpty()) {
        errorText = readNumbers(parser);
    }
    if (errorText.isEmpty()) {
        errorText = readArea(parser);
    }
    myMapName = parser.value(QStringLiteral("map"));
    if (parser.isSet(QStringLiteral("attribution"))) {
        myAttribution = parser.value(QStringLiteral("attribution"));
    }
    return errorText.isEmpty() ? myStyle.read(parser) : errorText;
}

QString LvRenderCommand::readOutput(const QCommandLineParser& parser)
{
    myOutputName = parser.value(QStringLiteral("output"));
    if (myOutputName.isEmpty()) {
        return translated("no picture file given (-o)");
    }
    const QString suffix = QFileInfo(myOutputName).suffix().toLower();
    if (!LvMapPicture::supportedSuffixes().contains(suffix)) {
        return translated("-o: the name of the picture must end with .png, .jpg, .jpeg, .svg or .pdf");
    }
    return {};
}

QString LvRenderCommand::readArea(const QCommandLineParser& parser)
{
    const bool hasBox = parser.isSet(QStringLiteral("bbox"));
    const bool hasCenter = parser.isSet(QStringLiteral("center"));
    if (hasCenter != parser.isSet(QStringLiteral("zoom"))) {
        return translated("--center and --zoom belong together");
    }
    if (hasBox && hasCenter) {
        return translated("--bbox and --center exclude each other");
    }
    if (hasBox) {
        const QList<double> edges = numbers(parser.value(QStringLiteral("bbox")), 4);
        if (edges.isEmpty() || !isLongitude(edges.at(0)) || !isLatitude(edges.at(1))
            || !isLongitude(edges.at(2)) || !isLatitude(edges.at(3)) || edges.at(0) == edges.at(2)
            || edges.at(1) >= edges.at(3)) {
            return translated("--bbox needs WEST,SOUTH,EAST,NORTH in degrees, the south below the north");
        }
        if (edges.at(1) >= LvMapView::squareLatitude || edges.at(3) <= -LvMapView::squareLatitude) {
            return translated("--bbox lies beyond the map, which ends at 85.05 degrees");
        }
        myBox = LvGeoPositionRect(LvLatitudeRange(edges.at(1), edges.at(3)),
                                  LvLongitudeRange(edges.at(0), edges.at(2)));
    }
    if (hasCenter) {
        const QList<double> center = numbers(parser.value(QStringLiteral("center")), 2);
        if (center.isEmpty() || !isLatitude(center.at(0)) || !isLongitude(center.at(1))) {
            return translated("--center needs LATITUDE,LONGITUDE in degrees");
        }
        myCenter = LvGeoPosition(center.at(0), center.at(1));
        const QList<double> zoom = numbers(parser.value(QStringLiteral("zoom")), 1);
        if (zoom.isEmpty() || zoom.at(0) < 0.0 || zoom.at(0) > largestZoom) {
            return translated("--zoom needs a number from 0 to %1").arg(largestZoom);
        }
        myZoom = zoom.at(0);
    }
    return {};
}

QString LvRenderCommand::readNumbers(const QCommandLineParser& parser)
{
    static const QRegularExpression mySizePattern(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch size = mySizePattern.match(parser.value(QStringLiteral("size")));
    mySize = QSize(size.captured(1).toInt(), size.captured(2).toInt());
    if (!size.hasMatch() || mySize.isEmpty() || std::max(mySize.width(), mySize.height()) > largestSide
        || qint64(mySize.width()) * mySize.height() > largestArea) {
        return translated("--size needs WIDTHxHEIGHT, each from 1 to %1 and together at most %2 pixels")
            .arg(largestSide)
            .arg(largestArea);
    }
    const QList<double> factor = numbers(parser.value(QStringLiteral("scale")), 1);
    if (factor.isEmpty() || factor.at(0) < smallestFactor || factor.at(0) > largestFactor) {
        return translated("--scale needs a number from %1 to %2").arg(smallestFactor).arg(largestFactor);
    }
    myPaintFactor = factor.at(0);
    bool isNumber = false;
    myCroppingOpacity = parser.value(QStringLiteral("cropping")).toInt(&isNumber);
    if (!isNumber || myCroppingOpacity < 0 || myCroppingOpacity > opaque) {
        return translated("--cropping needs a whole number from 0 to 255");
    }
    return {};
}

qsizetype LvRenderCommand::load(const QStringList& fileNames, bool showProgress,
                                LvGPXTrackSelection& selection) const
{
    LvProgressBar progress(stderr, static_cast<int>(fileNames.size()), showProgress);
    qsizetype failedCount = 0;
    LvGPXConfiguredTrackList tracks;
    for (qsizetype i = 0; i < fileNames.size(); ++i) {
        const LvLoadedTracks loaded = LvTrackLoader::load(fileNames.at(i));
        progress.advance();
        if (!loaded.errorText.isEmpty()) {
            progress.clear();
            printFileError(fileNames.at(i), loaded.errorText);
            ++failedCount;
        }
        for (LvGPXConfiguredTrack track : loaded.tracks) {
            myStyle.apply(track, i);
            tracks.append(track);
        }
    }
    selection.setTracks(tracks);
    return failedCount;
}

LvMapView LvRenderCommand::viewFor(const LvGPXTrackSelection& selection) const
{
    if (myBox) {
        return {*myBox, mySize};
    }
    if (myCenter) {
        return LvMapView::aroundCenter(*myCenter, myZoom, mySize);
    }
    return LvMapView::fittedTo(LvTrackBounds::ofSelection(selection), mySize);
}

void LvRenderCommand::makeRoomForLegend(LvMapPicture& picture) const
{
    const int height = picture.legendHeight();
    const bool isFitted = !myBox && !myCenter;
    // Small pictures have no room to give away.
    if (isFitted && height <= mySize.height() * largestLegendShare && picture.isLegendOnTracks()) {
        picture.setView(LvMapView::fittedTo(LvTrackBounds::ofSelection(picture.selection()), mySize, height));
    }
}
