#pragma once

#include "LvGPXConfiguredTrackList.h"
#include "lvgeolocation_export.h"

#include <QStringList>
#include <QUrl>

/**
 * Turns files of one kind into lists of configured tracks that are ready to be shown.
 *
 * No operation reports an error: what cannot be read gives an empty list or invalid tracks.
 */
class LVGEOLOCATION_EXPORT LvTrackSelectionFactoryAbstract
{
public:
    LvTrackSelectionFactoryAbstract();
    virtual ~LvTrackSelectionFactoryAbstract();

    /// Whether the name of the file suggests that this factory can read it; the file itself is not looked at.
    [[nodiscard]] virtual bool supportsFile(const QUrl& url) const = 0;
    /// File name patterns for an open dialog, such as "*.gpx".
    [[nodiscard]] virtual QStringList supportedFileFormats() const = 0;
    /// The tracks of a local file; empty when nothing can be read.
    [[nodiscard]] virtual LvGPXConfiguredTrackList createConfiguredTrackList(const QUrl& url) const = 0;

private:
    Q_DISABLE_COPY_MOVE(LvTrackSelectionFactoryAbstract)
};
