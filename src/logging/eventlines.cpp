#include "logging/eventlines_p.h"

#include <cerrno>

#include <sys/stat.h>

namespace eventlines
{

QString openForReading(QFile& file)
{
    struct stat status;
    if (stat(QFile::encodeName(file.fileName()).constData(), &status) != 0)
        return errno == ENOENT ? QString() : readError(file.fileName(), qt_error_string(errno));
    if (!S_ISREG(status.st_mode))
        return readError(file.fileName(), QStringLiteral("it is not a file"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return readError(file.fileName(), file.errorString());
    return QString();
}

QString readError(const QString& fileName, const QString& reason)
{
    return QStringLiteral("cannot read %1: %2").arg(fileName, reason);
}

} // namespace eventlines
