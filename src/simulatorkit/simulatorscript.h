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
    /// The events that a row can wait for.
    enum class Trigger {
        Connected,  ///< A machine has connected.
        Message,    ///< The message `triggerText` has arrived.
        Beginning,  ///< A message that begins with `triggerText` has arrived.
        AnyMessage, ///< Any message has arrived.
        Period,     ///< `period` has passed since the connection or the last time
        Also        ///< The row before has been triggered.
    };
    /// The actions of a row.
    enum class Action {
        Answer,    ///< Sends the message `text`.
        Raw,       ///< Sends the bytes `text` without a frame.
        Half,      ///< Sends the first half of the frame of the message `text`.
        Silence,   ///< Does nothing.
        Disconnect ///< Closes the connection.
    };

    Trigger trigger = Trigger::AnyMessage; ///< The event that the row waits for.
    QByteArray triggerText;                ///< For Message and Beginning.
    std::chrono::milliseconds period{};    ///< For Period.
    int maximumTriggers = 0;               ///< The limit over all connections; 0 for none.
    std::chrono::milliseconds delay{};     ///< Between the trigger and the action.
    int repetitions = 1;                   ///< How often the row acts for one trigger.
    std::chrono::milliseconds pause{};     ///< Between two repetitions.
    Action action = Action::Silence;       ///< The action of the row.
    QByteArray text;                       ///< For Answer, Raw and Half.
};

/// The description of a simulator that `zelctl sim serve` and Simulator run. A script is a text
/// file, which docs/format-simulator.md describes:
///
///     zelsim script 1
///     when begins "grind " first 1 after 200ms answer "jam"
struct ZELTOOLS_EXPORT SimulatorScript
{
    /// A script with more rows is refused.
    static constexpr int maximumRows = 10000;
    /// A larger file is refused.
    static constexpr int maximumSize_B = 16 * 1024 * 1024;

    /// Returns no value if the content of a file is not a script, with the line, the column and the
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
