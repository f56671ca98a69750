#include "LvMapText.h"

#include <QRegularExpression>
#include <QTextDocumentFragment>

namespace
{

constexpr qsizetype longestAttribution = 200;

/// The text with its entities, without its tags. Whole documents are not left to the toolkit: a table of
/// thousands of columns, which takes some letters to write, would take all the memory there is.
QString withoutTags(QString html)
{
    static const QRegularExpression myHidden(
        QStringLiteral("<!--.*?(?:-->|$)|<(style|script|head)\\b.*?(?:</\\1\\b[^>]*(?:>|$)|$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression myBreak(
        QStringLiteral("</?(?:br|p|div|ul|ol|li|table|tr|td|th|h[1-6]|hr)\\b[^>]*(?:>|$)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression myTag(QStringLiteral("<[!/?A-Za-z][^>]*(?:>|$)"));
    html.remove(myHidden);
    html.replace(myBreak, QStringLiteral(" "));
    html.remove(myTag);
    html.replace(QLatin1Char('<'), QLatin1String("&lt;")); // what is left of one is no tag
    return html;
}

} // namespace

QString LvMapText::plainAttribution(const QString& attribution)
{
    const QString text = attribution.left(longestAttribution * 10);
    const bool isHtml = text.contains(QLatin1Char('<')) || text.contains(QLatin1Char('&'));
    const QString plain = isHtml ? QTextDocumentFragment::fromHtml(withoutTags(text)).toPlainText() : text;
    return plain.simplified().left(longestAttribution).trimmed();
}
