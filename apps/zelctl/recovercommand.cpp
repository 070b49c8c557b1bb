#include "recovercommand.h"

#include "commandparser.h"
#include <zeltools/logging/logrecovery.h>

#include <QDir>

ExitStatus runLogRecover(const QStringList& arguments)
{
    CommandParser parser;
    parser.setDescription(
        "Writes to the log files below DIR what killed processes with buffered logging have left "
        "in\n"
        "their rings. The next start of the application does the same. Lines without a file go to\n"
        "stderr.");
    parser.addArgument("DIR", "The folder of the log files.", "DIR");
    parser.addOptions({{"rings", "Looks for rings in <FOLDER>, too.", "FOLDER"}});
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    const QStringList folders = parser.arguments();
    if (folders.size() != 1) {
        return fail(WrongUsage, QStringLiteral("log recover needs one folder, see \"zelctl log "
                                               "recover --help\""));
    }
    const QString& folder = folders.first();
    if (!QDir(folder).exists())
        return fail(Failed, QStringLiteral("no folder ") + folder);
    QStringList ringFolders;
    if (parser.isSet("rings"))
        ringFolders.append(parser.value("rings"));
    const LogRecovery recovery = LogRecovery::run(folder, ringFolders);
    const ExitStatus status =
        printLine(QStringLiteral("%1 lines recovered").arg(recovery.linesCount));
    if (!recovery.problems.isEmpty())
        return fail(Failed, recovery.problems.join(QStringLiteral("; ")));
    return status;
}
