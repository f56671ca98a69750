#include "LvColorButton.h"

#include <QColorDialog>
#include <QEvent>
#include <QPainter>

namespace
{

constexpr int checkersPerHeight = 4;
constexpr int opaque = 255;

QPixmap swatch(const QColor& color, const QColor& frame, const QSize& size, double pixelRatio)
{
    QPixmap pixmap(size * pixelRatio);
    pixmap.setDevicePixelRatio(pixelRatio);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    const double checker = static_cast<double>(size.height()) / checkersPerHeight;
    for (int row = 0; row < checkersPerHeight; ++row) {
        for (int column = row % 2; column * checker < size.width(); column += 2) {
            painter.fillRect(QRectF(column * checker, row * checker, checker, checker), Qt::lightGray);
        }
    }
    painter.fillRect(QRect(QPoint(), size), color);
    painter.setPen(frame);
    painter.drawRect(QRectF(0.5, 0.5, size.width() - 1.0, size.height() - 1.0));
    return pixmap;
}

} // namespace

LvColorButton::LvColorButton(QWidget* parent)
    : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, &LvColorButton::openDialog);
    updateLook();
}

LvColorButton::~LvColorButton() = default;

void LvColorButton::setColor(const QColor& color)
{
    if (myColor != color) {
        myColor = color;
        updateLook();
    }
}

void LvColorButton::changeEvent(QEvent* event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange
        || event->type() == QEvent::FontChange) {
        updateLook();
    }
}

void LvColorButton::openDialog()
{
    auto* dialog = new QColorDialog(myColor, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    dialog->setWindowTitle(myDialogTitle.isEmpty() ? tr("Farbe wählen") : myDialogTitle);
    // The dialog may round a colour; what it has not changed is no choice.
    const QRgb unchanged = dialog->currentColor().rgba();
    connect(dialog, &QColorDialog::colorSelected, this, [this, unchanged](const QColor& color) {
        if (color.isValid() && color.rgba() != unchanged) {
            setColor(color);
            Q_EMIT colorEdited(color);
        }
    });
    dialog->open();
}

void LvColorButton::updateLook()
{
    const int height = fontMetrics().height();
    setIconSize({2 * height, height});
    QIcon look;
    look.addPixmap(swatch(myColor, palette().color(QPalette::Active, QPalette::ButtonText), iconSize(),
                          devicePixelRatioF()));
    setIcon(look);
    const QString name = myColor.name(QColor::HexRgb).toUpper();
    setText(myColor.alpha() == opaque ? name
                                      : tr("%1, %2 % deckend", "colour, share of opacity")
                                            .arg(name, QString::number(qRound(myColor.alphaF() * 100.0))));
    // The text above is what screen readers tell as the value; the name says what the colour is for.
    setAccessibleDescription(text());
}
