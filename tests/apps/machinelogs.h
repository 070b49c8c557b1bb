#pragma once

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logmanager.h"
#include "support.h"

/// The log folders of a machine, which the library writes.
struct MachineLogs
{
    MachineLogs()
    {
        LogManager::initialize();
        LogManager::instance()->enableLogToFile(true);
        LogManager::instance()->enableModuleDebugging(Log::GrinderRegulation);
    }
    static void write(LogLevel::Level level, const QString& text)
    {
        LogFormatter(level)
                .log(Log::GrinderRegulation)
                .logEvent(LogEventModule::MenuAccess)
                .noquote()
            << text;
    }
    /// The folder above the log folders.
    static QString folder() { return QDir::cleanPath(Path::instance()->debugLogsDir + "/.."); }

    support::StandardErrorCapture standardError;
    support::TemporaryLayout layout;
};
