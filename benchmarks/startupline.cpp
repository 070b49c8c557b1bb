// A process of bench_startup: a host that starts the log manager with the paths of the folder that
// its argument names, and logs one line.

#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

int main(int, char** argv)
{
    Path::instance()->init(QString::fromUtf8(argv[1]) + QLatin1String("/opt/bin"),
                           QStringLiteral("default"), QStringLiteral("default"));
    LogManager::initialize();
    LogFormatter(LogLevel::Info).log(Log::Global) << "One line";
}
