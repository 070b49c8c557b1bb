#include "freezablestorage.h"

#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <linux/fs.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int s_longestFreeze_ms = 5000;
constexpr char s_frozen = 'f', s_thawed = 't';

bool run(const char* program, const QStringList& arguments)
{
    return QProcess::execute(QLatin1String(program), arguments) == 0;
}

bool enterMountNamespace()
{
    return geteuid() == 0 && unshare(CLONE_NEWNS) == 0 &&
           mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// The guard has a session of its own, so that what ends the group of the process spares it.
[[noreturn]] void guard(int socket, int descriptor)
{
    setsid();
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        signal(number, SIG_IGN);
    pollfd events{socket, POLLIN, 0};
    for (char event = s_thawed;;) {
        const bool isFrozen = event == s_frozen;
        const bool isInTime = poll(&events, 1, isFrozen ? s_longestFreeze_ms : -1) != 0;
        const ssize_t size = isInTime ? read(socket, &event, 1) : 0;
        if (size == 1)
            continue;
        ioctl(descriptor, FITHAW, 0);
        if (isInTime) // The other end is closed.
            _exit(0);
        event = s_thawed;
    }
}

} // namespace

FreezableStorage::FreezableStorage(const QString& folder)
    : m_folder(QFile::encodeName(folder))
{
    if (!enterMountNamespace() || !mountImage())
        return;
    m_descriptor = open(m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (!startGuard()) {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

FreezableStorage::~FreezableStorage()
{
    if (!isMounted())
        return;
    thaw();
    close(m_guardSocket);
    waitpid(m_guardProcess, nullptr, 0);
    close(m_descriptor);
    umount2(m_folder.constData(), MNT_DETACH);
}

bool FreezableStorage::mountImage()
{
    const QString folder = QFile::decodeName(m_folder);
    QFile image(folder + QLatin1String(".image"));
    constexpr qint64 size_B = 64LL * 1024 * 1024;
    const bool isMounted =
        image.open(QIODevice::WriteOnly) && image.resize(size_B) &&
        run("mkfs.ext4", {QStringLiteral("-q"), image.fileName()}) &&
        run("mount", {QStringLiteral("-o"), QStringLiteral("loop"), image.fileName(), folder});
    image.remove(); // The loop device keeps the file until it is unmounted.
    return isMounted;
}

bool FreezableStorage::startGuard()
{
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0)
        return false;
    m_guardProcess = fork();
    if (m_guardProcess == 0) {
        close(sockets[0]);
        guard(sockets[1], m_descriptor);
    }
    m_guardSocket = sockets[0];
    close(sockets[1]);
    return m_guardProcess > 0;
}

bool FreezableStorage::tellGuard(char event)
{
    return send(m_guardSocket, &event, 1, MSG_NOSIGNAL) == 1;
}

bool FreezableStorage::freeze()
{
    return isMounted() && tellGuard(s_frozen) && ioctl(m_descriptor, FIFREEZE, 0) == 0;
}

bool FreezableStorage::thaw()
{
    const bool isThawed = isMounted() && ioctl(m_descriptor, FITHAW, 0) == 0;
    return tellGuard(s_thawed) && isThawed;
}
