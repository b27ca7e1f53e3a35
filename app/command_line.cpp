#include "command_line.h"

#include <QCommandLineParser>
#include <QDir>

#include <iostream>

command_line command_line::parse(const QStringList &arguments, const QString &working_folder)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Gives photos GPS positions."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(tr("files"),
                                 tr("Photos, videos and folders to load. A folder brings the "
                                    "files directly in it."),
                                 tr("[FILE|FOLDER...]"));

    command_line result;
    if (!parser.parse(arguments)) {
        result.run = false;
        result.exit_code = 2;
        result.output = parser.errorText() + QStringLiteral("\n\n") + parser.helpText();
        return result;
    }
    // Only Qt can print its own options, and it ends the process after.
    if (parser.isSet(QStringLiteral("help-all")))
        parser.process(arguments);
    if (parser.isSet(help) || parser.isSet(version)) {
        result.run = false;
        result.output = parser.isSet(help)
                            ? parser.helpText()
                            : QCoreApplication::applicationName() + QLatin1Char(' ') +
                                  QCoreApplication::applicationVersion() + QLatin1Char('\n');
        return result;
    }
    const QDir folder(working_folder);
    for (const QString &path : parser.positionalArguments())
        result.paths << (path.isEmpty() ? path : folder.absoluteFilePath(path));
    return result;
}

int command_line::report() const
{
    (exit_code == 0 ? std::cout : std::cerr) << output.toLocal8Bit().constData() << std::flush;
    return exit_code;
}
