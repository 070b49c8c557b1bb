#include "crashprinter.h"

#include "command.h"
#include "table.h"
#include "words.h"

#include <QDateTime>

using zeltools::CrashReport;

namespace
{

/// Collects lines, whose texts may come from a forged report.
class Page
{
public:
    void addLine(const QString& line) { m_text += withoutControls(line) + QLatin1Char('\n'); }
    void addField(const char* name, const QString& value)
    {
        constexpr int width = 13;
        if (!value.isEmpty())
            addLine(Zelctl::tr(name).leftJustified(width - 1) + QLatin1Char(' ') + value);
    }
    void addHeading(const QString& heading)
    {
        m_text += QLatin1Char('\n');
        addLine(heading);
    }
    void addLines(const QString& heading, const QStringList& lines)
    {
        if (lines.isEmpty())
            return;
        addHeading(heading);
        for (const QString& line : lines)
            addLine(QStringLiteral("  ") + line);
    }
    QString text() const { return m_text; }

private:
    QString m_text;
};

QString hex(quint64 number)
{
    return QStringLiteral("0x") + QString::number(number, 16);
}

/// A text such as "2 h 1 min 40.333 s".
QString duration(qint64 time_ms)
{
    constexpr qint64 minute_ms = 60000, hour_ms = 60 * minute_ms, day_ms = 24 * hour_ms;
    QString text;
    for (const auto& [unit, name] :
         {std::pair{day_ms, " d "}, {hour_ms, " h "}, {minute_ms, " min "}}) {
        if (time_ms >= unit || !text.isEmpty())
            text += QString::number(time_ms / unit) + QLatin1String(name);
        time_ms %= unit;
    }
    return text + QString::number(double(time_ms) / 1000, 'f', 3) + QLatin1String(" s");
}

QString signalText(const CrashReport& report)
{
    return report.signal == 0 ? crashSignal(report)
                              : QStringLiteral("%1 %2 (code %3)")
                                    .arg(QString::number(report.signal), report.signalName,
                                         QString::number(report.code));
}

void addSummary(Page& page, const CrashReport& report)
{
    if (!report.isComplete)
        page.addField(QT_TRANSLATE_NOOP("zelctl", "incomplete"),
                      Zelctl::tr("the report is cut or damaged"));
    page.addField(QT_TRANSLATE_NOOP("zelctl", "signal"), signalText(report));
    page.addField(QT_TRANSLATE_NOOP("zelctl", "reason"), report.reason);
    page.addField(QT_TRANSLATE_NOOP("zelctl", "address"),
                  report.address ? hex(*report.address) : QString());
    page.addField(QT_TRANSLATE_NOOP("zelctl", "time"), crashTime(report.time_ms));
    page.addField(QT_TRANSLATE_NOOP("zelctl", "running for"), duration(report.uptime_ms));
    page.addField(QT_TRANSLATE_NOOP("zelctl", "started"), crashTime(report.started_ms));
    page.addField(
        QT_TRANSLATE_NOOP("zelctl", "program"),
        Zelctl::tr("%1 (process %2)").arg(report.program, QString::number(report.process)));
    page.addField(QT_TRANSLATE_NOOP("zelctl", "application"), report.application);
    page.addField(QT_TRANSLATE_NOOP("zelctl", "library"), report.library);
    page.addField(QT_TRANSLATE_NOOP("zelctl", "boot"), report.boot);
}

/// The place of a call in its file, such as "demo+0x4f21".
QString place(const CrashSymbols::Call& call)
{
    if (call.module == nullptr)
        return hex(call.address);
    const QString& path = call.module->path;
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1) + QLatin1Char('+') +
           hex(call.address - call.module->base);
}

void addStack(Page& page, const CrashReport::Stack& stack, const CrashSymbols& symbols)
{
    page.addHeading(
        (stack.hasCrashed ? Zelctl::tr("thread %1 %2, crashed") : Zelctl::tr("thread %1 %2"))
            .arg(QString::number(stack.thread), stack.name));
    if (stack.calls.isEmpty())
        page.addLine(QStringLiteral("  ") + Zelctl::tr("no answer"));
    const QVector<CrashSymbols::Call> calls = symbols.calls(stack);
    for (int i = 0; i < calls.size(); ++i) {
        const QStringList& functions = calls[i].functions;
        const QString function = functions.isEmpty() ? QStringLiteral("?") : functions.first();
        page.addLine(QStringLiteral("  #%1 %2 (%3)")
                         .arg(QString::number(i).leftJustified(2), function, place(calls[i])));
        for (int j = 1; j < functions.size(); ++j)
            page.addLine(QStringLiteral("      ") +
                         Zelctl::tr("inlined into %1").arg(functions[j]));
    }
}

QStringList lines(const QVector<QStringList>& rows)
{
    return table(rows).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList threadLines(const CrashReport& report)
{
    QVector<QStringList> rows;
    for (const CrashReport::MonitoredThread& thread : report.monitoredThreads)
        rows.append({thread.name, QString::number(thread.thread), thread.state,
                     Zelctl::tr("last tick %1 ms before").arg(thread.sinceTick_ms)});
    return lines(rows);
}

QStringList registerLines(const CrashReport& report)
{
    QVector<QStringList> rows;
    for (const CrashReport::Register& one : report.registers)
        rows.append({one.name, hex(one.value)});
    return lines(rows);
}

QStringList moduleLines(const CrashReport& report, const CrashSymbols& symbols)
{
    QVector<QStringList> rows;
    for (const CrashReport::Module& module : report.modules) {
        const QString id = QString::fromLatin1(module.buildId.toHex());
        const QString source = symbols.source(module);
        rows.append({hex(module.base), id.isEmpty() ? QStringLiteral("-") : id,
                     source.isEmpty() || source == module.path
                         ? module.path
                         : QStringLiteral("%1 (%2)").arg(module.path, source)});
    }
    return lines(rows);
}

} // namespace

QString crashSignal(const CrashReport& report)
{
    if (report.signal == 0)
        return QStringLiteral("no signal");
    return report.signalName.isEmpty() ? QStringLiteral("signal %1").arg(report.signal)
                                       : report.signalName;
}

QString crashTime(qint64 time_ms)
{
    return time_ms == 0 ? QStringLiteral("-")
                        : QDateTime::fromMSecsSinceEpoch(time_ms).toString(
                              QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz"));
}

QString crashText(const CrashReport& report, const CrashSymbols& symbols)
{
    Page page;
    addSummary(page, report);
    for (const CrashReport::Stack& stack : report.stacks)
        addStack(page, stack, symbols);
    page.addLines(Zelctl::tr("monitored threads"), threadLines(report));
    page.addLines(Zelctl::tr("last lines of the log"), report.log);
    for (const CrashReport::Section& section : report.sections)
        page.addLines(section.name, section.lines);
    page.addLines(Zelctl::tr("registers"), registerLines(report));
    page.addLines(Zelctl::tr("modules"), moduleLines(report, symbols));
    return page.text();
}
