#pragma once

#include "lvcore_export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class QFileInfo;

/**
 * Reading and writing of whole files. Only regular files are opened (or symbolic links to one): a pipe, a
 * device or a directory would block or never end. Without state, usable from any thread.
 */
class LVCORE_EXPORT LvFileHandler
{
public:
    LvFileHandler() = delete;

    /// Files beyond this size (1 GiB) are not read.
    static constexpr qint64 maximumFileSize = qint64(1) << 30;

    /// Whether the file is there, regular and readable now; what the QFileInfo knows from earlier does not
    /// count.
    [[nodiscard]] static bool isReadableRegularFile(const QFileInfo& file);

    /// The content of the file, as many bytes as it has when it is opened; without a value when it cannot be
    /// read wholly. Files of the kernel that have a content but no size count as empty: some never end.
    [[nodiscard]] static std::optional<QByteArray> readBytes(const QFileInfo& file);

    /// The lines of a text file without their ends (LF or CR LF). The encoding is that of the byte order mark
    /// (UTF-8, UTF-16, UTF-32), otherwise UTF-8. A line end at the very end starts no further line. Empty
    /// when the file cannot be read.
    [[nodiscard]] static QStringList readTextFile(const QFileInfo& file);

    /// The lines of a text, as of a text file, with a line feed between each two.
    [[nodiscard]] static QString joinLines(QString text);

    /// The text of such bytes, decoded in the same way.
    [[nodiscard]] static QString decodeText(const QByteArray& bytes);

    /// Writes a file of these bytes. They go into a temporary file that takes the place of the file when it
    /// is complete: until then, and after a failure, an older file of that name stays as it was, and nothing
    /// else is left. What is no regular file is not replaced. Returns why it failed, for the user; empty on
    /// success.
    [[nodiscard]] static QString replaceFile(const QFileInfo& file, const QByteArray& bytes);
};
