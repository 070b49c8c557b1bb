#include "helpcommand.h"

#include "cleanreplacement.h"
#include "commandhelp.h"
#include "commands.h"
#include "manpage.h"
#include "words.h"

namespace
{

/// Writes a page. Returns the problem, or an empty text.
QString write(const QString& folder, const QString& command, const QString& text)
{
    zeltools::FileReplacement file(folder + QLatin1Char('/') + manPageName(command) +
                                   QStringLiteral(".1"));
    return replaceCleanly(file, text.toUtf8()) ? QString() : file.errorString();
}

ExitStatus writeManPages(const QString& folder)
{
    QString problem = write(folder, QString(), programManPage());
    for (const Command& command : commands()) {
        if (problem.isEmpty())
            problem = write(folder, QString::fromLatin1(command.name),
                            commandManPage(CommandParser(command)));
    }
    return problem.isEmpty() ? Done : fail(Failed, problem);
}

} // namespace

void describeHelp(CommandParser& parser)
{
    QStringList names;
    for (const Command& command : commands())
        names += QString::fromLatin1(command.name);
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Explains a command as its option --help does, or lists all commands."));
    parser.addUsages({{"[COMMAND]", ""}});
    parser.addValues({
        {"COMMAND", QT_TRANSLATE_NOOP("zelctl", "The command"), CommandParser::OneOf, names},
        {"DIR", "", CommandParser::Folder},
    });
    parser.addOptions(
        {{"man", QT_TRANSLATE_NOOP("zelctl", "Writes the man pages of all commands into DIR."),
          "DIR"}});
    parser.setExitStatuses(QT_TRANSLATE_NOOP("zelctl", "The help was printed, or written."),
                           QT_TRANSLATE_NOOP("zelctl", "The help could not be written."));
    parser.addEnvironment(
        {{"SOURCE_DATE_EPOCH",
          QT_TRANSLATE_NOOP(
              "zelctl",
              "The date of the man pages, in seconds since 1970; today if it is not set.")}});
    parser.addExamples({{"zelctl help log recover",
                         QT_TRANSLATE_NOOP("zelctl", "Explains a command of two words.")}});
}

ExitStatus runHelp(const CommandParser& parser)
{
    const QString name = parser.arguments().join(QLatin1Char(' '));
    if (parser.isSet("man"))
        return name.isEmpty()
                   ? writeManPages(parser.value("man"))
                   : fail(WrongUsage, Zelctl::tr("unexpected argument \"%1\"; usage: %2")
                                          .arg(name, QStringLiteral("zelctl help --man DIR")));
    if (name.isEmpty())
        return print(programHelp());
    const Command* command = findCommand(name);
    return command != nullptr
               ? print(commandHelp(CommandParser(*command)))
               : fail(WrongUsage,
                      Zelctl::tr("there is no command \"%1\"; \"zelctl help\" lists the commands")
                          .arg(name));
}
