#include "LvTrackExporter.h"

#include "LvGPXConfiguredTrackList.h"
#include "LvGeoJsonExporter.h"
#include "LvGpxExporter.h"

#include <QDir>
#include <QFileInfo>

QStringList LvTrackExporter::nameFilters()
{
    return {tr("GPX-Dateien (*.gpx)"), tr("GeoJSON-Dateien (*.geojson *.json)")};
}

QStringList LvTrackExporter::supportedSuffixes()
{
    return {QStringLiteral("gpx"), QStringLiteral("geojson"), QStringLiteral("json")};
}

QString LvTrackExporter::save(const LvGPXConfiguredTrackList& tracks, const QString& fileName,
                              qint64 maximumBytes)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (!supportedSuffixes().contains(suffix)) {
        return tr("Der Dateiname muss auf .gpx, .geojson oder .json enden.");
    }
    const bool isGpx = suffix == QLatin1String("gpx");
    if (isGpx && LvGpxExporter::maximumSize(tracks) > maximumBytes) {
        return tr("Die Spuren haben so viele Punkte, dass sich die Datei nicht wieder öffnen ließe.");
    }
    const QByteArray bytes = isGpx ? LvGpxExporter::encode(tracks) : LvGeoJsonExporter::encode(tracks);
    if (bytes.isEmpty()) {
        return tr("Es gibt keine Spur mit Punkten.");
    }
    const QString errorText = LvFileHandler::replaceFile(QFileInfo(fileName), bytes);
    return errorText.isEmpty() ? QString()
                               : tr("Die Datei „%1“ konnte nicht geschrieben werden: %2")
                                     .arg(QDir::toNativeSeparators(fileName), errorText);
}
