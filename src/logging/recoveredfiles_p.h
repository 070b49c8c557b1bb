#pragma once

#include "logging/ringdrain_p.h"

#include <array>
#include <memory>

class LogFileSet;

/// The log files of a process that has ended, as its ring describes them. They are opened when the
/// first line for them comes. The description may be damaged.
class RecoveredFiles : public RingTargets
{
public:
    static constexpr qint32 mostPredecessors = 1000;

    /// Files that `openFiles` has open are written there; it may be null.
    RecoveredFiles(RingFile& ring, LogFileSet* openFiles);
    ~RecoveredFiles() override;

    RotatingLogFile* file(int place) override;
    bool write(int place, const char* lines, qint64 size, bool isUrgent) override;

    /// Whether there were lines for a file that the ring does not name.
    bool isDamaged() const { return m_isDamaged; }

private:
    RotatingLogFile* openFile(int place) const;
    static std::unique_ptr<RotatingLogFile> open(const RingHeader::File& settings);

    RingFile& m_ring;
    LogFileSet* m_openFiles;
    bool m_isDamaged = false;
    std::array<std::unique_ptr<RotatingLogFile>, RingHeader::filesCount> m_files;
};
