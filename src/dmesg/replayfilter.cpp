#include "dmesg/replayfilter_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <algorithm>
#include <utility>

namespace dmesg
{

namespace
{

using Equality = bool (*)(const QString&, const QString&);

bool isSameLine(const QString& a, const QString& b)
{
    return a == b;
}

bool isSameText(const QString& a, const QString& b)
{
    const auto begin = [](const QString& line) {
        return line.startsWith(QLatin1Char('[')) ? line.indexOf(QLatin1Char(']')) + 1 : 0;
    };
    return QStringView(a).mid(begin(a)) == QStringView(b).mid(begin(b));
}

/// The number of held lines that belong to the seen ones. The last seen line may stand at each
/// place; where both lists have lines before it, these must agree. Only a list of seen lines that
/// is full has lost its beginning, so that the held ones may begin before it. If the held lines are
/// only a part of the kernel's memory, they may also end before the last seen line.
int knownLines(const QStringList& seen, const QStringList& held, bool isWhole, Equality isEqual)
{
    const int seenCount = seen.size(), heldCount = held.size();
    const bool isFull = seenCount >= ReplayFilter::mostSeenLines;
    int end = isFull ? heldCount + seenCount - 1 : seenCount;
    if (isWhole)
        end = qMin(end, heldCount);
    for (; end > 0; --end) {
        const int first = qMax(0, end - seenCount), last = qMin(end, heldCount);
        if (std::equal(held.begin() + first, held.begin() + last,
                       seen.begin() + (first + seenCount - end), isEqual))
            return last;
    }
    return 0;
}

} // namespace

ReplayFilter::ReplayFilter(QObject* parent)
    : QObject(parent)
    , m_pause(this)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(500);
    connect(&m_pause, &QTimer::timeout, this, [this] { release(true); });
}

void ReplayFilter::reset(bool isRemembering)
{
    m_pause.stop();
    m_isRemembering = isRemembering;
    m_isHolding = false;
    m_seen.clear();
    m_held.clear();
}

void ReplayFilter::expectReplay()
{
    m_isHolding = !m_seen.isEmpty();
    m_heldSize = 0;
}

void ReplayFilter::take(const QStringList& lines)
{
    if (!m_isHolding) {
        pass(lines);
        return;
    }
    constexpr int costOfLine = 50; // so that empty lines count, too
    constexpr qint64 mostHeld = qint64(8) * 1024 * 1024;
    if (m_held.isEmpty())
        m_longest.setRemainingTime(std::chrono::seconds(5));
    m_held += lines;
    for (const QString& line : lines)
        m_heldSize += line.size() + costOfLine;
    if (m_heldSize > mostHeld || m_longest.hasExpired())
        release(true);
    else if (!m_held.isEmpty())
        m_pause.start();
}

void ReplayFilter::end()
{
    if (m_isHolding)
        release(false);
}

void ReplayFilter::release(bool isWhole)
{
    m_pause.stop();
    m_isHolding = false;
    const QStringList held = std::exchange(m_held, {});
    if (held.isEmpty())
        return;
    int known = knownLines(m_seen, held, isWhole, isSameLine);
    if (known == 0)
        known = knownLines(m_seen, held, isWhole, isSameText);
    if (known == 0)
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << "The kernel log has gone on while nothing followed it, lines may be missing";
    pass(held.mid(known));
}

void ReplayFilter::pass(const QStringList& lines)
{
    if (m_isRemembering) {
        m_seen += lines;
        if (m_seen.size() > mostSeenLines)
            m_seen.erase(m_seen.begin(), m_seen.end() - mostSeenLines);
    }
    Q_EMIT newLines(lines);
}

} // namespace dmesg
