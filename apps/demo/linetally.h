#pragma once

#include <QString>

#include <array>
#include <atomic>

/// The kinds of lines that the demo writes; each has one file where its lines belong, or none.
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

/// Counts the lines that are written, and afterwards those that are in the files. Every line
/// carries the mark of its kind. mark() may be called from any thread.
class LineTally
{
public:
    static constexpr int kindsCount = static_cast<int>(LineKind::M4ActuatorBoard) + 1;

    /// Counts a line and returns the text to end it with: "[info 12]".
    QString mark(LineKind kind);

    /// A table of lines written by kind and lines found in each file, predecessors included.
    QString table() const;
    /// Whether every line is where it belongs, once, and nowhere else.
    bool isComplete() const;
    /// Reads the files of the log manager.
    void readFiles(const QString& debugDir, const QString& eventsDir);

private:
    static constexpr int filesCount = 5;

    std::array<std::atomic<int>, kindsCount> m_written{};
    std::array<std::array<int, filesCount>, kindsCount> m_found{};
};
