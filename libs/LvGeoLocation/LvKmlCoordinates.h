#pragma once

#include "lvgeolocation_export.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <string_view>

/**
 * The coordinate texts of a KML document, taken out of it before it is parsed: they are nearly all of a large
 * file, and the tree would copy them several times. What is left has the same tree but for those texts.
 *
 * Only documents where that is certain are taken apart: UTF-8 without document type, where every element
 * "coordinates" is written without attributes and has a text of plain ASCII characters that need no parsing,
 * and where it stands below nothing but the geometry elements of KML. The markup is understood only as far as
 * needed for that; where it is not well-formed, what is left is not well-formed either.
 */
class LVGEOLOCATION_EXPORT LvKmlCoordinates
{
public:
    explicit LvKmlCoordinates(const QByteArray& document);

    /// Whether the document was taken apart; otherwise there is nothing in here.
    [[nodiscard]] bool isValid() const { return myIsValid; }

    /// The document with the index of each coordinate text in its place; texts of white space only stay.
    [[nodiscard]] const QByteArray& remainder() const { return myRemainder; }

    /// The coordinates in place of which this text stands; empty for any other text.
    [[nodiscard]] std::string_view find(const QString& index) const;

private:
    QByteArray myDocument; // what the texts refer to
    QByteArray myRemainder;
    QList<std::string_view> myTexts;
    bool myIsValid = false;
};
