#include "LvChildProcess.h"

#include <QByteArray>
#include <QList>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

double seconds(const timeval& time)
{
    constexpr double microsecondsPerSecond = 1e6;
    return static_cast<double>(time.tv_sec) + (static_cast<double>(time.tv_usec) / microsecondsPerSecond);
}

} // namespace

LvChildUsage LvChildProcess::run(const QString& program, const QStringList& arguments)
{
    QList<QByteArray> texts{program.toLocal8Bit()};
    for (const QString& argument : arguments) {
        texts.append(argument.toLocal8Bit());
    }
    QList<char*> pointers;
    for (QByteArray& text : texts) {
        pointers.append(text.data());
    }
    pointers.append(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, texts.constFirst().constData(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    LvChildUsage usage;
    if (error != 0) {
        return usage;
    }
    int status = 0;
    rusage used = {};
    if (wait4(child, &status, 0, &used) != child) {
        return usage;
    }
    usage.hasSucceeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    usage.processorSeconds = seconds(used.ru_utime) + seconds(used.ru_stime);
    usage.peakBytes = qint64{used.ru_maxrss} * 1024;
    return usage;
}
