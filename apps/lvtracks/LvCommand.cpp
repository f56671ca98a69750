#include "LvCommand.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

QString translated(const char* text)
{
    return QCoreApplication::translate("LvCommand", text);
}

} // namespace

LvCommand::~LvCommand() = default;

LvExitCode LvCommand::execute(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption helpOption({QStringLiteral("h"), QStringLiteral("help")},
                                        translated("Show this help."));
    const QCommandLineOption versionOption({QStringLiteral("v"), QStringLiteral("version")},
                                           translated("Show the version."));
    parser.addOptions({helpOption, versionOption});
    parser.addPositionalArgument(QStringLiteral("files"), translated("Track files: GPX, KML or KMZ."),
                                 QStringLiteral("FILE..."));
    addOptions(parser);
    const bool isUnderstood = parser.parse(QStringList(QCoreApplication::applicationName()) + arguments);
    if (parser.isSet(helpOption)) {
        // The parser's own first line does not know the command.
        const QString help = parser.helpText();
        print(translated("Usage: lvtracks %1 [OPTION...] FILE...\n").arg(name())
              + help.mid(help.indexOf(QLatin1Char('\n')) + 1));
        return LvExitCode::Success;
    }
    if (parser.isSet(versionOption)) {
        printVersion();
        return LvExitCode::Success;
    }
    if (!isUnderstood) {
        return wrongUsage(parser.errorText());
    }
    if (parser.positionalArguments().isEmpty()) {
        return wrongUsage(translated("no file given"));
    }
    return run(parser, parser.positionalArguments());
}

void LvCommand::printError(const QString& message)
{
    std::fprintf(stderr, "lvtracks: %s\n", qUtf8Printable(singleLine(message)));
}

void LvCommand::printFileError(const QString& fileName, const QString& reason)
{
    printError(QStringLiteral("%1: %2").arg(fileName, reason));
}

void LvCommand::print(const QString& text)
{
    std::fputs(qUtf8Printable(text), stdout);
}

void LvCommand::printVersion()
{
    print(QStringLiteral("lvtracks %1\n").arg(QCoreApplication::applicationVersion()));
}

bool LvCommand::finishPrinting()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

QString LvCommand::singleLine(const QString& text)
{
    QString line = text;
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line
            || character.category() == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return line;
}

LvExitCode LvCommand::wrongUsage(const QString& message) const
{
    printError(translated("%1 (try: lvtracks %2 --help)").arg(message, name()));
    return LvExitCode::WrongUsage;
}

LvExitCode LvCommand::exitCodeFor(qsizetype failedCount, qsizetype count)
{
    if (failedCount == 0) {
        return LvExitCode::Success;
    }
    return failedCount < count ? LvExitCode::PartialFailure : LvExitCode::Failure;
}
