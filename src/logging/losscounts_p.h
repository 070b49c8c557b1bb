#pragma once

#include "logging/loglevel.h"
#include "logging/loglosses.h"

#include <array>
#include <atomic>

/// The numbers of lost lines by level and module. They lie in the memory of a ring, so that they
/// outlive the process, and zeros are their valid beginning.
class LossCounts
{
public:
    static constexpr size_t levelsCount = LogLevel::M4 + 1;
    static constexpr size_t modulesCount =
        65; ///< The last place counts all modules with higher ids.
    using Counts = std::array<std::array<quint64, modulesCount>, levelsCount>;

    /// Counts a line under the lowest of its modules. Any thread may call it.
    void add(LogLevel::Level level, quint64 moduleBits);
    Counts lost() const;
    /// Sets the losses that the log files tell. Only the writer of the files calls it.
    void setTold(const Counts& lost) { m_told = lost; }
    /// Takes over the losses of an earlier ring of the process. Call it before any other function.
    void continueFrom(const LossCounts& earlier);
    /// Whether the log files do not tell all losses.
    bool isUntold() const { return lost() != m_told; }
    /// The text for the log files that tells the losses up to `lost`.
    QString text(const Counts& lost, qint64 process) const;

    static LogLosses losses(const Counts& lost);

private:
    std::array<std::array<std::atomic<quint64>, modulesCount>, levelsCount> m_lost;
    Counts m_told;
};
