#include "LvCoordinateText.h"

#include <QHash>
#include <QList>
#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace
{

constexpr qsizetype longestText = 4000; // addresses can be long, positions are not
constexpr double partsPerUnit = 60.0;
constexpr qsizetype mostParts = 3; // degrees, minutes, seconds

enum class Axis { Unknown, Latitude, Longitude };

enum class TokenKind {
    Number,
    Sign,
    Degree,
    Minute,
    Second,
    Hemisphere,
    Label, // "Breite", "lon"
    Separator, // between the two angles
    PartSeparator, // the comma of "53,8,24"
};

struct Token {
    TokenKind kind = TokenKind::Number;
    double value = 0.0; // of a number; of a sign and a hemisphere: 1 or -1
    bool isWhole = true; // a number without decimals
    Axis axis = Axis::Unknown; // of a hemisphere and a label
};

using Tokens = QList<Token>;

/// What a comma between two digits means. Each text is read in both ways.
enum class TightComma { Decimal, Separator };

struct Angle {
    double degrees = 0.0;
    Axis axis = Axis::Unknown;
    qsizetype parts = 0;
    bool isMarked = false; // by a unit or a hemisphere
};

const QHash<QString, Token>& words()
{
    static const QHash<QString, Token> myWords = [] {
        QHash<QString, Token> table;
        const auto add = [&table](const Token& token, std::initializer_list<const char*> names) {
            for (const char* name : names) {
                table.insert(QString::fromUtf8(name), token);
            }
        };
        add({TokenKind::Hemisphere, 1.0, true, Axis::Latitude}, {"n", "nord", "norden", "north"});
        add({TokenKind::Hemisphere, -1.0, true, Axis::Latitude},
            {"s", "süd", "süden", "sued", "sueden", "south"});
        add({TokenKind::Hemisphere, 1.0, true, Axis::Longitude}, {"e", "o", "ost", "osten", "east"});
        add({TokenKind::Hemisphere, -1.0, true, Axis::Longitude}, {"w", "west", "westen"});
        add({TokenKind::Label, 0.0, true, Axis::Latitude}, {"lat", "latitude", "breite", "breitengrad", "b"});
        add({TokenKind::Label, 0.0, true, Axis::Longitude},
            {"lon", "lng", "long", "longitude", "länge", "laenge", "längengrad", "l"});
        add({TokenKind::Degree, 0.0, true, Axis::Unknown}, {"grad", "deg", "degree", "degrees"});
        add({TokenKind::Minute, 0.0, true, Axis::Unknown}, {"min", "minute", "minuten", "minutes"});
        add({TokenKind::Second, 0.0, true, Axis::Unknown},
            {"sek", "sec", "sekunde", "sekunden", "second", "seconds"});
        return table;
    }();
    return myWords;
}

/// One spelling for what looks alike: keyboards, word processors and web pages differ.
QString simplified(QString text)
{
    text.replace(QLatin1String("<br>"), QLatin1String(" "), Qt::CaseInsensitive);
    for (QChar& character : text) {
        switch (character.unicode()) {
        case u'º':
        case u'˚':
            character = u'°';
            break;
        case u'′':
        case u'‘':
        case u'’':
        case u'´':
        case u'`':
            character = u'\'';
            break;
        case u'″':
        case u'“':
        case u'”':
        case u'„':
            character = u'"';
            break;
        case u'−':
        case u'–':
            character = u'-';
            break;
        case u'|':
        case u'/':
        case u'&':
            character = u';';
            break;
        default:
            break;
        }
    }
    text.replace(QLatin1String("''"), QLatin1String("\""));
    text = text.simplified();
    constexpr std::array brackets{std::pair{u'(', u')'}, std::pair{u'[', u']'}};
    for (const auto& [opening, closing] : brackets) {
        if (text.startsWith(QChar(opening)) && text.endsWith(QChar(closing))) {
            text = text.sliced(1, text.size() - 2).trimmed();
        }
    }
    // A comma from the running text, or the stroke that ends "+53.14+008.80/".
    if (text.endsWith(u',') || text.endsWith(u';')) {
        text.chop(1);
    }
    return text;
}

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

class Scanner
{
public:
    Scanner(const QString& text, TightComma tightComma)
        : myText(text)
        , myTightComma(tightComma)
        , myCommaCount(std::count_if(text.cbegin(), text.cend(), [](QChar c) { return c == u','; }))
    {
    }

    /// The tokens; nothing when there is something that has no place in a position.
    std::optional<Tokens> run()
    {
        while (myIndex < myText.size()) {
            if (!readToken()) {
                return std::nullopt;
            }
        }
        return myTokens;
    }

private:
    [[nodiscard]] QChar at(qsizetype index) const
    {
        return index >= 0 && index < myText.size() ? myText.at(index) : QChar();
    }

    [[nodiscard]] bool isTight(qsizetype comma) const
    {
        return isDigit(at(comma - 1)) && isDigit(at(comma + 1));
    }

    bool readToken()
    {
        const QChar character = at(myIndex);
        if (isDigit(character) || (character == u'.' && isDigit(at(myIndex + 1)))) {
            return readNumber();
        }
        if (character.isLetter()) {
            return readWord();
        }
        ++myIndex;
        switch (character.unicode()) {
        case u' ':
            return true;
        case u':':
        case u'=':
            return !myTokens.isEmpty() && myTokens.last().kind == TokenKind::Label;
        case u'+':
            myTokens.append({TokenKind::Sign, 1.0, true, Axis::Unknown});
            return true;
        case u'-':
            myTokens.append({TokenKind::Sign, -1.0, true, Axis::Unknown});
            return true;
        case u'°':
            myTokens.append({TokenKind::Degree, 0.0, true, Axis::Unknown});
            return true;
        case u'\'':
            myTokens.append({TokenKind::Minute, 0.0, true, Axis::Unknown});
            return true;
        case u'"':
            myTokens.append({TokenKind::Second, 0.0, true, Axis::Unknown});
            return true;
        case u';':
            myTokens.append({TokenKind::Separator, 0.0, true, Axis::Unknown});
            return true;
        case u',':
            // A single comma separates the angles; between digits it otherwise separates their parts.
            myTokens.append(
                {isTight(myIndex - 1) && myCommaCount > 1 ? TokenKind::PartSeparator : TokenKind::Separator,
                 0.0, true, Axis::Unknown});
            return true;
        default:
            return false;
        }
    }

    bool readNumber()
    {
        const qsizetype start = myIndex;
        qsizetype decimalSigns = 0;
        while (isDigit(at(myIndex)) || at(myIndex) == u'.'
               || (myTightComma == TightComma::Decimal && at(myIndex) == u',' && isTight(myIndex))) {
            decimalSigns += isDigit(at(myIndex)) ? 0 : 1;
            ++myIndex;
        }
        QString number = myText.sliced(start, myIndex - start);
        number.replace(u',', u'.');
        bool isReadable = false;
        const double value = number.toDouble(&isReadable);
        myTokens.append({TokenKind::Number, value, decimalSigns == 0, Axis::Unknown});
        return isReadable && decimalSigns <= 1;
    }

    bool readWord()
    {
        const qsizetype start = myIndex;
        while (at(myIndex).isLetter()) {
            ++myIndex;
        }
        const auto word = words().constFind(myText.sliced(start, myIndex - start).toLower());
        if (word == words().constEnd()) {
            return false;
        }
        if (at(myIndex) == u'.' && !isDigit(at(myIndex + 1))) {
            ++myIndex; // "lat.", "min."
        }
        myTokens.append(*word);
        return true;
    }

    QString myText;
    TightComma myTightComma;
    qsizetype myCommaCount;
    qsizetype myIndex = 0;
    Tokens myTokens;
};

qsizetype countOf(const Tokens& tokens, TokenKind kind)
{
    return std::count_if(tokens.cbegin(), tokens.cend(),
                         [kind](const Token& token) { return token.kind == kind; });
}

qsizetype indexOf(const Tokens& tokens, TokenKind kind, qsizetype number)
{
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens.at(i).kind == kind && number-- == 0) {
            return i;
        }
    }
    return -1;
}

/// Where the number begins, its sign included.
qsizetype startOfNumber(const Tokens& tokens, qsizetype number)
{
    return number > 0 && tokens.at(number - 1).kind == TokenKind::Sign ? number - 1 : number;
}

/// The index of the first token of the second angle when no separator tells; -1 when nothing tells.
qsizetype splitIndex(const Tokens& tokens)
{
    const qsizetype hemispheres = countOf(tokens, TokenKind::Hemisphere);
    if (countOf(tokens, TokenKind::Label) == 2) {
        return indexOf(tokens, TokenKind::Label, 1);
    }
    if (hemispheres == 2) {
        return tokens.first().kind == TokenKind::Hemisphere ? indexOf(tokens, TokenKind::Hemisphere, 1)
                                                            : indexOf(tokens, TokenKind::Hemisphere, 0) + 1;
    }
    if (hemispheres != 0) {
        return -1; // a letter in the middle could belong to either side
    }
    if (countOf(tokens, TokenKind::Degree) == 2) {
        const qsizetype degree = indexOf(tokens, TokenKind::Degree, 1);
        return tokens.at(degree - 1).kind == TokenKind::Number ? startOfNumber(tokens, degree - 1) : -1;
    }
    const qsizetype numbers = countOf(tokens, TokenKind::Number);
    if (numbers % 2 != 0 || numbers == 0) {
        return -1;
    }
    return startOfNumber(tokens, indexOf(tokens, TokenKind::Number, numbers / 2));
}

/// Reads one angle from its tokens, front to back.
class AngleReader
{
public:
    explicit AngleReader(Tokens tokens)
        : myTokens(std::move(tokens))
    {
    }

    std::optional<Angle> run()
    {
        Angle angle;
        const std::optional<Token> label = take(TokenKind::Label);
        std::optional<Token> hemisphere = take(TokenKind::Hemisphere);
        const std::optional<Token> sign = take(TokenKind::Sign);
        if (!readParts(angle)) {
            return std::nullopt;
        }
        if (!hemisphere) {
            hemisphere = take(TokenKind::Hemisphere);
        }
        if (myIndex != myTokens.size()) {
            return std::nullopt;
        }
        if (sign) {
            if (hemisphere && sign->value < 0.0) {
                return std::nullopt; // "-8.8 W": west, or east twice over?
            }
            angle.degrees *= sign->value;
        }
        if (hemisphere) {
            angle.degrees *= hemisphere->value;
            angle.axis = hemisphere->axis;
            angle.isMarked = true;
        }
        if (label) {
            if (hemisphere && hemisphere->axis != label->axis) {
                return std::nullopt;
            }
            angle.axis = label->axis;
        }
        return angle;
    }

private:
    std::optional<Token> take(TokenKind kind)
    {
        if (myIndex < myTokens.size() && myTokens.at(myIndex).kind == kind) {
            return myTokens.at(myIndex++);
        }
        return std::nullopt;
    }

    bool readParts(Angle& angle)
    {
        constexpr std::array units{TokenKind::Degree, TokenKind::Minute, TokenKind::Second};
        double scale = 1.0;
        bool mayContinue = true;
        qsizetype separators = 0;
        while (angle.parts < mostParts) {
            const std::optional<Token> number = take(TokenKind::Number);
            if (!number) {
                break;
            }
            // Only the last part has decimals, and only degrees reach beyond 59.
            if (!mayContinue || (angle.parts > 0 && number->value >= partsPerUnit)) {
                return false;
            }
            mayContinue = number->isWhole;
            angle.degrees += number->value / scale;
            scale *= partsPerUnit;
            angle.isMarked |= take(units.at(static_cast<std::size_t>(angle.parts))).has_value();
            ++angle.parts;
            separators += take(TokenKind::PartSeparator) ? 1 : 0;
        }
        return angle.parts > 0 && (separators == 0 || (separators == 2 && angle.parts == mostParts));
    }

    Tokens myTokens;
    qsizetype myIndex = 0;
};

/// The position of two angles in the ranges of their axes; the default position otherwise.
LvGeoPosition positionOf(const LvLatitude& latitude, const LvLongitude& longitude)
{
    if (!latitude.isInValidRange() || !longitude.isInValidRange()) {
        return {};
    }
    return {latitude, longitude};
}

LvGeoPosition combine(const Angle& first, const Angle& second)
{
    if (first.axis != Axis::Unknown && first.axis == second.axis) {
        return {};
    }
    // "53 8 8" leaves open whose part the middle one is.
    if (!first.isMarked && !second.isMarked && first.parts != second.parts) {
        return {};
    }
    const bool isSwapped = first.axis == Axis::Longitude || second.axis == Axis::Latitude;
    return isSwapped ? positionOf(second.degrees, first.degrees) : positionOf(first.degrees, second.degrees);
}

LvGeoPosition read(const QString& text, TightComma tightComma)
{
    const std::optional<Tokens> tokens = Scanner(text, tightComma).run();
    if (!tokens || tokens->isEmpty()) {
        return {};
    }
    const qsizetype separators = countOf(*tokens, TokenKind::Separator);
    if (separators > 1) {
        return {};
    }
    const qsizetype end = separators == 1 ? indexOf(*tokens, TokenKind::Separator, 0) : splitIndex(*tokens);
    if (end <= 0) {
        return {};
    }
    const std::optional<Angle> first = AngleReader(tokens->first(end)).run();
    const std::optional<Angle> second = AngleReader(tokens->sliced(end + separators)).run();
    return first && second ? combine(*first, *second) : LvGeoPosition();
}

/// Two plain decimal numbers with a point.
LvGeoPosition plainPosition(const QString& latitude, const QString& longitude)
{
    bool isLatitude = false;
    bool isLongitude = false;
    const double north = latitude.toDouble(&isLatitude);
    const double east = longitude.toDouble(&isLongitude);
    return isLatitude && isLongitude ? positionOf(north, east) : LvGeoPosition();
}

/// "geo:53.14,8.8,12;crs=wgs84;u=35"
LvGeoPosition fromGeoAddress(const QString& text)
{
    static const QRegularExpression mySyntax(
        QStringLiteral("^geo:([^,;?]+),([^,;?]+)(?:,[^,;?]+)?(;[^?]*)?(?:[?]|$)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression myForeignSystem(QStringLiteral(";crs=(?!wgs84(?:;|$))"),
                                                    QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = mySyntax.match(text);
    if (!match.hasMatch() || match.captured(3).contains(myForeignSystem)) {
        return {};
    }
    return plainPosition(match.captured(1), match.captured(2));
}

/// Query items such as "latitude=53.14&longitude=8.8", "#map=12/53.14/8.8" or "@53.14,8.8,12z".
LvGeoPosition fromWebAddress(const QString& text)
{
    static const QRegularExpression myFragment(
        QStringLiteral("#(?:.*&)?map=[0-9.]+/(-?[0-9.]+)/(-?[0-9.]+)(?:[/&]|$)"));
    static const QRegularExpression myAtSign(QStringLiteral("/@(-?[0-9.]+),(-?[0-9.]+)(?:[,/?#]|$)"));
    const QUrlQuery query(QUrl(text).query());
    constexpr std::array keys{std::pair{"latitude", "longitude"}, std::pair{"mlat", "mlon"},
                              std::pair{"lat", "lon"}, std::pair{"lat", "lng"}};
    for (const auto& [latitude, longitude] : keys) {
        LvGeoPosition position = plainPosition(query.queryItemValue(QString::fromLatin1(latitude)),
                                               query.queryItemValue(QString::fromLatin1(longitude)));
        if (position.isValid()) {
            return position;
        }
    }
    for (const QRegularExpression* syntax : {&myFragment, &myAtSign}) {
        const QRegularExpressionMatch match = syntax->match(text);
        if (match.hasMatch()) {
            return plainPosition(match.captured(1), match.captured(2));
        }
    }
    return {};
}

} // namespace

LvGeoPosition LvCoordinateText::parse(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.size() > longestText) {
        return {};
    }
    if (trimmed.startsWith(QLatin1String("geo:"), Qt::CaseInsensitive)) {
        return fromGeoAddress(trimmed);
    }
    if (trimmed.contains(QLatin1String("://"))) {
        return fromWebAddress(trimmed);
    }
    const QString simple = simplified(trimmed);
    const LvGeoPosition byDecimalComma = read(simple, TightComma::Decimal);
    const LvGeoPosition bySeparatingComma = read(simple, TightComma::Separator);
    if (byDecimalComma.isValid() && bySeparatingComma.isValid()) {
        return byDecimalComma == bySeparatingComma ? byDecimalComma : LvGeoPosition();
    }
    return byDecimalComma.isValid() ? byDecimalComma : bySeparatingComma;
}
