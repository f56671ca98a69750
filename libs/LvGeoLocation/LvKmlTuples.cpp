#include "LvKmlTuples.h"

#include "LvGeoPosition.h"
#include "LvNumberText.h"

#include <QDateTime>
#include <QPointF>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstdint>
#include <type_traits>

namespace
{

// The point itself and seven digits: about a centimetre on the ground.
constexpr qsizetype keptFromPoint = 8;

constexpr std::array<double, keptFromPoint> powersOfTen = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7};

// Together with seven decimals still an integer that a double holds exactly.
constexpr std::ptrdiff_t digitsOfDegrees = 8;
constexpr std::ptrdiff_t digitsOfElevation = 9;
constexpr std::ptrdiff_t digitsOfSeconds = 18;

// Four numbers, three commas and a line feed.
constexpr std::size_t longestTuple = 4 * LvNumberText::maximumLength + 4;

/// What one tuple says.
struct Tuple {
    double longitude = 0.0;
    double latitude = 0.0;
    int elevation = 0;
    bool hasTime = false;
    qint64 seconds = 0;

    [[nodiscard]] bool isNull() const { return latitude == 0.0 && longitude == 0.0; }

    [[nodiscard]] LvGPXTrackPoint toPoint() const
    {
        const QDateTime timeStamp = hasTime ? QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC) : QDateTime();
        return {LvGeoPosition(latitude, longitude), elevation, timeStamp, QString()};
    }
};

template <class Unit>
using View = std::conditional_t<std::is_same_v<Unit, char>, std::string_view, QStringView>;

template <class Unit>
View<Unit> viewOf(const Unit* begin, const Unit* end)
{
    if constexpr (std::is_same_v<Unit, char>) {
        return {begin, static_cast<std::size_t>(end - begin)};
    } else {
        return {begin, end};
    }
}

template <class Unit>
bool isSeparator(Unit unit)
{
    return LvKmlTuples::isSeparator(static_cast<std::make_unsigned_t<Unit>>(unit));
}

template <class Unit>
double safeDouble(const Unit* begin, const Unit* end)
{
    // Without a point the index is -1, which leaves seven characters. Files depend on that, so it stays.
    const Unit* const point = std::find(begin, end, Unit('.'));
    const qsizetype keptLength = (point == end ? -1 : point - begin) + keptFromPoint;
    return LvNumberText::toDouble(viewOf(begin, std::min<qsizetype>(keptLength, end - begin) + begin));
}

/// Takes a tuple of any form: fields between commas, those behind the fourth without meaning.
template <class Unit>
Tuple readAnyTuple(const Unit* begin, const Unit* end)
{
    Tuple tuple;
    const auto nextField = [&begin, end] {
        const Unit* const fieldEnd = std::find(begin, end, Unit(','));
        const std::pair<const Unit*, const Unit*> field(begin, fieldEnd);
        begin = fieldEnd == end ? nullptr : fieldEnd + 1;
        return field;
    };
    const auto longitude = nextField();
    tuple.longitude = safeDouble(longitude.first, longitude.second);
    if (begin != nullptr) {
        const auto latitude = nextField();
        tuple.latitude = safeDouble(latitude.first, latitude.second);
    }
    // What is no number converts to 0, a missing elevation as well.
    if (begin != nullptr) {
        const auto elevation = nextField();
        tuple.elevation = LvNumberText::toInt(viewOf(elevation.first, elevation.second));
    }
    if (begin != nullptr) {
        const auto seconds = nextField();
        tuple.hasTime = true;
        tuple.seconds = LvNumberText::toLongLong(viewOf(seconds.first, seconds.second));
    }
    return tuple;
}

template <class Unit>
bool isDigit(Unit unit)
{
    return unit >= Unit('0') && unit <= Unit('9');
}

/// Reads a text tuple by tuple. Tuples of the usual form are understood at the first look at each character.
template <class Unit>
class TupleReader
{
public:
    TupleReader(const Unit* begin, const Unit* end)
        : myIt(begin)
        , myEnd(end)
    {
    }

    /// Goes to the next tuple, false at the end of the text.
    bool skipSeparators()
    {
        while (myIt != myEnd && isSeparator(*myIt)) {
            ++myIt;
        }
        return myIt != myEnd;
    }

    [[nodiscard]] const Unit* position() const { return myIt; }

    /// Reads a tuple that is [-]digits.digits twice, behind that a real number or an integer, behind that an
    /// integer. False for any other form; the reader has not moved then.
    bool readUsual(Tuple& tuple)
    {
        const Unit* it = myIt;
        if (!readDegrees(it, tuple.longitude) || it == myEnd || *it != Unit(',')
            || !readDegrees(++it, tuple.latitude)) {
            return false;
        }
        if (it != myEnd && *it == Unit(',')) {
            if (!readElevation(++it, tuple.elevation)) {
                return false;
            }
            tuple.hasTime = it != myEnd && *it == Unit(',');
            if (tuple.hasTime && !readInteger(++it, digitsOfSeconds, tuple.seconds)) {
                return false;
            }
        }
        if (it != myEnd && !isSeparator(*it)) {
            return false;
        }
        myIt = it;
        return true;
    }

    /// Goes to the end of the tuple. Collects the bits of its characters, which tell what else than ASCII is
    /// there.
    const Unit* skipTuple(unsigned& bits)
    {
        while (myIt != myEnd && !isSeparator(*myIt)) {
            bits |= static_cast<std::make_unsigned_t<Unit>>(*myIt++);
        }
        return myIt;
    }

private:
    bool readSign(const Unit*& it) const
    {
        const bool isNegative = it != myEnd && *it == Unit('-');
        it += isNegative ? 1 : 0;
        return isNegative;
    }

    const Unit* readDigits(const Unit* it, std::uint64_t& number) const
    {
        for (; it != myEnd && isDigit(*it); ++it) {
            number = number * 10 + static_cast<std::uint64_t>(*it - Unit('0'));
        }
        return it;
    }

    bool readDegrees(const Unit*& it, double& degrees) const
    {
        const bool isNegative = readSign(it);
        std::uint64_t number = 0;
        const Unit* const integerEnd = readDigits(it, number);
        const std::ptrdiff_t digits = integerEnd - it;
        if (digits == 0 || digits > digitsOfDegrees || integerEnd == myEnd || *integerEnd != Unit('.')) {
            return false;
        }
        it = integerEnd + 1;
        const Unit* const fraction = it;
        const Unit* const keptEnd = std::min<std::ptrdiff_t>(myEnd - it, keptFromPoint - 1) + it;
        for (; it != keptEnd && isDigit(*it); ++it) {
            number = number * 10 + static_cast<std::uint64_t>(*it - Unit('0'));
        }
        // Both numbers are exact, so the quotient is rounded once: to the number nearest to the text.
        degrees = static_cast<double>(number) / powersOfTen[static_cast<std::size_t>(it - fraction)];
        degrees = isNegative ? -degrees : degrees;
        // Digits that are cut off do not count.
        while (it != myEnd && isDigit(*it)) {
            ++it;
        }
        return true;
    }

    bool readInteger(const Unit*& it, std::ptrdiff_t maximumDigits, qint64& integer) const
    {
        const bool isNegative = readSign(it);
        std::uint64_t number = 0;
        const Unit* const digits = it;
        it = readDigits(it, number);
        if (it == digits || it - digits > maximumDigits) {
            return false;
        }
        integer = isNegative ? -static_cast<qint64>(number) : static_cast<qint64>(number);
        return true;
    }

    bool readElevation(const Unit*& it, int& elevation) const
    {
        qint64 number = 0;
        if (!readInteger(it, digitsOfElevation, number)) {
            return false;
        }
        elevation = static_cast<int>(number);
        if (it != myEnd && *it == Unit('.')) {
            // No integer, so none at all, whatever the digits behind the point.
            elevation = 0;
            for (++it; it != myEnd && isDigit(*it);) {
                ++it;
            }
        }
        return true;
    }

    const Unit* myIt;
    const Unit* myEnd;
};

/// About the number of tuples, to reserve room for: exact when single separators stand between them.
template <class Unit>
qsizetype countTuples(const Unit* begin, const Unit* end)
{
    return std::count_if(begin, end, [](Unit unit) { return isSeparator(unit); }) + 1;
}

constexpr unsigned longestAscii = 0x7F;

QString toText(std::string_view bytes)
{
    // Bytes in the middle of a document: a byte order mark is a character there.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

void append(QList<LvGPXTrackPoint>& points, const Tuple& tuple)
{
    if (!tuple.isNull()) {
        points.append(tuple.toPoint());
    }
}

char* write(char* buffer, const LvGPXTrackPoint& point)
{
    // In one call without angles in between: this is done for every point of a track.
    const QPointF degrees = point.sharedPosition().toPointF();
    const QDateTime& timeStamp = point.sharedTimeStamp();
    const bool hasTime = timeStamp.isValid();
    const int elevation = point.elevation();
    buffer = LvNumberText::writeFixed(buffer, degrees.x());
    *buffer++ = ',';
    buffer = LvNumberText::writeFixed(buffer, degrees.y());
    if (elevation != 0 || hasTime) {
        *buffer++ = ',';
        buffer = LvNumberText::writeInteger(buffer, elevation);
    }
    if (hasTime) {
        *buffer++ = ',';
        buffer = LvNumberText::writeInteger(buffer, timeStamp.toMSecsSinceEpoch());
    }
    return buffer;
}

} // namespace

double LvKmlTuples::safeDouble(QStringView text)
{
    return ::safeDouble(text.utf16(), text.utf16() + text.size());
}

LvGPXTrackPoint LvKmlTuples::decodePoint(QStringView tuple)
{
    return readAnyTuple(tuple.utf16(), tuple.utf16() + tuple.size()).toPoint();
}

QList<LvGPXTrackPoint> LvKmlTuples::decodePoints(QStringView text)
{
    const char16_t* const end = text.utf16() + text.size();
    QList<LvGPXTrackPoint> points;
    points.reserve(countTuples(text.utf16(), end));
    TupleReader<char16_t> reader(text.utf16(), end);
    bool isKnownAsValid = false;
    while (reader.skipSeparators()) {
        Tuple tuple;
        if (!reader.readUsual(tuple)) {
            const char16_t* const tupleBegin = reader.position();
            unsigned bits = 0;
            const char16_t* const tupleEnd = reader.skipTuple(bits);
            // Looking for surrogates in every text would take as long as reading the usual ones.
            if (bits > longestAscii && !isKnownAsValid) {
                isKnownAsValid = text.isValidUtf16();
                if (!isKnownAsValid) {
                    points.clear();
                    append(points, readAnyTuple(text.utf16(), end));
                    return points;
                }
            }
            tuple = readAnyTuple(tupleBegin, tupleEnd);
        }
        append(points, tuple);
    }
    return points;
}

QList<LvGPXTrackPoint> LvKmlTuples::decodePoints(std::string_view text)
{
    const char* const end = text.data() + text.size();
    QList<LvGPXTrackPoint> points;
    points.reserve(countTuples(text.data(), end));
    TupleReader<char> reader(text.data(), end);
    while (reader.skipSeparators()) {
        Tuple tuple;
        if (!reader.readUsual(tuple)) {
            const char* const tupleBegin = reader.position();
            unsigned bits = 0;
            const char* const tupleEnd = reader.skipTuple(bits);
            if (bits > longestAscii) {
                const QString characters = toText(viewOf(tupleBegin, tupleEnd));
                const auto* const units = QStringView(characters).utf16();
                tuple = readAnyTuple(units, units + characters.size());
            } else {
                tuple = readAnyTuple(tupleBegin, tupleEnd);
            }
        }
        append(points, tuple);
    }
    return points;
}

QString LvKmlTuples::encode(const LvGPXTrackPoint& point)
{
    std::array<char, longestTuple> buffer; // written next
    const char* const end = write(buffer.data(), point);
    return QString::fromLatin1(buffer.data(), end - buffer.data());
}

QString LvKmlTuples::encode(const QList<LvGPXTrackPoint>& points)
{
    QString text;
    encode(points, [&text](QByteArrayView piece) { text.append(QLatin1String(piece.data(), piece.size())); });
    return text;
}

void LvKmlTuples::encode(const QList<LvGPXTrackPoint>& points,
                         const std::function<void(QByteArrayView piece)>& take)
{
    // Handed over by blocks of many tuples: less to do for each of them.
    constexpr std::ptrdiff_t blockSize = std::ptrdiff_t(1) << 14;
    std::array<char, blockSize + longestTuple> block; // written next
    char* end = block.data();
    for (const LvGPXTrackPoint& point : points) {
        if (end - block.data() > blockSize) {
            take(QByteArrayView(block.data(), end));
            end = block.data();
        }
        if (&point != &points.constFirst()) {
            *end++ = '\n';
        }
        end = write(end, point);
    }
    take(QByteArrayView(block.data(), end));
}
