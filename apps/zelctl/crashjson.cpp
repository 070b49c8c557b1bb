#include "crashjson.h"

#include "command.h"

#include <QDateTime>
#include <QJsonArray>

using zeltools::CrashReport;

namespace
{

QString hex(quint64 number)
{
    return QStringLiteral("0x") + QString::number(number, 16);
}

QJsonArray stacksJson(const CrashReport& report, const CrashSymbols& symbols)
{
    QJsonArray stacks;
    for (const CrashReport::Stack& stack : report.stacks) {
        QJsonArray calls;
        const auto stackCalls = symbols.calls(stack);
        for (const CrashSymbols::Call& call : stackCalls) {
            QJsonObject object =
                jsonObject({{"address", hex(call.address)},
                            {"functions", QJsonArray::fromStringList(call.functions)}});
            if (call.module != nullptr) {
                object.insert(QStringLiteral("module"), call.module->path);
                object.insert(QStringLiteral("offset"), hex(call.address - call.module->base));
            }
            calls.append(object);
        }
        stacks.append(jsonObject({{"thread", stack.thread},
                                  {"name", stack.name},
                                  {"crashed", stack.hasCrashed},
                                  {"calls", calls}}));
    }
    return stacks;
}

QJsonArray threadsJson(const CrashReport& report)
{
    QJsonArray threads;
    for (const CrashReport::MonitoredThread& thread : report.monitoredThreads)
        threads.append(jsonObject({{"name", thread.name},
                                   {"thread", thread.thread},
                                   {"state", thread.state},
                                   {"sinceTick_ms", thread.sinceTick_ms}}));
    return threads;
}

// An array, since names may come twice.
QJsonArray sectionsJson(const CrashReport& report)
{
    QJsonArray sections;
    for (const CrashReport::Section& section : report.sections)
        sections.append(jsonObject(
            {{"name", section.name}, {"lines", QJsonArray::fromStringList(section.lines)}}));
    return sections;
}

QJsonArray registersJson(const CrashReport& report)
{
    QJsonArray registers;
    for (const CrashReport::Register& one : report.registers)
        registers.append(jsonObject({{"name", one.name}, {"value", hex(one.value)}}));
    return registers;
}

QJsonArray modulesJson(const CrashReport& report, const CrashSymbols& symbols)
{
    QJsonArray modules;
    for (const CrashReport::Module& module : report.modules)
        modules.append(jsonObject({{"base", hex(module.base)},
                                   {"end", hex(module.end)},
                                   {"buildId", QString::fromLatin1(module.buildId.toHex())},
                                   {"path", module.path},
                                   {"symbols", symbols.source(module)}}));
    return modules;
}

} // namespace

QJsonValue crashIsoTime(qint64 time_ms)
{
    return time_ms == 0
               ? QJsonValue()
               : QDateTime::fromMSecsSinceEpoch(time_ms, Qt::UTC).toString(Qt::ISODateWithMs);
}

QJsonObject crashJson(const CrashReport& report, const CrashSymbols& symbols)
{
    return jsonObject({{"complete", report.isComplete},
                       {"process", report.process},
                       {"program", report.program},
                       {"library", report.library},
                       {"application", report.application},
                       {"boot", report.boot},
                       {"started", crashIsoTime(report.started_ms)},
                       {"signal", report.signal},
                       {"signalName", report.signalName},
                       {"code", report.code},
                       {"address", report.address ? hex(*report.address) : QJsonValue()},
                       {"thread", report.thread},
                       {"time", crashIsoTime(report.time_ms)},
                       {"uptime_ms", report.uptime_ms},
                       {"reason", report.reason},
                       {"registers", registersJson(report)},
                       {"stacks", stacksJson(report, symbols)},
                       {"monitoredThreads", threadsJson(report)},
                       {"log", QJsonArray::fromStringList(report.log)},
                       {"sections", sectionsJson(report)},
                       {"modules", modulesJson(report, symbols)}});
}
