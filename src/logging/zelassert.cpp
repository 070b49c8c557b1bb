#include "logging/zelassert.h"

#include "logging/fatalerror.h"
#include "logging/log.h"
#include "logging/logformatter.h"

ZelAssertionHandler zelAssertionHandler = defaultZelAssertionHandler;

namespace
{

void report(const char* title, const char* where, const char* what, const char* file, int line)
{
    LogFormatter(LogLevel::Error).log(Log::Global)
        << title << what << "(" << where << "), file" << file << ", line" << line;
    zelAssertionHandler(where, what, file, line);
}

} // namespace

void defaultZelAssertionHandler(const char*, const char*, const char*, int) {}

void installZelAssertionHandler(ZelAssertionHandler handler)
{
    zelAssertionHandler = handler;
}

void printAssertMsg(const char* where, const char* what, const char* file, int line)
{
    report("ASSERT failure:", where, what, file, line);
}

void printAssertMsg(const char* where, const QString& what, const char* file, int line)
{
    printAssertMsg(where, what.toLocal8Bit().constData(), file, line);
}

void printReleaseAssertMsg(const char* where, const char* what, const char* file, int line)
{
    report("RELEASE ASSERT failure:", where, what, file, line);
}

void printReleaseAssertMsg(const char* where, const QString& what, const char* file, int line)
{
    printReleaseAssertMsg(where, what.toLocal8Bit().constData(), file, line);
}

void printFatalAssertMsg(const char* where, const char* what, const char* file, int line)
{
    printReleaseAssertMsg(where, what, file, line);
    const QString reason = QStringLiteral("RELEASE ASSERT failure: %1 (%2), file %3, line %4")
                               .arg(QString::fromLocal8Bit(what), QString::fromLocal8Bit(where),
                                    QString::fromLocal8Bit(file), QString::number(line));
    zeltools::announceFatalError(reason.toUtf8().constData(), zeltools::FatalEnd::Exit);
}

void printWarningMsg(const char* message, const char* file, int line)
{
    LogFormatter(LogLevel::Warning).log(Log::Global)
        << message << ", file" << file << ", line" << line;
}
