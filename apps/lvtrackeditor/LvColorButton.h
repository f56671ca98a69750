#pragma once

#include <QColor>
#include <QPushButton>

/**
 * A button that shows a colour, translucent ones above a checkered ground, and lets the user choose another
 * one with a colour dialog.
 */
class LvColorButton : public QPushButton
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvColorButton)

public:
    explicit LvColorButton(QWidget* parent = nullptr);
    ~LvColorButton() override;

    [[nodiscard]] QColor color() const { return myColor; }

    /// Shows the colour; sends no signal.
    void setColor(const QColor& color);

    /// The title of the colour dialog.
    void setDialogTitle(const QString& title) { myDialogTitle = title; }

Q_SIGNALS:
    /// The user has chosen another colour.
    void colorEdited(const QColor& color);

protected:
    void changeEvent(QEvent* event) override;

private:
    void openDialog();
    void updateLook();

    QColor myColor = Qt::black;
    QString myDialogTitle;
};
