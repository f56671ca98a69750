#include "LvXMLWriter.h"

#include <QIODevice>
#include <QList>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace
{

constexpr int indentation = 1;
constexpr qsizetype bufferSize = qsizetype(1) << 18;
constexpr qsizetype pageSize = qsizetype(1) << 12; // of memory; divides bufferSize
constexpr qsizetype unitsAtOnce = qsizetype(1) << 13;
constexpr qsizetype keptBytes = 2; // what "]]>" has before its last character
static_assert(bufferSize % pageSize == 0);

// Predicates without branches and as types of their own, so that a loop over them becomes vector code.
constexpr auto isSuspect = [](char16_t unit) {
    return ((unit < u' ') & (unit != u'\n') & (unit != u'\t')) | (unit >= 0xD800);
};

/// Whether the character may need more than encoding somewhere.
constexpr auto isSpecial = [](char16_t unit) {
    return ((unit < u' ') & (unit != u'\n')) | (unit == u'<') | (unit == u'>') | (unit == u'&')
        | (unit == u'"') | (unit >= 0xD800);
};

constexpr auto isSpecialInAttribute = [](char16_t unit) { return isSpecial(unit) | (unit == u'\n'); };

template <class Predicate>
qsizetype findUnit(QStringView text, qsizetype from, Predicate predicate)
{
    const char16_t* const units = text.utf16();
    // Blocks of a fixed size without a way out become vector code.
    constexpr qsizetype blockSize = 32;
    for (; from + blockSize <= text.size(); from += blockSize) {
        std::uint16_t found = 0;
        for (qsizetype offset = 0; offset < blockSize; ++offset) {
            found = static_cast<std::uint16_t>(found | predicate(units[from + offset]));
        }
        if (found != 0) {
            break;
        }
    }
    while (from < text.size() && predicate(units[from]) == 0) {
        ++from;
    }
    return from;
}

bool isDeclaration(const QDomNode& node)
{
    return node.isProcessingInstruction() && node.nodeName() == QLatin1String("xml");
}

} // namespace

LvXMLWriter::LvXMLWriter(QIODevice& device)
    : myDevice(device)
    , myEncoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless)
    , myBuffer(bufferSize, Qt::Uninitialized)
{
}

LvXMLWriter::~LvXMLWriter() = default;

bool LvXMLWriter::write(const QDomDocument& document, const std::vector<LvXMLLateText>& lateTexts)
{
    myNextLateText = lateTexts.data();
    myLateTextEnd = myNextLateText + lateTexts.size();
    QDomNode node = document.firstChild();
    if (isDeclaration(node)) {
        writeAscii("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
        node = node.nextSibling();
    } else {
        writeForeign(document.doctype());
    }
    for (; !node.isNull(); node = node.nextSibling()) {
        writeTree(node);
    }
    flush(0);
    return myNextLateText == myLateTextEnd;
}

qsizetype LvXMLWriter::findSuspect(QStringView text, qsizetype from)
{
    return findUnit(text, from, isSuspect);
}

qsizetype LvXMLWriter::legalUnits(QStringView text, qsizetype index)
{
    const char16_t unit = text[index].unicode();
    if (QChar::isHighSurrogate(unit)) {
        return index + 1 < text.size() && text[index + 1].isLowSurrogate() ? 2 : 0;
    }
    const bool isLegal = unit >= u' ' ? !QChar::isLowSurrogate(unit) && unit < 0xFFFE
                                      : unit == u'\t' || unit == u'\n' || unit == u'\r';
    return isLegal ? 1 : 0;
}

void LvXMLWriter::writeTree(const QDomNode& root)
{
    int depth = 0;
    QDomNode node = root;
    while (true) {
        writeBegin(node, depth);
        const QDomNode child = node.isElement() ? node.firstChild() : QDomNode();
        if (!child.isNull()) {
            node = child;
            ++depth;
            continue;
        }
        if (node.isElement()) {
            writeEnd(node.toElement(), depth);
        }
        while (depth > 0 && node.nextSibling().isNull()) {
            node = node.parentNode();
            --depth;
            writeEnd(node.toElement(), depth);
        }
        if (depth == 0) {
            return;
        }
        node = node.nextSibling();
    }
}

void LvXMLWriter::writeBegin(const QDomNode& node, int depth)
{
    // A section is a kind of text, but it begins with markup.
    const bool isText = node.isText() && !node.isCDATASection();
    if (!isText) {
        myHighSurrogate = 0;
    }
    if (isText) {
        writeCharacters(node.nodeValue(), Place::Text);
    } else if (node.isElement()) {
        if (!node.previousSibling().isText()) {
            writeIndentation(depth);
        }
        writeElement(node.toElement());
    } else if (node.isCDATASection()) {
        writeAscii("<![CDATA[");
        writeCharacters(node.nodeValue(), Place::Section);
        writeAscii("]]>");
    } else if (node.isComment()) {
        if (!node.previousSibling().isText()) {
            writeIndentation(depth);
        }
        const QString text = node.nodeValue();
        writeAscii("<!--");
        writeCharacters(text, Place::Markup);
        writeAscii(text.endsWith(u'-') ? " -->" : "-->");
        if (!node.nextSibling().isText()) {
            writeAscii("\n");
        }
    } else if (node.isProcessingInstruction()) {
        writeAscii("<?");
        writeCharacters(node.nodeName(), Place::Markup);
        writeAscii(" ");
        writeCharacters(node.nodeValue(), Place::Markup);
        writeAscii("?>\n");
    } else {
        writeForeign(node);
    }
}

void LvXMLWriter::writeElement(const QDomElement& element)
{
    writeAscii("<");
    writeCharacters(element.nodeName(), Place::Markup);
    if (!element.namespaceURI().isNull()) {
        writeAscii(element.prefix().isEmpty() ? " xmlns" : " xmlns:");
        writeCharacters(element.prefix(), Place::Markup);
        writeAscii("=\"");
        writeCharacters(element.namespaceURI(), Place::Attribute);
        writeAscii("\"");
    }
    if (element.hasAttributes()) {
        writeAttributes(element);
    }
    const QDomNode child = element.firstChild();
    if (child.isNull() && myNextLateText != myLateTextEnd && myNextLateText->element == element) {
        writeLateText();
        writeAscii("</");
        writeCharacters(element.nodeName(), Place::Markup);
        writeAscii(">");
    } else if (child.isNull()) {
        writeAscii("/>");
    } else {
        writeAscii(child.isText() ? ">" : ">\n");
    }
}

void LvXMLWriter::writeAttributes(const QDomElement& element)
{
    const QDomNamedNodeMap map = element.attributes();
    QList<std::pair<QString, QDomNode>> attributes;
    attributes.reserve(map.size());
    for (int index = 0; index < map.size(); ++index) {
        const QDomNode attribute = map.item(index);
        attributes.append({attribute.nodeName(), attribute});
    }
    // The toolkit keeps them in an order that differs from run to run.
    std::sort(attributes.begin(), attributes.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    QSet<QString> declared{element.prefix()};
    for (const auto& [name, attribute] : std::as_const(attributes)) {
        writeAscii(" ");
        writeCharacters(name, Place::Markup);
        writeAscii("=\"");
        writeCharacters(attribute.nodeValue(), Place::Attribute);
        writeAscii("\"");
        if (!attribute.namespaceURI().isNull() && !declared.contains(attribute.prefix())) {
            declared.insert(attribute.prefix());
            writeAscii(" xmlns:");
            writeCharacters(attribute.prefix(), Place::Markup);
            writeAscii("=\"");
            writeCharacters(attribute.namespaceURI(), Place::Attribute);
            writeAscii("\"");
        }
    }
}

void LvXMLWriter::writeLateText()
{
    writeAscii(">");
    myNextLateText->text([this](QByteArrayView piece) {
        for (; piece.size() > unitsAtOnce; piece = piece.sliced(unitsAtOnce)) {
            writeAscii(piece.first(unitsAtOnce));
        }
        writeAscii(piece);
    });
    ++myNextLateText;
}

void LvXMLWriter::writeEnd(const QDomElement& element, int depth)
{
    myHighSurrogate = 0;
    const QDomNode last = element.lastChild();
    if (!last.isNull()) {
        if (!last.isText()) {
            writeIndentation(depth);
        }
        writeAscii("</");
        writeCharacters(element.nodeName(), Place::Markup);
        writeAscii(">");
    }
    if (!element.nextSibling().isText()) {
        writeAscii("\n");
    }
}

void LvXMLWriter::writeForeign(const QDomNode& node)
{
    // Document types and references to entities: rare, and no place for attributes.
    QString text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    node.save(stream, indentation);
    stream.flush();
    writeCharacters(text, Place::Markup);
}

void LvXMLWriter::writeIndentation(int depth)
{
    const qsizetype blanks = std::min(depth * indentation, maximumIndentation);
    makeRoom(blanks);
    std::memset(myBuffer.data() + mySize, ' ', static_cast<std::size_t>(blanks));
    mySize += blanks;
}

void LvXMLWriter::writeCharacters(QStringView text, Place place)
{
    qsizetype index = 0;
    if (myHighSurrogate != 0 && !text.isEmpty()) {
        if (place == Place::Text && text[0].isLowSurrogate()) {
            const char16_t pair[] = {myHighSurrogate, text[0].unicode()};
            writeLegal(QStringView(pair, 2));
            index = 1;
        }
        myHighSurrogate = 0;
    }
    while (index < text.size()) {
        const qsizetype special = place == Place::Attribute ? findUnit(text, index, isSpecialInAttribute)
                                                            : findUnit(text, index, isSpecial);
        writeLegal(text.sliced(index, special - index));
        index = special;
        if (index == text.size()) {
            break;
        }
        const char16_t unit = text[index].unicode();
        const qsizetype units = legalUnits(text, index);
        if (unit >= 0xD800) {
            writeLegal(text.sliced(index, units));
            if (place == Place::Text && QChar::isHighSurrogate(unit) && index + 1 == text.size()) {
                myHighSurrogate = unit;
            }
        } else if (units > 0) {
            writeSpecial(unit, place);
        }
        index += std::max<qsizetype>(units, 1);
    }
}

void LvXMLWriter::writeSpecial(char16_t unit, Place place)
{
    const bool isValue = place == Place::Text || place == Place::Attribute;
    const bool isAttribute = place == Place::Attribute;
    const char character = static_cast<char>(unit);
    if (unit == u'>' && place != Place::Markup
        && QByteArrayView(myBuffer.constData(), mySize).endsWith("]]")) {
        // Where it would end a section.
        writeAscii(isValue ? "&gt;" : "]]><![CDATA[>");
    } else if (unit == u'<' && isValue) {
        writeAscii("&lt;");
    } else if (unit == u'&' && isValue) {
        writeAscii("&amp;");
    } else if (unit == u'"' && isAttribute) {
        writeAscii("&quot;");
    } else if (unit == u'\r' && isValue) {
        writeAscii("&#xd;");
    } else if (unit == u'\n' && isAttribute) {
        writeAscii("&#xa;");
    } else if (unit == u'\t' && isAttribute) {
        writeAscii("&#x9;");
    } else {
        writeAscii(QByteArrayView(&character, 1));
    }
}

void LvXMLWriter::writeLegal(QStringView text)
{
    while (!text.isEmpty()) {
        const QStringView piece = text.first(std::min(text.size(), unitsAtOnce));
        makeRoom(myEncoder.requiredSpace(piece.size()));
        mySize = myEncoder.appendToBuffer(myBuffer.data() + mySize, piece) - myBuffer.constData();
        text = text.sliced(piece.size());
    }
}

void LvXMLWriter::writeAscii(QByteArrayView text)
{
    makeRoom(text.size());
    std::memcpy(myBuffer.data() + mySize, text.data(), static_cast<std::size_t>(text.size()));
    mySize += text.size();
}

void LvXMLWriter::makeRoom(qsizetype bytes)
{
    if (mySize + bytes > bufferSize) {
        // In whole pages: to begin in the middle of one costs the system more.
        flush(keptBytes + (mySize - keptBytes) % pageSize);
    }
}

void LvXMLWriter::flush(qsizetype kept)
{
    const qsizetype written = std::max<qsizetype>(mySize - kept, 0);
    // A disk that is almost full takes what fits and says nothing: only the attempt to write the rest fails.
    qsizetype taken = 0;
    while (taken < written) {
        const qint64 count = myDevice.write(myBuffer.constData() + taken, written - taken);
        if (count <= 0) {
            break;
        }
        taken += count;
    }
    mySize -= written;
    std::memmove(myBuffer.data(), myBuffer.constData() + written, static_cast<std::size_t>(mySize));
}
