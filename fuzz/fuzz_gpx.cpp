// GPX files: read through the file and through the element, written and read back.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackFile.h"
#include "LvTrackSelectionFactory.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace
{

/// Both groups of tracks in the plainest way.
QList<LvGPXTrack> plainTracks(const QFileInfo& file)
{
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
    QList<LvGPXTrack> tracks;
    int counter = 0;
    for (const char* tag : {"trk", "rte"}) {
        for (QDomElement element = root.firstChildElement(QLatin1String(tag)); !element.isNull();
             element = element.nextSiblingElement(QLatin1String(tag))) {
            LvGPXTrack track = LvFuzz::plainTrack(element);
            ++counter;
            if (track.isValid()) {
                track.setName(track.name().isEmpty() ? QStringLiteral("tour %1").arg(counter) : track.name());
                tracks.append(track);
            }
        }
    }
    return tracks;
}

/// The way through a tree of elements.
QList<LvGPXTrack> readTracks(const QFileInfo& file)
{
    const QDomElement root = LvXMLLoader::loadDocumentElement(file);
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

/// The file as the programs open it.
void checkFactory(const QFileInfo& file, const QList<LvGPXTrack>& tracks)
{
    const LvGPXConfiguredTrackList configured =
        LvTrackSelectionFactory::instance()->createConfiguredTrackList(
            QUrl::fromLocalFile(file.absoluteFilePath()));
    LvFuzz::expect(configured.count() == tracks.size(), "the factory gives the tracks of the file");
    for (qsizetype index = 0; index < std::min(configured.count(), tracks.size()); ++index) {
        LvFuzz::expect(LvFuzz::isSameTrack(configured.at(index).track(), tracks.at(index)),
                       "the factory gives the tracks of the file");
    }
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QFileInfo file(writeFile(QStringLiteral("tour.gpx"), input));
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
    QDomDocument document;
    const bool isXml = LvXMLLoader::parse(input, document);
    expect(isXml || tracks.isEmpty(), "no part of a broken document is read");
    expect(isSameTracks(tracks, readTracks(file)), "file and elements give the same tracks to the last bit");
    expect(isSameTracks(tracks, plainTracks(file)), "tracks are read as the plainest way reads them");
    for (const LvGPXTrack& track : tracks) {
        expect(track.isValid() && !track.name().isEmpty(), "every track of a file has points and a name");
        checkTrack(track);
    }
    checkFactory(file, tracks);
    checkDocument(tracks);
    if (!tracks.isEmpty()) {
        checkFile(tracks.first());
    }
}
