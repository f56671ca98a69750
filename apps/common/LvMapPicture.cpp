#include "LvMapPicture.h"

#include "LvCopyrightRenderer.h"
#include "LvDistance.h"
#include "LvFileHandler.h"
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
#include <QStringList>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int jpegQuality = 92;
constexpr int opaqueMap = 255; // the cropping opacity that leaves the map as it is
constexpr int pixelsPerInch = 96; // of SVG and PDF pictures
constexpr double pointsPerInch = 72.0; // of paper
constexpr double legendMargin = 10.0; // pixels at factor 1 between the legend and the edges of the picture
constexpr double legendGap = 2.0; // pixels between the legend and the edges of the picture at least
constexpr double liftedHeights = 2.5; // lower edge to top of a scale bar that makes room for the attribution
constexpr double shrinkStep = 0.9;
constexpr double smallestTextFactor = 0.1; // below it the legend has no texts

bool hasVisiblePixel(const QImage& image, const QRect& rect)
{
    const QRect part = rect.intersected(image.rect());
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (std::any_of(line + part.left(), line + part.right() + 1,
                        [](QRgb pixel) { return qAlpha(pixel) != 0; })) {
            return true;
        }
    }
    return false;
}

} // namespace

/// Where scale bar and attribution stand, and how large they are drawn.
struct LvMapPicture::Legend {
    double scaleFactor;
    QRectF scaleBox; // empty when there is no scale bar
    double attributionFactor;
    QRectF attributionBox; // empty when there is no attribution
};

LvMapPicture::LvMapPicture(LvGPXTrackSelection selection, LvMapView view, LvMapSource* source,
                           double paintFactor)
    : mySelection(std::move(selection))
    , myView(std::move(view))
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

bool LvMapPicture::isLegendOnTracks() const
{
    const Legend places = legend();
    const QRect scale = places.scaleBox.toAlignedRect();
    const QRect attribution = places.attributionBox.toAlignedRect();
    const QRect strip = scale.united(attribution);
    // As wide as the picture, whose width tells the renderer how many copies of the world there are.
    QImage image = transparentImage({myView.size().width(), strip.height()});
    if (image.isNull()) {
        return false;
    }
    QPainter painter(&image);
    painter.translate(0.0, -strip.top());
    LvMapTrackRenderer(mySelection, myView, myPaintFactor)
        .renderWith(painter, LvMapTrackRenderer::haloOption);
    painter.end();
    return hasVisiblePixel(image, scale.translated(0, -strip.top()))
        || hasVisiblePixel(image, attribution.translated(0, -strip.top()));
}

int LvMapPicture::legendHeight() const
{
    const Legend places = legend();
    const double lifted = (liftedHeights * places.scaleBox.height()) + (legendMargin * places.scaleFactor);
    const double attribution =
        places.attributionBox.height() + (2.0 * legendMargin * places.attributionFactor);
    return static_cast<int>(std::ceil(std::max(lifted, attribution)));
}

bool LvMapPicture::draw(QPainter& painter) const
{
    const LvMapTrackRenderer renderer(mySelection, myView, myPaintFactor);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    bool isComplete = true;
    if (mySelection.effectiveCroppingOpacity() < opaqueMap) {
        QImage map = transparentImage(myView.size());
        isComplete = !map.isNull();
        if (isComplete) {
            QPainter mapPainter(&map);
            drawMap(mapPainter);
            mapPainter.end();
            painter.drawImage(QPointF(0.0, 0.0), renderer.crop(map));
        }
    } else {
        drawMap(painter);
    }
    renderer.drawSelection(painter, [] { return false; });
    drawLegend(painter);
    painter.restore();
    return isComplete;
}

void LvMapPicture::drawLegend(QPainter& painter) const
{
    const Legend places = legend();
    if (myIsScaleBarVisible) {
        scaleRenderer(places.scaleFactor).renderScale(painter, pictureRect(), places.scaleFactor);
    }
    if (!myAttribution.isEmpty()) {
        LvCopyrightRenderer::renderCopyRight(painter, pictureRect(), places.attributionFactor);
    }
}

QImage LvMapPicture::toImage() const
{
    QImage image = transparentImage(myView.size());
    if (!image.isNull()) {
        QPainter painter(&image);
        if (!draw(painter)) {
            return {};
        }
    }
    return image;
}

QString LvMapPicture::save(const QString& fileName) const
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (!supportedSuffixes().contains(suffix)) {
        return tr("unbekannte Art von Bild");
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
        return tr("nicht genug Speicher für das Bild");
    }
    const QString errorText = LvFileHandler::replaceFile(QFileInfo(fileName), bytes);
    if (!errorText.isEmpty()) {
        return tr("lässt sich nicht schreiben: %1").arg(errorText);
    }
    return {};
}

QRect LvMapPicture::pictureRect() const
{
    return {QPoint(0, 0), myView.size()};
}

LvOsmScaleRenderer LvMapPicture::scaleRenderer(double factor) const
{
    return {LvDistance(myView.pixelsPerKilometre() / factor), (QSizeF(myView.size()) / factor).toSize()};
}

QRectF LvMapPicture::scaleBox(double factor) const
{
    const LvOsmScaleRenderer scale = scaleRenderer(factor);
    QRectF box = scale.textRect(pictureRect(), factor) | scale.strokeRect(pictureRect(), factor);
    box.setLeft(0.0);
    const int third = myView.size().width() / 3;
    return box.right() > third ? box.translated(0.0, -1.5 * box.height()) : box;
}

LvMapPicture::Legend LvMapPicture::legend() const
{
    const QSizeF picture(myView.size());
    Legend result{myPaintFactor, {}, myPaintFactor, {}};
    double freeWidth = picture.width();
    if (myIsScaleBarVisible) {
        const QRectF room = QRectF(QPointF(0.0, 0.0), picture).adjusted(0.0, legendGap, -legendGap, 0.0);
        result.scaleBox = scaleBox(result.scaleFactor);
        while (result.scaleFactor >= smallestTextFactor
               && (result.scaleBox.right() > room.right() || result.scaleBox.top() < room.top())) {
            result.scaleFactor *= shrinkStep;
            result.scaleBox = scaleBox(result.scaleFactor);
        }
        // A bar that reaches beyond the left third stands above the attribution instead of beside it.
        freeWidth -=
            result.scaleBox.right() > std::floor(picture.width() / 3.0) ? 0.0 : result.scaleBox.right();
    }
    if (!myAttribution.isEmpty()) {
        LvCopyrightRenderer::setCopyrightText(myAttribution);
        const QSizeF size =
            LvCopyrightRenderer::copyrightTextSize(1.0) + 2.0 * QSizeF(legendMargin, legendMargin);
        result.attributionFactor = std::min({result.scaleFactor, (freeWidth - legendGap) / size.width(),
                                             (picture.height() - legendGap) / size.height()});
        result.attributionBox = LvCopyrightRenderer::copyrightRect(pictureRect(), result.attributionFactor);
    }
    return result;
}

QImage LvMapPicture::transparentImage(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
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
    const bool isComplete = draw(painter);
    painter.end();
    return isComplete ? bytes : QByteArray();
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
    const bool isComplete = draw(painter);
    painter.end();
    return isComplete ? bytes : QByteArray();
}
