#pragma once

#include "lvcore_export.h"

#include <QByteArray>
#include <QDomDocument>
#include <QDomElement>
#include <QString>

class QFileInfo;

/**
 * Reads XML documents that may come from anywhere.
 *
 * Names keep their prefix, and prefixes need not be declared. Documents that do not parse wholly give nothing
 * at all, also where the part before the error could be read. External entities are not loaded. The expansion
 * of internal ones is bounded, and so is what makes the toolkit slow or hungry: the depth, because the tree
 * frees its elements by recursion, the attributes of one tag, because the toolkit compares each with each,
 * and the size of the tree. All that is found out before a tree is begun. Without state, usable from any
 * thread.
 */
class LVCORE_EXPORT LvXMLLoader
{
public:
    LvXMLLoader() = delete;

    /// The deepest nesting of elements that is read; the document element has depth 1.
    static constexpr int maximumDepth = 10000;

    /// The depths of all nodes added up. For each node that it adds, the toolkit walks up to the document:
    /// half a megabyte of siblings at the deepest place would take it as long as hundreds of ordinary
    /// megabytes.
    static constexpr qint64 maximumDepthSum = qint64(256) << 20;

    /// The number of attributes that one tag may have.
    static constexpr int maximumAttributes = 256;

    /// The number of nodes that the tree may have: elements, attributes with their texts, texts, comments and
    /// processing instructions. A node takes up to half a kilobyte; a track point with elevation and time
    /// has nine of them.
    static constexpr qint64 maximumNodes = qint64(16) << 20;

    /// The number of characters by which entities and default attributes may lengthen a document in all; a
    /// single entity is limited to 4096 characters by the toolkit, and a parameter entity counts as that
    /// many.
    static constexpr qint64 maximumEntityExpansion = qint64(1) << 20;

    /// The document element of a file, a null element when the file is not regular, not readable or not XML.
    [[nodiscard]] static QDomElement loadDocumentElement(const QFileInfo& file);

    /// Reads a document from bytes in the encoding that they declare, by byte order mark or XML declaration.
    /// On failure the document is empty, the result false, and the message says why and where.
    static bool parse(const QByteArray& bytes, QDomDocument& document, QString* errorMessage = nullptr);

    /// The same from a text, whatever encoding its XML declaration names.
    static bool parse(const QString& text, QDomDocument& document, QString* errorMessage = nullptr);
};
