#include "logging/ringwarning_p.h"

#include "logging/log.h"
#include "logging/logline_p.h"
#include "logging/logmanager.h"

namespace
{

bool add(RingFile& ring, const QString& text, bool isOfRecovery)
{
    const LogLine bytes(LogLevel::Warning, text);
    RingLine line = {};
    line.time_ms = bytes.moment_ms();
    line.modules = LogModules(Log::Global).bits();
    line.thread = ring.header().process;
    line.file = ring.header().isGeneralFileEnabled != 0 ? LogManager::General : -1;
    line.messageOffset = quint16(bytes.messageOffset());
    line.level = LogLevel::Warning;
    line.isPrinted = 1;
    line.isForSinks = 1;
    line.isOfRecovery = isOfRecovery ? 1 : 0;
    return ring.add(line, bytes.data(), bytes.size(), ring.capacity());
}

} // namespace

void ringwarning::addRecovery(RingFile& ring, quint64 linesCount)
{
    const QString text =
        QStringLiteral("Recovered %1 lines of process %2, which ended before they were written");
    add(ring, text.arg(linesCount).arg(ring.header().process), true);
}

bool ringwarning::addLosses(RingFile& ring)
{
    LossCounts& losses = ring.header().losses;
    const LossCounts::Counts lost = losses.lost();
    if (!add(ring, losses.text(lost, ring.header().process), false))
        return false;
    losses.setTold(lost);
    return true;
}
