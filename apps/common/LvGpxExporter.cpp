#include "LvGpxExporter.h"

#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackPoint.h"
#include "LvGPXTrackSegment.h"
#include "LvTrackXml.h"
#include "LvXMLBuilder.h"

#include <QCoreApplication>
#include <QDomDocument>

namespace
{

constexpr int indentation = 1;

QString creator()
{
    const QString name = QCoreApplication::applicationName();
    const QString version = QCoreApplication::applicationVersion();
    return name.isEmpty() ? QStringLiteral("LvGeoLocation")
                          : QStringLiteral("%1 %2").arg(name, version).trimmed();
}

QDomElement buildRoot(QDomDocument& document)
{
    QDomElement root = LvXMLBuilder::buildRootElement(document, QStringLiteral("gpx"));
    root.setAttribute(QStringLiteral("version"), QStringLiteral("1.1"));
    root.setAttribute(QStringLiteral("creator"), LvXMLBuilder::legalText(creator()));
    root.setAttribute(QStringLiteral("xmlns"), QStringLiteral("http://www.topografix.com/GPX/1/1"));
    root.setAttribute(QStringLiteral("xmlns:xsi"),
                      QStringLiteral("http://www.w3.org/2001/XMLSchema-instance"));
    root.setAttribute(
        QStringLiteral("xsi:schemaLocation"),
        QStringLiteral("http://www.topografix.com/GPX/1/1 http://www.topografix.com/GPX/1/1/gpx.xsd"));
    return root;
}

void appendText(const QDomElement& trk, const QString& tag, const QString& text)
{
    if (!text.isEmpty()) {
        LvXMLBuilder::buildDomElement(trk, tag, text);
    }
}

/// Appends the segments that have points; returns whether there is one.
bool appendSegments(const QDomElement& trk, const LvGPXTrack& track)
{
    bool hasSegment = false;
    const QList<LvGPXTrackSegment> segments = track.segments();
    for (const LvGPXTrackSegment& segment : segments) {
        QDomElement element = trk.ownerDocument().createElement(QStringLiteral("trkseg"));
        const QList<LvGPXTrackPoint> points = segment.trackPoints();
        for (const LvGPXTrackPoint& point : points) {
            if (point.position().isValid()) {
                LvTrackXml::appendPoint(element, point);
            }
        }
        if (element.hasChildNodes()) {
            QDomElement(trk).appendChild(element);
            hasSegment = true;
        }
    }
    return hasSegment;
}

} // namespace

QByteArray LvGpxExporter::encode(const LvGPXConfiguredTrackList& tracks)
{
    QDomDocument document;
    QDomElement root = buildRoot(document);
    for (const LvGPXConfiguredTrack& configuredTrack : tracks) {
        // A list of what is still to be written instead of recursion, because enclaves may be nested deeply.
        QList<LvGPXTrack> pending{configuredTrack.track()};
        while (!pending.isEmpty()) {
            const LvGPXTrack track = pending.takeFirst();
            const QDomElement trk = document.createElement(LvTrackXml::trackTag());
            // In this order, which the schema demands.
            appendText(trk, QStringLiteral("name"), track.name());
            appendText(trk, QStringLiteral("desc"), track.description());
            if (appendSegments(trk, track)) {
                root.appendChild(trk);
            }
            pending = track.enclaves() + pending;
        }
    }
    return root.hasChildNodes() ? document.toString(indentation).toUtf8() : QByteArray();
}

qint64 LvGpxExporter::maximumSize(const LvGPXConfiguredTrackList& tracks)
{
    constexpr qint64 rootBytes = 1024;
    constexpr qint64 longestCharacter = 6; // "&quot;"
    constexpr int trackDepth = 2;
    qint64 bytes = rootBytes + longestCharacter * creator().size();
    for (const LvGPXConfiguredTrack& track : tracks) {
        bytes += LvTrackXml::costOf(track.track(), trackDepth, LvTrackXml::PointForm::Elements).bytes;
    }
    return bytes;
}
