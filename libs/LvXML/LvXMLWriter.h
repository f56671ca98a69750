#pragma once

#include "lvxml_export.h"

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QDomNode>
#include <QString>
#include <QStringEncoder>
#include <QStringView>

#include <functional>
#include <vector>

class QIODevice;

/// A text too long to stand in a tree: it is written when the turn of its element comes. That one has to be
/// empty.
struct LvXMLLateText {
    QDomElement element;
    /// Hands over the text piece by piece, in ASCII characters that need no escaping in XML.
    std::function<void(const std::function<void(QByteArrayView piece)>& write)> text;
};

/**
 * Writes a document as the toolkit does with an indentation of one blank, but the same document always gives
 * the same bytes: attributes stand in the order of their names, by code units. It goes through the tree
 * without recursion and writes as it goes.
 *
 * What XML 1.0 forbids is left out, see LvXMLBuilder. A document that begins with an XML declaration gets one
 * that says UTF-8; its document type is left out then, as the toolkit does. Lines are indented by at most
 * maximumIndentation blanks, or documents nested deeply would be mostly blanks.
 */
class LVXML_EXPORT LvXMLWriter
{
public:
    static constexpr int maximumIndentation = 2000;

    /// Begins to write; the device has to be open. Its errors are its own.
    explicit LvXMLWriter(QIODevice& device);
    ~LvXMLWriter();

    /// Writes a whole document. The late texts have to stand in the order of their elements in the document;
    /// false when one of them did not come to its turn.
    bool write(const QDomDocument& document, const std::vector<LvXMLLateText>& lateTexts = {});

    /// The index of the first character, from the given one on, that XML 1.0 may forbid or that is one half
    /// of a pair; the size of the text when there is none.
    [[nodiscard]] static qsizetype findSuspect(QStringView text, qsizetype from);

    /// The number of code units of the legal character that starts at the index: 1, 2 for a surrogate pair, 0
    /// for none.
    [[nodiscard]] static qsizetype legalUnits(QStringView text, qsizetype index);

private:
    Q_DISABLE_COPY_MOVE(LvXMLWriter)

    enum class Place { Text, Attribute, Section, Markup };

    void writeTree(const QDomNode& root);
    /// Writes a node, of an element all before its content.
    void writeBegin(const QDomNode& node, int depth);
    void writeElement(const QDomElement& element);
    void writeAttributes(const QDomElement& element);
    void writeLateText();
    void writeEnd(const QDomElement& element, int depth);
    void writeForeign(const QDomNode& node);
    void writeIndentation(int depth);
    void writeCharacters(QStringView text, Place place);
    void writeSpecial(char16_t unit, Place place);
    /// Characters that need nothing but encoding.
    void writeLegal(QStringView text);
    void writeAscii(QByteArrayView text);
    void makeRoom(qsizetype bytes);
    /// Hands over all but so many bytes.
    void flush(qsizetype kept);

    QIODevice& myDevice;
    QStringEncoder myEncoder;
    QByteArray myBuffer;
    const LvXMLLateText* myNextLateText = nullptr;
    const LvXMLLateText* myLateTextEnd = nullptr;
    qsizetype mySize = 0;
    char16_t myHighSurrogate = 0; // at the end of a text that the next node may go on
};
