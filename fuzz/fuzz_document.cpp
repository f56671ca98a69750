// Documents of the desktop program: read, written in both ways, read back, exported.

#include "LvFuzz.h"
#include "LvFuzzTracks.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvGeoJsonExporter.h"
#include "LvGeoPosition.h"
#include "LvGpxExporter.h"
#include "LvTrackDocument.h"
#include "LvTrackDocumentFile.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"

#include <QDateTime>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

// Each track with a file of its own stays in the registry of the files for ever.
constexpr int mostFiles = 4;

// Seven digits behind the point, the last one cut off.
constexpr double positionToleranceDegrees = 1.01e-7;
constexpr int firstYear = 1;
constexpr int lastYear = 9999;

using Storage = LvTrackDocumentFile::TrackStorage;

bool isSameAngle(double read, double written)
{
    if (!std::isfinite(written) || std::abs(written) > 360.0) {
        return true; // no angle: only that it stays none is of interest, and positions tell that
    }
    // 180° and -180° are the same meridian.
    return std::abs(std::remainder(read - written, 360.0)) < positionToleranceDegrees;
}

bool isWritable(const QDateTime& time)
{
    const int year = time.toUTC().date().year();
    return time.isValid() && year >= firstYear && year <= lastYear;
}

bool isWhatWasWritten(const LvGPXTrackPoint& read, const LvGPXTrackPoint& written)
{
    return isSameAngle(read.position().latitude().decimalDegrees(),
                       written.position().latitude().decimalDegrees())
        && isSameAngle(read.position().longitude().decimalDegrees(),
                       written.position().longitude().decimalDegrees())
        && read.elevation() == written.elevation()
        && read.description() == LvXMLBuilder::legalText(written.description())
        && (!isWritable(written.timeStamp()) || read.timeStamp() == written.timeStamp());
}

bool isWhatWasWritten(const LvGPXTrackSegment& read, const LvGPXTrackSegment& written)
{
    const QList<LvGPXTrackPoint> after = read.trackPoints();
    const QList<LvGPXTrackPoint> before = written.trackPoints();
    return std::equal(
        after.begin(), after.end(), before.begin(), before.end(),
        [](const LvGPXTrackPoint& a, const LvGPXTrackPoint& b) { return isWhatWasWritten(a, b); });
}

bool isWhatWasWritten(const LvGPXTrack& read, const LvGPXTrack& written)
{
    QList<std::pair<LvGPXTrack, LvGPXTrack>> pending{{read, written}};
    while (!pending.isEmpty()) {
        const auto [after, before] = pending.takeLast();
        const QList<LvGPXTrackSegment> found = after.segments();
        const QList<LvGPXTrackSegment> expected = before.segments();
        const QList<LvGPXTrack> enclaves = after.enclaves();
        const QList<LvGPXTrack> expectedEnclaves = before.enclaves();
        if (after.name() != LvXMLBuilder::legalText(before.name())
            || after.description() != LvXMLBuilder::legalText(before.description())
            || after.shape() != before.shape() || enclaves.size() != expectedEnclaves.size()
            || !std::equal(found.begin(), found.end(), expected.begin(), expected.end(),
                           [](const LvGPXTrackSegment& a, const LvGPXTrackSegment& b) {
                               return isWhatWasWritten(a, b);
                           })) {
            return false;
        }
        for (qsizetype index = 0; index < enclaves.size(); ++index) {
            pending.append({enclaves.at(index), expectedEnclaves.at(index)});
        }
    }
    return true;
}

void checkReading(const LvTrackDocumentReading& reading)
{
    const LvTrackDocumentContent& content = reading.content;
    LvFuzz::expect(reading.errorText.isEmpty() || content.selection.isEmpty(), "an error leaves no content");
    LvFuzz::expect(content.visibility.size() == content.selection.count(), "every track is shown or hidden");
    LvFuzz::expect(!reading.errorText.contains(QLatin1Char('\n')), "an error is one line");
    for (const QString& warning : reading.warnings) {
        LvFuzz::expect(!warning.contains(QLatin1Char('\n')), "a warning is one line");
    }
}

/// Writes and reads; the content is what was written, and writing it once more changes nothing.
void checkRoundTrip(const LvTrackDocumentContent& content, const QString& fileName, Storage storage)
{
    const QString errorText = LvTrackDocumentFile::write(content, fileName, storage);
    LvFuzz::expect(errorText.isEmpty(), "every content can be written");
    const qint64 size = QFileInfo(fileName).size();
    LvFuzz::expect(!LvTrackDocumentFile::write(content, fileName, storage, size - 1).isEmpty()
                       && QFileInfo(fileName).size() == size,
                   "what would be too large is known before");
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
    checkReading(reading);
    LvFuzz::expect(reading.errorText.isEmpty() && reading.warnings.isEmpty(), "what was written can be read");
    const LvGPXTrackSelection& read = reading.content.selection;
    LvFuzz::expect(read.count() == content.selection.count()
                       && reading.content.visibility == content.visibility
                       && read.nominalCroppingOpacity() == content.selection.nominalCroppingOpacity(),
                   "a document is what was written");
    for (int row = 0; row < std::min(read.count(), content.selection.count()); ++row) {
        LvFuzz::expect(isWhatWasWritten(read.value(row).track(), content.selection.value(row).track()),
                       "a track in a document is what was written");
    }

    if (storage == Storage::Inline) {
        const QByteArray before = LvFuzz::readFile(fileName);
        LvFuzz::expect(LvTrackDocumentFile::write(reading.content, fileName, storage).isEmpty(),
                       "every content can be written");
        LvFuzz::expect(LvFuzz::readFile(fileName) == before, "what a document has kept it keeps for ever");
    }
}

/// The content with names that no other content has: the registry of the files, which keeps every track that
/// was ever written into a file, finds equal ones by comparing them all.
LvTrackDocumentContent withUniqueNames(const LvTrackDocumentContent& content)
{
    static qint64 myCounter = 0;
    LvGPXConfiguredTrackList tracks;
    const LvGPXConfiguredTrackList all = content.selection.tracks();
    for (LvGPXConfiguredTrack configured : all) {
        LvGPXTrack track = configured.track();
        track.setName(QString::number(++myCounter) + track.name());
        configured.setTrack(track);
        tracks.append(configured);
    }
    LvTrackDocumentContent result = content;
    result.selection.setTracks(tracks);
    return result;
}

void checkExports(const LvGPXConfiguredTrackList& tracks)
{
    const QByteArray json = LvGeoJsonExporter::encode(tracks);
    LvFuzz::expect(json.isEmpty() || !QJsonDocument::fromJson(json).isNull(), "an export is JSON");
    const QByteArray gpx = LvGpxExporter::encode(tracks);
    QDomDocument document;
    LvFuzz::expect(gpx.isEmpty() || LvXMLLoader::parse(gpx, document), "an export is well-formed");
    LvFuzz::expect(gpx.size() <= LvGpxExporter::maximumSize(tracks), "the size of an export is known before");
}

void checkDocument(const LvTrackDocumentContent& content)
{
    LvTrackDocument document;
    document.reset(content, QStringLiteral("document.lvt"));
    LvFuzz::expect(!document.isModified(), "what was opened is not modified");
    LvFuzz::expect(document.visibleSelection().count() == content.visibility.count(true),
                   "what is shown is in the visible selection");
    document.clear();
    document.undoStack()->undo();
    LvFuzz::expect(document.content().visibility == content.visibility
                       && document.selection().count() == content.selection.count(),
                   "what was undone is as before");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const QTemporaryDir folder(path(QStringLiteral("documents-XXXXXX")));
    const QString fileName = folder.filePath(QStringLiteral("document.lvt"));
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(input) != input.size()) {
        qFatal("cannot write %s", qUtf8Printable(fileName));
    }
    file.close();
    const LvTrackDocumentReading reading = LvTrackDocumentFile::read(fileName);
    checkReading(reading);
    const LvTrackDocumentContent& content = reading.content;
    checkTracks(content.selection.tracks());
    checkDocument(content);
    checkExports(content.selection.tracks());
    if (reading.errorText.isEmpty()) {
        checkRoundTrip(content, folder.filePath(QStringLiteral("copy.lvt")), Storage::Inline);
    }
    if (content.selection.count() > 0 && content.selection.count() <= mostFiles) {
        checkRoundTrip(withUniqueNames(content), folder.filePath(QStringLiteral("files.lvt")),
                       Storage::SeparateFiles);
    }
}
