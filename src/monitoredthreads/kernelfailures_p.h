#pragma once

#include "monitoredthreads/linelimit_p.h"

#include <QStringList>

#include <atomic>
#include <mutex>

namespace monitored_threads
{

/// The texts that tell of a failure in the kernel log. Any thread may call the functions.
class KernelFailures
{
public:
    enum class Match { None, First, Further, FurtherUnlogged };

    void add(const QStringList& texts);
    /// Compares a line of the kernel log. A kernel with a broken device repeats its lines quickly,
    /// so at most one per minute is to be logged.
    Match match(const QString& line, qint64 now_ms);
    bool hasMatched() const { return m_hasMatched; }

private:
    std::mutex m_mutex;
    QStringList m_texts;
    LineLimit m_lines;
    std::atomic<bool> m_hasMatched{false};
};

} // namespace monitored_threads
