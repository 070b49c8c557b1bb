#include "startmeter.h"

#include <QCoreApplication>
#include <QFile>
#include <QQuickWindow>
#include <QTextStream>

#include <time.h>
#include <unistd.h>

namespace
{

constexpr qint64 s_second_ms = 1000;

// By the clock of the kernel that counts from its start; a tick is 10 ms.
qint64 processStart_ms()
{
    constexpr int startField = 19; // after the name, which may have blanks
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = file.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return fields.value(startField).toLongLong() * s_second_ms / sysconf(_SC_CLK_TCK);
}

qint64 now_ms()
{
    constexpr qint64 millisecond_ns = 1000000;
    timespec now;
    clock_gettime(CLOCK_BOOTTIME, &now);
    return now.tv_sec * s_second_ms + now.tv_nsec / millisecond_ns;
}

} // namespace

StartMeter::StartMeter(QQuickWindow* window)
{
    // A frame is swapped in the thread that renders.
    connect(window, &QQuickWindow::frameSwapped, this, &StartMeter::report, Qt::QueuedConnection);
}

void StartMeter::report()
{
    sender()->disconnect(this);
    QTextStream(stdout) << now_ms() - processStart_ms() << " ms\n";
    QCoreApplication::quit();
}
