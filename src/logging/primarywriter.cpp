#include "logging/primarywriter_p.h"

#include "filedescriptor.h"
#include "logging/monotonicclock_p.h"
#include "logging/openwithoutwaiting_p.h"
#include "logging/primaryfile.h"
#include "writewhole.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

namespace
{

bool endsWithinLine(int descriptor)
{
    char last = '\n';
    return lseek(descriptor, -1, SEEK_END) >= 0 && ::read(descriptor, &last, 1) == 1 &&
           last != '\n';
}

} // namespace

PrimaryWriter::PrimaryWriter(PrimaryFile& file)
    : m_file(file)
    , m_sync(file)
{
}

bool PrimaryWriter::hasFault() const
{
    return std::any_of(m_errors.begin(), m_errors.end(), [](const auto& error) {
        return error.load(std::memory_order_relaxed) != 0;
    });
}

void PrimaryWriter::setError(Step step, int error)
{
    if (m_errors[step].load(std::memory_order_relaxed) != error)
        m_errors[step] = error;
}

bool PrimaryWriter::takeWarning()
{
    return std::exchange(m_isWarningDue, false);
}

void PrimaryWriter::forget()
{
    m_size_B = -1;
    m_nextCheck_ms = 0;
    m_isDeleted = false;
    for (const Step step : {Opening, Rotating, Writing})
        setError(step, 0);
    m_sync.onReplaced();
}

// The writer that has the lock of P rotates. All others, such as a second process on the same
// files, append to P and follow a rotation within the interval. After a reopen() the lock is taken
// at the next check only, so that the writer that created the new file has time to lock it.
void PrimaryWriter::follow()
{
    const qint64 now = monotonicMilliseconds();
    if (now < m_nextCheck_ms)
        return;
    m_nextCheck_ms = now + checkInterval_ms;
    const bool hasName = m_file.hasName();
    if (hasName)
        setOpened();
    if (!hasName)
        reopen(m_file.fileName());
    else if (!m_file.isLocked() && !m_file.lock() && !m_isWarned->exchange(true))
        m_isWarningDue = true;
    updateSize();
}

void PrimaryWriter::reopen(const QString& primary)
{
    if (!m_file.isOpen()) {
        m_file.setFileName(primary);
        m_file.open(QIODevice::Append);
        return;
    }
    if (m_file.reopen()) {
        updateSize();
        m_hasHalfLine = false;
        setOpened();
        setError(Rotating, 0);
        m_sync.onReplaced();
        return;
    }
    setError(Opening, errno);
    // Nobody can read the content of a deleted file, and it must not fill the disk unseen.
    struct stat open;
    m_isDeleted = fstat(m_file.handle(), &open) == 0 && open.st_nlink == 0;
    if (m_isDeleted && ftruncate(m_file.handle(), 0) == 0)
        m_size_B = 0;
}

void PrimaryWriter::setOpened()
{
    m_isDeleted = false;
    setError(Opening, 0);
}

// QFile passes its buffer on in blocks.
void PrimaryWriter::flush()
{
    if (!m_file.isOpen())
        return;
    while (m_file.bytesToWrite() > 0) {
        m_size_B = -1;
        if (!m_file.flush())
            return;
    }
}

void PrimaryWriter::updateSize()
{
    m_size_B = m_file.isOpen() ? m_file.openSize_B() : m_file.size();
}

// The buffer of QFile would keep what a full disk refuses, without a bound.
qint64 PrimaryWriter::append(const char* data, qint64 length)
{
    if (m_hasHalfLine && zeltools::writeWhole(m_file.handle(), "\n", 1) == 1) {
        m_hasHalfLine = false;
        ++m_size_B;
    }
    if (m_hasHalfLine || m_file.bytesToWrite() > 0) {
        setError(Writing, errno);
        return -1;
    }
    if (m_beforeAppend)
        m_beforeAppend(m_file.handle(), m_size_B, length);
    const qint64 written = zeltools::writeWhole(m_file.handle(), data, size_t(length));
    if (written == length) {
        m_size_B += length;
        m_hasUnsyncedData = true;
        setError(Writing, 0);
        m_sync.onWritten();
        return written;
    }
    setError(Writing, errno);
    if (written > 0) {
        const off_t end = lseek(m_file.handle(), 0, SEEK_CUR);
        m_hasHalfLine = ftruncate(m_file.handle(), end - written) != 0;
    }
    return -1;
}

// Another process may be in the middle of its write, which the size of the file already shows page
// by page. A line is unfinished if the file no longer grows.
void PrimaryWriter::endHalfLine()
{
    m_hasHalfLine = false;
    const zeltools::FileDescriptor reader(openWithoutWaiting(m_file.fileName(), O_RDONLY));
    if (reader < 0 || !m_file.isOpen())
        return;
    off_t size_B = -1;
    for (int check = 0; check < 10 && endsWithinLine(reader); ++check) {
        const off_t sizeNow_B = lseek(reader, 0, SEEK_END);
        m_hasHalfLine = sizeNow_B == size_B;
        if (m_hasHalfLine)
            return;
        size_B = sizeNow_B;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}
