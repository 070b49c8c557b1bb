#include "lossledger.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstring>
#include <numeric>

namespace
{

constexpr std::string_view s_mark(" since the start of process ");

} // namespace

qint64 LossLedger::lostLines(std::string_view line)
{
    static const QRegularExpression form(QStringLiteral(
        R"(^.{23}\| Warning  \| (\d{1,18}) lines? (?:was|were) lost \(\d+ since the start of process \d)"));
    constexpr size_t longest = 200;
    if (line.find(s_mark) == line.npos)
        return 0;
    const auto size = static_cast<int>(std::min(line.size(), longest));
    return form.match(QString::fromUtf8(line.data(), size)).captured(1).toLongLong();
}

void LossLedger::scan(const char* begin, const char* end)
{
    while (const void* found = memmem(begin, size_t(end - begin), s_mark.data(), s_mark.size())) {
        const auto* const mark = static_cast<const char*>(found);
        const void* feed = memrchr(begin, '\n', size_t(mark - begin));
        const char* const line = feed != nullptr ? static_cast<const char*>(feed) + 1 : begin;
        begin = static_cast<const char*>(std::memchr(mark, '\n', size_t(end - mark))) + 1;
        const std::string_view text(line, size_t(begin - line - 1));
        const qint64 count = lostLines(text);
        if (count > 0)
            m_losses.append({logTime(text), count});
    }
}

qint64 LossLedger::total(LogTime from, LogTime to) const
{
    return std::accumulate(m_losses.begin(), m_losses.end(), qint64(0),
                           [from, to](qint64 sum, const Loss& loss) {
                               const bool isInside = loss.time >= from && loss.time <= to;
                               return isInside ? sum + loss.count : sum;
                           });
}
