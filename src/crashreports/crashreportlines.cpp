#include "crashreports/crashreportlines_p.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace zeltools::crashreportlines
{

namespace
{

constexpr qint64 s_latest_ms = 253402300799999; // the end of the year 9999

/// Takes the text up to the first blank from the front of the line.
QByteArray takeWord(QByteArray& line)
{
    const auto blank = line.indexOf(' ');
    QByteArray word = blank < 0 ? line : line.left(blank);
    line.remove(0, blank < 0 ? line.size() : blank + 1);
    return word;
}

/// Takes the text after the last separator from the end of the line.
QByteArray takeLastField(QByteArray& line)
{
    const auto separator = line.lastIndexOf('|');
    QByteArray field = line.mid(separator + 1);
    line.truncate(std::max<decltype(separator)>(separator, 0));
    return field;
}

template <typename Number>
bool readNumber(const QByteArray& text, Number& number, qint64 least = 0,
                qint64 most = std::numeric_limits<Number>::max())
{
    bool isNumber = false;
    const qint64 value = text.toLongLong(&isNumber);
    isNumber = isNumber && value >= least && value <= most;
    if (isNumber)
        number = static_cast<Number>(value);
    return isNumber;
}

template <typename Address> // a number, or an optional one
bool readAddress(const QByteArray& text, Address& address)
{
    bool isNumber = false;
    const quint64 value = text.startsWith("0x") ? text.toULongLong(&isNumber, 16) : 0;
    if (isNumber)
        address = value;
    return isNumber;
}

template <typename List>
bool append(List& list, const typename List::value_type& entry, int most)
{
    const bool hasRoom = list.size() < most;
    if (hasRoom)
        list.append(entry);
    return hasRoom;
}

bool readText(CrashReport& report, const QByteArray& key, const QByteArray& text)
{
    const std::pair<const char*, QString CrashReport::*> fields[]{
        {"program", &CrashReport::program},
        {"library", &CrashReport::library},
        {"application", &CrashReport::application},
        {"boot", &CrashReport::boot},
        {"reason", &CrashReport::reason}};
    for (const auto& [name, field] : fields) {
        if (key == name)
            report.*field = QString::fromUtf8(text);
    }
    return true; // also for a key of a later version
}

/// A line of free text that begins with a bracket has a blank before it.
QString freeText(const QByteArray& line)
{
    return QString::fromUtf8(line.startsWith(" [") ? line.mid(1) : line);
}

} // namespace

bool readField(CrashReport& report, const QByteArray& line)
{
    QByteArray value = line;
    const QByteArray key = takeWord(value);
    if (key == "pid")
        return readNumber(value, report.process);
    if (key == "started")
        return readNumber(value, report.started_ms, 0, s_latest_ms);
    if (key == "code")
        return readNumber(value, report.code, std::numeric_limits<int>::min());
    if (key == "address")
        return readAddress(value, report.address);
    if (key == "thread")
        return readNumber(value, report.thread);
    if (key == "time")
        return readNumber(value, report.time_ms, 0, s_latest_ms);
    if (key == "uptime")
        return readNumber(value, report.uptime_ms, 0, s_latest_ms);
    if (key != "signal")
        return readText(report, key, value);
    const bool isNumber = readNumber(takeWord(value), report.signal);
    report.signalName = QString::fromUtf8(value);
    return isNumber;
}

bool readRegister(CrashReport& report, const QByteArray& line)
{
    QByteArray value = line;
    CrashReport::Register one;
    one.name = QString::fromUtf8(takeWord(value));
    return readAddress(value, one.value) && append(report.registers, one, CrashReport::mostCalls);
}

bool readModule(CrashReport& report, const QByteArray& line)
{
    constexpr int longestId_B = 64;
    QByteArray rest = line;
    CrashReport::Module module;
    const bool isPlace =
        readAddress(takeWord(rest), module.base) && readAddress(takeWord(rest), module.end);
    const QByteArray id = takeWord(rest);
    module.buildId = QByteArray::fromHex(id).left(longestId_B);
    module.path = QString::fromUtf8(rest);
    const bool isId = id == "-" || module.buildId.toHex() == id.toLower();
    return isPlace && isId && append(report.modules, module, CrashReport::mostModules);
}

bool readCall(CrashReport& report, const QByteArray& line)
{
    quint64 address = 0;
    return line == "no answer" ||
           (readAddress(line, address) &&
            append(report.stacks.last().calls, address, CrashReport::mostCalls));
}

bool readMonitoredThread(CrashReport& report, const QByteArray& line)
{
    QByteArray fields = line;
    CrashReport::MonitoredThread thread;
    const bool isTime = readNumber(takeLastField(fields), thread.sinceTick_ms);
    thread.state = QString::fromUtf8(takeLastField(fields));
    const bool isThread = readNumber(takeLastField(fields), thread.thread);
    thread.name = freeText(fields); // may have the separator in it
    return isTime && isThread && append(report.monitoredThreads, thread, CrashReport::mostStacks);
}

bool readLogLine(CrashReport& report, const QByteArray& line)
{
    return append(report.log, freeText(line), CrashReport::mostLines);
}

bool readSectionLine(CrashReport& report, const QByteArray& line)
{
    return append(report.sections.last().lines, freeText(line), CrashReport::mostLines);
}

bool beginStack(CrashReport& report, const QByteArray& title)
{
    const QByteArray mark = " crashed";
    QByteArray name = title;
    CrashReport::Stack stack;
    const bool isNumber = readNumber(takeWord(name), stack.thread);
    name.prepend(' '); // so that the mark is found behind an empty name
    // A thread may call itself "crashed", so only the first one can be meant.
    stack.hasCrashed = report.stacks.isEmpty() && name.endsWith(mark);
    if (stack.hasCrashed)
        name.chop(mark.size());
    stack.name = QString::fromUtf8(name.mid(1));
    return isNumber && append(report.stacks, stack, CrashReport::mostStacks);
}

bool beginSection(CrashReport& report, const QByteArray& name)
{
    return append(report.sections, {QString::fromUtf8(name), {}}, CrashReport::mostSections);
}

} // namespace zeltools::crashreportlines
