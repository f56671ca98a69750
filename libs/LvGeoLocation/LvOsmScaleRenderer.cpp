#include "LvOsmScaleRenderer.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QRect>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double fontPointSize = 24.0;
constexpr double textMarginWidth = 20.0;
constexpr double textMarginHeight = 5.0;
constexpr double edgeDistance = 10.0;
constexpr double strokeHeight = 20.0;
constexpr double liftPerBackdropHeight = 1.5;
// A thumbnail below it is too small for text.
constexpr double smallestTextFactor = 0.1;
constexpr double metresPerKilometre = 1000.0;
constexpr double endOfLadder = 100000.0;

struct Rung {
    double lowerEnd; // exclusive, in kilometres
    double length; // in kilometres
};

// The rung of ten metres is compared as 0.01 and shown as the product, one unit in the last place longer.
constexpr std::array<Rung, 24> ladder{
    {{0.001, 0.001},   {0.0025, 0.0025},   {0.005, 0.005},     {0.01, 0.1 * 0.1}, {0.025, 0.025},
     {0.05, 0.05},     {0.1, 0.1},         {0.25, 0.25},       {0.5, 0.5},        {1.0, 1.0},
     {2.5, 2.5},       {5.0, 5.0},         {10.0, 10.0},       {25.0, 25.0},      {50.0, 50.0},
     {100.0, 100.0},   {250.0, 250.0},     {500.0, 500.0},     {1000.0, 1000.0},  {2500.0, 2500.0},
     {5000.0, 5000.0}, {10000.0, 10000.0}, {25000.0, 25000.0}, {50000.0, 50000.0}}};

void drawPlaceholder(QPainter& painter, const QRectF& backdrop, const QRectF& text)
{
    painter.fillRect(backdrop, LvOsmScaleRenderer::semiOpaqueWhite);
    painter.setPen(QPen(LvOsmScaleRenderer::semiOpaqueBlack, 1.0, Qt::DashDotLine));
    const double y = std::trunc(text.center().y());
    painter.drawLine(QPointF(std::trunc(backdrop.center().x()), y), QPointF(std::trunc(backdrop.right()), y));
}

// A wide U whose base is raised by a third of its height.
void drawBar(QPainter& painter, const QRectF& stroke)
{
    const double baseY = stroke.bottom() - std::abs(stroke.height()) / 3.0;
    painter.drawLine(QPointF(stroke.left(), baseY), QPointF(stroke.left(), stroke.top()));
    painter.drawLine(QPointF(stroke.left(), baseY), QPointF(stroke.right(), baseY));
    painter.drawLine(QPointF(stroke.right(), stroke.top()), QPointF(stroke.right(), baseY));
}

} // namespace

const LvDistance LvOsmScaleRenderer::theMaximumWidth(300.0);
const QColor LvOsmScaleRenderer::semiOpaqueWhite(225, 225, 225, 180);
const QColor LvOsmScaleRenderer::semiOpaqueBlack(0, 0, 0, 180);

LvOsmScaleRenderer::LvOsmScaleRenderer(const LvDistance& pixelsPerKilometre, const QSize& mapSize)
    : myPixelsPerKilometre(pixelsPerKilometre)
    , myMapSize(mapSize)
{
}

LvOsmScaleRenderer::LvOsmScaleRenderer(const LvOsmScaleRenderer& other) = default;
LvOsmScaleRenderer::LvOsmScaleRenderer(LvOsmScaleRenderer&& other) noexcept = default;
LvOsmScaleRenderer& LvOsmScaleRenderer::operator=(const LvOsmScaleRenderer& other) = default;
LvOsmScaleRenderer& LvOsmScaleRenderer::operator=(LvOsmScaleRenderer&& other) noexcept = default;
LvOsmScaleRenderer::~LvOsmScaleRenderer() = default;

double LvOsmScaleRenderer::shownKilometers() const
{
    const double longest = maximumPaintFactor();
    if (longest > endOfLadder) {
        return longest;
    }
    const auto rung = std::find_if(ladder.crbegin(), ladder.crend(),
                                   [longest](const Rung& each) { return each.lowerEnd < longest; });
    return rung == ladder.crend() ? ladder.front().length : rung->length;
}

QString LvOsmScaleRenderer::scaleText() const
{
    const double kilometres = shownKilometers();
    if (kilometres < 1.0) {
        return QStringLiteral("%1 m").arg(qRound(kilometres * metresPerKilometre));
    }
    return QStringLiteral("%1 km").arg(kilometres, 0, 'g', -1, QLatin1Char(' '));
}

QFont LvOsmScaleRenderer::textFont(double factor)
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(fontPointSize * factor);
    return font;
}

QSizeF LvOsmScaleRenderer::textSize(double factor) const
{
    const QSize size = QFontMetrics(textFont(1.0)).size(Qt::TextSingleLine, scaleText());
    return {(size.width() + textMarginWidth) * factor, (size.height() + textMarginHeight) * factor};
}

double LvOsmScaleRenderer::strokeLength(double factor) const
{
    return std::trunc(myPixelsPerKilometre.value() * shownKilometers() * factor);
}

QRectF LvOsmScaleRenderer::textRect(const QRect& imageRect, double factor) const
{
    QRectF rect(QPointF(0.0, 0.0), textSize(factor));
    rect.moveLeft(imageRect.left() + edgeDistance * factor + strokeLength(factor));
    rect.moveBottom(imageRect.bottom() - edgeDistance * factor);
    return rect;
}

QRectF LvOsmScaleRenderer::strokeRect(const QRectF& imageRect, double factor) const
{
    QRectF rect(0.0, 0.0, strokeLength(factor), std::floor(strokeHeight * factor));
    rect.moveLeft(imageRect.left() + edgeDistance * factor);
    rect.moveBottom(imageRect.bottom() - edgeDistance * factor);
    return rect;
}

void LvOsmScaleRenderer::renderScale(QImage* image, double factor) const
{
    QPainter painter(image);
    renderScale(painter, image->rect(), factor);
}

void LvOsmScaleRenderer::renderScale(QPainter& painter, const QRect& imageRect, double factor) const
{
    QRectF text = textRect(imageRect, factor);
    QRectF stroke = strokeRect(imageRect, factor);
    if (!std::isfinite(stroke.width())) {
        return;
    }
    QRectF backdrop = text | stroke;
    backdrop.setLeft(0.0);
    if (backdrop.right()
        > imageRect.width() / 3) { // NOLINT(bugprone-integer-division) whole pixels are meant
        const double lift = liftPerBackdropHeight * backdrop.height();
        for (QRectF* rect : {&text, &stroke, &backdrop}) {
            rect->translate(0.0, -lift);
        }
    }

    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (!(factor >= smallestTextFactor)) {
        drawPlaceholder(painter, backdrop, text);
        painter.restore();
        return;
    }
    const double radius = text.height() / 2.0;
    painter.setFont(textFont(factor));
    painter.setBrush(semiOpaqueWhite);
    painter.setPen(semiOpaqueWhite);
    painter.drawRoundedRect(backdrop, radius, radius, Qt::AbsoluteSize);
    painter.setPen(semiOpaqueBlack);
    const QRectF centred(text.left(), backdrop.top(),
                         backdrop.width() - stroke.width() - edgeDistance * factor, backdrop.height());
    painter.drawText(centred, Qt::AlignHCenter | Qt::AlignVCenter, scaleText());
    drawBar(painter, stroke);
    painter.restore();
}

double LvOsmScaleRenderer::maximumPaintFactor() const
{
    const LvDistance twoThirds(2 * myMapSize.width()
                               / 3); // NOLINT(bugprone-integer-division) whole pixels are meant
    return std::min(theMaximumWidth, twoThirds) / myPixelsPerKilometre;
}
