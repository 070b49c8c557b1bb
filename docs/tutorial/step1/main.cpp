// Step 1: the folders of the machine and its log. Run it with a folder: step1 /tmp/machine

//! [includes]
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>
//! [includes]

//! [main]
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::arguments().value(1);
    if (folder.isEmpty())
        qFatal("usage: %s FOLDER", argv[0]);

    Path::instance()->init(folder + QStringLiteral("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    LogManager* const manager = LogManager::instance();
    manager->enableLogToFile(true);

    const QString drink = QStringLiteral("coffee");
    LogFormatter(LogLevel::Info).log(Log::Beverage) << "The machine is ready for a" << drink;
    LogFormatter(LogLevel::Warning).log(Log::Beverage) << "Water:" << 12.5 << "%";
    LogFormatter(LogLevel::Debug).log(Log::Beverage) << "Nobody sees this line";

    manager->finalizeLogFiles();
}
//! [main]
