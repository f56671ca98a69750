#include "LvZIP.h"

#include "LvFileHandler.h"

#include <QFile>

#include <algorithm>
#include <utility>
#include <zip.h>

namespace
{

constexpr qsizetype chunkSize = qsizetype(64) << 10;

// Behind the directory stand its end record and a comment; in front of those, in archives of more entries
// than the end record can count, a locator of 20 bytes.
constexpr qsizetype longestEnd = 20 + 22 + 65535;

/// Whether the archive is of the kind that holds any number of entries.
bool hasLargeDirectory(const QFileInfo& file)
{
    QFile device(file.filePath());
    if (!device.open(QIODevice::ReadOnly)) {
        return false;
    }
    device.seek(std::max<qint64>(0, device.size() - longestEnd));
    return device.read(longestEnd).contains(QByteArrayView("PK\x06\x07", 4));
}

struct LvDiscardArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); } // nothing was changed: nothing to write
};

struct LvCloseEntry {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

} // namespace

/// The open archive, which keeps the library's types out of the header.
class LvZIP::Archive
{
public:
    explicit Archive(zip_t* archive)
        : myHandle(archive)
    {
        const zip_int64_t count = zip_get_num_entries(archive, 0);
        for (zip_int64_t index = 0; index < count; ++index) {
            // An entry without a readable name keeps its place, so that the indices stay those of the
            // archive.
            myNames.append(QString::fromUtf8(zip_get_name(archive, static_cast<zip_uint64_t>(index), 0)));
        }
    }

    [[nodiscard]] const QStringList& names() const { return myNames; }

    [[nodiscard]] QByteArray content(zip_uint64_t index) const
    {
        zip_stat_t stat;
        zip_stat_init(&stat);
        if (zip_stat_index(myHandle.get(), index, 0, &stat) != 0) {
            return {};
        }
        const bool hasSize = (stat.valid & ZIP_STAT_SIZE) != 0;
        if (hasSize && stat.size > static_cast<zip_uint64_t>(maximumEntrySize)) {
            return {};
        }
        const std::unique_ptr<zip_file_t, LvCloseEntry> entry(zip_fopen_index(myHandle.get(), index, 0));
        if (!entry) {
            return {};
        }
        QByteArray content;
        QByteArray chunk(chunkSize, Qt::Uninitialized);
        for (;;) {
            const zip_int64_t length =
                zip_fread(entry.get(), chunk.data(), static_cast<zip_uint64_t>(chunk.size()));
            if (length < 0 || content.size() + length > maximumEntrySize) {
                return {};
            }
            if (length == 0) {
                break;
            }
            content.append(chunk.constData(), static_cast<qsizetype>(length));
        }
        return hasSize && stat.size != static_cast<zip_uint64_t>(content.size()) ? QByteArray() : content;
    }

private:
    std::unique_ptr<zip_t, LvDiscardArchive> myHandle;
    QStringList myNames;
};

LvZIP::LvZIP(const QFileInfo& file)
    : myFile(file)
{
}

LvZIP::LvZIP(LvZIP&& other) noexcept = default;
LvZIP& LvZIP::operator=(LvZIP&& other) noexcept = default;
LvZIP::~LvZIP() = default;

bool LvZIP::open(int mode)
{
    close();
    if (mode != readMode || !LvFileHandler::isReadableRegularFile(myFile) || hasLargeDirectory(myFile)) {
        return false;
    }
    zip_t* archive = zip_open(QFile::encodeName(myFile.absoluteFilePath()).constData(), ZIP_RDONLY, nullptr);
    if (archive != nullptr) {
        myArchive = std::make_unique<Archive>(archive);
    }
    return isOpen();
}

bool LvZIP::isOpen() const
{
    return myArchive != nullptr;
}

QStringList LvZIP::getFileNameList() const
{
    return isOpen() ? myArchive->names() : QStringList();
}

QByteArray LvZIP::fileContent(const QString& name) const
{
    const qsizetype index = isOpen() ? myArchive->names().indexOf(name) : -1;
    return index < 0 ? QByteArray() : myArchive->content(static_cast<zip_uint64_t>(index));
}

void LvZIP::close()
{
    myArchive.reset();
}
