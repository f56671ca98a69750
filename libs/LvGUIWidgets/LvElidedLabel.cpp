#include "LvElidedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace
{

constexpr int hintedCharacters = 40;
constexpr int hintedLines = 3;
constexpr int minimumCharacters = 3;
constexpr qsizetype longestLaidOutText =
    10'000; // more than any screen shows; keeps absurd names from costing time

struct LvShownText {
    QStringList myLines;
    bool myIsElided = false;
};

QString singleLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (const QChar lineBreak :
         {QChar(u'\n'), QChar(u'\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
        text.replace(lineBreak, u' ');
    }
    return text;
}

QString withLineSeparators(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QChar lineBreak : {QChar(u'\n'), QChar(u'\r'), QChar(QChar::ParagraphSeparator)}) {
        text.replace(lineBreak, QChar::LineSeparator);
    }
    return text;
}

LvShownText fitIntoOneLine(const QString& text, const QFontMetrics& metrics, int width)
{
    const QString line = singleLine(text);
    const QString elided = metrics.elidedText(line, Qt::ElideRight, width);
    return {{elided}, elided != line};
}

LvShownText fitIntoLines(const QString& text, const QFont& font, int width, int maximumLines)
{
    const QFontMetrics metrics(font);
    const QString broken = withLineSeparators(text);
    QTextLayout layout(broken, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    LvShownText shown;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const qsizetype start = line.textStart();
        if (shown.myLines.size() == maximumLines - 1) {
            const LvShownText rest = fitIntoOneLine(broken.mid(start).trimmed(), metrics, width);
            shown.myLines += rest.myLines;
            shown.myIsElided = rest.myIsElided;
            break;
        }
        shown.myLines += singleLine(broken.mid(start, line.textLength())).trimmed();
    }
    layout.endLayout();
    return shown;
}

LvShownText fit(const LvElidedLabel& label, const QSize& size)
{
    const QString text = label.fullText();
    if (text.isEmpty()) {
        return {};
    }
    const bool isTooLong = text.size() > longestLaidOutText;
    const QString laidOut = isTooLong ? text.left(longestLaidOutText) + QChar(0x2026) : text;
    const QFontMetrics metrics = label.fontMetrics();
    const int maximumLines = std::max(1, (size.height() + metrics.leading()) / metrics.lineSpacing());
    LvShownText shown = label.wordWrap() ? fitIntoLines(laidOut, label.font(), size.width(), maximumLines)
                                         : fitIntoOneLine(laidOut, metrics, size.width());
    shown.myIsElided = shown.myIsElided || isTooLong;
    return shown;
}

int heightOfLines(const QFontMetrics& metrics, qsizetype lines)
{
    return metrics.lineSpacing() * static_cast<int>(lines) - metrics.leading();
}

} // namespace

LvElidedLabel::LvElidedLabel(QWidget* parent)
    : LvElidedLabel(QString(), parent)
{
}

LvElidedLabel::LvElidedLabel(const QString& fullText, QWidget* parent)
    : QFrame(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setFullText(fullText);
}

LvElidedLabel::~LvElidedLabel() = default;

bool LvElidedLabel::isElided() const
{
    return fit(*this, contentsRect().size()).myIsElided;
}

QStringList LvElidedLabel::shownLines() const
{
    return fit(*this, contentsRect().size()).myLines;
}

void LvElidedLabel::setFullText(const QString& text)
{
    if (text == myFullText) {
        return;
    }
    myFullText = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void LvElidedLabel::setWordWrap(bool on)
{
    if (on == myWordWrap) {
        return;
    }
    myWordWrap = on;
    updateGeometry();
    update();
}

void LvElidedLabel::setAnimationState(int state)
{
    if (state == myAnimationState) {
        return;
    }
    myAnimationState = state;
    update();
}

QSize LvElidedLabel::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const QString line = singleLine(myFullText.left(longestLaidOutText));
    // Rounded up: a fraction of a pixel too little would cut the text.
    const int textWidth = static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(line)));
    const int width = std::min(textWidth, hintedCharacters * metrics.averageCharWidth());
    const QSize room(std::max(width, 1), heightOfLines(metrics, hintedLines));
    const qsizetype lines = std::max<qsizetype>(1, fit(*this, room).myLines.size());
    const QSize frame = size() - contentsRect().size();
    return (QSize(width, heightOfLines(metrics, lines)) + frame).expandedTo(minimumSizeHint());
}

QSize LvElidedLabel::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int width =
        minimumCharacters * metrics.averageCharWidth() + metrics.horizontalAdvance(QChar(0x2026));
    return QSize(width, heightOfLines(metrics, 1)) + (size() - contentsRect().size());
}

bool LvElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && isElided()) {
        // Escaped, since a tool tip takes a text that looks like markup for markup.
        QToolTip::showText(
            static_cast<QHelpEvent*>(event)->globalPos(),
            QStringLiteral("<p>%1</p>").arg(myFullText.left(longestLaidOutText).toHtmlEscaped()), this);
        return true;
    }
    return QFrame::event(event);
}

void LvElidedLabel::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    const LvShownText shown = fit(*this, contentsRect().size());
    const bool isHighlighted = myAnimationState % 2 != 0;
    QPainter painter(this);
    if (isHighlighted) {
        painter.fillRect(contentsRect(), palette().color(QPalette::Highlight));
    }
    painter.setPen(palette().color(isHighlighted ? QPalette::HighlightedText : foregroundRole()));
    const QFontMetrics metrics = fontMetrics();
    const int height = heightOfLines(metrics, shown.myLines.size());
    QRect line = contentsRect();
    line.setTop(line.top() + (line.height() - height) / 2);
    line.setHeight(metrics.height());
    const auto alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    for (const QString& text : shown.myLines) {
        painter.drawText(line, static_cast<int>(alignment) | Qt::TextSingleLine, text);
        line.translate(0, metrics.lineSpacing());
    }
}
