#pragma once

#include "lvgeolocation_export.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/**
 * The key strings of one enumeration of flags, in both directions.
 *
 * Any number of keys may stand for one value; the first one inserted is the text that is written. Keys are
 * read without regard to case. A table is filled once, by LvEnumWrapper::enumToStringTable(), and only read
 * afterwards, from any thread.
 */
template <class E>
class LVGEOLOCATION_EXPORT LvEnumToStringTable
{
public:
    /// Adds a key for one flag or for 0. The first key of a value stays its canonical text; a key that is
    /// inserted again stands for the later value from then on.
    void insert(const QString& key, E value)
    {
        myFromString.insert(key.toLower(), value);
        if (!myToString.contains(value)) {
            myToString.insert(value, key);
        }
    }

    /// The value of one key; blanks around it and its case do not matter. Empty when no key matches.
    [[nodiscard]] std::optional<E> decode(const QString& text) const
    {
        const auto found = myFromString.constFind(text.trimmed().toLower());
        if (found == myFromString.cend()) {
            return std::nullopt;
        }
        return *found;
    }

    /// The values of all keys between the commas, or-ed together. An item that matches no key, an empty one
    /// included, contributes defaultValue().
    [[nodiscard]] E decodeCSV(const QString& text) const
    {
        quint32 bits = 0;
        const QStringList items = text.split(QStringLiteral(","), Qt::KeepEmptyParts, Qt::CaseSensitive);
        for (const QString& item : items) {
            bits |= static_cast<quint32>(decode(item).value_or(myDefaultValue));
        }
        return static_cast<E>(bits);
    }

    /// The canonical keys of the set flags in ascending order of the flags, defaultString() for a flag
    /// without key. Empty for 0 and for values with bit 31: the key of 0 is read but never written.
    [[nodiscard]] QStringList encodeAsList(E value) const
    {
        QStringList keys;
        if (static_cast<qint32>(value) < 1) {
            return keys;
        }
        auto remaining = static_cast<quint32>(value);
        for (quint32 bit = 1; remaining != 0; bit <<= 1U) {
            if ((remaining & bit) != 0) {
                keys.append(toString(static_cast<E>(bit)));
                remaining &= ~bit;
            }
        }
        return keys;
    }

    /// The keys of encodeAsList() joined with a comma and a blank; defaultString() when there are none.
    [[nodiscard]] QString encodeCSV(E value) const
    {
        const QStringList keys = encodeAsList(value);
        return keys.isEmpty() ? myDefaultString : keys.join(QStringLiteral(", "));
    }

    /// The canonical key of the whole value, 0 included; defaultString() when it has none of its own, as a
    /// combination of flags.
    [[nodiscard]] QString toString(E value) const { return myToString.value(value, myDefaultString); }

    /// The text of what has no key: null unless set.
    [[nodiscard]] QString defaultString() const { return myDefaultString; }

    void setDefaultString(const QString& text) { myDefaultString = text; }

    /// The value of an item that matches no key: 0 unless set.
    [[nodiscard]] E defaultValue() const { return myDefaultValue; }

    void setDefaultValue(E value) { myDefaultValue = value; }

private:
    QHash<QString, E> myFromString; // lower-case keys
    QHash<E, QString> myToString;
    QString myDefaultString;
    E myDefaultValue = static_cast<E>(0);
};
