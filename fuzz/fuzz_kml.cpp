// KML texts: decoded directly and through a file.

#include "LvFileHandler.h"
#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLLoader.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>

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

    const QFileInfo file(writeFile(fileName, input));
    const LvGPXConfiguredTrackList fromFile =
        LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(file);
    expect(fromFile.count() == tracks.count(), "file and text hold the same number of tracks");
    for (qsizetype index = 0; index < std::min(tracks.count(), fromFile.count()); ++index) {
        const LvGeoPositionList points = tracks.at(index).allPoints();
        const LvGeoPositionList others = fromFile.at(index).allPoints();
        expect(std::equal(points.begin(), points.end(), others.begin(), others.end(), isSamePosition),
               "file and text hold the same points");
    }
}
