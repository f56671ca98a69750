#include "LvTrackSelectionFactoryKmlFile.h"

#include "LvFileHandler.h"
#include "LvGPXTrackStyleList.h"
#include "LvKmlCoordinates.h"
#include "LvKmlTuples.h"
#include "LvXMLLoader.h"
#include "LvZIP.h"

#include <QDomDocument>
#include <QFileInfo>

#include <functional>

namespace
{

constexpr int openForReading = 1;

enum class Descent { IntoChildren, PastChildren };

// The element after the current one in document order, below root only; a null element at the end. Documents
// may be nested so deeply that a recursive walk would exhaust the stack.
QDomElement nextInDocument(const QDomElement& current, const QDomElement& root, Descent descent)
{
    if (descent == Descent::IntoChildren) {
        const QDomElement child = current.firstChildElement();
        if (!child.isNull()) {
            return child;
        }
    }
    for (QDomElement element = current; element != root; element = element.parentNode().toElement()) {
        const QDomElement sibling = element.nextSiblingElement();
        if (!sibling.isNull()) {
            return sibling;
        }
    }
    return {};
}

bool hasSuffix(const QFileInfo& file, const char* suffix)
{
    return file.suffix().toLower() == QLatin1String(suffix);
}

QByteArray readArchive(const QFileInfo& file)
{
    LvZIP archive(file);
    if (!archive.open(openForReading)) {
        return {};
    }
    QByteArray bytes;
    const QStringList names = archive.getFileNameList();
    for (const QString& name : names) {
        if (name.endsWith(QLatin1String(".kml"))) {
            bytes = archive.fileContent(name);
            break;
        }
    }
    archive.close();
    return bytes;
}

QByteArray readDocument(const QFileInfo& file)
{
    if (hasSuffix(file, "kml")) {
        return LvFileHandler::readBytes(file).value_or(QByteArray());
    }
    return hasSuffix(file, "kmz") ? readArchive(file) : QByteArray();
}

/// The text of the document in such a file.
QString decodeText(const QByteArray& document, const QFileInfo& file)
{
    return hasSuffix(file, "kml") ? LvFileHandler::joinLines(LvFileHandler::decodeText(document))
                                  : QString::fromUtf8(document);
}

QString childText(const QDomElement& element, const char* tagName)
{
    return element.firstChildElement(QLatin1String(tagName)).text();
}

using PointDecoder = std::function<QList<LvGPXTrackPoint>(const QString&)>;

LvGPXConfiguredTrack decodePlacemark(const QDomElement& placemark, const LvGPXTrackStyleList& styles,
                                     const QString& fileName, const PointDecoder& decodePoints)
{
    const QString name = childText(placemark, "name");
    const QString description = childText(placemark, "description");
    const LvGPXTrackSegment segment =
        decodePoints(LvTrackSelectionFactoryKmlFile::findCoordinates(placemark));
    // The file name stands in for the description as well, so that a tool tip is never empty.
    const LvGPXTrack track(name.isEmpty() ? fileName : name, description.isEmpty() ? fileName : description,
                           segment.isValid() ? QList<LvGPXTrackSegment>{segment} : QList<LvGPXTrackSegment>(),
                           LvGPXTrackShape::decodeKml(placemark));
    return {track, styles.findStyling(childText(placemark, "styleUrl"))};
}

/// @param decodePoints makes the points of what is found as the coordinates
LvGPXConfiguredTrackList decodeDocument(const QString& text, const QString& fileName,
                                        const PointDecoder& decodePoints)
{
    QDomDocument xml;
    if (!LvXMLLoader::parse(text, xml)) {
        return {};
    }
    const QDomElement document = xml.documentElement().firstChildElement(QStringLiteral("Document"));
    const LvGPXTrackStyleList styles = LvGPXTrackStyleList::fromKml(document);
    LvGPXConfiguredTrackList tracks;
    const QList<QDomElement> placemarks = LvTrackSelectionFactoryKmlFile::findPlacemarks(document);
    for (const QDomElement& placemark : placemarks) {
        tracks.append(decodePlacemark(placemark, styles, fileName, decodePoints));
    }
    return tracks;
}

} // namespace

LvTrackSelectionFactoryKmlFile::LvTrackSelectionFactoryKmlFile() = default;
LvTrackSelectionFactoryKmlFile::~LvTrackSelectionFactoryKmlFile() = default;

bool LvTrackSelectionFactoryKmlFile::supportsFile(const QUrl& url) const
{
    return supportsFile(QFileInfo(url.toLocalFile()));
}

QStringList LvTrackSelectionFactoryKmlFile::supportedFileFormats() const
{
    return {QStringLiteral("*.kml"), QStringLiteral("*.kmz")};
}

LvGPXConfiguredTrackList LvTrackSelectionFactoryKmlFile::createConfiguredTrackList(const QUrl& url) const
{
    return createConfiguredTrackList(QFileInfo(url.toLocalFile()));
}

bool LvTrackSelectionFactoryKmlFile::supportsFile(const QFileInfo& file) const
{
    return hasSuffix(file, "kml") || hasSuffix(file, "kmz");
}

LvGPXConfiguredTrackList
LvTrackSelectionFactoryKmlFile::createConfiguredTrackList(const QFileInfo& file) const
{
    const QByteArray document = readDocument(file);
    const LvKmlCoordinates coordinates(document);
    if (!coordinates.isValid()) {
        return decode(decodeText(document, file), file.fileName());
    }
    return decodeDocument(
        decodeText(coordinates.remainder(), file), file.fileName(),
        [&coordinates](const QString& index) { return LvKmlTuples::decodePoints(coordinates.find(index)); });
}

QString LvTrackSelectionFactoryKmlFile::readFile(const QFileInfo& file)
{
    return decodeText(readDocument(file), file);
}

LvGPXConfiguredTrackList LvTrackSelectionFactoryKmlFile::decode(const QString& text, const QString& fileName)
{
    return decodeDocument(text, fileName, &LvGPXTrackSegment::decodeTrackPoints);
}

QList<QDomElement> LvTrackSelectionFactoryKmlFile::findPlacemarks(const QDomElement& element)
{
    QList<QDomElement> placemarks;
    QDomElement current = element;
    while (!current.isNull()) {
        const bool isPlacemark = current.nodeName() == QLatin1String("Placemark");
        if (isPlacemark) {
            placemarks.append(current);
        }
        current =
            nextInDocument(current, element, isPlacemark ? Descent::PastChildren : Descent::IntoChildren);
    }
    return placemarks;
}

QString LvTrackSelectionFactoryKmlFile::findCoordinates(const QDomElement& element)
{
    QDomElement current = element;
    while (!current.isNull()) {
        const bool hasCoordinates = current.nodeName() == QLatin1String("coordinates");
        if (hasCoordinates) {
            const QString text = current.text().trimmed();
            if (!text.isEmpty()) {
                return text;
            }
        }
        current =
            nextInDocument(current, element, hasCoordinates ? Descent::PastChildren : Descent::IntoChildren);
    }
    return {};
}
