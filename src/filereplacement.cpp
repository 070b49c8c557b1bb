#include "filereplacement.h"

#include "filedescriptor.h"
#include "hiddenfile_p.h"
#include "samefile.h"
#include "writewhole.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

/// Waits for a limited time, because any process that may open a folder may lock it and never
/// release the lock.
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

/// Whether the error number means that the folder does not accept a second file, or none that could
/// replace the first. A full disk does not count, because writing in place could lose the file.
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
    HiddenFile hidden(m_folder, m_temporaryName, exists ? 0600 : 0644);
    if (hidden.descriptor() < 0 && errno == EWOULDBLOCK) {
        m_error = QStringLiteral("another process is writing ") + path();
        return false;
    }
    return check(hidden.descriptor() >= 0, "create", m_temporaryName) &&
           write(hidden.descriptor(), exists ? &old : nullptr, writer) &&
           check(hidden.rename(m_name), "replace", m_name) && syncFolder();
}

bool FileReplacement::sync()
{
    if (!m_error.isEmpty())
        return false;
    const FileDescriptor file(openat(m_folder, m_name.constData(), O_RDONLY | O_CLOEXEC));
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
    return fstatat(m_folder, name.constData(), &held, 0) == 0 && isSameFile(held, file);
}

bool FileReplacement::write(int file, const struct stat* old, const Writer& writer)
{
    // In this order, since a change of the owner and a write both clear bits of the mode.
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
    // A power cut before this call may bring the old file back. Some file systems refuse the call.
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
