#pragma once

#include "lvcore_export.h"

#include <QByteArray>
#include <QFileInfo>
#include <QStringList>

#include <memory>

/**
 * Reads a ZIP archive that may come from anywhere.
 *
 * Nothing is allocated by the sizes that an archive declares, and nothing is ever unpacked into files. One
 * object serves one thread at a time.
 */
class LVCORE_EXPORT LvZIP
{
public:
    /// The only mode of open().
    static constexpr int readMode = 1;

    /// An entry that unpacks to more than this (256 MiB) is refused.
    static constexpr qint64 maximumEntrySize = qint64(256) << 20;

    /// An archive with more entries is refused: each costs some hundred bytes of memory before anything is
    /// read.
    static constexpr int maximumEntryCount = 65535;

    /// An archive that is not open yet.
    explicit LvZIP(const QFileInfo& file);
    Q_DISABLE_COPY(LvZIP)
    LvZIP(LvZIP&& other) noexcept;
    LvZIP& operator=(LvZIP&& other) noexcept;
    ~LvZIP();

    /// Opens the archive and reads its directory. False when the file is not regular, not readable, no
    /// archive or one of too many entries, and for every mode but readMode. An archive that is open already
    /// is closed first.
    bool open(int mode = readMode);

    [[nodiscard]] bool isOpen() const;

    /// The names of all entries in the order of the archive, empty while it is not open.
    [[nodiscard]] QStringList getFileNameList() const;

    /// The content of the first entry of exactly this name. Empty when there is none, while the archive is
    /// not open, and when the entry is encrypted, damaged (its size or its check sum is wrong) or too large.
    [[nodiscard]] QByteArray fileContent(const QString& name) const;

    void close();

private:
    class Archive;

    QFileInfo myFile;
    std::unique_ptr<Archive> myArchive;
};
