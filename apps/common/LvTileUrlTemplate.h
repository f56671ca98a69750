#pragma once

#include <QCoreApplication>
#include <QString>
#include <QUrl>

struct LvTileKey;

/**
 * Where a tile server keeps its tiles, such as "https://tiles.example.org/{z}/{x}/{y}.png".
 *
 * {z} stands for the zoom level, {x} for the column counted from 180° west, {y} for the row counted from the
 * north and {-y} for the row counted from the south (TMS). "@2x" in the address is sent as it is and tells
 * that the tiles have twice as many pixels. A value; threads may share it for reading.
 */
class LvTileUrlTemplate
{
    Q_DECLARE_TR_FUNCTIONS(LvTileUrlTemplate)

public:
    /// Invalid: no address.
    LvTileUrlTemplate() = default;

    /// White space around the text does not count. Only http and https are accepted, and placeholders only
    /// behind the name of the server.
    explicit LvTileUrlTemplate(const QString& text);

    /// Whether a text is meant to be an address rather than the name of a file or folder: it has a scheme or
    /// the placeholder {z}. It need not be a valid one.
    [[nodiscard]] static bool looksLikeUrl(const QString& text);

    [[nodiscard]] bool isValid() const { return myErrorText.isEmpty() && !myText.isEmpty(); }

    /// What is wrong with the text, a whole sentence for people; empty when it is valid.
    [[nodiscard]] QString errorText() const;

    [[nodiscard]] QString text() const { return myText; }

    /// Name of the server; empty when the template is not valid.
    [[nodiscard]] QString host() const;

    /// Pixels of a tile for each pixel of an ordinary one of 256 × 256: 2 with "@2x", else 1.
    [[nodiscard]] int tilePixelRatio() const;

    /// The address of one tile; an empty URL when the template is not valid.
    [[nodiscard]] QUrl urlFor(const LvTileKey& key) const;

    [[nodiscard]] bool operator==(const LvTileUrlTemplate& other) const { return myText == other.myText; }

private:
    [[nodiscard]] QString findError() const;
    [[nodiscard]] QUrl filledWith(const LvTileKey& key) const;

    QString myText;
    QString myErrorText;
};
