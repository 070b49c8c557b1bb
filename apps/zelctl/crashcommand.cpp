#include "crashcommand.h"

#include "commandparser.h"
#include "commandwords.h"
#include "crashjson.h"
#include "crashlist.h"
#include "crashprinter.h"
#include "folder.h"
#include "table.h"
#include "words.h"

#include <QFileInfo>

using zeltools::CrashReport;

namespace
{

const QLatin1String s_show("show");

ExitStatus list(const QString& folder, bool isJson, int width)
{
    const QString problem = problemWithFolder(folder);
    return problem.isEmpty() ? printCrashList(folder, isJson, width) : fail(Failed, problem);
}

ExitStatus show(const QString& path, const QString& symbols, bool isJson)
{
    QString error = symbols.isEmpty() ? QString() : problemWithFolder(symbols);
    if (!error.isEmpty())
        return fail(Failed, error);
    if (QFileInfo(path).isDir())
        return fail(
            Failed,
            Zelctl::tr("%1 is a folder; \"zelctl crash list\" names the reports in it").arg(path));
    const std::optional<CrashReport> report = readCrashReport(path, error);
    if (!report)
        return fail(Failed, error);
    const CrashSymbols names(*report, symbols);
    const ExitStatus status =
        isJson ? printJson(crashJson(*report, names)) : print(crashText(*report, names));
    return status == Done && !names.error().isEmpty() ? fail(Failed, names.error()) : status;
}

} // namespace

void describeCrash(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl", "Shows the crash reports of a machine.\n\n"
                  "The names of functions come from files with the same build id as the program or "
                  "library that crashed: without --symbols from /usr/lib/debug/.build-id and from "
                  "the programs and libraries of this machine. addr2line of binutils reads them."));
    parser.addUsages({
        {"list DIR",
         QT_TRANSLATE_NOOP("zelctl",
                           "One line for each report in the folder: time, signal, whether the "
                           "report is complete, program, file, reason; the newest first.")},
        {"show FILE",
         QT_TRANSLATE_NOOP("zelctl", "One report with all call stacks, the threads of the monitor, "
                                     "the last log lines, registers and modules.")},
    });
    parser.addValues({
        {"DIR", QT_TRANSLATE_NOOP("zelctl", "The folder of the reports, or of the symbols"),
         CommandParser::Folder},
        {"FILE", QT_TRANSLATE_NOOP("zelctl", "The report"), CommandParser::File},
    });
    parser.addOptions({
        {"symbols",
         QT_TRANSLATE_NOOP("zelctl",
                           "show: takes the symbols from the files in this folder and below."),
         "DIR"},
        {"wide", QT_TRANSLATE_NOOP("zelctl", "list: does not fit the lines into the terminal.")},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "All was shown."),
        QT_TRANSLATE_NOOP("zelctl", "A folder or report cannot be read, a file in the folder is "
                                    "not a report, or addr2line failed; the rest was shown."));
    parser.addFiles({{"/usr/lib/debug/.build-id",
                      QT_TRANSLATE_NOOP("zelctl", "Symbols of installed programs.")}});
    parser.addExamples({
        {"zelctl crash list /share/zel/logs/debug/crashes",
         QT_TRANSLATE_NOOP("zelctl", "Lists the reports of a machine.")},
        {"zelctl crash show crash-20261115-033740-4711.report --symbols symbols/4.2.1",
         QT_TRANSLATE_NOOP("zelctl", "Shows a report with the names of that version.")},
    });
}

ExitStatus runCrash(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const QString action = words.value(0), path = words.value(1);
    const bool isShow = action == s_show;
    const QString misuse =
        problemWithOptions(parser, action, {{"symbols", "show"}, {"wide", "list"}});
    if (!misuse.isEmpty())
        return refuse(misuse);
    const bool isJson = parser.isSet("json");
    return isShow ? show(path, parser.value("symbols"), isJson)
                  : list(path, isJson, parser.isSet("wide") ? 0 : terminalWidth());
}
