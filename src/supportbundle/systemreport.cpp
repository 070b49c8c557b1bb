#include "supportbundle/systemreport_p.h"

#include "filedescriptor.h"
#include "libraryversion.h"
#include "machine.h"
#include "timedprocess.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QSysInfo>
#include <QTimeZone>

#include <cerrno>
#include <iterator>

#include <fcntl.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

constexpr int s_longest_B = 8 * 1024 * 1024;

/// The content of a file of the system, below a line with its path.
QByteArray section(const QString& path)
{
    QFile file(path);
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.read(s_longest_B)
                                                              : file.errorString().toUtf8() + '\n';
    return "== " + path.toUtf8() + '\n' + content + '\n';
}

/// The output of a program. It is in English, and the time limit also ends a program that hangs on
/// a dead network disk.
SystemReport outputOf(const QString& program, const QStringList& arguments)
{
    using namespace std::chrono_literals;
    TimedProcess process([] { setpgid(0, 0); });
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments, QIODevice::ReadOnly);
    SystemReport report;
    report.fault = process.waitForEnd(5s);
    report.content = process.readAllStandardOutput().left(s_longest_B);
    if (report.fault.isEmpty() && process.exitCode() != 0)
        report.fault = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return report;
}

SystemReport versions()
{
    utsname kernel = {};
    uname(&kernel);
    const QString text =
        QStringLiteral("library %1\napplication %2 %3\nqt %4\nkernel %5 %6 %7\n\n")
            .arg(libraryVersion().toString(), QCoreApplication::applicationName(),
                 QCoreApplication::applicationVersion(), QString::fromLatin1(qVersion()),
                 QString::fromLocal8Bit(kernel.release), QString::fromLocal8Bit(kernel.version),
                 QString::fromLocal8Bit(kernel.machine));
    return {{}, text.toUtf8() + section(QStringLiteral("/etc/os-release")), {}};
}

SystemReport packages()
{
    SystemReport report = outputOf(QStringLiteral("dpkg-query"),
                                   {QStringLiteral("-W"), QStringLiteral("-f"),
                                    QStringLiteral("${Package} ${Version} ${Status}\\n")});
    return report.content.isEmpty()
               ? outputOf(QStringLiteral("opkg"), {QStringLiteral("list-installed")})
               : report;
}

SystemReport memory()
{
    return {{},
            section(QStringLiteral("/proc/meminfo")) + section(QStringLiteral("/proc/loadavg")) +
                section(QStringLiteral("/proc/vmstat")),
            {}};
}

SystemReport disks()
{
    const SystemReport space = outputOf(QStringLiteral("df"), {QStringLiteral("-k")});
    const SystemReport inodes = outputOf(QStringLiteral("df"), {QStringLiteral("-i")});
    return {{},
            "== df -k\n" + space.content + "\n== df -i\n" + inodes.content + '\n' +
                section(QStringLiteral("/proc/mounts")) +
                section(QStringLiteral("/proc/diskstats")),
            space.fault};
}

SystemReport time()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QString text =
        QStringLiteral("local %1\nutc %2\nzone %3\n/etc/localtime %4\n\n")
            .arg(now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs),
                 now.toUTC().toString(Qt::ISODateWithMs),
                 QString::fromLatin1(QTimeZone::systemTimeZoneId()),
                 QFile::symLinkTarget(Machine().localTimeFile));
    return {{},
            text.toUtf8() + section(Machine().timeZoneFile) +
                section(QStringLiteral("/proc/uptime")) +
                section(QStringLiteral("/proc/sys/kernel/random/boot_id")),
            {}};
}

/// The records in the kernel's buffer, in the form in which the kernel hands them out.
SystemReport kernelLog()
{
    SystemReport report;
    const FileDescriptor device(open(QFile::encodeName(Machine().kernelMessageFile).constData(),
                                     O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    char record[8192]; // the kernel's longest
    while (report.content.size() < s_longest_B) {
        const ssize_t count = device < 0 ? -1 : read(device, record, sizeof record);
        if (count > 0)
            report.content.append(record, static_cast<int>(count));
        else if (count == 0 || errno == EAGAIN)
            break;
        else if (errno != EPIPE && errno != EINTR) { // EPIPE: records were overwritten meanwhile
            report.fault = qt_error_string(errno);
            break;
        }
    }
    return report;
}

struct Row
{
    const char* name;
    SystemReport (*make)();
};
constexpr Row s_rows[]{
    {"system/versions.txt", versions}, {"system/packages.txt", packages},
    {"system/memory.txt", memory},     {"system/disks.txt", disks},
    {"system/time.txt", time},         {"system/kmsg.txt", kernelLog},
};

} // namespace

int systemReportsCount()
{
    return static_cast<int>(std::size(s_rows));
}

SystemReport systemReport(int index)
{
    SystemReport report = s_rows[index].make();
    report.name = s_rows[index].name;
    return report;
}

} // namespace zeltools
