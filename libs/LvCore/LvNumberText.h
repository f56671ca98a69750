#pragma once

#include "lvcore_export.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <string_view>

/**
 * Numbers in texts, read and written many times faster than by the toolkit, with its results to the last bit.
 *
 * Numbers of the usual form take a short way that builds nothing; whatever is unusual (white space, "inf",
 * digits of other scripts, results beyond the range) goes to the toolkit itself. Bytes are the UTF-8 form of
 * the text. The C locale holds everywhere, and the floating-point unit has to round to nearest, as it does
 * unless somebody changes that. Without state, usable from any thread.
 */
class LVCORE_EXPORT LvNumberText
{
public:
    LvNumberText() = delete;

    /// The number that QString::toDouble() reads from the text: 0.0 when it is none, infinite beyond the
    /// range.
    [[nodiscard]] static double toDouble(QStringView text);
    [[nodiscard]] static double toDouble(std::string_view text);

    /// The number that QString::toInt() reads from the text: 0 when it is no decimal integer of 32 bits.
    [[nodiscard]] static int toInt(QStringView text);
    [[nodiscard]] static int toInt(std::string_view text);

    /// The number that QString::toLongLong() reads from the text: 0 when it is no decimal integer of 64 bits.
    [[nodiscard]] static qint64 toLongLong(QStringView text);
    [[nodiscard]] static qint64 toLongLong(std::string_view text);

    /// The longest text of writeFixed() and writeInteger().
    static constexpr qsizetype maximumLength = 328;

    /// Writes the number with up to ten decimals: those of QString::number(number, 'f', 10), rounded half
    /// away from zero, without zeros at the end. The point stays: 8.0 is "8.". The buffer needs room for
    /// maximumLength characters, whatever the number; returns the end of the text in it, which gets no null
    /// character. What lies behind the end may have changed.
    static char* writeFixed(char* buffer, double number);

    /// The same for an integer, as QString::number() writes it.
    static char* writeInteger(char* buffer, qint64 number);

    /// Appends what writeFixed() writes.
    static void appendFixed(QByteArray& text, double number);
    static void appendFixed(QString& text, double number);

    /// Appends what writeInteger() writes.
    static void appendInteger(QByteArray& text, qint64 number);
    static void appendInteger(QString& text, qint64 number);
};
