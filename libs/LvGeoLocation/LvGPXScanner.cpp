#include "LvGPXScanner.h"

#include <QStringView>

#include <algorithm>
#include <cstring>

namespace
{

enum CharacterClass : quint8 {
    Plain,
    Less,
    Ampersand,
    Bracket, // the one that may begin "]]>"
    CarriageReturn,
    Multibyte,
    Control, // and the zero behind the end
};

constexpr std::array<quint8, 256> makeTextClasses()
{
    std::array<quint8, 256> classes{};
    for (size_t code = 0; code < 256; ++code) {
        classes.at(code) = code < 0x20 ? Control : code < 0x80 ? Plain : Multibyte;
    }
    classes.at('\t') = Plain;
    classes.at('\n') = Plain;
    classes.at('\r') = CarriageReturn;
    classes.at('<') = Less;
    classes.at('&') = Ampersand;
    classes.at(']') = Bracket;
    return classes;
}

constexpr std::array<quint8, 256> makeNameClasses()
{
    std::array<quint8, 256> classes{}; // 1: begins a name, 2: goes on
    for (size_t code = 'a'; code <= 'z'; ++code) {
        classes.at(code) = 1;
        classes.at(code - 'a' + 'A') = 1;
    }
    for (size_t code = '0'; code <= '9'; ++code) {
        classes.at(code) = 2;
    }
    classes.at('_') = 1;
    classes.at('-') = 2;
    classes.at('.') = 2;
    return classes;
}

constexpr std::array<quint8, 256> textClasses = makeTextClasses();
constexpr std::array<quint8, 256> nameClasses = makeNameClasses();

quint8 textClass(char character)
{
    return textClasses[static_cast<quint8>(character)];
}

quint8 nameClass(char character)
{
    return nameClasses[static_cast<quint8>(character)];
}

bool isBlank(char character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

size_t distance(const char* begin, const char* end)
{
    return static_cast<size_t>(end - begin);
}

bool isXmlCharacter(quint32 code)
{
    return code == '\t' || code == '\n' || code == '\r' || (code >= 0x20 && code <= 0xd7ff)
        || (code >= 0xe000 && code <= 0xfffd) || (code >= 0x10000 && code <= 0x10ffff);
}

/// The code point of a character reference between "&#" and ";"; 0 when it is none of a usual length.
quint32 referencedCode(std::string_view reference)
{
    const bool isHexadecimal = !reference.empty() && reference.front() == 'x';
    if (isHexadecimal) {
        reference.remove_prefix(1);
    }
    if (reference.empty() || reference.size() > 7) {
        return 0;
    }
    quint32 code = 0;
    for (const char digit : reference) {
        if (digit >= '0' && digit <= '9') {
            code = code * (isHexadecimal ? 16 : 10) + static_cast<quint32>(digit - '0');
        } else if (isHexadecimal && digit >= 'a' && digit <= 'f') {
            code = code * 16 + static_cast<quint32>(digit - 'a' + 10);
        } else if (isHexadecimal && digit >= 'A' && digit <= 'F') {
            code = code * 16 + static_cast<quint32>(digit - 'A' + 10);
        } else {
            return 0;
        }
    }
    return isXmlCharacter(code) ? code : 0;
}

/// The character of a predefined entity; a null one for every other name.
QChar predefined(std::string_view name)
{
    if (name == "amp") {
        return u'&';
    }
    if (name == "lt") {
        return u'<';
    }
    if (name == "gt") {
        return u'>';
    }
    if (name == "quot") {
        return u'"';
    }
    return name == "apos" ? QChar(u'\'') : QChar();
}

} // namespace

LvGPXScanner::LvGPXScanner(const QByteArray& bytes, LvGPXContentBuilder& builder)
    : myBegin(bytes.constData())
    , myEnd(myBegin + bytes.size())
    , myBuilder(builder)
{
}

LvGPXScanner::Result LvGPXScanner::scan(LvGPXContent rootContent)
{
    const char* here = myBegin;
    if (beginsWith(here, "\xef\xbb\xbf")) {
        here += 3;
    }
    here = scanDeclaration(here);
    if (here != nullptr) {
        here = scanOutside(here);
    }
    if (here != nullptr) {
        here = here == myEnd ? stop(Result::Broken) : scanStartTag(here, rootContent);
    }
    if (here != nullptr) {
        here = scanContent(here);
    }
    if (here != nullptr) {
        here = scanOutside(here);
    }
    if (here != nullptr && here != myEnd) {
        stop(Result::Unusual);
    }
    return myResult;
}

const char* LvGPXScanner::stop(Result result)
{
    myResult = result;
    return nullptr;
}

const char* LvGPXScanner::stopAt(const char* here)
{
    return stop(here == myEnd ? Result::Broken : Result::Unusual);
}

bool LvGPXScanner::beginsWith(const char* here, std::string_view text) const
{
    return distance(here, myEnd) >= text.size() && std::memcmp(here, text.data(), text.size()) == 0;
}

const char* LvGPXScanner::skipBlanks(const char* here)
{
    while (isBlank(*here)) {
        ++here;
    }
    return here;
}

/// The declaration, if there is one: version 1.0, and no other encoding. Other spellings are rare enough to
/// go the other way.
const char* LvGPXScanner::scanDeclaration(const char* here)
{
    if (!beginsWith(here, "<?xml") || nameClass(here[5]) != 0) {
        return here;
    }
    here += 5;
    const std::optional<std::string_view> version = takePseudoAttribute(here, "version");
    const std::optional<std::string_view> encoding = takePseudoAttribute(here, "encoding");
    const std::optional<std::string_view> standalone = takePseudoAttribute(here, "standalone");
    const bool isEncodingUsual =
        !encoding || (encoding->size() == 5 && qstrnicmp(encoding->data(), "utf-8", 5) == 0);
    const bool isStandaloneUsual = !standalone || *standalone == "yes" || *standalone == "no";
    here = skipBlanks(here);
    if (version != "1.0" || !isEncodingUsual || !isStandaloneUsual || !beginsWith(here, "?>")) {
        return stop(Result::Unusual);
    }
    return here + 2;
}

/// Goes on past a blank and name="value"; stays where something else stands.
std::optional<std::string_view> LvGPXScanner::takePseudoAttribute(const char*& here,
                                                                  std::string_view name) const
{
    const char* const begin = skipBlanks(here);
    if (begin == here || !beginsWith(begin, name)) {
        return std::nullopt;
    }
    const char* value = begin + name.size();
    if (*value != '=' || (value[1] != '"' && value[1] != '\'')) {
        return std::nullopt;
    }
    const char quote = value[1];
    value += 2;
    const char* end = value;
    while (textClass(*end) == Plain && *end != quote && *end != '>') {
        ++end;
    }
    if (*end != quote) {
        return std::nullopt;
    }
    here = end + 1;
    return std::string_view(value, distance(value, end));
}

const char* LvGPXScanner::scanOutside(const char* here)
{
    for (;;) {
        here = skipBlanks(here);
        if (beginsWith(here, "<!--")) {
            here = scanComment(here);
        } else if (beginsWith(here, "<?")) {
            here = scanProcessingInstruction(here);
        } else {
            return here;
        }
        if (here == nullptr) {
            return nullptr;
        }
    }
}

const char* LvGPXScanner::scanContent(const char* here)
{
    while (myDepth > 0) {
        here = scanText(here);
        if (here == nullptr) {
            return nullptr;
        }
        if (here[1] == '/') {
            here = scanEndTag(here);
        } else if (nameClass(here[1]) == 1) {
            here = scanStartTag(here, LvGPXContent::Ignored);
        } else {
            here = scanMarkup(here);
        }
        if (here == nullptr) {
            return nullptr;
        }
    }
    return here;
}

/// Up to the next "<".
const char* LvGPXScanner::scanText(const char* here)
{
    const char* const begin = here;
    here = skipBlanks(here);
    if (*here == '<') {
        return here; // pieces of blanks do not count
    }
    bool isPlain = std::find(begin, here, '\r') == here;
    for (;;) {
        while (textClass(*here) == Plain) {
            ++here;
        }
        switch (textClass(*here)) {
        case Less:
            if (myOpen[myDepth - 1].myIsInText) {
                addText(begin, here, isPlain);
            }
            return here;
        case Ampersand:
            isPlain = false;
            here = scanReference(here);
            break;
        case Bracket:
            here = beginsWith(here, "]]>") ? stop(Result::Broken) : here + 1;
            break;
        case CarriageReturn:
            isPlain = false;
            ++here;
            break;
        case Multibyte:
            isPlain = false;
            here = scanMultibyte(here);
            break;
        default:
            return stopAt(here);
        }
        if (here == nullptr) {
            return nullptr;
        }
    }
}

const char* LvGPXScanner::scanStartTag(const char* here, LvGPXContent rootContent)
{
    if (*here != '<' || myDepth == mostOpen) {
        return stop(Result::Unusual);
    }
    const char* const name = here + 1;
    here = scanName(name);
    if (here == nullptr) {
        return nullptr;
    }
    LvOpen& open = myOpen[myDepth];
    open = {name, distance(name, here), LvGPXContent::Ignored, false};
    if (myDepth == 0) {
        open.myContent = rootContent;
    } else {
        const LvOpen& parent = myOpen[myDepth - 1];
        if (parent.myIsInText) {
            open.myIsInText = true;
        } else if (parent.myContent != LvGPXContent::Ignored) {
            open.myContent = myBuilder.begin(parent.myContent, std::string_view(name, open.mySize));
            if (LvGPXContentBuilder::hasText(open.myContent)) {
                open.myIsInText = true;
                beginText();
            }
        }
    }
    LvCoordinates coordinates;
    here = scanAttributes(here, coordinates);
    if (here == nullptr) {
        return nullptr;
    }
    if (open.myContent == LvGPXContent::Point) {
        myBuilder.setCoordinates(coordinates.myLatitude, coordinates.myLongitude);
    }
    ++myDepth;
    if (*here == '/') {
        if (here[1] != '>') {
            return stopAt(here + 1);
        }
        closeElement();
        return here + 2;
    }
    return here + 1;
}

/// Up to the "/" or ">" of a start tag.
const char* LvGPXScanner::scanAttributes(const char* here, LvCoordinates& coordinates)
{
    size_t count = 0;
    for (;;) {
        const char* const behindLast = here;
        here = skipBlanks(here);
        if (*here == '>' || *here == '/') {
            return here;
        }
        if (here == behindLast || count == mostAttributes) {
            return stopAt(here);
        }
        const char* const begin = here;
        here = scanName(begin);
        if (here == nullptr) {
            return nullptr;
        }
        const std::string_view name(begin, distance(begin, here));
        for (size_t index = 0; index < count; ++index) {
            const LvAttribute& before = myAttributes[index];
            if (name == std::string_view(before.myName, before.mySize)) {
                return stop(Result::Broken);
            }
        }
        myAttributes[count++] = {begin, name.size()};
        here = skipBlanks(here);
        if (*here != '=') {
            return stopAt(here);
        }
        here = skipBlanks(here + 1);
        const char* const value = here + 1;
        bool isPlain = true;
        here = scanAttributeValue(here, isPlain);
        if (here == nullptr) {
            return nullptr;
        }
        if (name.size() == 3 && name[0] == 'l') {
            if (name == "lat") {
                coordinates.myLatitude = std::string_view(value, distance(value, here - 1));
            } else if (name == "lon") {
                coordinates.myLongitude = std::string_view(value, distance(value, here - 1));
            } else {
                continue;
            }
            if (!isPlain) {
                return stop(Result::Unusual);
            }
        }
    }
}

const char* LvGPXScanner::scanAttributeValue(const char* here, bool& isPlain)
{
    const char quote = *here;
    if (quote != '"' && quote != '\'') {
        return stopAt(here);
    }
    ++here;
    for (;;) {
        while (textClass(*here) == Plain && *here != quote && !isBlank(*here)) {
            ++here;
        }
        if (*here == quote) {
            return here + 1;
        }
        switch (textClass(*here)) {
        case Plain: // a blank
            isPlain = isPlain && *here == ' ';
            ++here;
            break;
        case Ampersand:
            isPlain = false;
            here = scanReference(here);
            break;
        case CarriageReturn:
            isPlain = false;
            ++here;
            break;
        case Bracket:
            ++here;
            break;
        case Multibyte:
            isPlain = false;
            here = scanMultibyte(here);
            break;
        default:
            return stopAt(here);
        }
        if (here == nullptr) {
            return nullptr;
        }
    }
}

const char* LvGPXScanner::scanEndTag(const char* here)
{
    here += 2;
    const LvOpen& open = myOpen[myDepth - 1];
    if (!beginsWith(here, std::string_view(open.myName, open.mySize))) {
        return stop(Result::Broken);
    }
    here = skipBlanks(here + open.mySize);
    if (*here != '>') {
        return stop(Result::Broken);
    }
    closeElement();
    return here + 1;
}

void LvGPXScanner::closeElement()
{
    const LvOpen& open = myOpen[--myDepth];
    if (LvGPXContentBuilder::hasText(open.myContent)) {
        endText(open.myContent);
    } else if (open.myContent != LvGPXContent::Ignored) {
        myBuilder.end(open.myContent);
    }
}

/// What begins with "<" and is no tag.
const char* LvGPXScanner::scanMarkup(const char* here)
{
    if (beginsWith(here, "<!--")) {
        return scanComment(here);
    }
    if (beginsWith(here, "<![CDATA[")) {
        return scanCharacterData(here);
    }
    if (beginsWith(here, "<?")) {
        return scanProcessingInstruction(here);
    }
    return stop(Result::Unusual);
}

const char* LvGPXScanner::scanComment(const char* here)
{
    here += 4;
    for (;;) {
        if (*here == '-' && here[1] == '-') {
            return here[2] == '>' ? here + 3 : stop(Result::Broken);
        }
        here = scanFreeCharacter(here);
        if (here == nullptr) {
            return nullptr;
        }
    }
}

const char* LvGPXScanner::scanProcessingInstruction(const char* here)
{
    here += 2;
    const char* const name = here;
    here = scanName(name);
    if (here == nullptr) {
        return nullptr;
    }
    // A declaration at the wrong place; and other names have no colon and a blank behind them.
    if (qstrnicmp(name, "xml", 3) == 0 || std::find(name, here, ':') != here
        || (!isBlank(*here) && *here != '?')) {
        return stop(Result::Unusual);
    }
    for (;;) {
        if (*here == '?' && here[1] == '>') {
            return here + 2;
        }
        here = scanFreeCharacter(here);
        if (here == nullptr) {
            return nullptr;
        }
    }
}

const char* LvGPXScanner::scanCharacterData(const char* here)
{
    here += 9;
    const char* const begin = here;
    for (;;) {
        if (*here == ']' && here[1] == ']' && here[2] == '>') {
            if (myOpen[myDepth - 1].myIsInText) {
                addCharacterData(begin, here);
            }
            return here + 3;
        }
        here = scanFreeCharacter(here);
        if (here == nullptr) {
            return nullptr;
        }
    }
}

/// Any character, where none has a meaning of its own.
const char* LvGPXScanner::scanFreeCharacter(const char* here)
{
    switch (textClass(*here)) {
    case Multibyte:
        return scanMultibyte(here);
    case Control:
        return stopAt(here);
    default:
        return here + 1;
    }
}

/// A name of ASCII characters, with one colon at most that stands between two of them.
const char* LvGPXScanner::scanName(const char* here)
{
    if (nameClass(*here) != 1) {
        return stopAt(here);
    }
    while (nameClass(*here) != 0) {
        ++here;
    }
    if (*here == ':') {
        ++here;
        if (nameClass(*here) != 1) {
            return stopAt(here);
        }
        while (nameClass(*here) != 0) {
            ++here;
        }
    }
    // Names go on with ":" or other alphabets in the eyes of the toolkit.
    return *here == ':' || textClass(*here) == Multibyte ? stop(Result::Unusual) : here;
}

const char* LvGPXScanner::scanReference(const char* here)
{
    constexpr size_t longest = 9; // "#x10FFFF" and ";"
    const char* const name = here + 1;
    const auto* end =
        static_cast<const char*>(std::memchr(name, ';', std::min(longest, distance(name, myEnd))));
    if (end == nullptr) {
        return stop(Result::Unusual);
    }
    const std::string_view reference(name, distance(name, end));
    const bool isKnown = !reference.empty() && reference.front() == '#'
        ? referencedCode(reference.substr(1)) != 0
        : !predefined(reference).isNull();
    return isKnown ? end + 1 : stop(Result::Unusual);
}

/// A character of two to four bytes in UTF-8: the shortest form, no surrogate, no U+FFFE or U+FFFF.
const char* LvGPXScanner::scanMultibyte(const char* here)
{
    const auto byte = [here](int index) { return static_cast<quint8>(here[index]); };
    const auto isContinuation = [&byte](int index) { return (byte(index) & 0xc0U) == 0x80U; };
    const quint8 first = byte(0);
    if (first >= 0xc2 && first <= 0xdf) {
        return isContinuation(1) ? here + 2 : stop(Result::Unusual);
    }
    if (first >= 0xe0 && first <= 0xef && isContinuation(1) && isContinuation(2)) {
        const quint32 code = ((first & 0x0fU) << 12U) | ((byte(1) & 0x3fU) << 6U) | (byte(2) & 0x3fU);
        constexpr quint32 byteOrderMark = 0xfeff; // decoders may drop it
        return code >= 0x800 && isXmlCharacter(code) && code != byteOrderMark ? here + 3
                                                                              : stop(Result::Unusual);
    }
    if (first >= 0xf0 && first <= 0xf4 && isContinuation(1) && isContinuation(2) && isContinuation(3)) {
        const quint32 code = ((first & 0x07U) << 18U) | ((byte(1) & 0x3fU) << 12U) | ((byte(2) & 0x3fU) << 6U)
            | (byte(3) & 0x3fU);
        return code >= 0x10000 && code <= 0x10ffff ? here + 4 : stop(Result::Unusual);
    }
    return stop(Result::Unusual);
}

void LvGPXScanner::beginText()
{
    myPlainText = {};
    myIsTextPlain = true;
    myText.clear();
}

void LvGPXScanner::addText(const char* begin, const char* end, bool isPlain)
{
    if (isPlain && myIsTextPlain && myPlainText.empty()) {
        myPlainText = {begin, distance(begin, end)};
        return;
    }
    const QString piece = decoded(begin, end);
    // As the tree does: pieces of blanks do not count, however the blanks are written.
    if (!piece.trimmed().isEmpty()) {
        addDecoded(piece);
    }
}

void LvGPXScanner::addCharacterData(const char* begin, const char* end)
{
    QString text = QString::fromUtf8(begin, end - begin);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    addDecoded(text);
}

void LvGPXScanner::addDecoded(const QString& text)
{
    if (myIsTextPlain) {
        myText = QString::fromLatin1(myPlainText.data(), static_cast<qsizetype>(myPlainText.size()));
        myIsTextPlain = false;
    }
    myText += text;
}

void LvGPXScanner::endText(LvGPXContent content)
{
    if (myIsTextPlain) {
        myBuilder.setText(content, myPlainText);
    } else {
        myBuilder.setText(content, QStringView(myText));
    }
}

/// Text with its references resolved and its ends of line made one character.
QString LvGPXScanner::decoded(const char* begin, const char* end)
{
    QString text;
    while (begin != end) {
        const char* plain = begin;
        while (plain != end && *plain != '&' && *plain != '\r') {
            ++plain;
        }
        text += QString::fromUtf8(begin, plain - begin);
        if (plain == end) {
            break;
        }
        if (*plain == '\r') {
            text += u'\n';
            begin = plain + (plain + 1 != end && plain[1] == '\n' ? 2 : 1);
            continue;
        }
        const auto* semicolon = static_cast<const char*>(std::memchr(plain, ';', distance(plain, end)));
        const std::string_view name(plain + 1, distance(plain + 1, semicolon));
        if (name.front() == '#') {
            const char32_t code = referencedCode(name.substr(1));
            text += QString::fromUcs4(&code, 1);
        } else {
            text += predefined(name);
        }
        begin = semicolon + 1;
    }
    return text;
}
