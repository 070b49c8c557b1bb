#include "simulatorkit/recordingfile_p.h"

#include "writewhole.h"

#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace zeltools::simulatorkit
{

bool RecordingFile::open(const QString& path)
{
    m_path = path;
    m_clock.start();
    m_file = std::make_unique<FileDescriptor>(
        ::open(QFile::encodeName(path).constData(),
               O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666));
    if (*m_file < 0)
        fail(qt_error_string(errno));
    append(SimulatorRecording::headRow());
    return m_error.isEmpty();
}

void RecordingFile::write(LinkSide side, SimulatorEvent::Kind kind, const QByteArray& bytes)
{
    SimulatorEvent event;
    event.time = std::chrono::microseconds(m_clock.nsecsElapsed() / 1000);
    event.side = side;
    event.kind = kind;
    event.bytes = bytes;
    const QByteArray row = event.toRow();
    const qint64 size_B = m_size_B + row.size() + SimulatorRecording::endRow().size();
    if (m_events++ < SimulatorRecording::maximumEvents &&
        size_B <= SimulatorRecording::maximumSize_B)
        return append(row);
    end();
    fail(QStringLiteral("a recording has at most 4000000 rows and 256 MiB"));
}

void RecordingFile::end()
{
    append(SimulatorRecording::endRow());
    // A device or a pipe has no storage.
    if (m_error.isEmpty() && ::fdatasync(*m_file) != 0 && errno != EINVAL)
        fail(qt_error_string(errno));
}

void RecordingFile::append(const QByteArray& row)
{
    if (!m_error.isEmpty())
        return;
    errno = 0;
    const ssize_t written_B = writeWhole(*m_file, row.constData(), static_cast<size_t>(row.size()));
    if (written_B == row.size()) {
        m_size_B += row.size();
        return;
    }
    fail(qt_error_string(errno));
    if (written_B > 0 && ::ftruncate(*m_file, m_size_B) != 0)
        m_error += QStringLiteral("; its last row is cut");
}

void RecordingFile::fail(const QString& reason)
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("cannot write %1: %2").arg(m_path, reason);
}

} // namespace zeltools::simulatorkit
