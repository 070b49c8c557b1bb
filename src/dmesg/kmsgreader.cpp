#include "dmesg/kmsgreader.h"

#include "dmesg/dmesg.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <time.h>

namespace dmesg
{

namespace
{

std::chrono::microseconds now(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

/// The time of day of a reading of the kernel's clock, unless the time of day has been set since.
std::chrono::milliseconds timeOfDay(std::chrono::microseconds sinceBoot)
{
    return std::chrono::floor<std::chrono::milliseconds>(now(CLOCK_REALTIME) -
                                                         now(CLOCK_MONOTONIC) + sinceBoot);
}

} // namespace

KmsgReader::KmsgReader(const QString& file)
    : m_file(file)
{
}

QString KmsgReader::open()
{
    close();
    m_isResuming = m_lastSequence.has_value();
    m_descriptor.emplace(::open(QFile::encodeName(m_file).constData(),
                                O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (*m_descriptor >= 0)
        return {};
    const int error = errno;
    m_descriptor.reset();
    m_error = QStringLiteral("cannot read %1: %2")
                  .arg(m_file, QString::fromLocal8Bit(std::strerror(error)));
    if (error == EPERM && Dmesg::isDmesgRestricted())
        m_error += QStringLiteral("; this kernel shows its log to privileged processes only");
    return m_error;
}

void KmsgReader::close()
{
    m_descriptor.reset();
    m_bytes.clear();
    m_position = 0;
}

KmsgReader::Result KmsgReader::next(KmsgRecord& record)
{
    for (std::optional<Result> end;;) {
        if (const std::optional<QByteArray> bytes = takeRecord(end.has_value())) {
            std::optional<KmsgRecord> parsed = KmsgRecord::parse(*bytes);
            if (!parsed)
                return Result::Malformed;
            if (!accept(*parsed))
                continue;
            record = std::move(*parsed);
            return Result::Record;
        }
        if (end)
            return *end;
        end = readMore();
    }
}

/// Cuts off the first record that is complete. A read from /dev/kmsg gives one record with its
/// fields; a pipe may give several, or a part of one. Behind the last line feed, the file may
/// therefore go on with a field of the same record, unless `isAll` tells that nothing follows now.
std::optional<QByteArray> KmsgReader::takeRecord(bool isAll)
{
    int end = m_bytes.indexOf('\n', m_position);
    while (end >= 0 && end + 1 < m_bytes.size() && m_bytes[end + 1] == ' ')
        end = m_bytes.indexOf('\n', end + 1);
    const int rest = m_bytes.size() - m_position;
    const bool isOpen = end < 0 || (end + 1 == m_bytes.size() && !isAll);
    if (isOpen && rest <= longestRecord_B)
        return std::nullopt;
    const int next = end < 0 ? m_bytes.size() : end + 1;
    const QByteArray record = m_bytes.mid(m_position, next - m_position);
    m_position = next;
    return end < 0 ? QByteArray() : record; // what is too long is not a record
}

/// Returns no result if there are new bytes.
std::optional<KmsgReader::Result> KmsgReader::readMore()
{
    constexpr int chunk_B = 16 * 1024; // the kernel refuses to read a record in parts
    m_bytes.remove(0, m_position);
    m_position = 0;
    char chunk[chunk_B];
    ssize_t size = 0;
    do
        size = ::read(descriptor(), chunk, chunk_B);
    // EPIPE says that the next record has been overwritten; the following read goes on behind it.
    while (size < 0 && (errno == EINTR || errno == EPIPE));
    const int error = errno;
    if (size > 0) {
        m_bytes.append(chunk, static_cast<int>(size));
        return std::nullopt;
    }
    if (size == 0)
        return Result::Ended;
    if (error == EAGAIN)
        return Result::Nothing;
    m_error = QStringLiteral("cannot read %1: %2")
                  .arg(m_file, QString::fromLocal8Bit(std::strerror(error)));
    return Result::Failed;
}

/// Completes a record. Returns false if it was returned before the file was opened again.
bool KmsgReader::accept(KmsgRecord& record)
{
    if (m_isResuming && record.sequence <= *m_lastSequence)
        return false;
    m_isResuming = false;
    if (m_lastSequence && record.sequence > *m_lastSequence)
        record.overwritten = record.sequence - *m_lastSequence - 1;
    m_lastSequence = record.sequence;
    record.time = timeOfDay(record.sinceBoot);
    return true;
}

} // namespace dmesg
