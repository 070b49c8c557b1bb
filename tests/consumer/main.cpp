#include <zeltools/envvar/envvars.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/loginfile.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>
#include <zeltools/system/datetimemanager.h>

#include <QCoreApplication>

// A host may need these as values of its own.
Q_DECLARE_METATYPE(std::chrono::milliseconds)
Q_DECLARE_METATYPE(std::chrono::hours)

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    Path::instance()->init(QLatin1String(argv[1]), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    LogManager::instance()->enableLogToFile(true);
    LogFormatter(LogLevel::Info).log(Log::Payment) << "Inserted" << 50 << "cents";
    const bool isLogged =
        LogManager::instance()->logContent().contains(QLatin1String("Inserted 50 cents"));
    return isLogged && zeltools::envvar::EnvVars::EncryptedConfig() ? 0 : 1;
}
