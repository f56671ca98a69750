#pragma once

#include "LvSingleton.h"
#include "LvTrackSelectionFactoryAbstract.h"
#include "lvgeolocation_export.h"

#include <QList>

/**
 * The one place that reads track files of every kind: hands a file to the first factory that supports it and
 * writes to the usage log which one that was.
 *
 * A process-wide service; reading is safe from any thread, asking the user belongs to the user interface
 * thread.
 */
class LVGEOLOCATION_EXPORT LvTrackSelectionFactory : public LvTrackSelectionFactoryAbstract,
                                                     public LvSingleton<LvTrackSelectionFactory>
{
public:
    ~LvTrackSelectionFactory() override;

    /// Whether any factory supports the file.
    [[nodiscard]] bool supportsFile(const QUrl& url) const override;
    /// The patterns of all factories: "*.gpx", "*.kml", "*.kmz".
    [[nodiscard]] QStringList supportedFileFormats() const override;
    /// What the first factory that supports the file makes of it; empty, without a log line, when none does.
    [[nodiscard]] LvGPXConfiguredTrackList createConfiguredTrackList(const QUrl& url) const override;
    /// The tracks of all files, in order.
    [[nodiscard]] virtual LvGPXConfiguredTrackList createConfiguredTrackList(const QList<QUrl>& urls) const;

    /// Asks the user for one file and reads it; empty when the user cancels.
    [[nodiscard]] LvGPXConfiguredTrackList askUserReadFile() const;

private:
    friend class LvSingleton<LvTrackSelectionFactory>;
    LvTrackSelectionFactory();
    Q_DISABLE_COPY_MOVE(LvTrackSelectionFactory)

    QList<LvTrackSelectionFactoryAbstract*> myFactories;
};
