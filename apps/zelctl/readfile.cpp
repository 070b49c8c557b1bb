#include "readfile.h"

#include "command.h"
#include "words.h"
#include <zeltools/filedescriptor.h>

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr auto s_isTooLarge = QT_TRANSLATE_NOOP("zelctl", "it is too large");

QString cannotRead(const QString& path, const QString& reason)
{
    return Zelctl::tr("cannot read %1: %2").arg(path, reason);
}

QString cannotReadThis(const QString& path, mode_t mode)
{
    return cannotRead(path, S_ISDIR(mode) ? Zelctl::tr("it is a folder, not a file")
                                          : Zelctl::tr("it is not a file"));
}

FileContent readAll(int descriptor, const QString& path, qint64 limit)
{
    QByteArray bytes;
    char buffer[65536];
    while (true) {
        const ssize_t count = read(descriptor, buffer, sizeof buffer);
        if (count == 0)
            return {bytes, {}, true};
        if (bytes.size() + count > limit)
            return {{}, cannotRead(path, Zelctl::tr(s_isTooLarge)), true};
        if (count > 0)
            bytes.append(buffer, static_cast<int>(count));
        else if (errno != EINTR)
            return {{}, cannotRead(path, systemError()), true};
    }
}

} // namespace

QString whyUnreadable(const QString& path)
{
    const QByteArray encodedPath = QFile::encodeName(path);
    struct stat status = {};
    if (stat(encodedPath.constData(), &status) == 0 && !S_ISREG(status.st_mode))
        return cannotReadThis(path, status.st_mode); // opening a pipe would wait
    return access(encodedPath.constData(), R_OK) == 0 ? QString() : cannotRead(path, systemError());
}

int openFile(const QString& path, QString& error)
{
    const int file = open(QFile::encodeName(path).constData(),
                          O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK); // a pipe must not wait
    struct stat status = {};
    if (file < 0) {
        error = cannotRead(path, systemError());
    } else if (fstat(file, &status) == 0 && !S_ISREG(status.st_mode)) {
        close(file);
        error = cannotReadThis(path, status.st_mode);
        errno = EINVAL;
        return -1;
    }
    return file;
}

FileContent readFile(const QString& path, qint64 limit)
{
    QString error;
    const zeltools::FileDescriptor file(openFile(path, error));
    if (file < 0)
        return {{}, error, errno != ENOENT};
    struct stat status = {};
    if (fstat(file, &status) == 0 && status.st_size > limit)
        return {{}, cannotRead(path, Zelctl::tr(s_isTooLarge)), true};
    return readAll(file, path, limit);
}

FileContent readStandardInput(qint64 limit)
{
    return readAll(STDIN_FILENO, Zelctl::tr("the standard input"), limit);
}
