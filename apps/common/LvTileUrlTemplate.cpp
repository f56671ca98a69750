#include "LvTileUrlTemplate.h"

#include "LvTiledMapSource.h"

#include <QRegularExpression>

namespace
{

QString rowFromNorth()
{
    return QStringLiteral("{y}");
}

QString rowFromSouth()
{
    return QStringLiteral("{-y}");
}

/// What the placeholders leave: braces in it belong to none.
QString withoutPlaceholders(QString text)
{
    for (const QString& placeholder :
         {QStringLiteral("{z}"), QStringLiteral("{x}"), rowFromNorth(), rowFromSouth()}) {
        text.remove(placeholder);
    }
    return text;
}

} // namespace

LvTileUrlTemplate::LvTileUrlTemplate(const QString& text)
    : myText(text.trimmed())
    , myErrorText(findError())
{
}

bool LvTileUrlTemplate::looksLikeUrl(const QString& text)
{
    // At least two letters: "C:/maps" is a folder.
    static const QRegularExpression myScheme(QStringLiteral("^\\s*[A-Za-z][A-Za-z0-9+.-]+://"));
    return text.contains(QLatin1String("{z}")) || myScheme.match(text).hasMatch();
}

QString LvTileUrlTemplate::errorText() const
{
    return myText.isEmpty() ? tr("Die Adresse des Kartenservers fehlt.") : myErrorText;
}

QString LvTileUrlTemplate::host() const
{
    return isValid() ? filledWith({}).host() : QString();
}

int LvTileUrlTemplate::tilePixelRatio() const
{
    return myText.contains(QLatin1String("@2x")) ? 2 : 1;
}

QUrl LvTileUrlTemplate::urlFor(const LvTileKey& key) const
{
    return isValid() ? filledWith(key) : QUrl();
}

QString LvTileUrlTemplate::findError() const
{
    if (myText.isEmpty()) {
        return {};
    }
    const QString rest = withoutPlaceholders(myText);
    if (rest.contains(QLatin1Char('{')) || rest.contains(QLatin1Char('}'))) {
        return tr("In der Adresse steht ein unbekannter Platzhalter. Bekannt sind {z}, {x}, {y} und {-y}.");
    }
    const QUrl url = filledWith({});
    if (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http")) {
        return tr("Die Adresse eines Kartenservers muss mit https:// oder http:// beginnen.");
    }
    if (!url.isValid() || url.host().isEmpty()) {
        return tr("„%1“ ist keine gültige Adresse.").arg(myText);
    }
    const bool fromNorth = myText.contains(rowFromNorth());
    const bool fromSouth = myText.contains(rowFromSouth());
    if (!myText.contains(QLatin1String("{z}")) || !myText.contains(QLatin1String("{x}"))
        || (!fromNorth && !fromSouth)) {
        return tr("In der Adresse müssen {z}, {x} und {y} (oder {-y}) stehen.");
    }
    if (fromNorth && fromSouth) {
        return tr("In der Adresse darf nur eines von {y} und {-y} stehen.");
    }
    // A server that the tile decides on could be any server at all.
    const LvTileKey another = {1, 1, 1};
    if (filledWith(another).authority() != url.authority()) {
        return tr("Die Platzhalter müssen hinter dem Namen des Servers stehen.");
    }
    return {};
}

QUrl LvTileUrlTemplate::filledWith(const LvTileKey& key) const
{
    const qint64 rows = qint64{1} << key.zoom;
    QString address = myText;
    address.replace(QLatin1String("{z}"), QString::number(key.zoom));
    address.replace(QLatin1String("{x}"), QString::number(key.column));
    address.replace(rowFromNorth(), QString::number(key.row));
    address.replace(rowFromSouth(), QString::number(rows - 1 - key.row));
    return {address, QUrl::StrictMode};
}
