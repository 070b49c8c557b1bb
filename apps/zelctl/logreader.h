#pragma once

#include "logselection.h"
#include "logsource.h"
#include "lossledger.h"

#include <vector>

/// Finds the selected lines of one series, in the order of its files. It keeps one block of lines
/// in memory. A line ends with a line feed or at a run of NUL characters, which a power cut leaves;
/// empty lines are skipped, and a line of more than 1 MiB counts as several.
class LogReader
{
public:
    /// The selection, and the ledger for losses in a general file, must outlive the object.
    LogReader(const LogSeries& series, const LogSelection& selection, LossLedger& ledger);

    LogSource& source() { return m_source; }
    /// From now on the end of the live file is not the end of the lines, and the line there is
    /// kept back until the machine has ended it.
    void follow() { m_isFollowing = true; }

    /// Finds the next line. Returns false if there is none, or none yet.
    bool next();
    /// The line that was found, which stays valid until the next call.
    const LogEntry& entry() const { return m_entry; }

private:
    struct Head
    {
        LogTime time;
        LogLevel::Level level;
    };
    bool nextInBlock();
    bool readHead(std::string_view line);
    void readLastHead(const char* from, const char* to);
    bool fill();
    bool readPiece();
    void endBlock(size_t end);

    const LogKind m_kind;
    const LogSelection& m_selection;
    LossLedger& m_ledger;
    LinePattern m_pattern;
    LogSource m_source;
    bool m_isFollowing = false;

    std::vector<char> m_buffer;
    size_t m_size = 0;           ///< bytes in the buffer
    const char* m_at = nullptr;  ///< the lines before it have been searched
    const char* m_end = nullptr; ///< the end of the last whole line
    Head m_head{0, LogLevel::Info};
    QString m_path;
    LogEntry m_entry;
};
