#pragma once

#include "LvCommand.h"
#include "LvGPXTrackSelection.h"
#include "LvGeoPosition.h"
#include "LvGeoPositionRect.h"
#include "LvMapView.h"
#include "LvStyleOptions.h"

#include <QSize>

#include <optional>

class LvMapPicture;

/// "lvtracks render": draws the tracks of files on a map into a picture file.
class LvRenderCommand : public LvCommand
{
protected:
    [[nodiscard]] QString name() const override;
    void addOptions(QCommandLineParser& parser) override;
    LvExitCode run(const QCommandLineParser& parser, const QStringList& fileNames) override;

private:
    /// Each reads some of the options and returns why one of them is wrong; an empty text when all are well.
    [[nodiscard]] QString readOptions(const QCommandLineParser& parser);
    [[nodiscard]] QString readOutput(const QCommandLineParser& parser);
    [[nodiscard]] QString readArea(const QCommandLineParser& parser);
    [[nodiscard]] QString readNumbers(const QCommandLineParser& parser);

    /// Loads and styles all files; returns how many of them gave nothing.
    qsizetype load(const QStringList& fileNames, bool showProgress, LvGPXTrackSelection& selection) const;
    [[nodiscard]] LvMapView viewFor(const LvGPXTrackSelection& selection) const;

    /// Where the area is free to choose: moves the map up when scale bar or attribution cover tracks.
    void makeRoomForLegend(LvMapPicture& picture) const;

    QString myOutputName;
    QString myMapName;
    std::optional<QString> myAttribution;
    QSize mySize;
    double myPaintFactor = 1.0;
    int myCroppingOpacity = 255;
    std::optional<LvGeoPositionRect> myBox;
    std::optional<LvGeoPosition> myCenter;
    double myZoom = 0.0;
    LvStyleOptions myStyle;
};
