#include "logging/ringdrain_p.h"

#include "logging/primarywriter_p.h"
#include "logging/rotatinglogfile.h"
#include "logging/sinklist_p.h"
#include "logging/standarderror_p.h"
#include "logging/urgentlevel_p.h"

#include <algorithm>

#include <sys/stat.h>

namespace
{

bool isForSamePlaces(const RingLine& a, const RingLine& b)
{
    return a.file == b.file && a.isPrinted == b.isPrinted && a.isForSinks == b.isForSinks;
}

} // namespace

RingTargets::~RingTargets() = default;

RingDrain::RingDrain(RingFile& ring, RingTargets& targets, SinkList& sinks)
    : m_ring(ring)
    , m_lines(ring.lines())
    , m_targets(targets)
    , m_sinks(sinks)
{
}

RingDrain::Result RingDrain::deliverNext()
{
    Ring::Found last = Ring::Found::Nothing;
    const auto find = [&](quint64 at, Ring::Record& record) {
        last = m_lines.find(at, record);
        return last == Ring::Found::Record;
    };
    Batch batch;
    if (!gather(batch, find))
        return last == Ring::Found::Damage ? Result::Damage : Result::Nothing;
    print(batch);
    writeToFile(batch);
    writeToSinks(batch, find);
    m_lines.setWritten(batch.end);
    m_lines.clearWritten();
    return Result::Delivered;
}

bool RingDrain::deliverAbandoned()
{
    const auto find = [this](quint64 at, Ring::Record& record) {
        return m_lines.findAbandoned(at, record);
    };
    Batch batch;
    if (!gather(batch, find))
        return false;
    print(batch);
    if (!writeToFile(batch))
        return false;
    writeToSinks(batch, find);
    m_lines.setWritten(batch.end);
    return true;
}

template <typename Find>
bool RingDrain::gather(Batch& batch, const Find& find)
{
    batch.begin = m_lines.written();
    batch.end = batch.begin;
    qint64 room_B = s_batchSize_B;
    Ring::Record record;
    while (find(batch.end, record)) {
        const RingLine line = RingLine::of(record);
        const QByteArray text = RingLine::textOf(record);
        if (batch.end == batch.begin) {
            batch.line = line;
            room_B = std::min(room_B, this->room_B(line.file));
        } else if (!isForSamePlaces(line, batch.line) || batch.text.size() + text.size() > room_B) {
            break;
        }
        batch.text.append(text.constData(), text.size());
        batch.isUrgent = batch.isUrgent || isUrgentLevel(line.level);
        batch.end = record.end;
    }
    return batch.end != batch.begin;
}

void RingDrain::print(const Batch& batch)
{
    std::atomic<quint64>& printed = m_ring.header().printed;
    if (!batch.line.isPrinted || printed >= batch.end)
        return;
    writeToStandardError(batch.text.constData(), size_t(batch.text.size()));
    printed = batch.end;
}

template <typename Find>
void RingDrain::writeToSinks(const Batch& batch, const Find& find)
{
    if (!batch.line.isForSinks || m_sinks.isEmpty())
        return;
    Ring::Record record;
    for (quint64 at = batch.begin; at < batch.end && find(at, record); at = record.end) {
        const RingLine line = RingLine::of(record);
        const QByteArray text = RingLine::textOf(record);
        const int size = text.size() - line.messageOffset - 1; // without the line feed
        m_sinks.write({LogLevel::Level(line.level), LogModules::fromBits(line.modules),
                       line.time_ms, line.thread, text.mid(line.messageOffset, size)});
    }
}

// The header says what is going to be appended, for a recovery.
bool RingDrain::writeToFile(const Batch& batch)
{
    if (batch.line.file < 0 || batch.line.file >= RingHeader::filesCount)
        return true;
    RotatingLogFile* const file = m_targets.file(batch.line.file);
    if (file == nullptr)
        return false;
    const QMutexLocker locker(file->mutex());
    file->m_writer->setBeforeAppend([&](int descriptor, qint64, qint64 size) {
        RingHeader::Append& append = m_ring.header().append;
        struct stat status = {};
        fstat(descriptor, &status);
        append.begin = 0; // a process that is killed here has appended nothing
        append.device = status.st_dev;
        append.inode = status.st_ino;
        // Other processes may have appended, and a line about a failure comes before ours.
        append.offset = status.st_size + size - batch.text.size();
        append.length = batch.text.size();
        append.begin = batch.begin + 1;
    });
    const bool isDone =
        m_targets.write(batch.line.file, batch.text.constData(), batch.text.size(), batch.isUrgent);
    file->m_writer->setBeforeAppend(nullptr);
    return isDone;
}

// The number of bytes that fit into the file before it rotates; a line that does not fit is written
// alone.
qint64 RingDrain::room_B(int place)
{
    const bool isPlace = place >= 0 && place < RingHeader::filesCount;
    RotatingLogFile* const file = isPlace ? m_targets.file(place) : nullptr;
    if (file == nullptr)
        return s_batchSize_B;
    const QMutexLocker locker(file->mutex());
    return file->maximumSize_B() - std::max<qint64>(file->m_writer->size_B(), 0);
}
