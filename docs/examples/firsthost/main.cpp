#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Path::instance()->init(QCoreApplication::applicationDirPath(), QStringLiteral("default"),
                           QStringLiteral("default")); // the machine's folders
    LogManager::initialize();                          // its five log files
    LogManager* const manager = LogManager::instance();
    manager->enableLogToFile(true);
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::ApplicationStartEvent).noquote()
        << LogManager::APP_STARTED_MSG;
    LogFormatter(LogLevel::Info).log(Log::Payment) << "Inserted" << 50 << "cents";
    manager->finalizeLogFiles();
}
