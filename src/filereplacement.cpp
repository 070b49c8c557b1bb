#include "filereplacement.h"

#include "writewhole.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

class Descriptor
{
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Q_DISABLE_COPY(Descriptor)

    operator int() const { return m_descriptor; }

private:
    int m_descriptor;
};

bool isSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Everybody who may open a folder may lock it, and may forget to let it go.
bool lockPatiently(int descriptor)
{
    const QDeadlineTimer deadline(10000);
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired())
            return false;
        usleep(10000);
    }
    return true;
}

bool isNamed(int file, int folder, const char* name)
{
    struct stat held = {};
    struct stat named = {};
    return fstat(file, &held) == 0 && fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           isSame(held, named);
}

/// False with `errno` when there is a file that cannot be removed: EWOULDBLOCK for one in use.
bool removeStale(int folder, const char* name)
{
    const Descriptor stale(openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (stale < 0)
        return errno == ENOENT;
    if (flock(stale, LOCK_EX | LOCK_NB) != 0)
        return false;
    return !isNamed(stale, folder, name) || unlinkat(folder, name, 0) == 0;
}

/// The descriptor of a new and locked file; -1 with `errno`, which is EWOULDBLOCK when another
/// process writes such a file.
///
/// A process removes a file of that name only with the lock on it. It may take a new one for a
/// stale one before the creator has locked it, so the creator looks whether its file is still
/// there.
int createLocked(int folder, const char* name, mode_t mode)
{
    constexpr int attempts = 100; // each failure means that another process has got further
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const int file = openat(folder, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (file < 0 && (errno != EEXIST || !removeStale(folder, name)))
            return -1;
        if (file < 0)
            continue;
        const bool isLocked = flock(file, LOCK_EX | LOCK_NB) == 0;
        const int number = errno;
        if (isLocked && isNamed(file, folder, name))
            return file;
        const bool hasNoLocks = !isLocked && number != EWOULDBLOCK;
        if (hasNoLocks) // nobody else can write such a file either
            unlinkat(folder, name, 0);
        close(file);
        if (hasNoLocks) {
            errno = number;
            return -1;
        }
    }
    errno = EWOULDBLOCK;
    return -1;
}

/// The hidden file. It goes with the object unless it has taken its final name.
class Temporary
{
public:
    Temporary(int folder, const QByteArray& name, mode_t mode)
        : m_folder(folder)
        , m_name(name)
        , m_file(createLocked(folder, name.constData(), mode))
    {
    }
    ~Temporary()
    {
        if (m_file >= 0 && !m_isRenamed)
            unlinkat(m_folder, m_name.constData(), 0);
    }
    Q_DISABLE_COPY(Temporary)

    int file() const { return m_file; }
    bool rename(const QByteArray& name)
    {
        m_isRenamed = renameat(m_folder, m_name.constData(), m_folder, name.constData()) == 0;
        return m_isRenamed;
    }

private:
    const int m_folder;
    const QByteArray m_name;
    const Descriptor m_file;
    bool m_isRenamed = false;
};

/// Whether the error number says that the folder does not take a second file, or not one that could
/// take the place of the first. A full disk is not among them: writing in place might lose the file
/// there.
bool isAboutTheFolder(int number)
{
    switch (number) {
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY: // the file is a mount point
    case ENAMETOOLONG:
    case ENOLCK:
    case EOPNOTSUPP:
        return true;
    default:
        return false;
    }
}

} // namespace

FileReplacement::FileReplacement(const QString& path, Purpose purpose)
{
    const QFileInfo given(path);
    const QString canonical = given.canonicalFilePath(); // empty when there is no file
    const QFileInfo file(canonical.isEmpty() ? given.absoluteFilePath() : canonical);
    m_folderPath = file.path();
    m_name = QFile::encodeName(file.fileName());
    m_temporaryName = '.' + m_name + ".new";
    if (canonical.isEmpty() && given.isSymLink())
        refuse(path, "the link points to nothing");
    else if (file.exists() && !file.isFile())
        refuse(path, "it is not a file");
    else
        m_folder =
            open(QFile::encodeName(m_folderPath).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_error.isEmpty() && check(m_folder >= 0, "open", {}) && purpose == Edit)
        check(lockPatiently(m_folder), "lock", {});
}

FileReplacement::~FileReplacement()
{
    if (m_folder >= 0)
        close(m_folder);
}

bool FileReplacement::replace(const QByteArray& content)
{
    return replace([&](int file) {
        const auto size = static_cast<size_t>(content.size());
        check(writeWhole(file, content.constData(), size) == content.size(), "write",
              m_temporaryName);
        return m_error;
    });
}

bool FileReplacement::replace(const Writer& writer)
{
    struct stat old = {};
    const bool exists =
        m_error.isEmpty() && fstatat(m_folder, m_name.constData(), &old, AT_SYMLINK_NOFOLLOW) == 0;
    if (!m_error.isEmpty() || !check(exists || errno == ENOENT, "read", m_name))
        return false;
    // Nobody may read it before it has the mode of the old file.
    Temporary temporary(m_folder, m_temporaryName, exists ? 0600 : 0644);
    if (temporary.file() < 0 && errno == EWOULDBLOCK) {
        m_error = QStringLiteral("another process is writing ") + path();
        return false;
    }
    return check(temporary.file() >= 0, "create", m_temporaryName) &&
           write(temporary.file(), exists ? &old : nullptr, writer) &&
           check(temporary.rename(m_name), "replace", m_name) && syncFolder();
}

bool FileReplacement::sync()
{
    if (!m_error.isEmpty())
        return false;
    const Descriptor file(openat(m_folder, m_name.constData(), O_RDONLY | O_CLOEXEC));
    return check(file >= 0 && fsync(file) == 0, "sync", m_name) && syncFolder();
}

bool FileReplacement::wouldLose(const QString& path) const
{
    struct stat file = {};
    return stat(QFile::encodeName(path).constData(), &file) == 0 &&
           (isHolding(m_name, file) || isHolding(m_temporaryName, file));
}

bool FileReplacement::isHolding(const QByteArray& name, const struct stat& file) const
{
    struct stat held = {};
    return fstatat(m_folder, name.constData(), &held, 0) == 0 && isSame(held, file);
}

bool FileReplacement::write(int file, const struct stat* old, const Writer& writer)
{
    // Owner, content and mode in this order: each takes bits off the mode that was there before.
    if (old != nullptr &&
        !check(fchown(file, old->st_uid, old->st_gid) == 0, "keep the owner of", m_name))
        return false;
    m_error = writer(file);
    if (!m_error.isEmpty())
        return false;
    return (old == nullptr ||
            check(fchmod(file, old->st_mode & 07777) == 0, "keep the mode of", m_name)) &&
           check(fsync(file) == 0, "sync", m_temporaryName);
}

bool FileReplacement::syncFolder()
{
    // Until then a power cut may bring the old name back. Some file systems have no such call.
    return check(fsync(m_folder) == 0 || errno == EINVAL, "sync the folder of", m_name);
}

bool FileReplacement::check(bool isDone, const char* action, const QByteArray& name)
{
    if (!isDone && m_error.isEmpty()) {
        const int number = errno; // before it can change
        m_needsWritingInPlace = isAboutTheFolder(number);
        m_error = QStringLiteral("cannot %1 %2: %3")
                      .arg(QLatin1String(action), pathOf(name),
                           QString::fromLocal8Bit(std::strerror(number)));
    }
    return isDone;
}

void FileReplacement::refuse(const QString& path, const char* reason)
{
    m_needsWritingInPlace = true;
    m_error = QStringLiteral("cannot replace %1: %2").arg(path, QLatin1String(reason));
}

QString FileReplacement::pathOf(const QByteArray& name) const
{
    return name.isEmpty() ? m_folderPath
                          : m_folderPath + QLatin1Char('/') + QFile::decodeName(name);
}

} // namespace zeltools
