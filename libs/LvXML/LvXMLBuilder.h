#pragma once

#include "lvxml_export.h"

#include <QDomDocument>
#include <QDomElement>
#include <QFileInfo>
#include <QString>
#include <QStringList>

#include <vector>

struct LvXMLLateText;

/**
 * Building XML elements and saving documents.
 *
 * Texts come from users and from files of others, and XML cannot hold every character. The builder leaves out
 * what XML 1.0 forbids (control characters other than tab, line feed and carriage return, lone surrogates,
 * U+FFFE and U+FFFF), so that a written document can always be read back. It does so on its own instead of
 * through the toolkit's policy for invalid data, which is one unguarded setting for all threads of the
 * process.
 *
 * Only static functions without state: callable from every thread, as long as no other thread works on the
 * same document.
 */
class LVXML_EXPORT LvXMLBuilder
{
public:
    LvXMLBuilder() = delete;

    /// The deepest nesting of elements that is saved; the document element has depth 1. What is nested deeper
    /// could not be read again.
    static constexpr int maximumDepth = 10000;

    /// The largest file that is saved, in bytes (1 GiB). A larger one could not be read again.
    static constexpr qint64 maximumFileSize = qint64(1) << 30;

    /// Appends an empty child element to the parent and returns it; a null element when the parent is null.
    /// Elements are handles: the document changes though the handle is constant.
    static QDomElement buildDomElement(const QDomElement& parent, const QString& name);

    /// The same with a text in the child; an empty text adds no text node, and one of white space only
    /// becomes a CDATA section, which is read back.
    static QDomElement buildDomElement(const QDomElement& parent, const QString& name, const QString& text);

    /// The same with a decimal integer as the text.
    static QDomElement buildDomElement(const QDomElement& parent, const QString& name, int number);

    /// Gives an empty document its XML declaration (version 1.0, UTF-8) and its root element, which it
    /// returns. In a document that has a root element already, that one is removed with all below it.
    static QDomElement buildRootElement(QDomDocument& document, const QString& name);

    /// Writes the document as UTF-8 text; an XML declaration in it is rewritten to say so. Attributes stand
    /// in the order of their names, so that the same document always gives the same bytes. The text goes into
    /// a temporary file that takes the place of the file when it is complete: until then, and after a
    /// failure, an older file of that name stays as it was. False when the file could not be written, and
    /// when the document has no root element, is nested too deeply or becomes larger than the maximum, or the
    /// name is that of a device or a pipe; the reason, a sentence for the user, is then appended to the error
    /// history when one is given.
    static bool saveUTF8(const QDomDocument& document, const QFileInfo& file,
                         QStringList* errorHistory = nullptr);

    /// The same with texts that do not stand in the tree, see LvXMLWriter::write(), and with a maximum of
    /// bytes.
    static bool saveUTF8(const QDomDocument& document, const std::vector<LvXMLLateText>& lateTexts,
                         const QFileInfo& file, QStringList* errorHistory = nullptr,
                         qint64 maximumBytes = maximumFileSize);

    /// The text without the characters that XML 1.0 forbids, for attributes, which are set without the
    /// builder.
    [[nodiscard]] static QString legalText(const QString& text);
};
