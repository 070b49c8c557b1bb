// Does the same as benchmarks/spdloghost.cpp, with this library: logging FOLDER

#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <QCoreApplication>
#include <QDir>

//! [module]
LogModule roaster(QStringLiteral("Roaster"), true); // ZEL_DEBUG_ROASTER=1 switches it on, too
//! [module]

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    //! [host]
    Path::instance()->init(QDir::currentPath() + QStringLiteral("/software/host"),
                           QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize(); // 1 MiB and one predecessor
    LogManager::instance()->enableLogToFile(true);
    LogManager::instance()->enableModuleDebugging(roaster);

    LogFormatter(LogLevel::Info).log(roaster) << "Roasted" << 250 << "g at" << 210.5 << "degrees";
    LogFormatter(LogLevel::Debug).log(roaster) << "Drum turns" << 54 << "times a minute";
    LogFormatter(LogLevel::Warning).log(roaster).noquote() << "Beans:" << QStringLiteral("none");

    LogManager::instance()->finalizeLogFiles();
    //! [host]
}
