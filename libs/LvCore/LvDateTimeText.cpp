#include "LvDateTimeText.h"

#include <QString>

#include <array>

namespace
{

constexpr qsizetype secondsLength = 20; // "2023-11-14T22:13:20Z"
constexpr qsizetype millisecondsLength = 24; // "2023-11-14T22:13:20.123Z"

/// Days since 1970-01-01 of a date after the year 0 of the Gregorian calendar. The formula counts years from
/// March, so that the day that some of them have more comes last.
/// Source: Howard Hinnant, "chrono-Compatible Low-Level Date Algorithms".
constexpr qint64 daysSinceEpoch(int year, int month, int day)
{
    const int shifted = month <= 2 ? year - 1 : year;
    const int era = shifted / 400;
    const int yearOfEra = shifted - era * 400;
    const int dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const int dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return qint64{era} * 146097 + dayOfEra - 719468;
}

static_assert(daysSinceEpoch(1970, 1, 1) == 0);
static_assert(daysSinceEpoch(2000, 3, 1) == 11017);

constexpr int daysInMonth(int year, int month)
{
    constexpr std::array days = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeapYear = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && isLeapYear ? 29 : days[static_cast<size_t>(month - 1)];
}

/// Reads digits one after the other and remembers whether all were some.
template <class Character>
class LvDigits
{
public:
    explicit LvDigits(const Character* text)
        : myText(text)
    {
    }

    [[nodiscard]] int number(int index, int count)
    {
        int value = 0;
        for (int end = index + count; index < end; ++index) {
            const auto digit = static_cast<unsigned>(myText[index]) - unsigned{'0'};
            myAreDigits = myAreDigits && digit <= 9;
            value = value * 10 + static_cast<int>(digit & 0xfU);
        }
        return value;
    }

    [[nodiscard]] bool areDigits() const { return myAreDigits; }

private:
    const Character* myText;
    bool myAreDigits = true;
};

/// The usual forms in universal time; an invalid date-time for all others, whether they can be read or not.
template <class Character>
QDateTime usualForm(const Character* text, qsizetype size)
{
    const bool hasMilliseconds = size == millisecondsLength;
    if ((size != secondsLength && !hasMilliseconds) || text[4] != '-' || text[7] != '-' || text[10] != 'T'
        || text[13] != ':' || text[16] != ':' || text[size - 1] != 'Z'
        || (hasMilliseconds && text[19] != '.')) {
        return {};
    }
    LvDigits digits(text);
    const int year = digits.number(0, 4);
    const int month = digits.number(5, 2);
    const int day = digits.number(8, 2);
    const int hour = digits.number(11, 2);
    const int minute = digits.number(14, 2);
    const int second = digits.number(17, 2);
    const int millisecond = hasMilliseconds ? digits.number(20, 3) : 0;
    if (!digits.areDigits() || year < 1 || month < 1 || month > 12 || day < 1
        || day > daysInMonth(year, month) || hour > 23 || minute > 59 || second > 59) {
        return {};
    }
    const qint64 seconds = ((daysSinceEpoch(year, month, day) * 24 + hour) * 60 + minute) * 60 + second;
    return QDateTime::fromMSecsSinceEpoch(seconds * 1000 + millisecond, Qt::UTC);
}

} // namespace

QDateTime LvDateTimeText::fromIso(QStringView text)
{
    const QDateTime usual = usualForm(text.utf16(), text.size());
    return usual.isValid() ? usual : QDateTime::fromString(text.trimmed().toString(), Qt::ISODate);
}

QDateTime LvDateTimeText::fromIso(std::string_view text)
{
    const auto size = static_cast<qsizetype>(text.size());
    const QDateTime usual = usualForm(text.data(), size);
    return usual.isValid()
        ? usual
        : QDateTime::fromString(QString::fromUtf8(text.data(), size).trimmed(), Qt::ISODate);
}
