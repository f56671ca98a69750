#pragma once

#include "LvGPXContentBuilder.h"

class QFileInfo;

/**
 * Reads GPX files: in one pass over the bytes where they are of the usual form, else through the toolkit's
 * tree. Both give the same; not installed.
 *
 * The one pass holds no tree, so the limits of LvXMLLoader on nodes and depths bind only what goes the other
 * way.
 */
class LvGPXDocumentReader
{
public:
    LvGPXDocumentReader() = delete;

    /// Hands the document element, of the given content, to the builder. Leaves the builder as it was when
    /// the file is not regular, not readable or not XML to its end.
    static void read(const QFileInfo& file, LvGPXContent root, LvGPXContentBuilder& builder);

    /// The same from bytes.
    static void read(const QByteArray& bytes, LvGPXContent root, LvGPXContentBuilder& builder);
};
