#include "demomachine.h"

#include "samplelines.h"
#include "switches.h"

#include <zeltools/crashreports/crashreports.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/path.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

using monitored_threads::AutoTick;
using monitored_threads::Monitor;

namespace
{

// A file of the resources, unless the machine has its own from an earlier run.
void provide(const QString& resource, const QString& path)
{
    QDir().mkpath(QFileInfo(path).path());
    if (QFile::copy(QLatin1String(":/service/") + resource, path))
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
}

} // namespace

DemoMachine::DemoMachine(const QString& folder, std::chrono::milliseconds pace)
    : m_folder(folder + QLatin1Char('/'))
    , m_boiler(QStringLiteral("Boiler"), AutoTick::On)
    , m_grinder(QStringLiteral("Grinder"), AutoTick::On)
{
    Path::instance()->init(m_folder + QLatin1String("opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    provide(QStringLiteral("environment"), Path::instance()->environmentFile);
    provide(QStringLiteral("crash.report"),
            crashFolder() + QLatin1String("/crash-20240229-221512-812.report"));
    QDir().mkpath(bundleFolder());
    QTextStream errors(stderr);
    loadSwitches(Path::instance()->environmentFile, errors);
    startLogging();
    linkSwitches();
    zeltools::CrashReports::install(crashFolder());
    startWatch();
    m_coffeeMachine = std::make_unique<CoffeeMachine>(pace);
}

DemoMachine::~DemoMachine()
{
    m_coffeeMachine.reset();
    for (QThread* thread : {&m_boiler, &m_grinder}) {
        thread->quit();
        thread->wait();
    }
    LogManager::instance()->finalizeLogFiles();
}

void DemoMachine::startLogging()
{
    LogManager::initialize();
    qInstallMessageHandler(LogManager::qtMessageHandler);
    LogManager* const manager = LogManager::instance();
    manager->enableLogToFile(true);
    manager->enableModulesDebuggingFromEnvVars();
    writeSampleLines();
}

void DemoMachine::startWatch()
{
    m_boiler.start();
    m_grinder.start();
    m_mainThread = std::make_unique<monitored_threads::MainThreadMonitoredTimer>();
    Monitor::instance()->startMonitoringPeriod();
}
