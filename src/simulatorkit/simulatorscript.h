#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>
#include <QVector>

#include <chrono>
#include <optional>

namespace zeltools::simulatorkit
{

/// A row of a script: the simulator waits for the trigger, and then acts.
struct SimulatorRow
{
    enum class Trigger {
        Connected,  ///< a machine has connected
        Message,    ///< the message `triggerText` has arrived
        Beginning,  ///< a message that begins with `triggerText` has arrived
        AnyMessage, ///< any message has arrived
        Period,     ///< `period` has passed since the connection or the last time
        Also        ///< the row before has been triggered
    };
    enum class Action {
        Answer,    ///< sends the message `text`
        Raw,       ///< sends the bytes `text` without a frame
        Half,      ///< sends the first half of the frame of the message `text`
        Silence,   ///< does nothing
        Disconnect ///< closes the connection
    };

    Trigger trigger = Trigger::AnyMessage;
    QByteArray triggerText;
    std::chrono::milliseconds period{};
    int maximumTriggers = 0; ///< over all connections; 0 without a limit
    std::chrono::milliseconds delay{};
    int repetitions = 1;
    std::chrono::milliseconds pause{}; ///< between two repetitions
    Action action = Action::Silence;
    QByteArray text;
};

/// The description of a simulator that `zelctl sim serve` and Simulator run. A script is a text
/// file, which docs/format-simulator.md describes:
///
///     zelsim script 1
///     when begins "grind " first 1 after 200ms answer "jam"
struct ZELTOOLS_EXPORT SimulatorScript
{
    static constexpr int maximumRows = 10000;
    static constexpr int maximumSize_B = 16 * 1024 * 1024;

    /// Returns no value if the content of a file is no script, with the line, the column and the
    /// reason in `error`.
    static std::optional<SimulatorScript> parse(const QByteArray& content, QString& error);
    /// The content of a file from which parse() makes the same rows.
    QByteArray toText() const;

    /// The time of a word such as "200ms", "1.5s" or "2min"; no value for any other word, and above
    /// one day.
    static std::optional<std::chrono::milliseconds> parseTime(const QByteArray& word);

    /// The first row must not have the trigger Also.
    QVector<SimulatorRow> rows;
};

} // namespace zeltools::simulatorkit
