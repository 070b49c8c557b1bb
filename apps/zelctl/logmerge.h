#pragma once

#include "logreader.h"

#include <memory>
#include <vector>

/// Merges the selected lines of several series by their times. The order within each series is
/// kept, also where the clock of the machine was set back.
class LogMerge
{
public:
    /// The selection and the ledger must outlive the object.
    LogMerge(const std::vector<LogSeries>& series, const LogSelection& selection,
             LossLedger& ledger);

    /// Opens all files that can be opened.
    void open();
    /// From now on visit() also visits what the machine has added since.
    void follow();
    /// The first file that could not be opened, or read to its end, with the reason; or an empty
    /// text.
    QString error() const;

    /// Calls visit(entry) for each line that there is now, until it returns false.
    template <typename Visit>
    void visit(Visit&& visitEntry)
    {
        std::vector<LogReader*> ready;
        for (const auto& reader : m_readers) {
            if (reader->next())
                ready.push_back(reader.get());
        }
        while (!ready.empty()) {
            const auto first = earliest(ready);
            if (!visitEntry((*first)->entry()))
                return;
            if (!(*first)->next())
                ready.erase(first);
        }
    }

private:
    static std::vector<LogReader*>::iterator earliest(std::vector<LogReader*>& readers);

    std::vector<std::unique_ptr<LogReader>> m_readers;
};
