#include "logcommand.h"

#include "folder.h"
#include "follow.h"
#include "logmerge.h"
#include "logrequest.h"
#include "pager.h"
#include "words.h"

#include <cstdio>
#include <deque>
#include <string>

#include <signal.h>

namespace
{

/// The last lines of a selection, which are known only at the end of the files.
class LastLines
{
public:
    explicit LastLines(int count)
        : m_count(static_cast<size_t>(count))
    {
    }
    void add(const LogEntry& entry)
    {
        m_lines.push_back({entry, std::string(entry.text), *entry.path});
        if (m_lines.size() > m_count)
            m_lines.pop_front();
    }
    /// Returns the time of the first line, or the given one if there is none.
    LogTime print(LogPrinter& printer, LogTime from) const
    {
        for (const Line& line : m_lines) {
            LogEntry entry = line.entry;
            entry.text = line.text;
            entry.path = &line.path;
            printer.print(entry);
        }
        return m_lines.empty() ? from : m_lines.front().entry.time;
    }

private:
    struct Line
    {
        LogEntry entry;
        std::string text;
        QString path;
    };
    const size_t m_count;
    std::deque<Line> m_lines;
};

void printAll(LogMerge& merge, LogPrinter& printer)
{
    merge.visit([&printer](const LogEntry& entry) {
        printer.print(entry);
        return !printer.isClosed();
    });
}

/// Prints all lines, or the last ones. Returns the time of the first.
LogTime printFound(LogMerge& merge, const LogRequest& request, LogPrinter& printer)
{
    if (!request.last) {
        printAll(merge, printer);
        return request.selection.from;
    }
    LastLines lines(*request.last);
    merge.visit([&lines](const LogEntry& entry) {
        lines.add(entry);
        return true;
    });
    return lines.print(printer, request.selection.from);
}

void follow(LogMerge& merge, LogPrinter& printer)
{
    const Follow waiting;
    do {
        printAll(merge, printer);
        printer.flush();
    } while (!printer.isClosed() && waiting.wait());
}

ExitStatus printLogs(LogMerge& merge, const LogRequest& request, LossLedger& ledger)
{
    LogPrinter printer(request.style);
    LogTime from = 0;
    if (request.isFollowing) {
        merge.follow();
        from = printFound(merge, request, printer);
        follow(merge, printer);
    } else {
        Pager pager;
        from = printFound(merge, request, printer);
        printer.flush();
        if (pager.end() != Done)
            return Failed;
    }
    const qint64 lost = ledger.total(from, request.selection.to);
    if (lost > 0 && !printer.isClosed())
        fail(Done, Zelctl::counted(
                       lost, QT_TRANSLATE_NOOP("zelctl", "the machine lost 1 line in this period"),
                       QT_TRANSLATE_N_NOOP("zelctl", "the machine lost %n lines in this period")));
    if (!printer.error().isEmpty())
        return fail(Failed, printer.error());
    if (!merge.error().isEmpty())
        return fail(Failed, Zelctl::tr("%1; lines are missing").arg(merge.error()));
    return Done;
}

} // namespace

ExitStatus runLog(const CommandParser& parser)
{
    LogRequest request;
    const QString misuse = readLogRequest(parser, request);
    if (!misuse.isEmpty())
        return refuse(misuse);

    const QStringList words = parser.arguments();
    if (words.size() > 1) // main() has not seen it behind an option
        return refuse(Zelctl::tr("unexpected argument \"%1\"; usage: %2")
                          .arg(words[0], QStringLiteral("zelctl log recover DIR")));

    const QString& folder = words[0];
    const QString problem = problemWithFolder(folder);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    const std::vector<LogSeries> series = findLogSeries(folder, request.isFollowing);
    if (series.empty())
        return fail(Failed, Zelctl::tr("%1 holds no log files").arg(folder));
    LossLedger ledger;
    LogMerge merge(series, request.selection, ledger);
    merge.open();
    signal(SIGPIPE, SIG_IGN); // the reader of the output may go before its end
    return printLogs(merge, request, ledger);
}
