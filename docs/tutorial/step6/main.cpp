// Step 6: a watched thread, and a report of a crash. Run it with a fault, and then without one:
// step6 /tmp/machine step2/environment Dry
// step6 /tmp/machine step2/environment

#include "boiler.h"
#include "machine.h"

#include <zeltools/crashreports/crashreports.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/monitoredthreads/mainthreadmonitoredtimer.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/path.h>

#include <QCoreApplication>
#include <QMetaEnum>

using namespace monitored_threads;
using namespace std::chrono_literals;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int fault =
        QMetaEnum::fromType<Boiler::Fault>().keyToValue(qPrintable(arguments.value(3)));
    const Machine machine(arguments.value(1), arguments.value(2));

    //! [run]
    zeltools::CrashReports::install(Path::instance()->debugLogsDir + QStringLiteral("crashes"));
    Monitor* const monitor = Monitor::instance();
    monitor->setThreadsTickPeriod(500ms); // late after two of them, stalled after five
    const MainThreadMonitoredTimer mainThread;
    Boiler boiler(fault < 0 ? Boiler::NoFault : Boiler::Fault(fault));
    QObject::connect(&boiler, &Boiler::hot, &application, &QCoreApplication::quit);
    boiler.start();
    monitor->startMonitoringPeriod();
    QCoreApplication::exec();
    //! [run]
    LogFormatter(LogLevel::Info).log(Log::Hardware) << "The boiler is hot";
}
