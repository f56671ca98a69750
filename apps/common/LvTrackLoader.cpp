#include "LvTrackLoader.h"

#include "LvFileHandler.h"
#include "LvGPXConfiguredTrack.h"
#include "LvTrackSelectionFactory.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLLoader.h"
#include "LvZIP.h"

#include <QDomDocument>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <optional>

namespace
{

qsizetype countChildren(const QDomElement& parent, const QString& name)
{
    qsizetype count = 0;
    for (QDomElement child = parent.firstChildElement(name); !child.isNull();
         child = child.nextSiblingElement(name)) {
        ++count;
    }
    return count;
}

/// The next element in document order below the root; null at the end. A loop instead of a recursion, as
/// documents may be deep.
QDomElement nextElement(const QDomElement& element, const QDomElement& root)
{
    QDomElement next = element.firstChildElement();
    QDomElement walker = element;
    while (next.isNull() && walker != root) {
        next = walker.nextSiblingElement();
        walker = walker.parentNode().toElement();
    }
    return next;
}

QString notXml(const QString& message)
{
    return LvTrackLoader::tr("nicht als XML lesbar: %1").arg(message.simplified());
}

bool isTooLarge(const QFileInfo& file)
{
    return file.size() > LvFileHandler::maximumFileSize;
}

QString tooLarge()
{
    return LvTrackLoader::tr("größer als %1 MiB").arg(LvFileHandler::maximumFileSize >> 20);
}

QString reasonInGpx(const QFileInfo& file)
{
    if (isTooLarge(file)) {
        return tooLarge();
    }
    const std::optional<QByteArray> bytes = LvFileHandler::readBytes(file);
    if (!bytes) {
        return LvTrackLoader::tr("nicht lesbar");
    }
    if (bytes->isEmpty()) {
        return LvTrackLoader::tr("leere Datei");
    }
    QDomDocument document;
    QString message;
    if (!LvXMLLoader::parse(*bytes, document, &message)) {
        return notXml(message);
    }
    const QDomElement root = document.documentElement();
    const qsizetype tracks = countChildren(root, QStringLiteral("trk"));
    const qsizetype routes = countChildren(root, QStringLiteral("rte"));
    const qsizetype waypoints = countChildren(root, QStringLiteral("wpt"));
    if (tracks > 0) {
        return LvTrackLoader::tr("Spuren ohne Punkte");
    }
    if (routes > 0) {
        return LvTrackLoader::tr("Routen ohne Zwischenpunkte (Garmins Erweiterung der Routenpunkte)");
    }
    if (waypoints > 0) {
        return LvTrackLoader::tr("nur Wegpunkte, weder Spur noch Route");
    }
    return LvTrackLoader::tr("weder Spur noch Route darin");
}

/// Why an archive has no text to decode; empty when it has one.
QString reasonInArchive(const QFileInfo& file)
{
    LvZIP archive(file);
    if (!archive.open()) {
        return LvTrackLoader::tr("kein lesbares Archiv");
    }
    const QStringList names = archive.getFileNameList();
    archive.close();
    const bool hasKml = std::any_of(names.cbegin(), names.cend(),
                                    [](const QString& name) { return name.endsWith(QLatin1String(".kml")); });
    return hasKml ? QString() : LvTrackLoader::tr("Archiv ohne .kml-Datei");
}

QString reasonInKml(const QFileInfo& file)
{
    const bool isArchive = file.suffix().compare(QLatin1String("kmz"), Qt::CaseInsensitive) == 0;
    if (isArchive) {
        const QString reason = reasonInArchive(file);
        if (!reason.isEmpty()) {
            return reason;
        }
    } else if (isTooLarge(file)) {
        return tooLarge();
    }
    const QString text = LvTrackSelectionFactoryKmlFile().readFile(file);
    if (text.isEmpty()) {
        return isArchive
            ? LvTrackLoader::tr("die .kml-Datei im Archiv ist leer, beschädigt, verschlüsselt oder zu groß")
            : LvTrackLoader::tr("leere Datei");
    }
    QDomDocument document;
    QString message;
    if (!LvXMLLoader::parse(text, document, &message)) {
        return notXml(message);
    }
    const QDomElement root = document.documentElement().firstChildElement(QStringLiteral("Document"));
    if (root.isNull()) {
        return LvTrackLoader::tr("KML ohne das Element „Document“");
    }
    for (QDomElement element = root; !element.isNull(); element = nextElement(element, root)) {
        if (element.nodeName() == QLatin1String("Placemark")) {
            return LvTrackLoader::tr("keine Ortsmarke mit Koordinaten darin");
        }
    }
    return LvTrackLoader::tr("keine Ortsmarke darin");
}

QString reasonForNothing(const QFileInfo& file)
{
    return file.suffix().compare(QLatin1String("gpx"), Qt::CaseInsensitive) == 0 ? reasonInGpx(file)
                                                                                 : reasonInKml(file);
}

/// Why a file is not even opened; empty when it can be.
QString reasonToRefuse(const QFileInfo& file)
{
    if (!file.exists()) {
        return file.isSymLink() ? LvTrackLoader::tr("symbolische Verknüpfung ins Leere")
                                : LvTrackLoader::tr("nicht gefunden");
    }
    if (!file.isFile()) {
        return LvTrackLoader::tr("keine gewöhnliche Datei");
    }
    if (!LvFileHandler::isReadableRegularFile(file)) {
        return LvTrackLoader::tr("nicht lesbar");
    }
    return {};
}

} // namespace

LvLoadedTracks LvTrackLoader::load(const QString& fileName)
{
    LvLoadedTracks result;
    const QFileInfo file(fileName);
    result.errorText = reasonToRefuse(file);
    if (!result.errorText.isEmpty()) {
        return result;
    }
    const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    const LvTrackSelectionFactory* factory = LvTrackSelectionFactory::instance();
    if (!factory->supportsFile(url)) {
        result.errorText = tr("dem Namen nach keine Spurdatei (%1)")
                               .arg(factory->supportedFileFormats().join(QLatin1String(", ")));
        return result;
    }
    const LvGPXConfiguredTrackList all = factory->createConfiguredTrackList(url);
    for (const LvGPXConfiguredTrack& track : all) {
        if (track.track().isValid()) {
            result.tracks.append(track);
        } else {
            ++result.emptyTracks;
        }
    }
    if (!result.tracks.isValid()) {
        result.errorText = reasonForNothing(file);
    }
    return result;
}
