#include "logging/ringrecovery_p.h"

#include "filedescriptor.h"
#include "logging/openwithoutwaiting_p.h"
#include "logging/recoveredfiles_p.h"
#include "logging/ringdrain_p.h"
#include "logging/ringwarning_p.h"
#include "logging/sinklist_p.h"

#include <QDir>

#include <algorithm>

namespace
{

// Opens the file that the process was appending to, which may have been rotated since.
int openAppended(const RingHeader::File& file, const RingHeader::Append& append)
{
    for (int i = 0; i <= std::clamp(file.predecessorsCount, 0, RecoveredFiles::mostPredecessors);
         ++i) {
        const QString suffix = i > 0 ? QLatin1Char('.') + QString::number(i) : QString();
        const int descriptor = openWithoutWaiting(file.pathText() + suffix, O_RDWR);
        struct stat found;
        if (descriptor >= 0 && fstat(descriptor, &found) == 0 && found.st_dev == append.device &&
            found.st_ino == append.inode)
            return descriptor;
        if (descriptor >= 0)
            close(descriptor);
    }
    return -1;
}

// The number of bytes at the offset of the file that are equal to the text.
qint64 equalSize(int descriptor, qint64 offset, const QByteArray& text)
{
    QByteArray found(text.size(), '\0');
    const ssize_t size = pread(descriptor, found.data(), size_t(found.size()), off_t(offset));
    const auto end = text.cbegin() + std::max<ssize_t>(size, 0);
    return std::mismatch(text.cbegin(), end, found.cbegin()).first - text.cbegin();
}

// Skips the lines that the ended process has written to a file but could not mark as written. A
// line that it has begun is removed from the file.
void skipWritten(RingFile& ring)
{
    LineRing<> lines = ring.lines();
    const RingHeader::Append& append = ring.header().append;
    if (append.begin != lines.written() + 1)
        return;
    QByteArray text;
    QVector<QPair<qint64, quint64>> ends; // of each line in the text and in the ring
    LineRing<>::Record record;
    int place = -1;
    for (quint64 at = lines.written();
         text.size() < append.length && lines.findAbandoned(at, record); at = record.end) {
        place = RingLine::of(record).file;
        text += RingLine::textOf(record);
        ends.append({text.size(), record.end});
    }
    if (text.size() != append.length || place < 0 || place >= RingHeader::filesCount)
        return;
    const zeltools::FileDescriptor file(openAppended(ring.header().files[place], append));
    if (file < 0)
        return;
    const qint64 size = equalSize(file, append.offset, text);
    const auto isBeyond = [size](const QPair<qint64, quint64>& end) { return end.first > size; };
    const auto firstMissing = std::find_if(ends.cbegin(), ends.cend(), isBeyond);
    const qint64 wholeLines_B = firstMissing != ends.cbegin() ? (firstMissing - 1)->first : 0;
    const qint64 end = append.offset + size;
    if (size > wholeLines_B && lseek(file, 0, SEEK_END) == end &&
        ftruncate(file, append.offset + wholeLines_B) != 0)
        return;
    if (firstMissing != ends.cbegin())
        lines.setWritten((firstMissing - 1)->second);
}

// Adds the lines that tell of the recovery behind those that are left, so that they are written
// once, like these. Returns the number of the lines that are left.
quint64 describe(RingFile& ring, bool& isDamaged)
{
    LineRing<> lines = ring.lines();
    quint64 count = 0;
    bool isDescribed = false; // by a recovery that was killed
    LineRing<>::Record record;
    for (quint64 at = lines.written(); lines.findAbandoned(at, record, &isDamaged);
         at = record.end) {
        isDescribed = isDescribed || RingLine::of(record).isOfRecovery != 0;
        ++count;
    }
    if (ring.header().losses.isUntold())
        ringwarning::addLosses(ring);
    if (count > 0 && !isDescribed)
        ringwarning::addRecovery(ring, count);
    return count;
}

// Returns the text of a problem.
QString recoverRing(RingFile& ring, SinkList& sinks, LogFileSet* openFiles, quint64& linesCount)
{
    skipWritten(ring);
    bool isDamaged = false;
    const quint64 count = describe(ring, isDamaged);
    RecoveredFiles files(ring, openFiles);
    RingDrain drain(ring, files, sinks);
    while (drain.deliverAbandoned()) {
    }
    LineRing<>::Record record;
    if (ring.lines().findAbandoned(ring.lines().written(), record)) {
        return QStringLiteral("%1: The lines cannot be written to %2")
            .arg(ring.path(), ring.header().files[RingLine::of(record).file].pathText());
    }
    linesCount += count;
    if (isDamaged || files.isDamaged())
        return ring.path() + QStringLiteral(": A part of the ring is damaged") +
               RingFile::setAside(ring.path());
    ring.remove();
    return QString();
}

} // namespace

QStringList ringrecovery::memoryFolders()
{
    return {QStringLiteral("/run"), QStringLiteral("/dev/shm")};
}

LogRecovery ringrecovery::recover(const QString& logFolder, const QStringList& ringFolders,
                                  SinkList& sinks, LogFileSet* openFiles)
{
    LogRecovery report;
    for (const QString& folder : ringFolders) {
        const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::NoSymLinks);
        for (const QFileInfo& found : files) {
            if (!RingFile::isName(found.fileName()))
                continue;
            QString problem;
            const std::unique_ptr<RingFile> ring =
                RingFile::openAbandoned(found.filePath(), logFolder, problem);
            if (ring != nullptr)
                problem = recoverRing(*ring, sinks, openFiles, report.linesCount);
            if (!problem.isEmpty())
                report.problems.append(problem);
        }
    }
    return report;
}

LogRecovery LogRecovery::run(const QString& logFolder, const QStringList& ringFolders)
{
    SinkList none;
    QStringList folders = ringrecovery::memoryFolders() + ringFolders;
    folders +=
        {logFolder, logFolder + QLatin1String("/debug"), logFolder + QLatin1String("/logs/debug")};
    folders.removeDuplicates();
    return ringrecovery::recover(logFolder, folders, none);
}
