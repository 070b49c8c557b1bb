#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

#include <chrono>
#include <optional>
#include <tuple>

namespace zeltools::declarativestatemachine
{

/// The last things that a DeclarativeStateMachine did, by the names of its description: a value
/// that does not refer to the machine. toDot() draws it, and playBack() takes a machine the same
/// way again.
///
/// All times count from `start`, on a clock that nobody sets.
struct ZELTOOLS_EXPORT MachineRecording
{
    /// Entries that a recording has at most.
    static constexpr int maximumEntries = 100000;

    /// A state of the description. Of several states with the same name, `copy` is 1 for the first
    /// one in the text of the description, 2 for the second one, and so on.
    struct State
    {
        QString name; ///< The name in the description.
        int copy = 1; ///< Which of the states with this name it is, from 1.

        bool operator==(const State& other) const
        {
            return name == other.name && copy == other.copy;
        }
        bool operator<(const State& other) const
        {
            return std::tie(name, copy) < std::tie(other.name, other.copy);
        }
    };

    /// A transition of the description.
    struct Transition
    {
        State source;   ///< The state that has the transition.
        int number = 0; ///< The number in its state, from 1.

        bool operator==(const Transition& other) const
        {
            return source == other.source && number == other.number;
        }
        bool operator<(const Transition& other) const
        {
            return std::tie(source, number) < std::tie(other.source, other.number);
        }
    };

    /// An argument of a signal. The value is kept if it is a bool, an integer (an enumerator is an
    /// `int`), a floating-point number (as `double`), or a QString or QByteArray of at most 256
    /// characters or bytes; it is invalid for anything else.
    struct Argument
    {
        QByteArray type; ///< The name of the type.
        QVariant value;  ///< The value; invalid if the recording does not keep it.
    };

    /// A machine steps from states to states in this order: it asks guards, leaves states, fires
    /// transitions (which call their actions) and enters states. A step in which no guard accepts
    /// has guards only.
    struct Entry
    {
        /// The machine has started or stopped, a guard has answered, a state was left, a transition
        /// has fired, or a state was entered.
        enum Kind : quint8 { Started, Stopped, Guard, Left, Fired, Entered };

        Kind kind = Started;               ///< The kind of the event.
        std::chrono::microseconds time{0}; ///< The time since `start`.
        bool beginsStep = true; ///< False if the entry belongs to the step of the one before.
        /// Guard, Fired: the transition. Left, Entered: its source is the state.
        Transition transition;
        QString trigger; ///< Guard, Fired: "direct", "timeout 500ms", "signal Tank::full(int)".
        bool isAccepted = false;     ///< Guard: the answer.
        bool isFinished = false;     ///< Stopped: the machine had reached a final state.
        QVector<Argument> arguments; ///< Guard, Fired: the arguments of the signal.
    };

    /// A state that was active already at the first entry.
    struct ActiveState
    {
        State state; ///< A state that was active then.
        /// The time of its entry since `start`; 0 if it was active then.
        std::chrono::microseconds since{0};
    };

    QString machine;                       ///< The name in the description.
    QDateTime start;                       ///< The time of day when the recording began.
    std::chrono::microseconds duration{0}; ///< The time from `start` until this value was made.
    qint64 dropped = 0;                    ///< Older entries, which are lost.
    bool wasRunning = false;               ///< Whether the machine ran at the first entry.
    /// The states that were active before the first entry.
    QVector<ActiveState> activeBefore;
    QVector<Entry> entries; ///< Oldest first.
    /// Whether the value was made inside the last step, such as in an action.
    bool isStepUnfinished = false;

    /// The recording as text of at most 16 MiB, which docs/format-machine-recording.md describes.
    /// The text leaves out the oldest steps if there are too many, and counts them in `dropped`.
    QByteArray toText() const;
    /// Reads what toText() has written. Returns no value for anything else, with line, column and
    /// reason in `error`.
    static std::optional<MachineRecording> fromText(const QByteArray& text, QString& error);

    /// The states that are active after the last entry, in the order in which they were entered;
    /// empty for a machine that has stopped.
    QVector<State> currentStates() const;
    /// How long each state was active, up to the end of the recording. A state that was not active
    /// is missing. The time of states that were left in lost entries is lost too.
    QMap<State, std::chrono::microseconds> timesSpent() const;
    /// How often each transition fired. One that did not is missing.
    QMap<Transition, int> timesFired() const;
};

} // namespace zeltools::declarativestatemachine
