#include "bundlelosses.h"

#include "command.h"
#include "logsource.h"
#include "lossledger.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstring>
#include <limits>
#include <string_view>

namespace
{

void scan(LogSource& source, LossLedger& ledger)
{
    constexpr size_t block_B = 1 << 20;
    std::vector<char> buffer(2 * block_B);
    size_t kept_B = 0; // of an incomplete line
    do {
        while (const qint64 count = source.read(buffer.data() + kept_B, block_B)) {
            const size_t size_B = kept_B + static_cast<size_t>(count);
            const size_t feed = std::string_view(buffer.data(), size_B).rfind('\n');
            const size_t end = feed == std::string_view::npos ? 0 : feed + 1;
            ledger.scan(buffer.data(), buffer.data() + end);
            kept_B = size_B - end < block_B ? size_B - end : 0; // a longer line tells of no loss
            std::memmove(buffer.data(), buffer.data() + end, kept_B);
        }
    } while (source.openNext());
}

} // namespace

QByteArray lossesInFiles(const QString& folder)
{
    LossLedger ledger;
    for (const LogSeries& series : findLogSeries(folder, false)) {
        LogSource source(series);
        if (series.kind == LogKind::General && source.open().isEmpty())
            scan(source, ledger);
    }
    QJsonArray losses;
    for (const auto& loss : ledger.losses())
        losses.append(jsonObject({{"time", isoTime(loss.time)}, {"lost", loss.count}}));
    const qint64 total = ledger.total(0, std::numeric_limits<LogTime>::max());
    return QJsonDocument(jsonObject({{"total", total}, {"losses", losses}})).toJson();
}
