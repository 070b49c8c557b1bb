#include "logmerge.h"

#include <algorithm>

LogMerge::LogMerge(const std::vector<LogSeries>& series, const LogSelection& selection,
                   LossLedger& ledger)
{
    for (const LogSeries& one : series)
        m_readers.push_back(std::make_unique<LogReader>(one, selection, ledger));
}

void LogMerge::open()
{
    for (const auto& reader : m_readers)
        reader->source().open();
}

void LogMerge::follow()
{
    for (const auto& reader : m_readers)
        reader->follow();
}

QString LogMerge::error() const
{
    for (const auto& reader : m_readers) {
        QString error = reader->source().error();
        if (!error.isEmpty())
            return error;
    }
    return QString();
}

std::vector<LogReader*>::iterator LogMerge::earliest(std::vector<LogReader*>& readers)
{
    return std::min_element(readers.begin(), readers.end(),
                            [](auto* a, auto* b) { return a->entry().time < b->entry().time; });
}
