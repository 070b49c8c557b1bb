#include "servicesetup.h"

#include "coffeemachine.h"
#include "settableclock.h"
#include "stalledthread.h"
#include "support.h"

#include "dmesg/dmesg.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "path.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

using namespace std::chrono_literals;

ServiceSetup::ServiceSetup() = default;
ServiceSetup::~ServiceSetup() = default;

void ServiceSetup::applicationAvailable() const
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    const QString application = m_folder.filePath("opt/bin");
    QDir().mkpath(application);
    Path::instance()->init(application, "default", "default");
    LogManager::initialize();
    LogManager::instance()->enableLogToFile(true);
}

void ServiceSetup::qmlEngineAvailable(QQmlEngine* engine)
{
    engine->rootContext()->setContextProperty("setup", this);
}

void ServiceSetup::logEvent(const QString& text) const
{
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::ConfigurationEvent).noquote() << text;
}

void ServiceSetup::log(const QString& text) const
{
    LogFormatter(LogLevel::Info).log(Log::Machine).noquote() << text;
}

void ServiceSetup::writeFile(const QString& name, const QString& content) const
{
    QDir().mkpath(QFileInfo(m_folder.filePath(name)).path());
    support::writeFile(m_folder.filePath(name), content.toUtf8());
}

QString ServiceSetup::readFile(const QString& name) const
{
    return QString::fromUtf8(support::readFile(m_folder.filePath(name)));
}

QString ServiceSetup::events() const
{
    return QString::fromUtf8(support::readFile(Path::instance()->eventLogsDir + "zel_events.log"));
}

bool ServiceSetup::exists(const QString& name) const
{
    return QFileInfo::exists(m_folder.filePath(name));
}

bool ServiceSetup::removeFolder(const QString& name) const
{
    return QDir(m_folder.filePath(name)).removeRecursively();
}

void ServiceSetup::startMachine(int number)
{
    std::unique_ptr<CoffeeMachine>& machine = m_machines.at(size_t(number));
    machine = std::make_unique<CoffeeMachine>(5ms);
    machine->holdInBrewing();
    machine->start();
}

void ServiceSetup::removeMachine(int number)
{
    m_machines.at(size_t(number)).reset();
}

void ServiceSetup::stallThread()
{
    auto* const monitor = monitored_threads::Monitor::instance();
    monitor->setThreadsTickPeriod(20ms);
    m_thread = std::make_unique<StalledThread>();
    m_thread->start();
    monitor->startMonitoringPeriod();
}

zeltools::system::DateTimeManager* ServiceSetup::makeClock() const
{
    return new SettableClock; // The QML engine destroys it.
}

bool ServiceSetup::captureKernelLog(const QString& name) const
{
    dmesg::Dmesg* const kernelLog = dmesg::Dmesg::instance();
    kernelLog->setCommand({"tail", {"-n", "+1", "-f", m_folder.filePath(name)}});
    kernelLog->start();
    return kernelLog->isRunning();
}

QUICK_TEST_MAIN_WITH_SETUP(service, ServiceSetup)
