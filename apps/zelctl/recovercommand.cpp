#include "recovercommand.h"

#include "commandparser.h"
#include "folder.h"
#include "words.h"
#include <zeltools/logging/logrecovery.h>

void describeLogRecover(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Writes to the log files below DIR what killed processes with buffered logging "
                  "have left in their rings. The next start of the application does the same. "
                  "Lines without a file go to stderr."));
    parser.addUsages({{"DIR", ""}});
    parser.addValues({
        {"DIR", QT_TRANSLATE_NOOP("zelctl", "The folder of the log files"), CommandParser::Folder},
        {"FOLDER", "", CommandParser::Folder},
    });
    parser.addOptions({
        {"rings",
         QT_TRANSLATE_NOOP("zelctl", "Looks for rings in FOLDER, too; may be given several times."),
         "FOLDER", "", true},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object with the number of lines.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The lines were written."),
        QT_TRANSLATE_NOOP("zelctl",
                          "There is no such folder, or a ring or a log file has a problem."));
    parser.addExamples({{"zelctl log recover /share/zel/logs",
                         QT_TRANSLATE_NOOP("zelctl", "Recovers the lines of a machine.")}});
}

ExitStatus runLogRecover(const CommandParser& parser)
{
    const QString folder = parser.arguments().value(0);
    const QStringList ringFolders = parser.values("rings");
    const QStringList places = QStringList(folder) + ringFolders;
    for (const QString& place : places) {
        const QString problem = problemWithFolder(place);
        if (!problem.isEmpty())
            return fail(Failed, problem);
    }
    const LogRecovery recovery = LogRecovery::run(folder, ringFolders);
    const auto count = static_cast<qint64>(recovery.linesCount);
    const ExitStatus status =
        parser.isSet("json")
            ? printJson(jsonObject({{"lines", count}}))
            : printLine(Zelctl::counted(count, QT_TRANSLATE_NOOP("zelctl", "1 line recovered"),
                                        QT_TRANSLATE_N_NOOP("zelctl", "%n lines recovered")));
    if (!recovery.problems.isEmpty())
        return fail(Failed, recovery.problems.join(QStringLiteral("; ")));
    return status;
}
