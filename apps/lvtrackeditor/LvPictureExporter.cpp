#include "LvPictureExporter.h"

#include "LvMapPicture.h"
#include "LvMapSource.h"
#include "LvTileUrlTemplate.h"
#include "LvTrackBounds.h"
#include "LvUrlTileSource.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int patienceMs = 20000; // without any tile from the server
constexpr auto imageFormat = QImage::Format_ARGB32_Premultiplied;
constexpr double degreesAround = 360.0;
constexpr double halfTurn = 180.0;

std::unique_ptr<LvMapSource> createSource(const QString& name)
{
    if (LvTileUrlTemplate::looksLikeUrl(name)) {
        return std::make_unique<LvUrlTileSource>(LvTileUrlTemplate(name));
    }
    return LvMapSource::create(name);
}

/// Draws the lower edge of a picture that has nothing but a legend.
void drawAsImage(QPainter& painter, const LvMapPicture& legend, const QSize& size)
{
    const int height = std::min(legend.legendHeight(), size.height());
    QImage image(size.width(), height, imageFormat);
    if (image.isNull()) {
        return; // nothing to draw
    }
    const int top = size.height() - height;
    image.fill(Qt::transparent);
    QPainter imagePainter(&image);
    imagePainter.translate(0, -top);
    legend.draw(imagePainter);
    imagePainter.end();
    painter.drawImage(QPoint(0, top), image);
}

/// Fetches all tiles of the view. False when the server does not send them.
bool waitForTiles(LvUrlTileSource& source, const LvMapView& view, double paintFactor)
{
    QEventLoop loop;
    QTimer patience;
    patience.setSingleShot(true);
    QObject::connect(&patience, &QTimer::timeout, &loop, [&loop] { loop.exit(1); });
    QObject::connect(&source, &LvUrlTileSource::tilesChanged, &loop, [&loop] { loop.exit(0); });
    QImage nowhere(1, 1, imageFormat); // which tiles are needed depends on the view
    do {
        QPainter painter(&nowhere);
        source.draw(painter, view, paintFactor);
        painter.end();
        if (source.isComplete()) {
            return true;
        }
        patience.start(patienceMs);
    } while (loop.exec(QEventLoop::ExcludeUserInputEvents) == 0);
    return false;
}

} // namespace

LvPictureExporter::LvPictureExporter(LvGPXTrackSelection shown, const LvMapView& view, QString mapSource,
                                     QString attribution)
    : mySelection(std::move(shown))
    , myView(view)
    , myMapSource(std::move(mapSource))
    , myAttribution(std::move(attribution))
{
}

LvMapView LvPictureExporter::viewFor(const LvPictureOptions& options) const
{
    if (options.extent == LvPictureOptions::Extent::AllTracks) {
        return LvMapView::fittedTo(LvTrackBounds::ofSelection(mySelection), options.size);
    }
    const double x = myView.normalizedRect().center().x();
    const double longitude = (x - std::floor(x)) * degreesAround - halfTurn;
    const LvGeoPosition center(myView.middleLatitude(), longitude);
    const double enlargement = std::min(static_cast<double>(options.size.width()) / myView.size().width(),
                                        static_cast<double>(options.size.height()) / myView.size().height());
    return LvMapView::aroundCenter(center, myView.zoom() + std::log2(enlargement), options.size);
}

QString LvPictureExporter::draw(QPainter& painter, const LvPictureOptions& options) const
{
    return withPicture(options, [&](LvMapPicture& picture) {
        const QString attribution = picture.attribution();
        // Texts have their sizes in points, which are more pixels on paper than the picture counts with.
        const bool needsOwnLegend =
            painter.device()->logicalDpiY() != QImage(1, 1, imageFormat).logicalDpiY();
        if (needsOwnLegend) {
            picture.setScaleBarVisible(false);
            picture.setAttribution(QString());
        }
        if (!picture.draw(painter)) {
            return tr("Der Arbeitsspeicher reicht für das Bild nicht aus.");
        }
        if (needsOwnLegend) {
            LvMapPicture legend(LvGPXTrackSelection(), viewFor(options), nullptr, options.paintFactor);
            legend.setScaleBarVisible(options.hasScaleBar);
            legend.setAttribution(attribution);
            drawAsImage(painter, legend, options.size);
        }
        return QString();
    });
}

QString LvPictureExporter::save(const QString& fileName, const LvPictureOptions& options) const
{
    return withPicture(options, [&fileName](LvMapPicture& picture) {
        const QString errorText = picture.save(fileName);
        return errorText.isEmpty() ? QString()
                                   : tr("Das Bild „%1“ konnte nicht geschrieben werden: %2")
                                         .arg(QDir::toNativeSeparators(fileName), errorText);
    });
}

QString LvPictureExporter::withPicture(const LvPictureOptions& options,
                                       const std::function<QString(LvMapPicture&)>& use) const
{
    QString errorText;
    const LvMapView view = viewFor(options);
    const std::unique_ptr<LvMapSource> source = openSource(view, options.paintFactor, errorText);
    if (!errorText.isEmpty()) {
        return errorText;
    }
    LvMapPicture picture(mySelection, view, source.get(), options.paintFactor);
    if (!myAttribution.isEmpty()) {
        picture.setAttribution(myAttribution);
    }
    picture.setScaleBarVisible(options.hasScaleBar);
    return use(picture);
}

std::unique_ptr<LvMapSource> LvPictureExporter::openSource(const LvMapView& view, double paintFactor,
                                                           QString& errorText) const
{
    std::unique_ptr<LvMapSource> source = createSource(myMapSource);
    if (source && !source->isValid()) {
        errorText = tr("Die Karte „%1“ ist nicht verfügbar: %2").arg(myMapSource, source->errorText());
        return nullptr;
    }
    auto* server = dynamic_cast<LvUrlTileSource*>(source.get());
    if (server != nullptr && !waitForTiles(*server, view, paintFactor)) {
        errorText = tr("Der Kartenserver liefert nicht alle Kacheln, die das Bild braucht.");
        return nullptr;
    }
    return source;
}
