// The code of docs/diagnostics.md: the kernel log, crash reports, and the watch over threads.

//! [kernel]
#include <zeltools/dmesg/dmesg.h>
#include <zeltools/monitoredthreads/monitor.h>

void followKernelLog()
{
    auto* const kernelLog = dmesg::Dmesg::instance();
    kernelLog->setConfig({dmesg::Dmesg::makeLogFileConfig(1, 5, true), true});
    kernelLog->setRestarting(true);
    kernelLog->setSource(dmesg::Dmesg::Automatic); // /dev/kmsg where script or dmesg is missing
    QObject::connect(kernelLog, &dmesg::Dmesg::newLine, monitored_threads::Monitor::instance(),
                     &monitored_threads::Monitor::onDmesgNewLine);
    kernelLog->start(); // on the board only
}

QString newestKernelLines()
{
    return dmesg::Dmesg::instance()->linesToString(100, dmesg::Dmesg::NewerFirst);
}
//! [kernel]

//! [crashes]
#include <zeltools/crashreports/crashreports.h>
#include <zeltools/crashreports/crashreportwriter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/windowstools.h>

#include <atomic>

std::atomic<int> waterLevel = 17;

void startLogging(const QString& applicationFolder)
{
    Path::instance()->init(applicationFolder, QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize();
    WindowsTools::installSignalHandlers(); // prints the call stack of a crash; first, if at all
    zeltools::CrashReports::install(Path::instance()->debugLogsDir + QStringLiteral("crashes"));
    zeltools::CrashReports::addSection("tank", [](zeltools::CrashReportWriter& writer) {
        writer.text("water ").number(waterLevel).endLine();
    });
}
//! [crashes]

//! [stalls]
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/monitoredthreads/mainthreadmonitoredtimer.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/monitoredthreads/monitoreditem.h>
#include <zeltools/monitoredthreads/monitoredqthread.h>

#include <QCoreApplication>

using namespace monitored_threads;

int runWatched()
{
    Monitor* const monitor = Monitor::instance();
    const MainThreadMonitoredTimer mainThread;                         // ticks from the event loop
    MonitoredQThread grinder(QStringLiteral("Grinder"), AutoTick::On); // ticks from its event loop
    MonitoredItem payment(nullptr, QStringLiteral("Payment"));         // ticked from any thread
    grinder.start();
    payment.tick();

    const auto report = [](const QString& name, std::chrono::milliseconds,
                           const QStringList& calls) {
        LogFormatter(LogLevel::Error).log(Log::Machine) << name << "hangs in" << calls.value(0);
    };
    QObject::connect(monitor, &Monitor::threadStalled, monitor, report,
                     Qt::DirectConnection); // also when the main thread has stalled
    monitor->registerKernelFailureStrings(
        {QStringLiteral("I/O error"), QStringLiteral("oom-killer")});
    monitor->startMonitoringPeriod(); // just before exec()
    const int status = QCoreApplication::exec();
    grinder.quit();
    grinder.wait();
    return status;
}
//! [stalls]

#include <QDir>
#include <QTextStream>
#include <QTimer>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    startLogging(QDir::currentPath() + QStringLiteral("/software/host"));
    followKernelLog();
    QTimer::singleShot(100, &application, [&application] {
        QTextStream(stdout) << newestKernelLines() << '\n'
                            << "Reports of crashes: " << zeltools::CrashReports::folder() << '\n'
                            << Monitor::instance()->registeredItemsStatusString(
                                   QStringLiteral("; "))
                            << Qt::endl;
        application.quit();
    });
    return runWatched();
}
