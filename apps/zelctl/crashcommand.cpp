#include "crashcommand.h"

#include "commandparser.h"
#include "crashjson.h"
#include "crashlist.h"
#include "crashprinter.h"

#include <QDir>

using zeltools::CrashReport;

namespace
{

const QLatin1String s_list("list");
const QLatin1String s_show("show");

QString noFolder(const QString& path)
{
    return QStringLiteral("no folder ") + path;
}

ExitStatus list(const QString& folder, bool isJson)
{
    const QDir dir(folder);
    if (!dir.exists())
        return fail(Failed, noFolder(folder));
    return dir.isReadable() ? printCrashList(folder, isJson)
                            : fail(Failed, QStringLiteral("cannot read the folder ") + folder);
}

ExitStatus show(const QString& path, const QString& symbols, bool isJson)
{
    if (!symbols.isEmpty() && !QDir(symbols).exists())
        return fail(Failed, noFolder(symbols));
    QString error;
    const std::optional<CrashReport> report = readCrashReport(path, error);
    if (!report)
        return fail(Failed, error);
    const CrashSymbols names(*report, symbols);
    const ExitStatus status =
        isJson ? printJson(crashJson(*report, names)) : print(crashText(*report, names));
    return status == Done && !names.error().isEmpty() ? fail(Failed, names.error()) : status;
}

void addOptions(CommandParser& parser)
{
    parser.setDescription(
        "Shows the crash reports of a machine.\n\n"
        "  list DIR   one line for each report in the folder: time, signal, whether the report is\n"
        "             complete, program, file, reason; the newest first\n"
        "  show FILE  one report with all call stacks, the threads of the monitor, the last log\n"
        "             lines, registers and modules\n\n"
        "The names of functions come from files with the same build id as the program or library\n"
        "that crashed: without --symbols from /usr/lib/debug/.build-id and from the programs and\n"
        "libraries of this machine. addr2line of binutils reads them.");
    parser.addArgument("ACTION", "What to do, and the folder or the report.", "list DIR|show FILE");
    parser.addOptions({
        {"symbols", "Takes the symbols from the files in this folder and below.", "DIR"},
        {"json", "Prints one JSON object."},
    });
}

} // namespace

ExitStatus runCrash(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parser.parse(arguments))
        return *status;
    const QStringList words = parser.arguments();
    const QString action = words.value(0), path = words.value(1);
    const bool isShow = action == s_show;
    if (words.size() != 2 || path.isEmpty() || (!isShow && action != s_list) ||
        (parser.isSet("symbols") && !isShow))
        return fail(WrongUsage, QStringLiteral("see \"zelctl crash --help\" for what crash needs"));
    const bool isJson = parser.isSet("json");
    return isShow ? show(path, parser.value("symbols"), isJson) : list(path, isJson);
}
