#pragma once

#include <QString>
#include <QStringList>

/// What a child process has used until its end.
struct LvChildUsage {
    bool hasSucceeded = false;
    double processorSeconds = 0.0; ///< of all its threads, in user and kernel mode
    qint64 peakBytes = 0; ///< of resident memory
};

namespace LvChildProcess
{

/// Runs the program with its output discarded and waits for it.
[[nodiscard]] LvChildUsage run(const QString& program, const QStringList& arguments);

} // namespace LvChildProcess
