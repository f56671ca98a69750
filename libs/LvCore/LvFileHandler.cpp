#include "LvFileHandler.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
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

QString LvFileHandler::joinLines(QString text)
{
    if (text.endsWith(u'\n')) {
        text.chop(1);
    }
    if (text.endsWith(u'\r')) {
        text.chop(1);
    }
    return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

QString LvFileHandler::decodeText(const QByteArray& bytes)
{
    const QStringConverter::Encoding encoding =
        QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8);
    QStringDecoder decoder(encoding);
    return decoder(bytes);
}

QString LvFileHandler::replaceFile(const QFileInfo& file, const QByteArray& bytes)
{
    const QFileInfo now(file.filePath());
    if (now.exists() && !now.isFile() && !now.isDir()) {
        // The temporary file would take the place of the device or of the pipe itself.
        return QCoreApplication::translate("LvFileHandler", "Das ist keine gewöhnliche Datei.");
    }
    QSaveFile output(now.filePath());
    // Without the flush, commit() would not notice that the last bytes of the buffer could not be written.
    const bool isWritten = output.open(QIODevice::WriteOnly) && output.write(bytes) == bytes.size()
        && output.flush() && output.commit();
    return isWritten ? QString() : output.errorString();
}
