#include "LvInfoCommand.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackShape.h"
#include "LvGeoPositionRect.h"
#include "LvProgressBar.h"
#include "LvTrackBounds.h"
#include "LvTrackLoader.h"
#include "LvTrackStatistics.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstdio>

namespace
{

constexpr int earthRadiusKm = 6370; // the sphere that LvGeoPosition::distance() measures on
constexpr double metresPerKm = 1000.0;
constexpr int coordinateDecimals = 5; // in texts: about a metre
constexpr double jsonUnitsPerDegree = 1e7; // about a centimetre; keeps the residues of adding whole turns out

QString translated(const char* text)
{
    return QCoreApplication::translate("LvInfoCommand", text);
}

/// What is told about one track.
struct TrackFacts {
    QString name;
    QString description;
    QString shape;
    qsizetype points = 0;
    qsizetype segments = 0;
    qsizetype enclaves = 0;
    double lengthKm = 0.0; // to the metre
    QDateTime start; // invalid when no point has a time
    QDateTime end;
    LvGeoPositionRect boundingBox;
};

TrackFacts factsOf(const LvGPXConfiguredTrack& configuredTrack)
{
    const LvGPXTrack track = configuredTrack.track();
    TrackFacts facts;
    facts.name = track.name();
    facts.description = track.description();
    const LvGPXTrackShape shape = configuredTrack.effectiveShape();
    facts.shape = shape.enumToStringTable()->encodeCSV(shape.value());
    facts.points = track.countPoints();
    facts.segments = track.segments().size();
    facts.enclaves = track.enclaves().size();
    facts.lengthKm = std::round(LvTrackStatistics::lengthKm(track) * metresPerKm) / metresPerKm;
    facts.boundingBox = LvTrackBounds::ofElement(track);
    const QList<QDateTime> times = track.allTimeStamps();
    for (const QDateTime& time : times) {
        if (time.isValid()) {
            facts.start = facts.start.isValid() ? std::min(facts.start, time) : time;
            facts.end = facts.end.isValid() ? std::max(facts.end, time) : time;
        }
    }
    return facts;
}

QJsonValue timeValue(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toString(Qt::ISODate)) : QJsonValue(QJsonValue::Null);
}

QJsonValue boxValue(const LvGeoPositionRect& box)
{
    if (!box.isValid()) {
        return QJsonValue::Null;
    }
    const auto degrees = [](const LvGeoArc& angle) {
        return std::round(angle.decimalDegrees() * jsonUnitsPerDegree) / jsonUnitsPerDegree;
    };
    return QJsonObject{{QStringLiteral("south"), degrees(box.south())},
                       {QStringLiteral("west"), degrees(box.west())},
                       {QStringLiteral("north"), degrees(box.north())},
                       {QStringLiteral("east"), degrees(box.east())}};
}

QJsonObject toJson(const TrackFacts& facts)
{
    return {{QStringLiteral("name"), facts.name},
            {QStringLiteral("description"), facts.description},
            {QStringLiteral("shape"), facts.shape},
            {QStringLiteral("points"), facts.points},
            {QStringLiteral("segments"), facts.segments},
            {QStringLiteral("enclaves"), facts.enclaves},
            {QStringLiteral("lengthKm"), facts.lengthKm},
            {QStringLiteral("start"), timeValue(facts.start)},
            {QStringLiteral("end"), timeValue(facts.end)},
            {QStringLiteral("boundingBox"), boxValue(facts.boundingBox)}};
}

QString coordinate(double degrees)
{
    return QString::number(degrees, 'f', coordinateDecimals);
}

QString toText(int number, const TrackFacts& facts)
{
    QString text =
        QStringLiteral("  %1. %2\n").arg(QString::number(number), LvCommand::singleLine(facts.name));
    text += translated("     %1, points: %2, segments: %3, %4 km\n")
                .arg(facts.shape, QString::number(facts.points), QString::number(facts.segments),
                     QString::number(facts.lengthKm, 'f', 3));
    if (facts.enclaves > 0) {
        text += translated("     enclaves: %1\n").arg(facts.enclaves);
    }
    if (facts.start.isValid()) {
        text += translated("     from %1 to %2\n")
                    .arg(facts.start.toString(Qt::ISODate), facts.end.toString(Qt::ISODate));
    }
    if (facts.boundingBox.isValid()) {
        const LvGeoPositionRect& box = facts.boundingBox;
        text += translated("     south %1, west %2, north %3, east %4%5\n")
                    .arg(coordinate(box.south().decimalDegrees()), coordinate(box.west().decimalDegrees()),
                         coordinate(box.north().decimalDegrees()), coordinate(box.east().decimalDegrees()),
                         box.longitudeRange().crossesDateLine() ? translated(" (across the 180° meridian)")
                                                                : QString());
    }
    return text;
}

} // namespace

QString LvInfoCommand::name() const
{
    return QStringLiteral("info");
}

void LvInfoCommand::addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        translated(
            "Lists the tracks of files: name, shape, number of points and segments, length on a sphere\n"
            "of radius %1 km, time frame and bounding box.")
            .arg(earthRadiusKm));
    parser.addOptions({{QStringLiteral("json"), translated("Write JSON instead of text.")},
                       {QStringLiteral("quiet"), translated("Show no progress bar.")}});
}

LvExitCode LvInfoCommand::run(const QCommandLineParser& parser, const QStringList& fileNames)
{
    const bool asJson = parser.isSet(QStringLiteral("json"));
    LvProgressBar progress(stderr, static_cast<int>(fileNames.size()),
                           !parser.isSet(QStringLiteral("quiet")));
    QJsonArray files;
    QString text;
    qsizetype failedCount = 0;
    for (const QString& fileName : fileNames) {
        const LvLoadedTracks loaded = LvTrackLoader::load(fileName);
        progress.advance();
        if (!loaded.errorText.isEmpty()) {
            progress.clear();
            printFileError(fileName, loaded.errorText);
            ++failedCount;
        } else {
            text += translated("%1, tracks: %2\n")
                        .arg(singleLine(fileName), QString::number(loaded.tracks.count()));
        }
        QJsonArray tracks;
        int number = 0;
        for (const LvGPXConfiguredTrack& track : loaded.tracks) {
            const TrackFacts facts = factsOf(track);
            tracks.append(toJson(facts));
            text += toText(++number, facts);
        }
        files.append(QJsonObject{{QStringLiteral("file"), fileName},
                                 {QStringLiteral("error"),
                                  loaded.errorText.isEmpty() ? QJsonValue() : QJsonValue(loaded.errorText)},
                                 {QStringLiteral("emptyTracks"), loaded.emptyTracks},
                                 {QStringLiteral("tracks"), tracks}});
    }
    progress.clear();
    if (asJson) {
        const QJsonObject root{{QStringLiteral("earthRadiusKm"), earthRadiusKm},
                               {QStringLiteral("files"), files}};
        print(QString::fromUtf8(QJsonDocument(root).toJson()));
    } else if (!text.isEmpty()) {
        print(text);
        print(translated("Lengths on a sphere of radius %1 km.\n").arg(earthRadiusKm));
    }
    return exitCodeFor(failedCount, fileNames.size());
}
