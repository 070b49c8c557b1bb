#pragma once

#include "logging/ringdrain_p.h"

#include <array>
#include <atomic>

class LogFileSet;
struct RotatingLogFileConfiguration;

/// The log files of a ring in use: the five of the manager and those of LogInFile. The ring has the
/// path and the limits of each, so that a recovery can write to it. Any thread may call the
/// functions.
class RingPlaces : public RingTargets
{
public:
    RingPlaces(RingHeader& header, LogFileSet& files);

    /// Gives a file a place in the ring, so that RingLine::file can name it. Returns -1 if all
    /// places are taken or the path is too long. Waits for nothing.
    int add(RotatingLogFile* file, const RotatingLogFileConfiguration& configuration);
    /// Frees the place. The ring must have no lines for it any more.
    void remove(int place) { m_traceFiles[size_t(place)] = nullptr; }
    /// Updates the limits of the five files.
    void describeSet();

    RotatingLogFile* file(int place) override;
    bool write(int place, const char* lines, qint64 size, bool isUrgent) override;

private:
    RingHeader& m_header;
    LogFileSet& m_files;
    std::array<std::atomic<RotatingLogFile*>, RingHeader::filesCount> m_traceFiles = {};
};
