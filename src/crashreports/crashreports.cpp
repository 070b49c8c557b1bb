#include "crashreports/crashreports.h"

#include "crashreports/alternatestack_p.h"
#include "crashreports/crashcollection_p.h"
#include "crashreports/crashfile_p.h"
#include "crashreports/crashhandler_p.h"
#include "crashreports/crashsections_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logtail.h"

#include <QDir>

#include <cerrno>
#include <cstring>

namespace zeltools
{

namespace
{

// Never destroyed, so that destructors of the application may call the functions.
QString& installedFolder()
{
    static auto* const folder = new QString;
    return *folder;
}

} // namespace

bool CrashReports::install(const QString& folder)
{
    return install(folder, Limits());
}

bool CrashReports::install(const QString& folder, Limits limits)
{
    uninstall();
    QDir().mkpath(folder);
    const QString path = QDir(folder).absolutePath();
    CrashCollection collection(path);
    collection.collect();
    collection.limit(limits);
    const int file = CrashFile::create(path);
    if (file < 0) {
        LogFormatter(LogLevel::Error).log(Log::Global).noquote()
            << QStringLiteral("There will be no crash report; no file can be created in %1: %2")
                   .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    installedFolder() = path;
    LogTail::setEnabled(true);
    prepareThread();
    CrashHandler::install(file);
    return true;
}

void CrashReports::uninstall()
{
    CrashFile::close();
    LogTail::setEnabled(false);
    installedFolder().clear();
}

QString CrashReports::folder()
{
    return installedFolder();
}

void CrashReports::prepareThread()
{
    static thread_local const AlternateStack stack;
    Q_UNUSED(stack)
}

bool CrashReports::addSection(const char* name, Section write)
{
    return CrashSections::add(name, write);
}

QStringList CrashReports::reports(const QString& folder)
{
    return CrashCollection(folder).reports();
}

} // namespace zeltools
