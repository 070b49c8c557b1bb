#include "diagnosis.h"

#include <zeltools/dmesg/dmesg.h>
#include <zeltools/platform.h>
#include <zeltools/windowstools.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QRegularExpression>

#include <functional>

using dmesg::Dmesg;
using dmesg::DmesgProcess;

namespace
{

const char* const s_kernelLog = "[Sat Mar  2 08:29:58 2024] can0: bitrate 125000\n"
                                "[Sat Mar  2 08:29:59 2024] usb 1-1: coin validator found\n"
                                "[Sat Mar  2 08:30:00 2024] mmc0: card inserted\n";

void waitFor(const std::function<bool()>& hasCome)
{
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!hasCome() && !deadline.hasExpired())
        QThread::msleep(1);
}

} // namespace

bool showKernelLog(QTextStream& out)
{
    Dmesg* const capture = Dmesg::instance();
    capture->setConfig({Dmesg::makeLogFileConfig(1, 5, false), true, 120});
    const System::Command command{QStringLiteral("printf"),
                                  {QStringLiteral("%s"), QString::fromLatin1(s_kernelLog)}};
    const auto hasCome = [capture] {
        return capture->linesToString(1, Dmesg::NewerFirst).endsWith(QLatin1String("inserted"));
    };
    if constexpr (platform::isBoard) {
        capture->setCommand(command);
        capture->start();
        waitFor(hasCome);
    } else { // The desktop build does not start the capture itself.
        DmesgProcess process;
        QObject::connect(&process, &DmesgProcess::newLines, capture, &Dmesg::onProcessNewLines,
                         Qt::DirectConnection);
        process.setCommand(command);
        process.start();
        waitFor(hasCome);
    }
    out << "\nThe end of the kernel log, newest first:\n"
        << capture->linesToString(2, Dmesg::NewerFirst) << '\n';
    QFile file(capture->logFileName(0));
    const bool isWhole = file.open(QIODevice::ReadOnly) && file.readAll() == s_kernelLog;
    return isWhole && capture->lines().size() == 2; // The first line was dropped.
}

bool showCallStack(QTextStream& out)
{
    const QStringList calls = WindowsTools::callStack();
    out << "\nThe calls that led here:\n";
    for (const QString& call : calls)
        out << "  " << call << '\n';
    return calls.value(0).startsWith(QLatin1String("showCallStack(QTextStream&)+0x")) &&
           !calls.filter(QRegularExpression(QStringLiteral("^main\\+0x"))).isEmpty();
}
