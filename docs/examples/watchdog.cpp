// The code of docs/watchdog.md: feeds the watchdog while no thread of the application has stalled.

//! [watchdog]
#include <zeltools/monitoredthreads/mainthreadmonitoredtimer.h>
#include <zeltools/monitoredthreads/watchdog.h>

#include <QCoreApplication>
//! [watchdog]
#include <QTextStream>
#include <QTimer>
//! [watchdog]

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const monitored_threads::MainThreadMonitoredTimer mainThreadTimer;
    monitored_threads::Watchdog watchdog;
    // Here the application opens the screens, the devices and everything that must work.
    monitored_threads::Monitor::instance()->startMonitoringPeriod();
    watchdog.start();
    //! [watchdog]
    QTimer::singleShot(0, &application, [&application] {
        auto* const monitor = monitored_threads::Monitor::instance();
        QTextStream(stdout) << "Stalled: " << monitor->hasStalledThread() << Qt::endl;
        application.quit();
    });
    //! [watchdog]
    const int status = QCoreApplication::exec();
    watchdog.stop();
    return status;
}
//! [watchdog]
