#pragma once

#include "logging/logmanager.h"

#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace zeltools::quick
{

/// A page of the event history. An empty date means no limit.
struct EventQuery
{
    LogManager::EventModuleFilter kind = LogManager::AllEvent;
    QString from;
    QString to;
    int page = 0;
    int rowsPerPage = 100;

    bool operator==(const EventQuery& other) const
    {
        return kind == other.kind && from == other.from && to == other.to && page == other.page &&
               rowsPerPage == other.rowsPerPage;
    }
    bool operator!=(const EventQuery& other) const { return !(*this == other); }
};

/// One reading of a page, in a thread of its own pool, so that a storage that hangs blocks neither
/// the screen nor the end of the program.
class EventReading
{
public:
    explicit EventReading(const EventQuery& query);

    /// Begins the reading, which ends with a call of `finished` in the thread of the pool. The
    /// caller need not keep the object.
    static void start(const std::shared_ptr<EventReading>& reading, std::function<void()> finished);

    /// Whether the results may be read.
    bool isDone() const { return m_isDone; }

    const EventQuery query;
    /// The newest line is the first one, and a line is not longer than what its details show.
    QStringList lines;
    int pagesCount = 0;
    QString error;
    qint64 duration_ms = 0;

private:
    void run();

    std::atomic<bool> m_isDone = false;
};

} // namespace zeltools::quick
