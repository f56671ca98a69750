#include "LvTrackSelectionFactoryGPXFile.h"

#include "LvGPXTrackFile.h"
#include "LvGeoLocationSettings.h"

#include <QFileInfo>

LvTrackSelectionFactoryGPXFile::LvTrackSelectionFactoryGPXFile() = default;
LvTrackSelectionFactoryGPXFile::~LvTrackSelectionFactoryGPXFile() = default;

bool LvTrackSelectionFactoryGPXFile::supportsFile(const QUrl& url) const
{
    return supportsFile(QFileInfo(url.toLocalFile()));
}

QStringList LvTrackSelectionFactoryGPXFile::supportedFileFormats() const
{
    return {QStringLiteral("*.gpx")};
}

LvGPXConfiguredTrackList LvTrackSelectionFactoryGPXFile::createConfiguredTrackList(const QUrl& url) const
{
    return createConfiguredTrackList(QFileInfo(url.toLocalFile()));
}

bool LvTrackSelectionFactoryGPXFile::supportsFile(const QFileInfo& file) const
{
    return file.suffix().compare(QLatin1String("gpx"), Qt::CaseInsensitive) == 0;
}

LvGPXConfiguredTrackList
LvTrackSelectionFactoryGPXFile::createConfiguredTrackList(const QFileInfo& file) const
{
    LvGPXConfiguredTrackList list;
    const QList<LvGPXTrack> tracks = LvGPXTrackFile(file).tracks();
    for (const LvGPXTrack& track : tracks) {
        list.append(
            LvGPXConfiguredTrack(track, LvGeoLocationSettings::instance()->defaultTrackConfiguration()));
    }
    return list;
}
