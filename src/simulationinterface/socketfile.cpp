#include "simulationinterface/socketfile_p.h"

#include "filedescriptor.h"

#include <QFileInfo>
#include <QThread>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace zeltools::simulationinterface
{

namespace
{

constexpr int maximumWaiting = 50; // connections, as QTcpServer has it

int makeSocket(int type)
{
    return ::socket(AF_UNIX, type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

// The lock ends with the descriptor. Someone else may hold it for good.
bool lockFolder(int folder)
{
    constexpr int attempts = 100;
    for (int i = 0; ::flock(folder, LOCK_EX | LOCK_NB) != 0; ++i) {
        if (errno != EWOULDBLOCK || i == attempts)
            return false;
        QThread::msleep(10);
    }
    return true;
}

} // namespace

SocketFile::SocketFile(const UnixSocketPath& path)
    : m_path(path)
{
}

SocketFile::~SocketFile()
{
    struct stat file
    {
    };
    if (m_inode != 0 && ::lstat(m_path.encoded(), &file) == 0 && file.st_ino == m_inode &&
        file.st_dev == m_device)
        ::unlink(m_path.encoded());
}

int SocketFile::listen()
{
    const QByteArray folderPath = QFile::encodeName(QFileInfo(m_path.text()).path());
    const FileDescriptor folder(::open(folderPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Otherwise two processes could find the same abandoned file, and the second one would remove
    // the new file of the first.
    if (folder < 0 || !lockFolder(folder))
        return -1;
    const int socket = makeSocket(SOCK_STREAM);
    if (socket >= 0 && bindTo(socket) && ::listen(socket, maximumWaiting) == 0)
        return socket;
    const int error = errno;
    if (socket >= 0)
        ::close(socket);
    errno = error;
    return -1;
}

bool SocketFile::bindTo(int socket)
{
    // bind() gives the mode of the socket to the file, which nobody else can open at any time.
    if (::fchmod(socket, S_IRUSR | S_IWUSR) != 0)
        return false;
    if (!m_path.bind(socket)) {
        if (errno != EADDRINUSE)
            return false;
        if (!isAbandoned()) {
            errno = EADDRINUSE;
            return false;
        }
        if (::unlink(m_path.encoded()) != 0 || !m_path.bind(socket))
            return false;
    }
    struct stat file
    {
    };
    if (::lstat(m_path.encoded(), &file) == 0) {
        m_device = file.st_dev;
        m_inode = file.st_ino;
    }
    return true;
}

// A datagram socket cannot connect to a stream socket, but the kernel first looks for a process
// that holds the file, so that the listener does not see an attempt.
bool SocketFile::isAbandoned() const
{
    struct stat file
    {
    };
    if (::lstat(m_path.encoded(), &file) != 0 || !S_ISSOCK(file.st_mode))
        return false;
    const FileDescriptor probe(makeSocket(SOCK_DGRAM));
    return probe >= 0 && !m_path.connect(probe) && errno == ECONNREFUSED;
}

} // namespace zeltools::simulationinterface
