#include "monitoredthreads/log.h"

#include "logging/log.h"
#include "logging/logformatter.h"

namespace monitored_threads::log
{

void debug(const QString& text)
{
    LogFormatter(LogLevel::Debug).log(Log::Global).noquote() << text;
}

void info(const QString& text)
{
    LogFormatter(LogLevel::Info).log(Log::Global).noquote() << text;
}

void warning(const QString& text)
{
    LogFormatter(LogLevel::Warning).log(Log::Global).noquote() << text;
}

} // namespace monitored_threads::log
