#include "monitoredthreads/kernelfailures_p.h"

#include <algorithm>

namespace monitored_threads
{

void KernelFailures::add(const QStringList& texts)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_texts.append(texts);
    m_texts.removeAll(QString()); // it is part of every line
    m_texts.removeDuplicates();
}

KernelFailures::Match KernelFailures::match(const QString& line, qint64 now_ms)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isMatch = std::any_of(m_texts.cbegin(), m_texts.cend(),
                                     [&](const QString& text) { return line.contains(text); });
    if (!isMatch)
        return Match::None;
    const bool isDue = m_lines.isDue(now_ms);
    if (!m_hasMatched.exchange(true))
        return Match::First;
    return isDue ? Match::Further : Match::FurtherUnlogged;
}

} // namespace monitored_threads
