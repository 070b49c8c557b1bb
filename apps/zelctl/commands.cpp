#include "commands.h"

#include "bundlecommand.h"
#include "clockcommand.h"
#include "completioncommand.h"
#include "crashcommand.h"
#include "cryptcommand.h"
#include "envcommand.h"
#include "eventscommand.h"
#include "helpcommand.h"
#include "hexcommand.h"
#include "kmsgcommand.h"
#include "logcommand.h"
#include "logrequest.h"
#include "recovercommand.h"
#include "simcommand.h"
#include "versioncommand.h"
#include "words.h"

#include <algorithm>

const std::vector<Command>& commands()
{
    static const std::vector<Command> table{
        {"bundle",
         QT_TRANSLATE_NOOP(
             "zelctl", "Packs the logs of a machine into one file for support, checks such files."),
         describeBundle, runBundle},
        {"clock", QT_TRANSLATE_NOOP("zelctl", "Drives the simulated clock of a machine."),
         describeClock, runClock},
        {"completion",
         QT_TRANSLATE_NOOP("zelctl", "Prints the script by which a shell completes zelctl."),
         describeCompletion, runCompletion},
        {"crash", QT_TRANSLATE_NOOP("zelctl", "Lists and shows the crash reports of a machine."),
         describeCrash, runCrash},
        {"crypt",
         QT_TRANSLATE_NOOP("zelctl", "Encrypts and decrypts files, shows what their header says."),
         describeCrypt, runCrypt},
        {"env", QT_TRANSLATE_NOOP("zelctl", "Shows and edits the environment file of a machine."),
         describeEnv, runEnv},
        {"events", QT_TRANSLATE_NOOP("zelctl", "Shows the event history of a machine in pages."),
         describeEvents, runEvents},
        {"help", QT_TRANSLATE_NOOP("zelctl", "Explains a command."), describeHelp, runHelp},
        {"hex",
         QT_TRANSLATE_NOOP("zelctl",
                           "Normalizes hexadecimal text, or converts it into bytes and back."),
         describeHex, runHex},
        {"kmsg",
         QT_TRANSLATE_NOOP("zelctl", "Prints the log of the running kernel, and follows it."),
         describeKmsg, runKmsg},
        {"log",
         QT_TRANSLATE_NOOP("zelctl",
                           "Prints the log files of a machine, merged by time, and searches them."),
         describeLog, runLog},
        {"log recover",
         QT_TRANSLATE_NOOP("zelctl", "Writes the log lines that killed processes have left."),
         describeLogRecover, runLogRecover},
        {"sim",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "Plays the simulator of a machine from a script, records and replays links."),
         describeSim, runSim},
        {"version",
         QT_TRANSLATE_NOOP("zelctl", "Compares two versions, or prints that of the library."),
         describeVersion, runVersion},
    };
    return table;
}

const Command* findCommand(const QString& name)
{
    const std::vector<Command>& table = commands();
    const auto found = std::find_if(table.begin(), table.end(), [&name](const Command& command) {
        return name == QLatin1String(command.name);
    });
    return found == table.end() ? nullptr : &*found;
}
