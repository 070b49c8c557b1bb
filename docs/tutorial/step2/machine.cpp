#include "machine.h"

#include <zeltools/envvar/envvarstore.h>
#include <zeltools/logging/log.h>
#include <zeltools/logging/logformatter.h>
#include <zeltools/logging/logmanager.h>
#include <zeltools/path.h>

#include <stdexcept>

using namespace zeltools::envvar;

//! [switches]
EnvVarInt switches::dose_g("DOSE_G", "Ground coffee for a cup, in grams", General, Visible,
                           nullptr);
//! [switches]

namespace
{

//! [load]
// Returns what is wrong with the file, or an empty text.
QString loadSwitches(const QString& environmentFile)
{
    try {
        EnvVarStore::instance().load(environmentFile);
    } catch (const std::invalid_argument& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}
//! [load]

} // namespace

//! [start]
Machine::Machine(const QString& folder, const QString& environmentFile)
{
    const QString problem = loadSwitches(environmentFile); // before the log reads its switches
    Path::instance()->init(folder + QStringLiteral("/opt/bin"), QStringLiteral("default"),
                           QStringLiteral("default"));
    LogManager::initialize();
    qInstallMessageHandler(LogManager::qtMessageHandler);

    LogManager* const manager = LogManager::instance();
    manager->enableLogToFile(true);
    manager->enableModulesDebuggingFromEnvVars();
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::ApplicationStartEvent).noquote()
        << LogManager::APP_STARTED_MSG;
    if (!problem.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Configuration).noquote() << problem;
}
//! [start]

Machine::~Machine()
{
    qInstallMessageHandler(nullptr);
    LogManager::instance()->finalizeLogFiles();
}
