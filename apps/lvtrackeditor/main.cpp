#include "LvTrackEditorWindow.h"
#include "LvTranslations.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QTimer>
#include <QTranslator>

#include <csignal>
#include <cstdio>

namespace
{

/// The texts of the toolkit (buttons of dialogues), of the libraries and of the program, in the language of
/// the user.
void installTranslations()
{
    const QLocale locale;
    auto* toolkit = new QTranslator(qApp);
    if (toolkit->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(toolkit);
    }
    LvTranslations::install(locale);
    LvTranslations::install(locale, QStringLiteral("LvAppsCommon"));
    LvTranslations::install(locale, QStringLiteral("lvtrackeditor"));
}

QString translated(const char* text)
{
    return QCoreApplication::translate("main", text);
}

} // namespace

int main(int argc, char* argv[])
{
#ifdef SIGXFSZ
    // A file that reaches the limit of the user shall be told like a full disk, not end the program.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    // Help and version need no display.
    const bool needsNoWindow = std::any_of(argv + 1, argv + argc, [](const char* argument) {
        const QByteArray text(argument);
        return text == "--help" || text == "-h" || text == "--version" || text == "-v"
            || text == "--help-all";
    });
    if (needsNoWindow) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("LvGeoLocation"));
    QCoreApplication::setApplicationName(QStringLiteral("lvtrackeditor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(LV_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Lv Track Editor"));
    QGuiApplication::setDesktopFileName(QStringLiteral("lvtrackeditor"));
    QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/lvtrackeditor/icons/lvtrackeditor.svg")));
    installTranslations();
    // A line for every opened file is for those who ask for it (QT_LOGGING_RULES).
    QLoggingCategory::setFilterRules(QStringLiteral("lv.usage.info=false"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        translated("Zeigt GPS-Spuren auf einer Karte und gibt jeder einen eigenen Stil."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(translated("Datei"),
                                 translated("GPX-, KML- und KMZ-Dateien, oder ein Dokument (*.lvt)"),
                                 QStringLiteral("[%1...]").arg(translated("Datei")));
    parser.process(application);

    LvTrackEditorWindow window;
    window.show();
    QStringList fileNames;
    const QStringList arguments = parser.positionalArguments();
    for (const QString& argument : arguments) {
        fileNames.append(QFileInfo(argument).absoluteFilePath());
    }
    // The window is there before the first file is opened, so that messages have their place.
    QTimer::singleShot(0, &window, [&window, fileNames] { window.openFiles(fileNames); });
    return QApplication::exec();
}
