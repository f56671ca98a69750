#include "LvGPXTrackFile.h"

#include "LvGPXContentBuilder.h"
#include "LvGPXDocumentReader.h"

#include <QDir>
#include <QDomElement>
#include <QFileInfo>

#include <utility>

namespace
{

/// The valid ones; each of them all counts, and names itself by its number where it has no name.
QList<LvGPXTrack> validTracks(QList<LvGPXTrack> tracks, int& counter, const QFileInfo& file)
{
    for (LvGPXTrack& track : tracks) {
        ++counter;
        if (track.isValid() && track.name().isEmpty()) {
            // Both texts in one call: a file may be called "%2".
            track.setName(QStringLiteral("%1 %2").arg(file.baseName(), QString::number(counter)));
        }
    }
    tracks.removeIf([](const LvGPXTrack& track) { return !track.isValid(); });
    return tracks;
}

} // namespace

LvGPXTrackFile::LvGPXTrackFile(const QFileInfo& file)
{
    LvGPXContentBuilder content;
    LvGPXDocumentReader::read(file, LvGPXContent::File, content);
    int counter = 0;
    myTracks = validTracks(content.tracks(), counter, file);
    myTracks += validTracks(content.routes(), counter, file);
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

// NOLINTNEXTLINE(performance-unnecessary-value-param) the element is a handle itself
QList<LvGPXTrack> LvGPXTrackFile::readTracks(QDomElement root, const QString& tagName, int& counter,
                                             const QFileInfo& file)
{
    const QDir noIncludes{QString()};
    QList<LvGPXTrack> tracks;
    for (QDomElement element = root.firstChildElement(tagName); !element.isNull();
         element = element.nextSiblingElement(tagName)) {
        tracks.append(LvGPXTrack(element, noIncludes));
    }
    return validTracks(std::move(tracks), counter, file);
}
