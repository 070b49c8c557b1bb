#include "quick/filesaccess.h"

#include "filedescriptor.h"
#include "path.h"
#include "quick/access.h"
#include "quick/displaytext_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace zeltools::quick
{

namespace
{

constexpr int s_most_B = 16 * 1024 * 1024;

QString linkTo(int descriptor)
{
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

/// The kernel tells where an open file lies, whatever became of its path in the meantime.
QString pathOf(int descriptor)
{
    return QFile::symLinkTarget(linkTo(descriptor));
}

/// With Qt 5, QString::fromUtf8() stops at a zero byte of a QByteArray.
QString textOf(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

} // namespace

FilesAccess::FilesAccess(QObject* parent)
    : QObject(parent)
{
}

FilesAccess::~FilesAccess() = default;

void FilesAccess::setRoots(const QStringList& roots)
{
    if (roots == m_roots)
        return;
    m_roots = roots;
    Q_EMIT rootsChanged();
}

QStringList FilesAccess::ownFolders() const
{
    if (!Path::exists())
        return {};
    QStringList folders{Path::instance()->debugLogsDir, Path::instance()->eventLogsDir};
    folders.removeAll(QString()); // before Path::init()
    folders.removeDuplicates();
    return folders;
}

bool FilesAccess::contains(int descriptor) const
{
    const QString path = pathOf(descriptor);
    return std::any_of(m_roots.begin(), m_roots.end(), [&](const QString& root) {
        const QString real = QFileInfo(root).canonicalFilePath();
        if (real.isEmpty()) // There is no such folder.
            return false;
        const QLatin1Char slash('/');
        return path == real || path.startsWith(real.endsWith(slash) ? real : real + slash);
    });
}

QString FilesAccess::read(const QString& path, int maximumBytes, qint64 from,
                          QByteArray& bytes) const
{
    // Opening a pipe or a device for reading has effects of its own: it wakes a writer, or starts a
    // hardware watchdog.
    const FileDescriptor place(::open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC));
    if (place < 0)
        return qt_error_string(errno);
    if (!contains(place))
        return tr("This file is not accessible here.");
    struct stat facts = {};
    if (::fstat(place, &facts) != 0 || !S_ISREG(facts.st_mode))
        return tr("This is not a file.");
    const FileDescriptor file(
        ::open(linkTo(place).toLatin1().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file < 0)
        return qt_error_string(errno);
    QFile reader;
    if (!reader.open(file, QIODevice::ReadOnly) || !reader.seek(from))
        return reader.errorString();
    bytes = reader.read(qBound(0, maximumBytes, s_most_B));
    return reader.error() == QFileDevice::NoError ? QString() : reader.errorString();
}

QString FilesAccess::readText(const QString& path, int maximumBytes, qint64 from)
{
    QByteArray bytes;
    m_error = read(path, maximumBytes, from, bytes);
    Q_EMIT errorChanged();
    return m_error.isEmpty() ? DisplayText::lines(textOf(bytes), s_most_B) : QString();
}

QString FilesAccess::remove(const QString& path)
{
    const Access& access = *Access::instance();
    QString refusal = access.refusal(Access::Technician);
    if (!refusal.isEmpty())
        return refusal;
    const QFileInfo file(path);
    const FileDescriptor folder(
        ::open(QFile::encodeName(file.path()).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder < 0)
        return qt_error_string(errno);
    if (!contains(folder))
        return tr("This file is not accessible here.");
    if (::unlinkat(folder, QFile::encodeName(file.fileName()).constData(), 0) != 0)
        return qt_error_string(errno);
    access.recordChange(
        QStringLiteral("File %1 deleted").arg(QDir(pathOf(folder)).filePath(file.fileName())));
    return {};
}

} // namespace zeltools::quick
