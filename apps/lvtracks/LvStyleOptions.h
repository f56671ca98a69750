#pragma once

#include "LvGPXMarkerShape.h"
#include "LvGPXTrackConfiguration.h"

#include <QColor>
#include <QString>

#include <optional>

class LvGPXConfiguredTrack;
class QCommandLineParser;

/**
 * The drawing style that the command line asks for: what is not given stays as the tracks bring it along.
 */
class LvStyleOptions
{
public:
    static void addOptions(QCommandLineParser& parser);

    /// Reads the options. Returns why one of them is wrong; empty when all are well.
    QString read(const QCommandLineParser& parser);

    /// Reads the file that the options name, if any. Returns why that failed; empty on success.
    QString loadStyleFile();

    /// Name of the style file; empty when there is none.
    [[nodiscard]] QString styleFileName() const { return myStyleFileName; }

    /// Applies the style to a track of the file with the given number, counted from 0.
    void apply(LvGPXConfiguredTrack& track, qsizetype fileNumber) const;

private:
    [[nodiscard]] QString readColors(const QCommandLineParser& parser);
    [[nodiscard]] QString readWidths(const QCommandLineParser& parser);
    [[nodiscard]] QString readMarker(const QCommandLineParser& parser);

    QString myStyleFileName;
    std::optional<LvGPXTrackConfiguration> myConfiguration;
    std::optional<QColor> myColor;
    bool myHasColorPerFile = false;
    std::optional<QColor> myFillColor;
    bool myHasNoFill = false;
    std::optional<double> myWidth;
    std::optional<double> myHaloWidth;
    std::optional<LvGPXMarkerShape> myMarker;
};
