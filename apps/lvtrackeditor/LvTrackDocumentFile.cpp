#include "LvTrackDocumentFile.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackFileRegistry.h"
#include "LvGPXTrackFileRegistryKey.h"
#include "LvTrackDocument.h"
#include "LvTrackXml.h"
#include "LvUniqueFilenameMaker.h"
#include "LvXMLBuilder.h"
#include "LvXMLLoader.h"
#include "LvXMLParser.h"

#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QSet>

#include <cmath>
#include <optional>
#include <utility>

namespace
{

constexpr int formatVersion = 1;

constexpr int trackDepth = 5; // of "trk" in a document
constexpr int trackFileDepth = 2; // of "trk" in a file of its own
// More than the style of a track has, or the document around them.
constexpr LvTrackXmlCost styleCost = {100, 100 * trackDepth, 2048};

constexpr QLatin1String rootTag("lvtracks");
constexpr QLatin1String versionAttribute("version");
constexpr QLatin1String selectionTag("selection");
constexpr QLatin1String listTag("gpxtrack");
constexpr QLatin1String trackTag("configuredTrack");
constexpr QLatin1String oldTrackTag("locationTrack");
constexpr QLatin1String includeTag("include");
constexpr QLatin1String visibleAttribute("visible");

/// The directory that names of track files are relative to.
QDir directoryOf(const QFileInfo& document)
{
    QDir directory(document.absolutePath());
    // The library takes a directory that equals the current one for "none" and would leave out the tracks.
    // Directories with different filters are not equal.
    directory.setFilter(QDir::Files);
    return directory;
}

/// The elements of the tracks in the order in which the library reads them.
QList<QDomElement> trackElements(const QDomElement& selection)
{
    const QDomElement list = selection.firstChildElement(listTag);
    QList<QDomElement> elements;
    for (const QLatin1String tag : {oldTrackTag, trackTag}) {
        for (QDomElement element = list.firstChildElement(tag); !element.isNull();
             element = element.nextSiblingElement(tag)) {
            elements.append(element);
        }
    }
    return elements;
}

/// The name of the file that should hold the track and does not; empty when all is well.
QString missingFile(const QDomElement& trackElement, const LvGPXTrack& track, const QDir& directory)
{
    const QDomElement trk = trackElement.firstChildElement(LvTrackXml::trackTag());
    const QString included = trk.firstChildElement(includeTag).text();
    if (included.isEmpty() || track.isValid()) {
        return {};
    }
    // A track may be without points.
    const QDomElement root = LvXMLLoader::loadDocumentElement(QFileInfo(directory, included));
    return root.firstChildElement(LvTrackXml::trackTag()).isNull() ? included : QString();
}

/// Widths are read with their fractions, but the library writes none.
void writeWidth(const QDomElement& element, const QString& tag, double width)
{
    const QDomElement child = element.firstChildElement(tag);
    if (std::isfinite(width) && width != std::trunc(width)) {
        child.firstChild().toText().setData(QString::number(width, 'g', QLocale::FloatingPointShortest));
    }
}

/// The selection with tracks that have a name and nothing else.
LvGPXTrackSelection withoutPoints(const LvGPXTrackSelection& selection)
{
    LvGPXConfiguredTrackList tracks = selection.tracks();
    for (LvGPXConfiguredTrack& track : tracks) {
        track.setTrack(LvGPXTrack());
    }
    LvGPXTrackSelection result = selection;
    result.setTracks(tracks);
    return result;
}

/// Which limit of reading is exceeded.
enum class Excess { None, Nodes, Bytes };

Excess excessOf(const LvTrackXmlCost& cost, qint64 maximumBytes)
{
    if (cost.nodes > LvXMLLoader::maximumNodes || cost.depthSum > LvXMLLoader::maximumDepthSum) {
        return Excess::Nodes;
    }
    return cost.bytes > maximumBytes ? Excess::Bytes : Excess::None;
}

/// What it will cost to read the document. To be asked before it is built: then it would already take
/// gigabytes.
LvTrackXmlCost documentCost(const LvGPXConfiguredTrackList& tracks, bool hasFiles)
{
    LvTrackXmlCost sum = styleCost;
    for (const LvGPXConfiguredTrack& track : tracks) {
        sum += styleCost;
        if (!hasFiles) {
            sum += LvTrackXml::costOf(track.track(), trackDepth);
        }
    }
    return sum;
}

/// Why a document of that cost is not written; an empty text when it may be.
QString refusal(const LvTrackXmlCost& cost, bool hasFiles, qint64 maximumBytes)
{
    const Excess excess = excessOf(cost, maximumBytes);
    if (excess == Excess::None) {
        return {};
    }
    if (hasFiles) {
        return LvTrackDocumentFile::tr(
            "Es sind so viele Spuren, dass sich das Dokument nicht wieder öffnen ließe.");
    }
    return excess == Excess::Nodes
        ? LvTrackDocumentFile::tr(
            "Die Spuren haben so viele Punkte mit Texten oder Sekundenbruchteilen, dass sich das Dokument "
            "nicht wieder öffnen ließe. Mit einer eigenen Datei für jede Spur (siehe Einstellungen) ist "
            "mehr Platz.")
        : LvTrackDocumentFile::tr(
            "Die Spuren haben so viele Punkte, dass sich das Dokument nicht wieder öffnen ließe. Mit einer "
            "eigenen Datei für jede Spur (siehe Einstellungen) ist mehr Platz.");
}

/// Why the file of a track of that cost is not written; an empty text when it may be.
QString refusal(const LvTrackXmlCost& cost, const LvGPXTrack& track, qint64 maximumBytes)
{
    switch (excessOf(cost, maximumBytes)) {
    case Excess::Nodes:
        return LvTrackDocumentFile::tr(
                   "Die Spur „%1“ hat so viele Punkte mit Texten oder Sekundenbruchteilen, "
                   "dass sich ihre Datei nicht wieder öffnen ließe.")
            .arg(track.name().simplified());
    case Excess::Bytes:
        return LvTrackDocumentFile::tr(
                   "Die Spur „%1“ hat so viele Punkte, dass sich ihre Datei nicht wieder öffnen ließe.")
            .arg(track.name().simplified());
    case Excess::None:
        break;
    }
    return {};
}

bool hasTrackFile(const LvGPXTrack& track, const QDir& directory)
{
    const LvGPXTrackFileRegistryKey key(track, directory);
    const QString known = LvGPXTrackFileRegistry::instance()->fileName(key);
    return !known.isEmpty() && LvGPXTrackFileRegistry::createFileInfo(key, known).exists();
}

/// Writes the track into a file of its own in the directory unless it has one. Returns why that failed; an
/// empty text on success.
QString ensureTrackFile(const LvGPXTrack& track, const QDir& directory)
{
    if (hasTrackFile(track, directory)) {
        return {}; // perhaps since a moment ago: as another track of the same document
    }
    const QFileInfo wanted(directory, QStringLiteral("track.gps"));
    const QFileInfo file =
        LvUniqueFilenameMaker::instance()->makeUniqueFileNameInSafeContainer(wanted, QSet<QDir>{directory});
    QDomDocument document;
    const QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("includedTrack"));
    LvTrackXml::writeTrack(LvXMLBuilder::buildDomElement(root, LvTrackXml::trackTag()), track);
    QStringList errors;
    if (!LvXMLBuilder::saveUTF8(document, file, &errors)) {
        return errors.join(QLatin1Char(' ')).simplified();
    }
    LvGPXTrackFileRegistry::instance()->registerFile(LvGPXTrackFileRegistryKey(track, directory),
                                                     file.fileName());
    return {};
}

/// Writes the tracks that have no file in the directory yet, all of them or, when one would be too large,
/// none. Returns why that failed; an empty text on success.
QString ensureTrackFiles(const LvGPXConfiguredTrackList& tracks, const QDir& directory, qint64 maximumBytes)
{
    QList<LvGPXTrack> newTracks;
    for (const LvGPXConfiguredTrack& configured : tracks) {
        const LvGPXTrack track = configured.track();
        if (hasTrackFile(track, directory)) {
            continue;
        }
        LvTrackXmlCost cost = styleCost; // of what stands around the track
        cost += LvTrackXml::costOf(track, trackFileDepth);
        QString errorText = refusal(cost, track, maximumBytes);
        if (!errorText.isEmpty()) {
            return errorText;
        }
        newTracks.append(track);
    }
    for (const LvGPXTrack& track : std::as_const(newTracks)) {
        QString errorText = ensureTrackFile(track, directory);
        if (!errorText.isEmpty()) {
            return errorText;
        }
    }
    return {};
}

} // namespace

QString LvTrackDocumentFile::suffix()
{
    return QStringLiteral("lvt");
}

QString LvTrackDocumentFile::nameFilter()
{
    return tr("Spurdokumente (*.%1)").arg(suffix());
}

bool LvTrackDocumentFile::hasSuffix(const QString& fileName)
{
    return QFileInfo(fileName).suffix().compare(suffix(), Qt::CaseInsensitive) == 0;
}

QString LvTrackDocumentFile::write(const LvTrackDocumentContent& content, const QString& fileName,
                                   TrackStorage storage, qint64 maximumBytes)
{
    const QFileInfo file(fileName);
    const QDir directory = directoryOf(file);
    if (!directory.exists()) {
        return tr("Den Ordner „%1“ gibt es nicht.").arg(QDir::toNativeSeparators(directory.path()));
    }
    const LvGPXConfiguredTrackList tracks = content.selection.tracks();
    const bool hasFiles = storage == TrackStorage::SeparateFiles;
    QString errorText = refusal(documentCost(tracks, hasFiles), hasFiles, maximumBytes);
    if (hasFiles && errorText.isEmpty()) {
        errorText = ensureTrackFiles(tracks, directory, maximumBytes);
    }
    if (!errorText.isEmpty()) {
        return errorText;
    }

    QDomDocument document;
    QDomElement root = LvXMLBuilder::buildRootElement(document, rootTag);
    root.setAttribute(versionAttribute, formatVersion);
    QDomElement selection = LvXMLBuilder::buildDomElement(root, selectionTag);
    if (hasFiles) {
        content.selection.toXml(selection, directory);
    } else {
        withoutPoints(content.selection).toXml(selection, QDir(QString()));
    }
    const QList<QDomElement> elements = trackElements(selection);
    for (qsizetype row = 0; row < elements.size(); ++row) {
        QDomElement element = elements.at(row);
        const LvGPXConfiguredTrack& track = tracks.at(row);
        element.setAttribute(visibleAttribute, content.visibility.value(row, true) ? 1 : 0);
        writeWidth(element, QStringLiteral("pensize"), track.lineWidth().value());
        writeWidth(element, QStringLiteral("halosize"), track.haloWidth().value());
        if (!hasFiles) {
            const QDomElement placeholder = element.firstChildElement(LvTrackXml::trackTag());
            const QDomElement trk = document.createElement(LvTrackXml::trackTag());
            element.replaceChild(trk, placeholder);
            LvTrackXml::writeTrack(trk, track.track());
        }
    }
    QStringList errors;
    return LvXMLBuilder::saveUTF8(document, file, &errors) ? QString()
                                                           : errors.join(QLatin1Char(' ')).simplified();
}

LvTrackDocumentReading LvTrackDocumentFile::read(const QString& fileName)
{
    LvTrackDocumentReading result;
    const QFileInfo file(fileName);
    const QString shownName = QDir::toNativeSeparators(fileName);
    const std::optional<QByteArray> bytes = LvFileHandler::readBytes(file);
    if (!bytes) {
        result.errorText = file.exists() ? tr("Die Datei „%1“ ist nicht lesbar.").arg(shownName)
                                         : tr("Die Datei „%1“ gibt es nicht.").arg(shownName);
        return result;
    }
    QDomDocument document;
    QString message;
    if (!LvXMLLoader::parse(*bytes, document, &message)) {
        result.errorText = tr("Die Datei „%1“ ist beschädigt: %2").arg(shownName, message.simplified());
        return result;
    }
    const QDomElement root = document.documentElement();
    if (root.tagName() != rootTag) {
        result.errorText = tr("Die Datei „%1“ ist kein Spurdokument.").arg(shownName);
        return result;
    }
    if (LvXMLParser::intAttribute(root, versionAttribute, formatVersion) > formatVersion) {
        result.errorText =
            tr("Die Datei „%1“ stammt aus einer neueren Fassung des Programms.").arg(shownName);
        return result;
    }

    const QDomElement selectionElement = root.firstChildElement(selectionTag);
    LvTrackDocumentContent& content = result.content;
    const QDir directory = directoryOf(file);
    content.selection = LvGPXTrackSelection(selectionElement, directory);
    const LvGPXConfiguredTrackList allTracks = content.selection.tracks();
    const QList<QDomElement> elements = trackElements(selectionElement);
    LvGPXConfiguredTrackList tracks;
    for (qsizetype row = 0; row < elements.size(); ++row) {
        const QString missing = missingFile(elements.at(row), allTracks.at(row).track(), directory);
        if (!missing.isEmpty()) {
            result.warnings.append(
                tr("Die Spurdatei „%1“ fehlt oder enthält keine Spur.").arg(missing.simplified()));
            continue;
        }
        tracks.append(allTracks.at(row));
        content.visibility.append(LvXMLParser::boolAttribute(elements.at(row), visibleAttribute, true));
    }
    content.selection.setTracks(tracks);
    return result;
}

QString LvTrackDocumentFile::save(LvTrackDocument& document, const QString& fileName, TrackStorage storage)
{
    QString errorText = write(document.content(), fileName, storage);
    if (errorText.isEmpty()) {
        document.markSaved(fileName);
    }
    return errorText;
}

QString LvTrackDocumentFile::open(LvTrackDocument& document, const QString& fileName, QStringList* warnings)
{
    const LvTrackDocumentReading reading = read(fileName);
    if (reading.errorText.isEmpty()) {
        document.reset(reading.content, fileName);
    }
    if (warnings != nullptr) {
        *warnings = reading.warnings;
    }
    return reading.errorText;
}
