#pragma once

#include <QString>

#include <array>
#include <atomic>

/// The kinds of lines that the demo writes. The lines of a kind go to one file or to none.
enum class LineKind {
    DebugOff,
    DebugOn,
    Info,
    Warning,
    Error,
    Critical,
    QtMessage,
    Failure,
    Event,
    Grinder,
    Capsule,
    M4ActuatorBoard
};

/// Counts the written lines, and afterwards the lines in the files. Each line ends with a mark of
/// its kind. Any thread may call mark().
class LineTally
{
public:
    static constexpr int kindsCount = static_cast<int>(LineKind::M4ActuatorBoard) + 1;

    /// Counts a line and returns its mark, such as "[info 12]".
    QString mark(LineKind kind);

    /// A table of the written lines by kind and of the lines found in each file and its
    /// predecessor.
    QString table() const;
    /// Whether every line is in its file once and in no other file.
    bool isComplete() const;
    /// Reads the files of the log manager.
    void readFiles(const QString& debugDir, const QString& eventsDir);

private:
    static constexpr int filesCount = 5;

    std::array<std::atomic<int>, kindsCount> m_written{};
    std::array<std::array<int, filesCount>, kindsCount> m_found{};
};
