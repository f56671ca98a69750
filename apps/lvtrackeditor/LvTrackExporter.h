#pragma once

#include "LvFileHandler.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class LvGPXConfiguredTrackList;

/// Writes tracks into files for other programs: GPX 1.1 or GeoJSON.
class LvTrackExporter
{
    Q_DECLARE_TR_FUNCTIONS(LvTrackExporter)

public:
    LvTrackExporter() = delete;

    /// For file dialogues, the usual format first.
    static QStringList nameFilters();

    /// The suffixes that save() knows, in lower case: "gpx", "geojson", "json".
    static QStringList supportedSuffixes();

    /// Writes a file of the kind that its suffix names. The file appears whole or not at all. Returns why
    /// that failed, one line; an empty text on success. GPX of more bytes than the maximum, which this
    /// program could not open, is not written. May be called from any thread.
    [[nodiscard]] static QString save(const LvGPXConfiguredTrackList& tracks, const QString& fileName,
                                      qint64 maximumBytes = LvFileHandler::maximumFileSize);
};
