#pragma once

#include "declarativestatemachine/recordednames_p.h"

#include <QElapsedTimer>

#include <memory>

namespace zeltools::declarativestatemachine
{

/// Keeps the last things that an InnerMachine does in a ring that never grows. States and
/// transitions are the numbers of its DescriptionIndex. What happens is told before the actions
/// that belong to it are called. All calls come from the thread of the machine.
///
/// Entries that the ring loses are not forgotten altogether: it follows which states were active
/// after them, so that each recording begins in known states.
class MachineRecorder
{
public:
    using Kind = MachineRecording::Entry::Kind;

    struct Happened
    {
        qint64 time_ns = 0;
        int number = 0; ///< of the state or transition
        Kind kind = Kind::Started;
        bool isAccepted = false; ///< or finished
        bool beginsStep = false;
        QVariantList arguments;
    };

    /// The active states are those of a machine that runs already. The number of entries is from 1
    /// to MachineRecording::maximumEntries.
    MachineRecorder(std::shared_ptr<const RecordedNames> names, int maximumEntries,
                    bool isRunning = false, const std::vector<int>& activeStates = {});

    /// The machine starts; its initial states are entered next.
    void started();
    /// The machine no longer runs; it is finished if it has reached a final state. The states that
    /// were active are not left.
    void stopped(bool isFinished);
    void guardChecked(int transition, bool accepted, const QVariantList& arguments);
    void fired(int transition, const QVariantList& arguments);
    void entered(int state) { add(Kind::Entered, state); }
    void left(int state) { add(Kind::Left, state); }
    /// The machine looks for the transitions of its next event. What is told from here on is a step
    /// of its own.
    void stepBegun();
    void stepGoesOn() { m_isInStep = true; }
    void stepEnded() { m_isInStep = false; }

    MachineRecording recording(const QString& machine) const;
    /// The entry as a recording has it.
    MachineRecording::Entry entryOf(const Happened& happened) const;
    /// Returns the entries since the last call, oldest first.
    std::vector<Happened> take();

private:
    /// Whether the machine ran at an entry, and when the states that were active had been entered.
    struct Situation
    {
        void follow(const Happened& happened);

        bool isRunning = false;
        std::vector<qint64> since_ns; // one for each state, -1 for one that is not active
    };

    Happened& add(Kind kind, int number = 0);
    const Happened& at(int index) const; // 0 is the oldest

    const std::shared_ptr<const RecordedNames> m_names;
    const QDateTime m_start = QDateTime::currentDateTimeUtc();
    QElapsedTimer m_clock;
    std::vector<Happened> m_ring;
    int m_count = 0;
    int m_next = 0; // the place in the ring that is written next
    qint64 m_dropped = 0;
    Situation m_before; // at the oldest entry
    bool m_isStepNew = false;
    bool m_isInStep = false;
};

} // namespace zeltools::declarativestatemachine
