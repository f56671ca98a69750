#include "LvLogger.h"

#include <QDateTime>
#include <QFile>
#include <QLoggingCategory>
#include <QMutexLocker>

Q_LOGGING_CATEGORY(usageCategory, "lv.usage")

namespace
{

bool appendTo(const QString& path, const QByteArray& bytes)
{
    // Opened for each line: the file may be moved away or cleared at any time.
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Append) && file.write(bytes) == bytes.size();
}

} // namespace

LvLogger::LvLogger() = default;
LvLogger::~LvLogger() = default;

bool LvLogger::setLogFile(const QString& path)
{
    const QMutexLocker locker(&myMutex);
    if (!path.isEmpty() && !appendTo(path, QByteArray())) {
        return false;
    }
    myLogFile = path;
    return true;
}

QString LvLogger::logFile() const
{
    const QMutexLocker locker(&myMutex);
    return myLogFile;
}

void LvLogger::logOSM(const QString& text)
{
    QString line = text;
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    qCInfo(usageCategory).noquote() << line;
    const QMutexLocker locker(&myMutex);
    if (!myLogFile.isEmpty()) {
        const QString time = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
        appendTo(myLogFile, QStringLiteral("%1 %2\n").arg(time, line).toUtf8());
    }
}
