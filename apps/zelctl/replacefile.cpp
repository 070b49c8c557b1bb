#include "replacefile.h"

#include "logging/writewhole_p.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor() { close(); }
    Q_DISABLE_COPY(Descriptor)

    operator int() const { return m_descriptor; }
    bool close() { return m_descriptor < 0 || ::close(std::exchange(m_descriptor, -1)) == 0; }

private:
    int m_descriptor;
};

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

// Everybody who may open a folder may lock it, and may forget to let it go.
bool lock(int descriptor)
{
    const QDeadlineTimer deadline(10000);
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired())
            return false;
        usleep(10000);
    }
    return true;
}

constexpr int endingSignals[]{SIGHUP, SIGINT, SIGTERM};

/// Puts off the signals that end a run.
class SignalHold
{
public:
    SignalHold()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int number : endingSignals)
            sigaddset(&held, number);
        pthread_sigmask(SIG_BLOCK, &held, &m_before);
    }
    ~SignalHold() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Q_DISABLE_COPY(SignalHold)

private:
    sigset_t m_before;
};

/// Removes a file of a folder when a signal ends the process while the object lives.
class SignalCleaner
{
public:
    SignalCleaner(int folder, const QByteArray& name)
    {
        s_folder = folder;
        qstrncpy(s_name, name.constData(), sizeof s_name);
        change(SIG_DFL, removeAndEnd);
    }
    ~SignalCleaner() { change(removeAndEnd, SIG_DFL); }
    Q_DISABLE_COPY(SignalCleaner)

private:
    // Signals that are ignored stay so.
    static void change(void (*from)(int), void (*to)(int))
    {
        for (const int number : endingSignals) {
            const auto handler = signal(number, to);
            if (handler != from)
                signal(number, handler);
        }
    }
    static void removeAndEnd(int number)
    {
        unlinkat(s_folder, s_name, 0);
        signal(number, SIG_DFL);
        raise(number);
    }

    static inline int s_folder = -1;
    static inline char s_name[NAME_MAX + 1];
};

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
    const Descriptor file(
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

ReplaceFile::ReplaceFile(const QString& path, Purpose purpose)
    : m_purpose(purpose)
{
    const QFileInfo given(path);
    const QString canonical = given.canonicalFilePath(); // empty when there is no file
    const QFileInfo file(canonical.isEmpty() ? given.absoluteFilePath() : canonical);
    m_folderPath = file.path();
    m_name = QFile::encodeName(file.fileName());
    m_temporaryName = '.' + m_name + ".zelctl";
    if (canonical.isEmpty() && given.isSymLink()) {
        m_error = "cannot replace " + path + ": the link points to nothing";
        return;
    }
    if (file.exists() && !file.isFile()) {
        m_error = "cannot replace " + path + ": it is not a file";
        return;
    }
    m_folder =
        open(QFile::encodeName(m_folderPath).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (check(m_folder >= 0, "open", {}) && purpose == Edit)
        check(lock(m_folder), "lock", {});
}

ReplaceFile::~ReplaceFile()
{
    if (m_folder >= 0)
        close(m_folder);
}

bool ReplaceFile::replace(const QByteArray& content)
{
    return replace([&](int file) {
        const auto size = static_cast<size_t>(content.size());
        check(writeWhole(file, content.constData(), size) == content.size(), "write",
              m_temporaryName);
        return m_error;
    });
}

bool ReplaceFile::replace(const Writer& write)
{
    struct stat old = {};
    const bool exists =
        m_error.isEmpty() && fstatat(m_folder, m_name.constData(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (!m_error.isEmpty() || !check(exists || errno == ENOENT, "read", m_name))
        return false;
    std::optional<SignalHold> hold(std::in_place); // no file is there that nobody would remove
    // Nobody may read it before it has the mode of the old file.
    Descriptor file(createTemporary(exists));
    if (file < 0)
        return false;
    const SignalCleaner cleaner(m_folder, m_temporaryName);
    hold.reset();
    if (writeTemporary(file, exists ? &old : nullptr, write) &&
        check(renameat(m_folder, m_temporaryName.constData(), m_folder, m_name.constData()) == 0,
              "replace", m_name))
        return check(file.close(), "close", m_name) && syncFolder();
    unlinkat(m_folder, m_temporaryName.constData(), 0);
    return false;
}

bool ReplaceFile::sync()
{
    if (!m_error.isEmpty())
        return false;
    const Descriptor file(openat(m_folder, m_name.constData(), O_RDONLY | O_CLOEXEC));
    return check(file >= 0 && fsync(file) == 0, "sync", m_name) && syncFolder();
}

bool ReplaceFile::wouldLose(const QString& path) const
{
    struct stat file = {};
    return stat(QFile::encodeName(path).constData(), &file) == 0 &&
           (isHolding(m_name, file) || isHolding(m_temporaryName, file));
}

bool ReplaceFile::isHolding(const QByteArray& name, const struct stat& file) const
{
    struct stat held = {};
    return fstatat(m_folder, name.constData(), &held, 0) == 0 && held.st_dev == file.st_dev &&
           held.st_ino == file.st_ino;
}

// Made anew each time: what stands under that name may be a link to something else. The process
// that writes it holds a lock on it.
bool ReplaceFile::removeStaleTemporary()
{
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const Descriptor stale(openat(m_folder, m_temporaryName.constData(), flags));
    if (stale >= 0 && flock(stale, LOCK_EX | LOCK_NB) != 0) {
        m_error = "another process is writing " + pathOf(m_name);
        return false;
    }
    const bool isFree = unlinkat(m_folder, m_temporaryName.constData(), 0) == 0 || errno == ENOENT;
    return check(isFree, "remove", m_temporaryName);
}

// A descriptor of the new file, locked; -1 when there is none. Under the lock on the folder, so
// that no other process takes the file for a stale one before it has its own.
int ReplaceFile::createTemporary(bool isPrivate)
{
    if (m_purpose == Overwrite && !check(lock(m_folder), "lock", {}))
        return -1;
    int file = -1;
    if (removeStaleTemporary()) {
        file =
            openat(m_folder, m_temporaryName.constData(),
                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, isPrivate ? 0600 : 0644);
        if (check(file >= 0, "create", m_temporaryName))
            flock(file, LOCK_EX | LOCK_NB); // cannot fail: nobody else has it
    }
    if (m_purpose == Overwrite)
        flock(m_folder, LOCK_UN);
    return file;
}

bool ReplaceFile::writeTemporary(int file, const struct stat* old, const Writer& write)
{
    // Owner, content and mode in this order: each takes bits off the mode that was there before.
    if (old != nullptr &&
        !check(fchown(file, old->st_uid, old->st_gid) == 0, "keep the owner of", m_name))
        return false;
    m_error = write(file);
    if (!m_error.isEmpty())
        return false;
    return (old == nullptr ||
            check(fchmod(file, old->st_mode & 07777) == 0, "keep the mode of", m_name)) &&
           check(fsync(file) == 0, "sync", m_temporaryName);
}

bool ReplaceFile::syncFolder()
{
    // Until then a power cut may bring the old name back.
    return check(fsync(m_folder) == 0, "sync the folder of", m_name);
}

bool ReplaceFile::check(bool isDone, const char* action, const QByteArray& name)
{
    if (!isDone && m_error.isEmpty()) {
        const QString why = reason(); // before errno can change
        m_error = QStringLiteral("cannot %1 %2: %3").arg(action, pathOf(name), why);
    }
    return isDone;
}

QString ReplaceFile::pathOf(const QByteArray& name) const
{
    return name.isEmpty() ? m_folderPath : m_folderPath + '/' + QFile::decodeName(name);
}
