// The code of docs/time.md: a clock for the screens, and network time.

//! [clock]
#include <zeltools/system/datetimemanager.h>
#include <zeltools/system/ntp.h>
#include <zeltools/system/servicemanager.h>

#include <QCoreApplication>
#include <QHostAddress>
#include <QTextStream>

using namespace zeltools::system;

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    DateTimeManager machineClock;
    QObject::connect(&machineClock, &DateTimeManager::dateTimeChanged, [&machineClock] {
        QTextStream(stdout) << "The clock shows "
                            << machineClock.currentDateTime().toString(Qt::ISODate) << Qt::endl;
    }); // at each full minute, and when the clock is set

    const QHostAddress server(QStringLiteral("192.0.2.1")); // the machine's own time server
    ServiceManager::instance().add(std::make_unique<service::Ntp>(server));
    ServiceManager::instance().enable(Service::Ntp, true);
    //! [clock]
    QMetaObject::invokeMethod(&machineClock, &DateTimeManager::dateTimeChanged,
                              Qt::QueuedConnection);
    QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
    //! [clock]
    return QCoreApplication::exec();
}
//! [clock]
