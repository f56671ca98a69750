#pragma once

#include "lvguiwidgets_export.h"

#include <QFrame>
#include <QStringList>

/**
 * A plain text that is cut with an ellipsis where it does not fit.
 *
 * Without word wrap the label shows one line, line breaks in the text becoming blanks; with it as many lines
 * as its height holds, at least one, the last one cut. A cut text is shown whole as the tool tip, unless the
 * label was given a tool tip of its own. For screen readers the label's name is always the full text. Markup
 * and "&" have no meaning in it.
 */
class LVGUIWIDGETS_EXPORT LvElidedLabel : public QFrame
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(LvElidedLabel)

public:
    explicit LvElidedLabel(QWidget* parent = nullptr);
    explicit LvElidedLabel(const QString& fullText, QWidget* parent = nullptr);
    ~LvElidedLabel() override;

    [[nodiscard]] QString fullText() const { return myFullText; }

    [[nodiscard]] bool wordWrap() const { return myWordWrap; }

    [[nodiscard]] int animationState() const { return myAnimationState; }

    /// Whether the label is too small for the full text.
    [[nodiscard]] bool isElided() const;

    /// The lines as they are shown, the ellipsis included; none for an empty text.
    [[nodiscard]] QStringList shownLines() const;

    void setFullText(const QString& text);
    void setWordWrap(bool on);

    /// 0, like every even state, is the normal look; every odd state is highlighted: the text in the
    /// palette's colour for highlighted text on its highlight colour. A state that counts up thus blinks.
    void setAnimationState(int state);

    /// Wide enough for the text, but for no more than 40 average characters; high enough for its lines at
    /// that width, but for no more than three.
    [[nodiscard]] QSize sizeHint() const override;

    /// One line of three average characters and the ellipsis.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString myFullText;
    bool myWordWrap = false;
    int myAnimationState = 0;
};
