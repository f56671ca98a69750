#include "LvMapPicture.h"

#include "LvCopyrightRenderer.h"
#include "LvDistance.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrackConfiguration.h"
#include "LvMapSource.h"
#include "LvMapTrackRenderer.h"
#include "LvOsmScaleRenderer.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QStringList>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace
{

constexpr QColor haloColor(255, 255, 255, 180);
constexpr int jpegQuality = 92;
constexpr int opaqueMap = 255; // the cropping opacity that leaves the map as it is
constexpr int pixelsPerInch = 96; // of SVG and PDF pictures
constexpr double pointsPerInch = 72.0; // of paper

// Neither of the two values that the renderer knows by name: as wide as the line with its halo, but in the
// colour of the configuration.
constexpr auto haloOption = static_cast<TrackRenderOption>(2);

QString translated(const char* text)
{
    return QCoreApplication::translate("LvMapPicture", text);
}

bool isFilledArea(const LvGPXConfiguredTrack& track)
{
    return track.effectiveShape() == LvGPXTrackShapeEnum::polygon
        && track.hasDrawOption(LvGPXTrackDisplayOptionsEnum::fill);
}

/// The track as the light seam below itself.
LvGPXConfiguredTrack haloOf(const LvGPXConfiguredTrack& track)
{
    LvGPXTrackConfiguration configuration = track.configuration();
    configuration.setLineColor(haloColor);
    configuration.setCurrentDisplayOptions(LvGPXTrackDisplayOptionsEnum::stroke);
    LvGPXConfiguredTrack halo = track;
    halo.setConfiguration(configuration);
    return halo;
}

} // namespace

LvMapPicture::LvMapPicture(const LvGPXTrackSelection& selection, const LvMapView& view, LvMapSource* source,
                           double paintFactor)
    : mySelection(selection)
    , myView(view)
    , mySource(source)
    , myAttribution(source != nullptr ? source->attribution() : QString())
    , myPaintFactor(paintFactor)
{
}

QStringList LvMapPicture::supportedSuffixes()
{
    return {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("svg"),
            QStringLiteral("pdf")};
}

void LvMapPicture::draw(QPainter& painter) const
{
    const LvMapTrackRenderer renderer(mySelection, myView, myPaintFactor);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (mySelection.effectiveCroppingOpacity() < opaqueMap) {
        QImage map = transparentImage();
        QPainter mapPainter(&map);
        drawMap(mapPainter);
        mapPainter.end();
        painter.drawImage(QPointF(0.0, 0.0), renderer.crop(map));
        renderer.renderWith(painter, TrackRenderOption::Normal);
    } else {
        drawMap(painter);
        drawTracks(painter, renderer);
    }
    drawLegend(painter);
    painter.restore();
}

QImage LvMapPicture::toImage() const
{
    QImage image = transparentImage();
    if (!image.isNull()) {
        QPainter painter(&image);
        draw(painter);
    }
    return image;
}

QString LvMapPicture::save(const QString& fileName) const
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (!supportedSuffixes().contains(suffix)) {
        return translated("unknown kind of picture");
    }
    QByteArray bytes;
    if (suffix == QLatin1String("svg")) {
        bytes = encodeSvg();
    } else if (suffix == QLatin1String("pdf")) {
        bytes = encodePdf();
    } else {
        bytes = encodeImage(suffix);
    }
    if (bytes.isEmpty()) {
        return translated("not enough memory for the picture");
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        return translated("cannot be written: %1").arg(file.errorString());
    }
    return {};
}

QImage LvMapPicture::transparentImage() const
{
    QImage image(myView.size(), QImage::Format_ARGB32_Premultiplied);
    if (!image.isNull()) {
        image.fill(Qt::transparent);
    }
    return image;
}

void LvMapPicture::drawMap(QPainter& painter) const
{
    if (mySource != nullptr) {
        mySource->draw(painter, myView, myPaintFactor);
    }
}

void LvMapPicture::drawTracks(QPainter& painter, const LvGPXTrackRenderer& renderer) const
{
    const LvGPXConfiguredTrackList tracks = mySelection.tracks();
    qsizetype first = 0;
    while (first < tracks.count()) {
        // Neighbouring lines share one layer of halos, so that no halo cuts into a line beside it. A filled
        // area would hide that layer; it starts a new one.
        qsizetype end = first + 1;
        if (!isFilledArea(tracks.at(first))) {
            while (end < tracks.count() && !isFilledArea(tracks.at(end))) {
                ++end;
            }
        }
        for (qsizetype i = first; i < end; ++i) {
            if (!tracks.at(i).haloWidth().isNull()) {
                renderer.drawTrack(&painter, haloOf(tracks.at(i)), haloOption);
            }
        }
        for (qsizetype i = first; i < end; ++i) {
            renderer.drawTrack(&painter, tracks.at(i), TrackRenderOption::Normal);
        }
        first = end;
    }
}

void LvMapPicture::drawLegend(QPainter& painter) const
{
    const QRect rect(QPoint(0, 0), myView.size());
    if (myIsScaleBarVisible) {
        const QSize unscaledSize = (QSizeF(myView.size()) / myPaintFactor).toSize();
        const LvOsmScaleRenderer scale(LvDistance(myView.pixelsPerKilometre() / myPaintFactor), unscaledSize);
        scale.renderScale(painter, rect, myPaintFactor);
    }
    if (!myAttribution.isEmpty()) {
        LvCopyrightRenderer::setCopyrightText(myAttribution);
        LvCopyrightRenderer::renderCopyRight(painter, rect, myPaintFactor);
    }
}

QByteArray LvMapPicture::encodeImage(const QString& suffix) const
{
    QImage image = toImage();
    if (image.isNull()) {
        return {};
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, suffix.toLatin1());
    if (suffix != QLatin1String("png")) {
        // No transparency in these files: paper is white.
        QImage opaque(image.size(), QImage::Format_RGB32);
        opaque.fill(Qt::white);
        QPainter painter(&opaque);
        painter.drawImage(0, 0, image);
        painter.end();
        image = opaque;
        writer.setQuality(jpegQuality);
    }
    return writer.write(image) ? bytes : QByteArray();
}

QByteArray LvMapPicture::encodeSvg() const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(pixelsPerInch);
    generator.setSize(myView.size());
    generator.setViewBox(QRect(QPoint(0, 0), myView.size()));
    generator.setTitle(QCoreApplication::applicationName());
    QPainter painter(&generator);
    draw(painter);
    painter.end();
    return bytes;
}

QByteArray LvMapPicture::encodePdf() const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly)) {
        return {};
    }
    QPdfWriter writer(&buffer);
    writer.setResolution(pixelsPerInch);
    writer.setPageMargins(QMarginsF());
    writer.setPageSize(QPageSize(QSizeF(myView.size()) * pointsPerInch / pixelsPerInch, QPageSize::Point,
                                 QString(), QPageSize::ExactMatch));
    QPainter painter(&writer);
    draw(painter);
    painter.end();
    return bytes;
}
