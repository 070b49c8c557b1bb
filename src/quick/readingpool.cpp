#include "quick/readingpool_p.h"

#include <QCoreApplication>
#include <QThreadPool>

namespace zeltools::quick
{

// The pool is never deleted, since a pool waits for its threads when it is deleted.
QThreadPool& readingPool()
{
    constexpr int maximumThreads = 4;
    static QThreadPool* const pool = [] {
        auto* const threads = new QThreadPool;
        threads->setMaxThreadCount(maximumThreads);
        qAddPostRoutine([] {
            constexpr int maximumWait_ms = 1000;
            readingPool().waitForDone(maximumWait_ms);
        });
        return threads;
    }();
    return *pool;
}

} // namespace zeltools::quick
