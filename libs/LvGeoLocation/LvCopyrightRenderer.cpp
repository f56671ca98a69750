#include "LvCopyrightRenderer.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QReadWriteLock>
#include <QRect>

#include <cmath>

namespace
{

constexpr double fontPointSize = 24.0;
constexpr double textMarginWidth = 20.0;
constexpr double textMarginHeight = 5.0;
constexpr double edgeDistance = 10.0;
// A thumbnail below it is too small for text.
constexpr double smallestTextFactor = 0.1;

struct ConfiguredText {
    QReadWriteLock lock;
    QString text; // empty means the default
};

ConfiguredText& configuredText()
{
    static ConfiguredText myText;
    return myText;
}

} // namespace

const QColor LvCopyrightRenderer::semiOpaqueWhite(225, 225, 225, 180);
const QColor LvCopyrightRenderer::semiOpaqueBlack(0, 0, 0, 180);

LvCopyrightRenderer::LvCopyrightRenderer() = default;
LvCopyrightRenderer::LvCopyrightRenderer(const LvCopyrightRenderer& other) = default;
LvCopyrightRenderer::LvCopyrightRenderer(LvCopyrightRenderer&& other) noexcept = default;
LvCopyrightRenderer& LvCopyrightRenderer::operator=(const LvCopyrightRenderer& other) = default;
LvCopyrightRenderer& LvCopyrightRenderer::operator=(LvCopyrightRenderer&& other) noexcept = default;
LvCopyrightRenderer::~LvCopyrightRenderer() = default;

QString LvCopyrightRenderer::copyrightText()
{
    ConfiguredText& configured = configuredText();
    const QReadLocker locker(&configured.lock);
    return configured.text.isEmpty() ? QStringLiteral("\u00a9 openstreetmap.org") : configured.text;
}

void LvCopyrightRenderer::setCopyrightText(const QString& text)
{
    ConfiguredText& configured = configuredText();
    const QWriteLocker locker(&configured.lock);
    configured.text = text;
}

QFont LvCopyrightRenderer::copyrightFont(double factor)
{
    QFont font(QStringLiteral("Arial"));
    font.setPointSizeF(fontPointSize * factor);
    return font;
}

QSizeF LvCopyrightRenderer::copyrightTextSize(double factor)
{
    const QSize size = QFontMetrics(copyrightFont(1.0)).size(Qt::TextSingleLine, copyrightText());
    return {(size.width() + textMarginWidth) * factor, (size.height() + textMarginHeight) * factor};
}

QRectF LvCopyrightRenderer::copyrightRect(const QRect& imageRect, double factor)
{
    QRectF rect(QPointF(0.0, 0.0), copyrightTextSize(factor));
    rect.moveRight(imageRect.right() - edgeDistance * factor);
    rect.moveBottom(imageRect.bottom() - edgeDistance * factor);
    return rect;
}

void LvCopyrightRenderer::renderCopyRight(QImage* image, double factor)
{
    QPainter painter(image);
    renderCopyRight(painter, image->rect(), factor);
}

void LvCopyrightRenderer::renderCopyRight(QPainter& painter, const QRect& imageRect, double factor)
{
    const QRectF rect = copyrightRect(imageRect, factor);
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    if (!(factor >= smallestTextFactor)) {
        painter.fillRect(rect, semiOpaqueWhite);
        painter.setPen(QPen(semiOpaqueBlack, 1.0, Qt::DashDotLine));
        const double y = std::trunc(rect.center().y());
        painter.drawLine(QPointF(std::trunc(rect.center().x()), y), QPointF(std::trunc(rect.right()), y));
        painter.restore();
        return;
    }
    const double radius = rect.height() / 2.0;
    painter.setFont(copyrightFont(factor));
    painter.setBrush(semiOpaqueWhite);
    painter.setPen(semiOpaqueWhite);
    painter.drawRoundedRect(rect, radius, radius, Qt::AbsoluteSize);
    painter.setPen(semiOpaqueBlack);
    painter.drawText(rect, Qt::AlignHCenter | Qt::AlignVCenter, copyrightText());
    painter.restore();
}
