#include "quick/eventreading_p.h"

#include "quick/displaytext_p.h"
#include "quick/readingpool_p.h"

#include <QElapsedTimer>
#include <QThreadPool>

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

namespace
{

constexpr int s_maximumPrefix = 256; // of the time and the kind in front of the text

// Dates only filter if both are given.
QString orElse(const QString& date, const QString& limit)
{
    return date.isEmpty() ? limit : date;
}

} // namespace

EventReading::EventReading(const EventQuery& wanted)
    : query(wanted)
{
}

void EventReading::start(const std::shared_ptr<EventReading>& reading,
                         std::function<void()> finished)
{
    readingPool(Reading::Events).start([reading, finished = std::move(finished)] {
        reading->run();
        finished();
    });
}

void EventReading::run()
{
    QElapsedTimer timer;
    timer.start();
    const bool isLimited = !query.from.isEmpty() || !query.to.isEmpty();
    EventHistory::Page page = LogManager::instance()->eventsPage(
        query.kind, isLimited ? orElse(query.from, QStringLiteral("01/01/0001")) : QString(),
        isLimited ? orElse(query.to, QStringLiteral("31/12/9999")) : QString(), query.page,
        query.rowsPerPage);
    std::reverse(page.lines.begin(), page.lines.end());
    for (QString& line : page.lines) {
        if (line.size() > DisplayText::mostFullCharacters + s_maximumPrefix)
            line = line.left(DisplayText::mostFullCharacters + s_maximumPrefix);
    }
    lines = std::move(page.lines);
    pagesCount = page.pagesCount;
    error = page.error;
    duration_ms = timer.elapsed();
    m_isDone = true;
}

} // namespace zeltools::quick
