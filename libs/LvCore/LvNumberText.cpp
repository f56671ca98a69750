#include "LvNumberText.h"

#include <QLatin1String>
#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

namespace
{

constexpr int decimals = 10;
constexpr std::uint64_t decimalsPower = 10'000'000'000; // 10 to the power of the decimals

constexpr int digitsOfUInt64 = 19; // so many never overflow
constexpr int digitsOfInt = 9;
constexpr int digitsOfLongLong = 18;
constexpr int longestExponent = 4; // digits
constexpr qsizetype longestPlainText = 64;

// Powers of ten up to 10^22 have no rounding error, and a quotient or product of two exact numbers is rounded
// once, so it is the number nearest to the text.
constexpr std::array<double, 23> exactPowersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int largestExactPower = static_cast<int>(exactPowersOfTen.size()) - 1;
constexpr std::uint64_t largestExactInteger = std::uint64_t(1) << std::numeric_limits<double>::digits;

static_assert(std::numeric_limits<double>::is_iec559 && std::numeric_limits<double>::digits == 53);

template <class Unit>
bool isDigit(Unit unit)
{
    return unit >= Unit('0') && unit <= Unit('9');
}

/// Goes on over digits, which become the lower places of the number; wraps when there are too many.
template <class Unit>
const Unit* readDigits(const Unit* it, const Unit* end, std::uint64_t& number)
{
    for (; it != end && isDigit(*it); ++it) {
        number = number * 10 + static_cast<std::uint64_t>(*it - Unit('0'));
    }
    return it;
}

/// The digits, point and exponent of a text of the usual form.
struct PlainNumber {
    bool isPlain = false;
    bool isNegative = false;
    qsizetype digits = 0;
    std::uint64_t mantissa = 0; // of up to digitsOfUInt64 digits
    int powerOfTen = 0;
};

/// Takes [-]digits[.[digits]][e[+-]digits].
template <class Unit>
PlainNumber readPlain(const Unit* it, const Unit* end)
{
    PlainNumber number;
    if (it != end && *it == Unit('-')) {
        number.isNegative = true;
        ++it;
    }
    const Unit* const integer = it;
    it = readDigits(it, end, number.mantissa);
    number.digits = it - integer;
    if (number.digits == 0) {
        return number;
    }
    if (it != end && *it == Unit('.')) {
        const Unit* const fraction = ++it;
        it = readDigits(it, end, number.mantissa);
        number.powerOfTen = -static_cast<int>(std::min<qsizetype>(it - fraction, longestPlainText));
        number.digits += it - fraction;
    }
    if (it != end && (*it == Unit('e') || *it == Unit('E'))) {
        ++it;
        const bool isNegative = it != end && *it == Unit('-');
        if (it != end && (*it == Unit('-') || *it == Unit('+'))) {
            ++it;
        }
        const Unit* const digits = it;
        std::uint64_t exponent = 0;
        it = readDigits(it, end, exponent);
        if (it == digits || it - digits > longestExponent) {
            return number;
        }
        number.powerOfTen += isNegative ? -static_cast<int>(exponent) : static_cast<int>(exponent);
    }
    number.isPlain = it == end;
    return number;
}

/// Whether the standard library can tell the number of a plain text without sign: not when it is out of range
/// or so close to 0 that it loses digits.
bool readNormal(const char* begin, const char* end, double& number)
{
    const std::from_chars_result result = std::from_chars(begin, end, number);
    return result.ec == std::errc() && result.ptr == end && number >= std::numeric_limits<double>::min();
}

bool readNormal(const char16_t* begin, const char16_t* end, double& number)
{
    std::array<char, longestPlainText> narrow; // written next
    char* const narrowEnd =
        std::transform(begin, end, narrow.data(), [](char16_t unit) { return static_cast<char>(unit); });
    return readNormal(narrow.data(), narrowEnd, number);
}

template <class Unit>
bool readDouble(const Unit* begin, const Unit* end, double& number)
{
    const PlainNumber plain = readPlain(begin, end);
    if (!plain.isPlain) {
        return false;
    }
    // With wider intermediate results the quotient would be rounded twice.
    constexpr bool isRoundedOnce = FLT_EVAL_METHOD == 0;
    if (isRoundedOnce && plain.digits <= digitsOfUInt64 && plain.mantissa <= largestExactInteger
        && plain.powerOfTen >= -largestExactPower && plain.powerOfTen <= largestExactPower) {
        const auto mantissa = static_cast<double>(plain.mantissa);
        number = plain.powerOfTen < 0
            ? mantissa / exactPowersOfTen[static_cast<std::size_t>(-plain.powerOfTen)]
            : mantissa * exactPowersOfTen[static_cast<std::size_t>(plain.powerOfTen)];
    } else if (end - begin > longestPlainText
               || !readNormal(begin + (plain.isNegative ? 1 : 0), end, number)) {
        return false;
    }
    if (plain.isNegative) {
        number = -number;
    }
    return true;
}

/// Whether the text is [-]digits of at most so many digits.
template <class Unit>
bool readInteger(const Unit* it, const Unit* end, int maximumDigits, qint64& number)
{
    const bool isNegative = it != end && *it == Unit('-');
    const Unit* const digits = it + (isNegative ? 1 : 0);
    if (digits == end || end - digits > maximumDigits) {
        return false;
    }
    std::uint64_t absolute = 0;
    if (readDigits(digits, end, absolute) != end) {
        return false;
    }
    number = isNegative ? -static_cast<qint64>(absolute) : static_cast<qint64>(absolute);
    return true;
}

QString toText(std::string_view bytes)
{
    // Bytes in the middle of a document: a byte order mark is a character there.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

constexpr std::uint64_t tenThousand = 10'000;
constexpr std::uint64_t wordLimit = tenThousand * tenThousand; // of the numbers whose digits fill a word
constexpr int wordDigits = 8;
constexpr std::uint64_t zeros = 0x3030303030303030; // the characters of a word of digits 0

/// The two digits of all numbers below 100.
constexpr std::array<char, 200> digitPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t number = 0; number < 100; ++number) {
        pairs[2 * number] = static_cast<char>('0' + number / 10);
        pairs[2 * number + 1] = static_cast<char>('0' + number % 10);
    }
    return pairs;
}();

/// The eight digits of a number below wordLimit, one in each byte, the first one in the lowest byte. Halves,
/// pairs and single digits are parted side by side in one word: far fewer steps than digit by digit, and
/// without any branch that depends on the number.
constexpr std::uint64_t digitsOf(std::uint64_t number)
{
    const std::uint64_t halves = number / tenThousand | (number % tenThousand) << 32;
    // The factors divide by 100 and by 10: exact for all numbers below 10,000 and below 100.
    const std::uint64_t hundreds = ((halves * 10'486) >> 20) & 0x0000007F0000007F;
    const std::uint64_t pairs = hundreds | (halves - 100 * hundreds) << 16;
    const std::uint64_t tens = ((pairs * 103) >> 10) & 0x000F000F000F000F;
    return tens | (pairs - 10 * tens) << 8;
}

static_assert(digitsOf(12'345'678) == 0x0807060504030201);

char* writeWord(char* buffer, std::uint64_t digits)
{
    qToLittleEndian(digits | zeros, buffer);
    return buffer + wordDigits;
}

/// Two digits of a number below 100.
char* writePair(char* buffer, std::uint64_t number)
{
    std::memcpy(buffer, &digitPairs[2 * number], 2);
    return buffer + 2;
}

/// Writes a number below wordLimit without zeros before it. The buffer needs room for a whole word.
char* writeShort(char* buffer, std::uint64_t number)
{
    // Whole degrees and elevations are seldom longer.
    if (number < 10) {
        *buffer = static_cast<char>('0' + number);
        return buffer + 1;
    }
    if (number < 100) {
        return writePair(buffer, number);
    }
    const std::uint64_t digits = digitsOf(number);
    const int leadingBits = std::countr_zero(digits) & ~7;
    writeWord(buffer, digits >> leadingBits);
    return buffer + wordDigits - leadingBits / 8;
}

char* writeUnsigned(char* buffer, std::uint64_t number)
{
    if (number < wordLimit) {
        return writeShort(buffer, number);
    }
    const std::uint64_t upper = number / wordLimit;
    if (upper < wordLimit) {
        buffer = writeShort(buffer, upper);
    } else {
        buffer = writeShort(buffer, upper / wordLimit);
        buffer = writeWord(buffer, digitsOf(upper % wordLimit));
    }
    return writeWord(buffer, digitsOf(number % wordLimit));
}

#ifdef __SIZEOF_INT128__

__extension__ using UInt128 = unsigned __int128;

constexpr double scaledLimit = 0x1p29; // far beyond all angles

/// The absolute value of the number with its decimals, as an integer: rounded half away from zero, exactly.
/// That has to be less than scaledLimit.
std::uint64_t scaled(double number)
{
    constexpr int fractionBits = std::numeric_limits<double>::digits - 1;
    constexpr std::uint64_t fractionMask = (std::uint64_t(1) << fractionBits) - 1;
    constexpr int exponentMask = 0x7FF;
    constexpr int exponentOfInteger = 1023 + fractionBits; // biased, of a mantissa that counts ones
    // Both factors fill their words. So the upper word of the product holds all bits of the result and the
    // one behind them, which alone decides about rounding half away from zero.
    constexpr int mantissaShift = 63 - fractionBits;
    constexpr int powerShift = std::countl_zero(decimalsPower);

    const auto bits = std::bit_cast<std::uint64_t>(number);
    const int exponent = static_cast<int>(bits >> fractionBits) & exponentMask;
    const int shift = exponentOfInteger + mantissaShift + powerShift - 64 - exponent; // of the upper word
    if (shift > 64) {
        return 0; // less than half of the last decimal, also all that have no leading bit
    }
    const std::uint64_t mantissa = (bits & fractionMask) | (fractionMask + 1);
    const UInt128 product = UInt128(mantissa << mantissaShift) * (decimalsPower << powerShift);
    return ((static_cast<std::uint64_t>(product >> 64) >> (shift - 1)) + 1) >> 1; // a shift of 1 at least
}

char* writeScaled(char* buffer, std::uint64_t number)
{
    buffer = writeUnsigned(buffer, number / decimalsPower);
    *buffer++ = '.';
    const std::uint64_t fraction = number % decimalsPower;
    const std::uint64_t firstTwo = fraction / wordLimit;
    const std::uint64_t digits = digitsOf(fraction % wordLimit);
    writeWord(writePair(buffer, firstTwo), digits);
    // Without the zeros at the end: the last digit is in the highest byte.
    if (digits != 0) {
        return buffer + decimals - std::countl_zero(digits) / 8;
    }
    return buffer + (firstTwo == 0 ? 0 : firstTwo % 10 == 0 ? 1 : 2);
}

#endif

// Apart, or the registers that it needs would be saved for every number.
Q_NEVER_INLINE char* writeByToolkit(char* buffer, double number)
{
    const QByteArray text = QString::number(number, 'f', decimals).toLatin1();
    qsizetype length = text.size();
    while (length > 0 && text[length - 1] == '0') {
        --length;
    }
    return std::copy_n(text.constData(), length, buffer);
}

template <class Text, class Write>
void append(Text& text, Write write)
{
    std::array<char, LvNumberText::maximumLength> buffer; // written next
    const char* const end = write(buffer.data());
    text.append(QLatin1String(buffer.data(), end - buffer.data()));
}

} // namespace

double LvNumberText::toDouble(QStringView text)
{
    double number = 0.0;
    return readDouble(text.utf16(), text.utf16() + text.size(), number) ? number : text.toDouble();
}

double LvNumberText::toDouble(std::string_view text)
{
    double number = 0.0;
    return readDouble(text.data(), text.data() + text.size(), number) ? number : toText(text).toDouble();
}

int LvNumberText::toInt(QStringView text)
{
    qint64 number = 0;
    return readInteger(text.utf16(), text.utf16() + text.size(), digitsOfInt, number)
        ? static_cast<int>(number)
        : text.toInt();
}

int LvNumberText::toInt(std::string_view text)
{
    qint64 number = 0;
    return readInteger(text.data(), text.data() + text.size(), digitsOfInt, number) ? static_cast<int>(number)
                                                                                    : toText(text).toInt();
}

qint64 LvNumberText::toLongLong(QStringView text)
{
    qint64 number = 0;
    return readInteger(text.utf16(), text.utf16() + text.size(), digitsOfLongLong, number)
        ? number
        : text.toLongLong();
}

qint64 LvNumberText::toLongLong(std::string_view text)
{
    qint64 number = 0;
    return readInteger(text.data(), text.data() + text.size(), digitsOfLongLong, number)
        ? number
        : toText(text).toLongLong();
}

char* LvNumberText::writeFixed(char* buffer, double number)
{
#ifdef __SIZEOF_INT128__
    if (number > -scaledLimit && number < scaledLimit) {
        if (number < 0.0) {
            *buffer++ = '-';
        }
        return writeScaled(buffer, scaled(number));
    }
#endif
    return writeByToolkit(buffer, number);
}

char* LvNumberText::writeInteger(char* buffer, qint64 number)
{
    auto absolute = static_cast<std::uint64_t>(number);
    if (number < 0) {
        *buffer++ = '-';
        absolute = -absolute;
    }
    return writeUnsigned(buffer, absolute);
}

void LvNumberText::appendFixed(QByteArray& text, double number)
{
    append(text, [number](char* buffer) { return writeFixed(buffer, number); });
}

void LvNumberText::appendFixed(QString& text, double number)
{
    append(text, [number](char* buffer) { return writeFixed(buffer, number); });
}

void LvNumberText::appendInteger(QByteArray& text, qint64 number)
{
    append(text, [number](char* buffer) { return writeInteger(buffer, number); });
}

void LvNumberText::appendInteger(QString& text, qint64 number)
{
    append(text, [number](char* buffer) { return writeInteger(buffer, number); });
}
