#pragma once

#include "LvTrackSelectionFactoryAbstract.h"
#include "lvgeolocation_export.h"

class QFileInfo;

/// Reads GPX files: each track gets the user's default configuration. Stateless, usable from any thread.
class LVGEOLOCATION_EXPORT LvTrackSelectionFactoryGPXFile : public LvTrackSelectionFactoryAbstract
{
public:
    LvTrackSelectionFactoryGPXFile();
    ~LvTrackSelectionFactoryGPXFile() override;

    [[nodiscard]] bool supportsFile(const QUrl& url) const override;
    [[nodiscard]] QStringList supportedFileFormats() const override;
    [[nodiscard]] LvGPXConfiguredTrackList createConfiguredTrackList(const QUrl& url) const override;

    /// Whether the suffix is "gpx", in any case of its letters.
    [[nodiscard]] virtual bool supportsFile(const QFileInfo& file) const;
    /// The valid tracks of the file, "trk" before "rte", see LvGPXTrackFile; empty for an unreadable file.
    [[nodiscard]] virtual LvGPXConfiguredTrackList createConfiguredTrackList(const QFileInfo& file) const;

private:
    Q_DISABLE_COPY_MOVE(LvTrackSelectionFactoryGPXFile)
};
