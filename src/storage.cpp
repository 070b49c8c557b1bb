#include "storage_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <QFile>

#include <cerrno>

#include <unistd.h>

namespace zeltools
{

void Storage::sync(QFile& file) const
{
    if (file.isOpen()) {
        syncOpenFile(file);
        return;
    }
    if (!file.open(QIODevice::ReadWrite)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(QFile&)"
            << "Failed to open file" << file.fileName() << "for sync";
        return;
    }
    syncOpenFile(file);
    file.close();
}

void Storage::syncOpenFile(QFile& file) const
{
    // The handle does not yet have the data that QFile itself holds back.
    const QString error = file.flush() ? force(file.handle()) : file.errorString();
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(QFile&)"
            << "Failed to sync" << file.fileName() << error;
}

void Storage::sync(int fileDescriptor) const
{
    const QString error = force(fileDescriptor);
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void System::syncFile(int)"
            << "Failed to sync descriptor" << fileDescriptor << error;
}

// Returns an empty text if the data is on the storage, or if there is no storage behind the
// descriptor (a pipe, "/dev/null"), otherwise the reason.
QString Storage::force(int fileDescriptor) const
{
    if (m_isBoard && ::fsync(fileDescriptor) != 0 && errno != EINVAL)
        return qt_error_string();
    return {};
}

void Storage::syncAll() const
{
    if (m_isBoard)
        ::sync();
}

void Storage::dropPageCache(const QString& dropCachesFile) const
{
    if (!m_isBoard)
        return;
    ::sync(); // only clean pages can be dropped
    QFile file(dropCachesFile);
    if (file.open(QIODevice::WriteOnly))
        file.write("1"); // the page cache alone
}

} // namespace zeltools
