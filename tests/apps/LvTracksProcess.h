#pragma once

#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

/// Runs of the command-line program.
namespace LvTracksProcess
{

/// What came of a run.
struct Result {
    int exitCode = -1; // also when it crashed or did not end
    QByteArray output;
    QByteArray errors;

    /// The lines of the standard error output.
    [[nodiscard]] QStringList errorLines() const
    {
        QStringList lines = QString::fromUtf8(errors).split(QLatin1Char('\n'));
        lines.removeLast(); // what follows the last line end: nothing
        return lines;
    }
};

/// Runs the program in a folder; without a display and without any hint about the platform.
inline Result run(const QStringList& arguments, const QString& directory = QDir::currentPath())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(directory);
    process.start(QStringLiteral(LVTRACKS_PROGRAM), arguments);
    Result result;
    if (process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit) {
        result.exitCode = process.exitCode();
    }
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

} // namespace LvTracksProcess
