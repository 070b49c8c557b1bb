#pragma once

#include "logentry.h"

/// Adds up the lines that machines tell they have lost, in lines of the general file such as
///
///     15/11/2026 03:37:40:123| Warning  | 12 lines were lost (30 since the start of process 4711):
///     …
class LossLedger
{
public:
    /// The number of lost lines that the line tells of; 0 for any other line.
    static qint64 lostLines(std::string_view line);

    /// Takes the losses in a block of whole lines.
    void scan(const char* begin, const char* end);
    struct Loss
    {
        LogTime time;
        qint64 count;
    };
    const QVector<Loss>& losses() const { return m_losses; }
    /// The lines lost between two times, both included.
    qint64 total(LogTime from, LogTime to) const;

private:
    QVector<Loss> m_losses;
};
