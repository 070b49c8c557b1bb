#include "bundlecommand.h"
#include "clockcommand.h"
#include "command.h"
#include "crashcommand.h"
#include "cryptcommand.h"
#include "envcommand.h"
#include "eventscommand.h"
#include "hexcommand.h"
#include "kmsgcommand.h"
#include "logcommand.h"
#include "refusedvariables.h"
#include "simcommand.h"
#include "versioncommand.h"

#include <QCoreApplication>

#include <new>

#include <signal.h>

namespace
{

constexpr Command s_commands[]{
    {"bundle", "Packs the logs of a machine into one file for support, and checks such files.",
     runBundle},
    {"crypt", "Encrypts and decrypts files, shows what their header says.", runCrypt},
    {"crash", "Lists and shows the crash reports of a machine.", runCrash},
    {"clock", "Drives the simulated clock of a machine.", runClock},
    {"env", "Shows and edits the environment file of a machine.", runEnv},
    {"events", "Shows the event history of a machine in pages.", runEvents},
    {"hex", "Brings hexadecimal text into one form, or into bytes and back.", runHex},
    {"kmsg", "Prints the log of the running kernel, and follows it.", runKmsg},
    {"log", "Prints the log files of a machine, merged by time, and searches them.", runLog},
    {"sim", "Plays the simulator of a machine from a script, records and replays links.", runSim},
    {"version", "Compares two versions, tells that of the library.", runVersion},
};

QString help()
{
    QString text = QStringLiteral("Usage: zelctl COMMAND [options]\n\nCommands:\n");
    for (const Command& command : s_commands)
        text += QStringLiteral("  %1  %2\n")
                    .arg(QString::fromLatin1(command.name), -8)
                    .arg(QString::fromLatin1(command.summary));
    return text + QStringLiteral("\n\"zelctl COMMAND --help\" explains a command, \"zelctl "
                                 "--version\" tells the version.\n");
}

} // namespace

int main(int argc, char* argv[])
{
    putRefusedVariablesBack();
    signal(SIGXFSZ, SIG_IGN); // beyond the limit of a file's size a write fails, as on a full disk
    const QByteArray name(argc > 1 ? argv[1] : "");
    if (name == "--help" || name == "-h")
        return print(help());
    if (name == "--version" || name == "-v")
        return print(QStringLiteral("zelctl " ZELCTL_VERSION "\n"));

    for (const Command& command : s_commands) {
        if (name != command.name)
            continue;
        // Program and command become one word, so that the command's parser names both in its help.
        QByteArray program = "zelctl " + name;
        argv[1] = program.data();
        int count = argc - 1;
        const QCoreApplication application(count, argv + 1);
        try {
            return command.run(QCoreApplication::arguments());
        } catch (const std::bad_alloc&) { // the file of a command does not fit
            return fail(Failed, QStringLiteral("Cannot allocate memory"));
        }
    }
    const QString hint = QStringLiteral("; \"zelctl --help\" lists the commands");
    if (argc < 2)
        return fail(WrongUsage, QStringLiteral("a command is missing") + hint);
    return fail(WrongUsage,
                QStringLiteral("unknown command \"%1\"").arg(QString::fromUtf8(name)) + hint);
}
