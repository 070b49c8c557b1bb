#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>
#include <QVector>

#include <chrono>
#include <optional>

namespace zeltools::simulatorkit
{

enum class LinkSide { Machine, Simulator };

/// Something that a machine or a simulator did on the link between them.
struct ZELTOOLS_EXPORT SimulatorEvent
{
    /// The beginning and the end of a connection, and what was sent over it.
    enum class Kind {
        Connected,
        Disconnected,
        Message, ///< A whole frame; `bytes` is the message in it.
        Raw      ///< `bytes` that are not a frame, or a frame that was not completed
    };

    /// The row of a recording, with its line feed.
    QByteArray toRow() const;

    std::chrono::microseconds time{};  ///< The time since the beginning of the recording.
    LinkSide side = LinkSide::Machine; ///< Who has done it.
    Kind kind = Kind::Connected;       ///< The kind of the event.
    QByteArray bytes;                  ///< The message, or the raw bytes; empty otherwise.
    int line = 0;                      ///< The line in the file that was read.
};

/// A recording of the traffic between a machine and a simulator. LinkRecorder makes it and
/// LinkReplayer plays it. A recording is a text file, which docs/format-simulator.md describes:
///
///     zelsim recording 1
///     0 machine connected
///     1.204 machine message "status?"
///     end
struct ZELTOOLS_EXPORT SimulatorRecording
{
    /// A recording with more events is refused.
    static constexpr int maximumEvents = 4000000;
    /// A larger file is refused.
    static constexpr int maximumSize_B = 256 * 1024 * 1024;

    /// Returns no value if the content of a file is not a complete recording, with the line, the
    /// column and the reason in `error`.
    static std::optional<SimulatorRecording> parse(const QByteArray& content, QString& error);
    /// The content of a file from which parse() makes the same events.
    QByteArray toText() const;

    /// The first line of a recording.
    static QByteArray headRow();
    /// The last line of a recording.
    static QByteArray endRow();

    /// The events in the order of their times.
    QVector<SimulatorEvent> events;
    int endLine = 0; ///< The line of the word `end` in the file that was read.
};

} // namespace zeltools::simulatorkit
