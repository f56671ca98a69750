// Pictures of whatever a text yields. The first line of the input sets up the picture:
// "width height factor projection option opacity", such as "40 30 1.0 mercator 0 128".

#include "LvFileHandler.h"
#include "LvFuzz.h"
#include "LvGPXConfiguredTrack.h"
#include "LvGPXConfiguredTrackList.h"
#include "LvGPXTrack.h"
#include "LvGPXTrackConfiguration.h"
#include "LvGPXTrackFile.h"
#include "LvGPXTrackRenderer.h"
#include "LvGPXTrackSelection.h"
#include "LvMapProjection.h"
#include "LvTrackSelectionFactoryKmlFile.h"
#include "LvXMLLoader.h"

#include <QDir>
#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>
#include <QPainter>

#include <algorithm>

namespace
{

constexpr int largestSide = 64;
constexpr double farPixelsPerDegree = 1e9;

/// Draws in one of several projections, not all of which a sane program would use.
class LvFuzzRenderer : public LvGPXTrackRenderer
{
public:
    LvFuzzRenderer(const LvGPXTrackSelection& tracks, const QSize& size, double factor,
                   const QString& projection)
        : LvGPXTrackRenderer(tracks, size, factor)
        , myMercator(tracks.boundingBox().withPadding(10.0), size)
        , myProjection(projection)
    {
    }

    [[nodiscard]] QPointF project(const LvGeoPosition& position) const override
    {
        const QPointF degrees = position.toPointF();
        if (myProjection == QLatin1String("world")) { // the whole world on the picture
            return {(degrees.x() + 180.0) / 360.0 * targetImageSize().width(),
                    (90.0 - degrees.y()) / 180.0 * targetImageSize().height()};
        }
        if (myProjection == QLatin1String("tiny")) { // a world of two pixels
            return degrees / 180.0;
        }
        if (myProjection == QLatin1String("degrees")) { // nothing keeps hostile numbers from the painter
            return degrees;
        }
        if (myProjection == QLatin1String("far")) {
            return degrees * farPixelsPerDegree;
        }
        return myMercator.projectate(position);
    }

private:
    LvMapProjection myMercator;
    QString myProjection;
};

/// The painter leaves out at once what is invisible, and colours are missing in most texts.
LvGPXTrackSelection withVisibleColors(const LvGPXTrackSelection& selection)
{
    LvGPXConfiguredTrackList tracks = selection.tracks();
    for (LvGPXConfiguredTrack& track : tracks) {
        if (track.lineColor().alpha() == 0) {
            track.setLineColor(Qt::red);
        }
        if (track.fillColor().alpha() == 0) {
            track.setFillColor(Qt::green);
        }
    }
    return tracks;
}

LvGPXTrackSelection readTracks(const QByteArray& bytes)
{
    QDomDocument document;
    LvXMLLoader::parse(bytes, document);
    const QDomElement root = document.documentElement();
    if (root.tagName() == QLatin1String("kml")) {
        return LvTrackSelectionFactoryKmlFile::decode(LvFileHandler::decodeText(bytes),
                                                      QStringLiteral("tour"));
    }
    LvGPXTrackSelection selection(root, QDir(QString()), QString());
    int counter = 0;
    const QList<LvGPXTrack> tracks =
        LvGPXTrackFile::readTracks(root, QStringLiteral("trk"), counter, QFileInfo(QStringLiteral("tour")));
    for (const LvGPXTrack& track : tracks) {
        selection.addTrack(LvGPXConfiguredTrack(track, LvGPXTrackConfiguration::fromXml(root)));
    }
    return selection;
}

/// A painter of one's own draws everything; the renderer leaves out what it takes to be invisible.
void checkAgainstPainter(const LvFuzzRenderer& renderer, TrackRenderOption option, const QImage& picture)
{
    QImage own(picture.size(), QImage::Format_ARGB32_Premultiplied);
    own.fill(Qt::transparent);
    QPainter painter(&own);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.renderWith(painter, option);
    painter.end();
    LvFuzz::expect(own.convertToFormat(QImage::Format_ARGB32) == picture,
                   "a painter of one's own draws the same picture");
}

} // namespace

void LvFuzz::run(const QByteArray& input)
{
    const qsizetype lineEnd = input.indexOf('\n');
    const qsizetype end = lineEnd < 0 ? input.size() : lineEnd;
    const QList<QByteArray> setup = input.first(end).split(' ');
    const QSize size(std::min(largestSide, setup.value(0).toInt()),
                     std::min(largestSide, setup.value(1).toInt()));
    const double factor = setup.value(2).toDouble();
    const auto option = static_cast<TrackRenderOption>(setup.value(4).toInt());
    LvGPXTrackSelection selection = withVisibleColors(readTracks(input.mid(end + 1)));
    selection.setCroppingOpacity(setup.value(5).toInt());

    const LvFuzzRenderer renderer(selection, size, factor, QString::fromUtf8(setup.value(3)));
    const QSize expected = size.isEmpty() ? QSize(0, 0) : size;
    const QImage picture = renderer.render(option);
    expect(picture.size() == expected, "a picture has the size that was asked for");
    expect(picture.isNull() || picture.format() == QImage::Format_ARGB32, "a picture has colours and alpha");
    if (!picture.isNull()) {
        checkAgainstPainter(renderer, option, picture);
    }
    expect(renderer.renderQuickAndDirty(option).size() == expected, "a quick picture has the same size");
    const QImage mask = renderer.renderForeground();
    expect(mask.size() == expected, "a mask has the size that was asked for");

    QImage background(largestSide / 2, largestSide / 2, QImage::Format_RGB32);
    background.fill(Qt::gray);
    const QImage cropped = renderer.crop(background);
    expect(cropped.size() == background.size(), "cropping keeps the size");
    const QRgb colors = cropped.pixel(1, 1) & RGB_MASK;
    expect(colors == (background.pixel(1, 1) & RGB_MASK), "cropping keeps the colours");
}
