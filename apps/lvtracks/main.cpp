#include "LvCommand.h"
#include "LvInfoCommand.h"
#include "LvRenderCommand.h"
#include "LvTranslations.h"

#include <QGuiApplication>
#include <QLocale>
#include <QStringList>

#include <csignal>
#include <cstdio>

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("main", text);
}

QString helpText()
{
    return translated(
        "Usage: lvtracks COMMAND [OPTION...] FILE...\n"
        "\n"
        "Reads tracks from GPX, KML and KMZ files.\n"
        "\n"
        "Commands:\n"
        "  info      List the tracks: points, length, time frame, bounding box.\n"
        "  render    Draw the tracks on a map into a PNG, JPEG, SVG or PDF file.\n"
        "\n"
        "Options:\n"
        "  -h, --help     Show this help; after a command, the options of that command.\n"
        "  -v, --version  Show the version.\n"
        "\n"
        "Exit codes: 0 fine, 1 failed, 2 wrong usage, 3 some files gave nothing and the rest was "
        "done.\n");
}

/// Only what stops the program goes to the standard error output, where each line belongs to one input file.
void handleMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg) {
        std::fprintf(stderr, "lvtracks: %s\n", qUtf8Printable(message));
    }
}

LvExitCode runCommand(QStringList arguments)
{
    if (arguments.isEmpty()) {
        LvCommand::printError(translated("no command given (try: lvtracks --help)"));
        return LvExitCode::WrongUsage;
    }
    const QString command = arguments.takeFirst();
    if (command == QLatin1String("-h") || command == QLatin1String("--help")) {
        LvCommand::print(helpText());
        return LvExitCode::Success;
    }
    if (command == QLatin1String("-v") || command == QLatin1String("--version")) {
        LvCommand::printVersion();
        return LvExitCode::Success;
    }
    if (command == QLatin1String("info")) {
        return LvInfoCommand().execute(arguments);
    }
    if (command == QLatin1String("render")) {
        return LvRenderCommand().execute(arguments);
    }
    LvCommand::printError(translated("unknown command \"%1\" (try: lvtracks --help)").arg(command));
    return LvExitCode::WrongUsage;
}

} // namespace

int main(int argc, char* argv[])
{
#ifdef SIGXFSZ
    // A file that reaches the limit of the user shall be told like a full disk, not end the program.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    if (qEnvironmentVariableIsEmpty("QT_LOGGING_RULES")) {
        qInstallMessageHandler(handleMessage);
    }
    // Pictures are drawn without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    // The toolkit sees the name of the program only: it would take options such as --style for its own.
    int visibleCount = 1;
    const QGuiApplication application(visibleCount, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("LvGeoLocation"));
    QCoreApplication::setApplicationName(QStringLiteral("lvtracks"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LV_VERSION));
    // Scripts read the messages: they are English in every locale, also those of the classes that the
    // programs share, whose source texts are German.
    LvTranslations::install(QLocale(QLocale::English));
    LvTranslations::install(QLocale(QLocale::English), QStringLiteral("LvAppsCommon"));
    const LvExitCode exitCode = runCommand(arguments);
    if (!LvCommand::finishPrinting()) {
        LvCommand::printError(translated("the standard output cannot be written"));
        return static_cast<int>(LvExitCode::Failure);
    }
    return static_cast<int>(exitCode);
}
