#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

/// What the program hands back to the shell.
enum class LvExitCode : int {
    Success = 0,
    Failure = 1, // nothing was made
    WrongUsage = 2, // the command line was not understood
    PartialFailure = 3, // some input files gave nothing, the rest was done
};

/**
 * One of the commands of the program: its options, and what it does.
 */
class LvCommand
{
public:
    LvCommand() = default;
    virtual ~LvCommand();
    Q_DISABLE_COPY_MOVE(LvCommand)

    /// Reads the arguments that follow the command, prints help or version where they are asked for, and does
    /// the work.
    LvExitCode execute(const QStringList& arguments);

    /// Writes one line to the standard error output: "lvtracks: message". Line breaks and other control
    /// characters, which may come from file names, become blanks.
    static void printError(const QString& message);

    /// An error line for one file.
    static void printFileError(const QString& fileName, const QString& reason);

    /// Writes a text to the standard output.
    static void print(const QString& text);

    /// Writes "lvtracks" and the version to the standard output.
    static void printVersion();

    /// Whether all that was printed has reached the standard output, which may be a full disk.
    [[nodiscard]] static bool finishPrinting();

    /// A text in one line, without control characters: what comes out of a file must not control the
    /// terminal.
    static QString singleLine(const QString& text);

protected:
    /// The name, as in "lvtracks name ...".
    [[nodiscard]] virtual QString name() const = 0;
    virtual void addOptions(QCommandLineParser& parser) = 0;
    virtual LvExitCode run(const QCommandLineParser& parser, const QStringList& fileNames) = 0;

    /// Prints why the command line is wrong.
    LvExitCode wrongUsage(const QString& message) const;

    /// The exit code after so many of all files gave nothing.
    static LvExitCode exitCodeFor(qsizetype failedCount, qsizetype count);
};
