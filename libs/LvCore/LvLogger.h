#pragma once

#include "LvSingleton.h"
#include "lvcore_export.h"

#include <QMutex>
#include <QString>

/**
 * The log of what the application is used for.
 *
 * Each line goes as an information to the logging category "lv.usage" and, once a file is set, into that
 * file. All functions may be called from any thread, and before the application object exists.
 */
class LVCORE_EXPORT LvLogger : public LvSingleton<LvLogger>
{
    Q_DISABLE_COPY_MOVE(LvLogger)
    friend class LvSingleton<LvLogger>;

public:
    /// Appends all further lines to this file, each behind its time (ISO 8601, UTC) and a blank. An empty
    /// path ends that. Returns false, and leaves the file as it was, when the new one cannot be written.
    bool setLogFile(const QString& path);

    /// The path of the file, empty when there is none.
    [[nodiscard]] QString logFile() const;

    /// Records one usage line. Line breaks in it become blanks, so that no text can look like two lines.
    void logOSM(const QString& text);

private:
    LvLogger();
    ~LvLogger();

    mutable QMutex myMutex;
    QString myLogFile;
};
