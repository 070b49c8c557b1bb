#include "crashes.h"

#include <zeltools/crashreports/crashreports.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/windowstools.h>

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <stdexcept>

#include <dlfcn.h>
#include <sys/resource.h>

using zeltools::CrashReports;

// The program exports these functions, so that the reports have their names. None of them ends with
// a call, which the compiler could make a jump.
volatile bool s_isHot = false;

void (*volatile s_heat)() = nullptr;

[[gnu::noinline]] void heatWithoutBoiler()
{
    s_heat();
    s_isHot = true;
}

[[gnu::noinline]] void pourMilk()
{
    throw std::runtime_error("there is no milk");
}

// The file becomes shorter while it is mapped.
[[gnu::noinline]] void readRecipe()
{
    constexpr int size = 4096;
    QTemporaryFile recipe;
    if (!recipe.open() || !recipe.resize(size))
        return;
    const volatile uchar* const memory = recipe.map(0, size);
    if (memory != nullptr && recipe.resize(0))
        s_isHot = memory[0] != 0;
}

namespace
{

struct Way
{
    const char* mode;
    const char* signal;
    void (*crash)();
};

constexpr Way s_ways[]{
    {"crash-null", "11 SIGSEGV", heatWithoutBoiler},
    {"crash-exception", "6 SIGABRT", pourMilk},
    {"crash-file", "7 SIGBUS", readRecipe},
};

QStringList linesOf(const QString& report, const QString& section)
{
    const int heading = report.indexOf(QLatin1String("\n[") + section);
    const int begin = report.indexOf(QLatin1Char('\n'), heading + 1) + 1;
    return heading < 0 ? QStringList()
                       : report.mid(begin, report.indexOf(QLatin1String("\n["), begin) - begin)
                             .split(QLatin1Char('\n'));
}

QString value(const QStringList& lines, const QString& key)
{
    for (const QString& line : lines) {
        if (line.startsWith(key + QLatin1Char(' ')))
            return line.mid(key.size() + 1);
    }
    return {};
}

// The calls of the program, which is the same file in this process at another address.
QStringList callsOfProgram(const QString& report)
{
    QString module;
    const QStringList modules = linesOf(report, QStringLiteral("modules"));
    for (const QString& line : modules) {
        if (line.section(QLatin1Char(' '), 3) == QCoreApplication::applicationFilePath())
            module = line;
    }
    const quint64 base = module.section(QLatin1Char(' '), 0, 0).toULongLong(nullptr, 16);
    const quint64 end = module.section(QLatin1Char(' '), 1, 1).toULongLong(nullptr, 16);
    Dl_info own;
    dladdr(reinterpret_cast<void*>(&showCrashes), &own);
    QStringList calls;
    const QStringList stack = linesOf(report, QStringLiteral("stack"));
    for (const QString& line : stack) {
        const quint64 call = line.toULongLong(nullptr, 16);
        if (call >= base && call < end)
            calls.append(
                WindowsTools::describeCall(static_cast<char*>(own.dli_fbase) + (call - base)));
    }
    return calls;
}

// Returns what the machine prints to standard error.
QString run(const char* mode, const QString& folder)
{
    constexpr int limit_ms = 20000;
    QProcess machine;
    machine.start(
        QCoreApplication::applicationFilePath(),
        {QStringLiteral("--machine"), QLatin1String(mode), QStringLiteral("--dir"), folder});
    machine.waitForFinished(limit_ms);
    return QString::fromLocal8Bit(machine.readAllStandardError());
}

bool show(const Way& way, const QString& path, QTextStream& out)
{
    constexpr int mostCalls = 4;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString report = QString::fromUtf8(file.readAll());
    const QStringList crash = linesOf(report, QStringLiteral("crash]"));
    const QString signal = value(crash, QStringLiteral("signal"));
    const QString reason = value(crash, QStringLiteral("reason"));
    out << "    signal " << signal << (reason.isEmpty() ? QString() : QLatin1String(", ") + reason)
        << '\n';
    const QStringList calls = callsOfProgram(report);
    for (int i = 0; i < qMin(calls.size(), mostCalls); ++i)
        out << "      " << calls[i] << '\n';
    return signal == QLatin1String(way.signal) && !calls.isEmpty() &&
           report.endsWith(QLatin1String("\n[end]\n"));
}

} // namespace

bool showCrashes(QTextStream& out)
{
    const QTemporaryDir temporary;
    bool isRight = true;
    out << "\nA machine crashes in three ways. What its next start logs, and the reports:\n";
    for (const Way& way : s_ways) {
        const QString folder = temporary.filePath(QLatin1String(way.mode));
        run(way.mode, folder);
        const QStringList printed = run("crash-none", folder).split(QLatin1Char('\n'));
        for (const QString& line : printed) {
            if (line.contains(QLatin1String("| Critical |")))
                out << "  " << line.section(QLatin1String("; report"), 0, 0) << '\n';
        }
        const QStringList reports = CrashReports::reports(folder + QLatin1String("/crashes"));
        isRight = reports.size() == 1 && show(way, reports[0], out) && isRight;
    }
    out.flush();
    return isRight;
}

bool isCrashingMachine(const QString& mode)
{
    return mode.startsWith(QLatin1String("crash-"));
}

int runCrashingMachine(const QString& mode, const QString& folder)
{
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    Path::instance()->init(folder + QLatin1String("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    if (!CrashReports::install(folder + QLatin1String("/crashes")))
        return 1;
    LogFormatter(LogLevel::Info).log(Log::Beverage) << "The machine is at work";
    for (const Way& way : s_ways) {
        if (mode == QLatin1String(way.mode))
            way.crash();
    }
    return 0;
}
