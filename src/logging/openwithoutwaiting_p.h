#pragma once

#include <QFile>
#include <QString>

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Whether a file of this mode can be opened and written without a peer: a regular file or a
/// character device ("/dev/null"), but neither a FIFO nor a socket, a block device or a folder.
inline bool needsNoPeer(mode_t mode)
{
    return S_ISREG(mode) || S_ISCHR(mode);
}

/// Calls open(2) without ever waiting, for example for the other end of a FIFO. Returns the
/// descriptor, or -1 with errno if the file cannot be opened or needs a peer.
inline int openWithoutWaiting(const QString& path, int flags)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), flags | O_NONBLOCK | O_CLOEXEC, 0666);
    struct stat file;
    if (descriptor < 0 || (fstat(descriptor, &file) == 0 && needsNoPeer(file.st_mode)))
        return descriptor;
    ::close(descriptor);
    errno = ENXIO;
    return -1;
}
