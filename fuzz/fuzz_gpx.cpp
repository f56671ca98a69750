// GPX files: read through the file and through the element, written and read back.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QFileInfo>

namespace
{

QList<LvGPXTrack> readTracks(const QDomElement& root, const QFileInfo& file)
{
    int counter = 0;
    QList<LvGPXTrack> tracks = LvGPXTrackFile::readTracks(root, QStringLiteral("trk"), counter, file);
    tracks += LvGPXTrackFile::readTracks(root, QStringLiteral("rte"), counter, file);
    return tracks;
}

/// One document with all tracks, read back.
void checkDocument(const QList<LvGPXTrack>& tracks)
{
    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("gpx"));
    for (const LvGPXTrack& track : tracks) {
        track.toXml(root, QDir(QString()));
    }
    QDomDocument copy;
    LvFuzz::expect(LvXMLLoader::parse(document.toByteArray(), copy), "what was written is well-formed");
    qsizetype index = 0;
    for (QDomElement trk = copy.documentElement().firstChildElement(); !trk.isNull();
         trk = trk.nextSiblingElement()) {
        LvFuzz::expect(index < tracks.size()
                           && LvFuzz::isWhatWasWritten(LvGPXTrack(trk, QDir(QString())), tracks.at(index)),
                       "a track in a document is what was written");
        ++index;
    }
    LvFuzz::expect(index == tracks.size(), "every track is in the document");
}

/// A file of its own for one track, read back.
void checkFile(const LvGPXTrack& track)
{
    const QFileInfo file(LvFuzz::path(QStringLiteral("saved.gpx")));
    QFile::remove(file.filePath());
    track.saveAsGpxFile(file);
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
    if (tracks.isEmpty()) {
        LvGPXTrack nothing(track.name(), QString(), {}, track.shape());
        nothing.setEnclaves(track.enclaves());
        LvFuzz::expect(!file.exists() || LvFuzz::isWhatWasWritten(nothing, track),
                       "only a track without points that can be kept is not read back");
        return;
    }
    LvGPXTrack read = tracks.first();
    if (track.name().isEmpty()) {
        read.setName(QString());
    }
    LvFuzz::expect(tracks.size() == 1 && LvFuzz::isWhatWasWritten(read, track),
                   "a track in a file is what was written");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QFileInfo file(writeFile(QStringLiteral("tour.gpx"), input));
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
    QDomDocument document;
    const bool isXml = LvXMLLoader::parse(input, document);
    expect(isXml || tracks.isEmpty(), "no part of a broken document is read");
    const QList<LvGPXTrack> others = readTracks(document.documentElement(), file);
    expect(tracks.size() == others.size(), "file and element hold the same number of tracks");
    for (qsizetype index = 0; index < tracks.size(); ++index) {
        const LvGPXTrack& track = tracks.at(index);
        expect(track.isValid() && !track.name().isEmpty(), "every track of a file has points and a name");
        expect(track.name() == others.value(index).name(), "file and element give the same names");
        checkTrack(track);
    }
    checkDocument(tracks);
    if (!tracks.isEmpty()) {
        checkFile(tracks.first());
    }
}
