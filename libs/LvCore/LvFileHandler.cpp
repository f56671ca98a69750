#include "LvFileHandler.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

bool LvFileHandler::isReadableRegularFile(const QFileInfo& file)
{
    const QFileInfo now(file.filePath());
    return now.isFile() && now.isReadable();
}

std::optional<QByteArray> LvFileHandler::readBytes(const QFileInfo& file)
{
    if (!isReadableRegularFile(file)) {
        return std::nullopt;
    }
    QFile device(file.filePath());
    if (!device.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // Not to the end: files of the kernel and files that somebody writes to have none, or make the reader
    // wait.
    const qint64 size = device.size();
    if (size > maximumFileSize) {
        return std::nullopt;
    }
    QByteArray bytes = device.read(size);
    if (device.error() != QFileDevice::NoError || bytes.size() != size) {
        return std::nullopt;
    }
    return bytes;
}

QStringList LvFileHandler::readTextFile(const QFileInfo& file)
{
    const std::optional<QByteArray> bytes = readBytes(file);
    if (!bytes || bytes->isEmpty()) {
        return {};
    }
    QStringList lines = decodeText(*bytes).split(QLatin1Char('\n'));
    if (lines.last().isEmpty()) {
        lines.removeLast();
    }
    for (QString& line : lines) {
        if (line.endsWith(QLatin1Char('\r'))) {
            line.chop(1);
        }
    }
    return lines;
}

QString LvFileHandler::decodeText(const QByteArray& bytes)
{
    const QStringConverter::Encoding encoding =
        QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8);
    QStringDecoder decoder(encoding);
    return decoder(bytes);
}
