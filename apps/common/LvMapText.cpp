#include "LvMapText.h"

#include <QTextDocumentFragment>

namespace
{

constexpr qsizetype longestAttribution = 200;

} // namespace

QString LvMapText::plainAttribution(const QString& attribution)
{
    const QString text = attribution.left(longestAttribution * 10);
    const bool isHtml = Qt::mightBeRichText(text) || text.contains(QLatin1Char('&'));
    const QString plain = isHtml ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
    return plain.simplified().left(longestAttribution);
}
