#include "LvTrackExporter.h"

#include "LvGPXConfiguredTrackList.h"
#include "LvGeoJsonExporter.h"
#include "LvGpxExporter.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

QStringList LvTrackExporter::nameFilters()
{
    return {tr("GPX-Dateien (*.gpx)"), tr("GeoJSON-Dateien (*.geojson *.json)")};
}

QStringList LvTrackExporter::supportedSuffixes()
{
    return {QStringLiteral("gpx"), QStringLiteral("geojson"), QStringLiteral("json")};
}

QString LvTrackExporter::save(const LvGPXConfiguredTrackList& tracks, const QString& fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (!supportedSuffixes().contains(suffix)) {
        return tr("Der Dateiname muss auf .gpx, .geojson oder .json enden.");
    }
    const QByteArray bytes =
        suffix == QLatin1String("gpx") ? LvGpxExporter::encode(tracks) : LvGeoJsonExporter::encode(tracks);
    if (bytes.isEmpty()) {
        return tr("Es gibt keine Spur mit Punkten.");
    }
    QSaveFile file(fileName);
    // Without the flush, commit() would not notice that the last bytes of the buffer could not be written.
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()
        || !file.commit()) {
        return tr("Die Datei „%1“ konnte nicht geschrieben werden: %2")
            .arg(QDir::toNativeSeparators(fileName), file.errorString());
    }
    return {};
}
