// KMZ archives: every entry, and the tracks of the first KML text.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvZIP.h"

#include <QFileInfo>

void LvFuzz::run(const QByteArray& input)
{
    const QFileInfo file(writeFile(QStringLiteral("tour.kmz"), input));
    LvZIP archive(file);
    const bool isOpen = archive.open();
    const QStringList names = archive.getFileNameList();
    expect(isOpen || names.isEmpty(), "what is no archive has no entries");
    QString firstKml;
    for (const QString& name : names) {
        const QByteArray content = archive.fileContent(name);
        expect(content.size() <= LvZIP::maximumEntrySize, "no entry is larger than allowed");
        expect(content == archive.fileContent(name), "an entry reads the same twice");
        if (firstKml.isNull() && name.endsWith(QLatin1String(".kml"))) {
            firstKml = QString::fromUtf8(content) + QLatin1String(""); // empty instead of null
        }
    }
    archive.close();
    expect(archive.getFileNameList().isEmpty(), "a closed archive has no entries");

    expect(LvTrackSelectionFactoryKmlFile::readFile(file) == firstKml, "the first KML text is read");
    const LvGPXConfiguredTrackList tracks = LvTrackSelectionFactoryKmlFile().createConfiguredTrackList(file);
    expect(tracks.count() == LvTrackSelectionFactoryKmlFile::decode(firstKml, file.fileName()).count(),
           "the archive holds the tracks of its KML text");
    checkTracks(tracks);
}
