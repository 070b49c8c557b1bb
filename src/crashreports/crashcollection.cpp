#include "crashreports/crashcollection_p.h"

#include "crashreports/bootid_p.h"
#include "filedescriptor.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "samefile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

// The value of a line such as "pid 1234"; empty if there is none.
QByteArray value(const QByteArray& content, const char* key)
{
    const QByteArray begin = QByteArray("\n") + key + ' ';
    const int place = content.indexOf(begin);
    if (place < 0)
        return {};
    const int first = place + begin.size();
    return content.mid(first, content.indexOf('\n', first) - first);
}

QDateTime moment(const QByteArray& content, const char* key)
{
    return QDateTime::fromMSecsSinceEpoch(value(content, key).toLongLong());
}

constexpr char s_crashHeading[] = "\n[crash]\n";

// The sections that tell about a run and its crash come first. The others have lines of any form.
QByteArray readBeginning(int file)
{
    QByteArray content(64 * 1024, '\0');
    const ssize_t size = pread(file, content.data(), size_t(content.size()), 0);
    content.truncate(int(qMax<ssize_t>(size, 0)));
    const int crash = content.indexOf(s_crashHeading);
    const int next = crash < 0 ? -1 : content.indexOf("\n[", crash + 1);
    return next < 0 ? content : content.left(next + 1);
}

bool isStillThere(int file, const QByteArray& path)
{
    struct stat opened;
    struct stat named;
    return fstat(file, &opened) == 0 && S_ISREG(opened.st_mode) &&
           lstat(path.constData(), &named) == 0 && isSameFile(opened, named);
}

void warn(const QString& text)
{
    LogFormatter(LogLevel::Warning).log(Log::Global).noquote() << text;
}

QString reason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

QString cause(const QByteArray& content)
{
    const QString signal = QString::fromLatin1(value(content, "signal"));
    const QString reason = QString::fromUtf8(value(content, "reason"));
    QStringList parts;
    if (!signal.isEmpty())
        parts.append(QStringLiteral("signal %1").arg(signal));
    if (!reason.isEmpty())
        parts.append(reason);
    return parts.join(QStringLiteral(", "));
}

// The name tells more than the content, which may be lost: "crash-1234-1732262400123.open".
void tellKilled(const QString& name, const QByteArray& content)
{
    const int process = name.section(QLatin1Char('-'), 1, 1).toInt();
    const QString started_ms = name.section(QLatin1Char('-'), 2).section(QLatin1Char('.'), 0, 0);
    const QDateTime started = QDateTime::fromMSecsSinceEpoch(started_ms.toLongLong());
    const bool isSameBoot = value(content, "boot") == bootId().toLatin1();
    warn(QStringLiteral("The run of process %1, which started at %2, has ended without exit() and "
                        "without a crash report: %3")
             .arg(QString::number(process), started.toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")),
                  isSameBoot ? QStringLiteral("it was killed")
                             : QStringLiteral("the power was cut or the system was restarted")));
}

void tellCrashed(const QByteArray& content, const QString& report)
{
    LogFormatter(LogLevel::Critical).log(Log::Global).noquote()
        << QStringLiteral("The program crashed at %1 (%2); report: %3")
               .arg(moment(content, "time").toString(QStringLiteral("dd/MM/yyyy hh:mm:ss")),
                    cause(content), report);
    LogFormatter(LogLevel::Event).logEvent(LogEventModule::WarningEvent).noquote()
        << QStringLiteral("Crash (%1): %2").arg(cause(content), QFileInfo(report).fileName());
}

} // namespace

CrashCollection::CrashCollection(const QString& folder)
    : m_folder(folder)
{
}

void CrashCollection::collect()
{
    removeUnfinished();
    const QStringList names = QDir(m_folder).entryList({QStringLiteral("crash-*-*.open")},
                                                       QDir::Files | QDir::System, QDir::Name);
    for (const QString& name : names)
        collect(name);
}

// A power cut may leave a file that has not got its lock and its name yet. A process that creates
// one at this moment must keep it.
void CrashCollection::removeUnfinished() const
{
    const QDateTime latest = QDateTime::currentDateTime().addSecs(-60);
    const QFileInfoList files = QDir(m_folder).entryInfoList({QStringLiteral(".crash-*-*.new")},
                                                             QDir::Files | QDir::Hidden);
    for (const QFileInfo& file : files) {
        if (file.lastModified() < latest)
            QFile::remove(file.filePath());
    }
}

void CrashCollection::collect(const QString& name)
{
    const QString path = m_folder + QLatin1Char('/') + name;
    const QByteArray encoded = QFile::encodeName(path);
    const FileDescriptor file(
        ::open(encoded.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file < 0)
        return warn(QStringLiteral("Cannot collect %1: %2").arg(path, reason()));
    if (flock(file, LOCK_EX | LOCK_NB) != 0 || !isStillThere(file, encoded))
        return; // The run goes on, or another start has collected it.
    const QByteArray content = readBeginning(file);
    if (content.contains(s_crashHeading))
        return keep(file, path, content);
    tellKilled(name, content);
    ::unlink(encoded.constData());
}

void CrashCollection::keep(int file, const QString& path, const QByteArray& content)
{
    const QString report = freePath(content);
    if (std::rename(QFile::encodeName(path).constData(), QFile::encodeName(report).constData()) !=
        0)
        return warn(QStringLiteral("Cannot collect %1: %2").arg(path, reason()));
    struct stat whole;
    if (fstat(file, &whole) == 0 && ftruncate(file, whole.st_size) != 0) // frees reserved space
        warn(QStringLiteral("Cannot shorten %1: %2").arg(report, reason()));
    m_collected.prepend(report);
    tellCrashed(content, report);
}

// Processes of containers often have the same number.
QString CrashCollection::freePath(const QByteArray& content) const
{
    const QString name =
        QStringLiteral("%1/crash-%2-%3")
            .arg(m_folder, moment(content, "time").toString(QStringLiteral("yyyyMMdd-hhmmss")),
                 QString::number(value(content, "pid").toInt()));
    QString path = name + QStringLiteral(".report");
    for (int number = 2; QFile::exists(path); ++number)
        path = QStringLiteral("%1-%2.report").arg(name).arg(number);
    return path;
}

void CrashCollection::limit(CrashReports::Limits limits) const
{
    qint64 bytes = 0;
    int count = 0;
    QStringList paths = m_collected + reports();
    paths.removeDuplicates();
    for (const QString& path : std::as_const(paths)) {
        bytes += QFileInfo(path).size();
        ++count;
        const bool isWithin = count <= limits.mostReports && bytes <= limits.mostBytes;
        if (count > 1 && !isWithin && !QFile::remove(path))
            warn(QStringLiteral("Cannot remove the crash report %1").arg(path));
    }
}

QStringList CrashCollection::reports() const
{
    QStringList names = QDir(m_folder).entryList({QStringLiteral("crash-*.report")}, QDir::Files);
    const auto stem = [](const QString& name) { return name.section(QLatin1Char('.'), 0, 0); };
    std::sort(names.begin(), names.end(),
              [stem](const QString& a, const QString& b) { return stem(b) < stem(a); });
    for (QString& name : names)
        name.prepend(m_folder + QLatin1Char('/'));
    return names;
}

} // namespace zeltools
