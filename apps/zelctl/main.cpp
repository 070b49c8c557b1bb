#include "commandhelp.h"
#include "commands.h"
#include "refusedvariables.h"
#include "words.h"

#include <QCoreApplication>

#include <new>

#include <signal.h>

namespace
{

/// Runs the command that the first words of the command line name; it has `nameCount` words.
ExitStatus runCommand(const Command& command, int nameCount, int argc, char* argv[])
{
    // Program and command become one word, which the parser takes for the name of the program.
    QByteArray program = QByteArray("zelctl ") + command.name;
    argv[nameCount] = program.data();
    int count = argc - nameCount;
    const QCoreApplication application(count, argv + nameCount);
    Zelctl::loadLanguage();
    try {
        CommandParser parser(command);
        const std::optional<ExitStatus> status = parser.parse(QCoreApplication::arguments());
        return status ? *status : command.run(parser);
    } catch (const std::bad_alloc&) { // the file of a command does not fit
        return fail(Failed, Zelctl::tr("Cannot allocate memory"));
    }
}

/// Answers a command line without a command of the table.
ExitStatus runWithoutCommand(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Zelctl::loadLanguage();
    const QString name = QString::fromUtf8(argc > 1 ? argv[1] : "");
    if (name == QLatin1String("--help") || name == QLatin1String("-h"))
        return print(programHelp());
    return fail(
        WrongUsage,
        argc < 2
            ? Zelctl::tr("a command is missing; \"zelctl --help\" lists the commands")
            : Zelctl::tr("unknown command \"%1\"; \"zelctl --help\" lists the commands").arg(name));
}

} // namespace

int main(int argc, char* argv[])
{
    keepStandardStreams();
    putRefusedVariablesBack();
    signal(SIGXFSZ, SIG_IGN); // beyond the limit of a file's size a write fails, as on a full disk
    const QString name = QString::fromUtf8(argc > 1 ? argv[1] : "");
    if (name == QLatin1String("--version") || name == QLatin1String("-v"))
        return print(QStringLiteral("zelctl " ZELCTL_VERSION "\n"));
    if (argc > 2) {
        const Command* const command =
            findCommand(name + QLatin1Char(' ') + QString::fromUtf8(argv[2]));
        if (command != nullptr)
            return runCommand(*command, 2, argc, argv);
    }
    if (const Command* const command = findCommand(name))
        return runCommand(*command, 1, argc, argv);
    return runWithoutCommand(argc, argv);
}
