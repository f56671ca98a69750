#pragma once

#include "LvGPXContentBuilder.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/**
 * Reads a GPX document in one pass forwards over its bytes, if it is of the usual form: UTF-8, no document
 * type, names of ASCII characters, no deep nesting. Not installed.
 *
 * It is strict. What it calls complete is well-formed, and the builder has got what it would get from the
 * toolkit's tree; whatever it does not know for sure it calls unusual, and the tree shall decide.
 */
class LvGPXScanner
{
public:
    enum class Result {
        Complete,
        Broken, ///< not well-formed: the tree would say so, too
        Unusual, ///< read it another way; the builder has got a part of it
    };

    LvGPXScanner(const QByteArray& bytes, LvGPXContentBuilder& builder);

    [[nodiscard]] Result scan(LvGPXContent rootContent);

private:
    struct LvOpen {
        const char* myName;
        size_t mySize;
        LvGPXContent myContent;
        bool myIsInText; // of an element whose text counts, at any depth
    };

    struct LvAttribute {
        const char* myName;
        size_t mySize;
    };

    struct LvCoordinates {
        std::optional<std::string_view> myLatitude;
        std::optional<std::string_view> myLongitude;
    };

    // Each takes the place to begin at and returns the place behind; nullptr after stop().
    const char* stop(Result result);
    const char* stopAt(const char* here);
    const char* scanDeclaration(const char* here);
    const char* scanOutside(const char* here);
    const char* scanContent(const char* here);
    const char* scanText(const char* here);
    const char* scanStartTag(const char* here, LvGPXContent rootContent);
    const char* scanAttributes(const char* here, LvCoordinates& coordinates);
    const char* scanAttributeValue(const char* here, bool& isPlain);
    const char* scanEndTag(const char* here);
    const char* scanFreeCharacter(const char* here);
    void closeElement();
    const char* scanMarkup(const char* here);
    const char* scanComment(const char* here);
    const char* scanProcessingInstruction(const char* here);
    const char* scanCharacterData(const char* here);
    const char* scanName(const char* here);
    const char* scanReference(const char* here);
    const char* scanMultibyte(const char* here);
    static const char* skipBlanks(const char* here);
    std::optional<std::string_view> takePseudoAttribute(const char*& here, std::string_view name) const;
    [[nodiscard]] bool beginsWith(const char* here, std::string_view text) const;

    void beginText();
    void addText(const char* begin, const char* end, bool isPlain);
    void addCharacterData(const char* begin, const char* end);
    void addDecoded(const QString& text);
    void endText(LvGPXContent content);
    static QString decoded(const char* begin, const char* end);

    static constexpr size_t mostOpen = 128;
    static constexpr size_t mostAttributes = 32;

    const char* myBegin;
    const char* myEnd; // a zero byte stands there
    LvGPXContentBuilder& myBuilder;
    Result myResult = Result::Complete;

    size_t myDepth = 0;
    std::array<LvOpen, mostOpen> myOpen;
    std::array<LvAttribute, mostAttributes> myAttributes;

    // The text of the element that is being read: one plain piece as long as that does.
    std::string_view myPlainText;
    QString myText;
    bool myIsTextPlain = true;
};
