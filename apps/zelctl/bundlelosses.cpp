#include "bundlelosses.h"

#include "command.h"
#include "logsource.h"
#include "lossledger.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstring>
#include <limits>
#include <numeric>
#include <string_view>
#include <vector>

namespace
{

/// The losses of all files. Only the newest keep their times, since a machine may tell of millions.
class Losses
{
public:
    void add(const LossLedger& ledger)
    {
        m_total += ledger.total(0, std::numeric_limits<LogTime>::max());
        m_newest.insert(m_newest.end(), ledger.losses().begin(), ledger.losses().end());
        if (m_newest.size() > mostKept)
            m_newest.erase(m_newest.begin(), m_newest.end() - std::ptrdiff_t(mostKept));
    }
    QByteArray toJson(bool areComplete) const
    {
        QJsonArray losses;
        for (const auto& loss : m_newest)
            losses.append(jsonObject({{"time", isoTime(loss.time)}, {"lost", loss.count}}));
        QJsonObject object = jsonObject({{"total", m_total}, {"losses", losses}});
        if (!areComplete)
            object.insert(QStringLiteral("incomplete"), true);
        return QJsonDocument(object).toJson();
    }

private:
    static constexpr size_t mostKept = 10000;

    qint64 m_total = 0;
    std::vector<LossLedger::Loss> m_newest;
};

void scan(LogSource& source, Losses& losses, const std::function<void(qint64)>& progress)
{
    constexpr size_t block_B = 1 << 20;
    std::vector<char> buffer(2 * block_B);
    size_t kept_B = 0; // of an incomplete line
    do {
        while (const qint64 count = source.read(buffer.data() + kept_B, block_B)) {
            const size_t size_B = kept_B + static_cast<size_t>(count);
            const size_t feed = std::string_view(buffer.data(), size_B).rfind('\n');
            const size_t end = feed == std::string_view::npos ? 0 : feed + 1;
            LossLedger ledger;
            ledger.scan(buffer.data(), buffer.data() + end);
            losses.add(ledger);
            progress(count);
            kept_B = size_B - end < block_B ? size_B - end : 0; // a longer line tells of no loss
            std::memmove(buffer.data(), buffer.data() + end, kept_B);
        }
    } while (source.openNext());
}

qint64 sizeOf(const LogSeries& series)
{
    const QFileInfo live(series.path);
    const QFileInfoList files =
        live.dir().entryInfoList({live.fileName() + QLatin1Char('*')}, QDir::Files);
    return std::accumulate(files.begin(), files.end(), qint64(0),
                           [](qint64 sum, const auto& file) { return sum + file.size(); });
}

} // namespace

QByteArray lossesInFiles(const QString& folder, QString& error,
                         const std::function<void(qint64, qint64)>& progress)
{
    Losses losses;
    for (const LogSeries& series : findLogSeries(folder, false)) {
        if (series.kind != LogKind::General)
            continue;
        LogSource source(series);
        source.open();
        const qint64 total_B = sizeOf(series);
        qint64 done_B = 0;
        scan(source, losses, [&](qint64 count) {
            done_B += count;
            progress(std::min(done_B, total_B), total_B); // an archive yields more than its size
        });
        if (error.isEmpty())
            error = source.error();
    }
    return losses.toJson(error.isEmpty());
}
