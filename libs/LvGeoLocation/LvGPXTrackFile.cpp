#include "LvGPXTrackFile.h"

#include "LvXMLLoader.h"

#include <QDir>
#include <QDomElement>
#include <QFileInfo>

#include <utility>

LvGPXTrackFile::LvGPXTrackFile(const QFileInfo& file)
{
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
    int counter = 0;
    myTracks = readTracks(root, QStringLiteral("trk"), counter, file);
    myTracks += readTracks(root, QStringLiteral("rte"), counter, file);
}

LvGPXTrackFile::LvGPXTrackFile(const LvGPXTrackFile& other) = default;
LvGPXTrackFile::LvGPXTrackFile(LvGPXTrackFile&& other) noexcept = default;
LvGPXTrackFile& LvGPXTrackFile::operator=(const LvGPXTrackFile& other) = default;
LvGPXTrackFile& LvGPXTrackFile::operator=(LvGPXTrackFile&& other) noexcept = default;
LvGPXTrackFile::~LvGPXTrackFile() = default;

bool LvGPXTrackFile::isValid() const
{
    return !myTracks.isEmpty();
}

QList<LvGPXTrack> LvGPXTrackFile::tracks() const
{
    return myTracks;
}

QList<LvGPXTrack> LvGPXTrackFile::readTracks(QDomElement root, const QString& tagName, int& counter,
                                             const QFileInfo& file)
{
    const QDir noIncludes{QString()};
    QList<LvGPXTrack> tracks;
    for (QDomElement element = root.firstChildElement(tagName); !element.isNull();
         element = element.nextSiblingElement(tagName)) {
        ++counter;
        LvGPXTrack track(element, noIncludes);
        if (!track.isValid()) {
            continue;
        }
        if (track.name().isEmpty()) {
            // Both texts in one call: a file may be called "%2".
            track.setName(QStringLiteral("%1 %2").arg(file.baseName(), QString::number(counter)));
        }
        tracks.append(std::move(track));
    }
    return tracks;
}
