// The resident memory of a process that logs ten million lines with buffered delivery. Standard
// error goes to /dev/null, and the files, which rotate, to a temporary folder.

#include <zeltools/logging/log.h>
#include <zeltools/logging/logdelivery.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/loglosses.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace
{

qint64 resident_KiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').value(1).toLongLong() * (sysconf(_SC_PAGESIZE) / 1024);
}

// Waits for the writer before the ring is full, so that no line is dropped.
void log(int count)
{
    const QString drink = QStringLiteral("espresso");
    for (int i = 1; i <= count; ++i) {
        LogFormatter(LogLevel::Info).log(Log::Beverage)
            << "Dispensed drink" << i << drink << "after seconds" << 25;
        if (i % 10000 == 0)
            LogManager::instance()->flush(std::chrono::seconds(10));
    }
}

} // namespace

int main()
{
    const QTemporaryDir temporary;
    Path::instance()->init(temporary.filePath(QStringLiteral("opt/bin")), QStringLiteral("default"),
                           QStringLiteral("default"));
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
    LogManager* manager = LogManager::instance();
    LogDelivery delivery;
    delivery.mode = LogDelivery::Buffered;
    delivery.syncInterval =
        std::chrono::milliseconds(100); // so that the first lines include a sync
    manager->setDelivery(delivery);
    LogManager::initialize();
    manager->enableLogToFile(true);
    const bool isBuffered = manager->isBuffered();

    log(1000000); // uses the whole ring several times
    const qint64 before_KiB = resident_KiB();
    log(10000000);
    const qint64 growth_KiB = resident_KiB() - before_KiB;
    const quint64 lost = manager->losses().total;
    std::printf("\n10,000,000 buffered lines: resident memory of %lld KiB, of which the ring is "
                "%lld KiB, grew by %lld KiB; %llu lines were lost\n",
                static_cast<long long>(before_KiB),
                static_cast<long long>(delivery.ringSize_B / 1024),
                static_cast<long long>(growth_KiB), static_cast<unsigned long long>(lost));
    constexpr qint64 noise_KiB = 64;
    const bool isWritten = manager->logContent().contains("Dispensed drink 10000000 ");
    manager->finalizeLogFiles();
    return isBuffered && isWritten && lost == 0 && growth_KiB <= noise_KiB ? 0 : 1;
}
