// KML texts: decoded directly and through a file.

#include "LvFileHandler.h"
#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLLoader.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>

#include <algorithm>

namespace
{

/// Each track has the points of the text that is found in its placemark.
void checkCoordinates(const QDomElement& body, const LvGPXConfiguredTrackList& tracks)
{
    const QList<QDomElement> placemarks = LvTrackSelectionFactoryKmlFile::findPlacemarks(body);
    for (qsizetype index = 0; index < std::min(placemarks.size(), tracks.count()); ++index) {
        const QString coordinates = LvTrackSelectionFactoryKmlFile::findCoordinates(placemarks.at(index));
        const LvGPXTrack track = tracks.at(index).track();
        const QList<LvGPXTrackSegment> segments = track.segments();
        LvFuzz::expect(LvFuzz::isSamePoints(segments.isEmpty() ? QList<LvGPXTrackPoint>()
                                                               : segments.first().trackPoints(),
                                            LvGPXTrackSegment::decodeTrackPoints(coordinates.trimmed())),
                       "a track has the points of its placemark");
    }
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QString fileName = QStringLiteral("tour.kml");
    const QString text = LvFileHandler::decodeText(input);
    const LvGPXConfiguredTrackList tracks = LvTrackSelectionFactoryKmlFile::decode(text, fileName);

    QDomDocument document;
    const bool isXml = LvXMLLoader::parse(text, document);
    expect(isXml || tracks.isEmpty(), "no part of a broken document is read");
    const QDomElement body = document.documentElement().firstChildElement(QStringLiteral("Document"));
    expect(tracks.count() == LvTrackSelectionFactoryKmlFile::findPlacemarks(body).count(),
           "every placemark becomes a track");
    for (const LvGPXConfiguredTrack& track : tracks) {
        expect(!track.name().isEmpty() && !track.description().isEmpty(),
               "the file name stands in for a missing name or description");
        const LvGPXTrackConfiguration configuration = track.configuration();
        expect(
            isWhatWasWritten(LvGPXTrackConfiguration::deserialize(configuration.serialize()), configuration),
            "the style is what was written");
    }
    checkTracks(tracks);
    checkCoordinates(body, tracks);

    const QFileInfo file(writeFile(fileName, input));
    const LvGPXConfiguredTrackList fromFile =
        LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(file);
    expect(fromFile.count() == tracks.count(), "file and text hold the same number of tracks");
    for (qsizetype index = 0; index < std::min(tracks.count(), fromFile.count()); ++index) {
        expect(isSameTrack(tracks.at(index).track(), fromFile.at(index).track()),
               "file and text hold the same tracks");
        expect(isSame(tracks.at(index).configuration(), fromFile.at(index).configuration()),
               "file and text hold the same styles");
    }
}
