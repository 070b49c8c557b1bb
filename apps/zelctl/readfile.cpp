#include "readfile.h"

#include <zeltools/filedescriptor.h>

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

QString reason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

FileContent readAll(int descriptor, const QString& obstacle, qint64 limit)
{
    QByteArray bytes;
    char buffer[65536];
    while (true) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count == 0)
            return {bytes, {}, true};
        if (bytes.size() + count > limit)
            return {{}, obstacle + "it is too large", true};
        if (count > 0)
            bytes.append(buffer, static_cast<int>(count));
        else if (errno != EINTR)
            return {{}, obstacle + reason(), true};
    }
}

} // namespace

QString whyUnreadable(const QString& path)
{
    const QByteArray encodedPath = QFile::encodeName(path);
    struct stat status = {};
    if (stat(encodedPath.constData(), &status) == 0 && !S_ISREG(status.st_mode))
        return "cannot read " + path + ": it is not a file"; // opening a pipe would wait
    return access(encodedPath.constData(), R_OK) == 0 ? QString()
                                                      : "cannot read " + path + ": " + reason();
}

FileContent readFile(const QString& path, qint64 limit)
{
    const QString obstacle = "cannot read " + path + ": ";
    const zeltools::FileDescriptor file(
        open(QFile::encodeName(path).constData(),
             O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK)); // a pipe must not wait
    if (file < 0)
        return {{}, obstacle + reason(), errno != ENOENT};
    struct stat status = {};
    if (fstat(file, &status) == 0 && !S_ISREG(status.st_mode))
        return {{}, obstacle + "it is not a file", true};
    if (status.st_size > limit)
        return {{}, obstacle + "it is too large", true};
    return readAll(file, obstacle, limit);
}

FileContent readStandardInput(qint64 limit)
{
    return readAll(STDIN_FILENO, "cannot read the standard input: ", limit);
}
