#include "quick/readingpool_p.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThreadPool>

#include <array>
#include <chrono>

namespace zeltools::quick
{

namespace
{

QThreadPool* newPool()
{
    constexpr int maximumThreads = 2;
    auto* const pool = new QThreadPool; // never deleted, since that would wait for its threads
    pool->setMaxThreadCount(maximumThreads);
    return pool;
}

} // namespace

QThreadPool& readingPool(Reading kind)
{
    static const std::array<QThreadPool*, 4> pools = [] {
        qAddPostRoutine([] {
            QDeadlineTimer end(std::chrono::seconds(1));
            for (QThreadPool* const each : pools)
                each->waitForDone(int(end.remainingTime()));
        });
        return std::array{newPool(), newPool(), newPool(), newPool()};
    }();
    return *pools[size_t(kind)];
}

} // namespace zeltools::quick
