#pragma once

#include "quick/machineregistry_p.h"
#include "quick/machinetrack_p.h"

#include <QDateTime>

#include <deque>
#include <functional>
#include <optional>

namespace zeltools::declarativestatemachine
{
class DeclarativeStateMachine;
}

namespace zeltools::quick
{

/// The connections of a MachineView to its machine, and what it has learnt from them. It is
/// destroyed before the machine.
class MachineWatch : public QObject
{
    Q_OBJECT

public:
    struct Step
    {
        QDateTime time;
        QString from;
        QString to;
        int transition; ///< its number in the graph; -1 if it is not known
    };

    /// The machine is a DeclarativeStateMachine or a StateMachine; of anything else nothing is
    /// known.
    explicit MachineWatch(QObject* machine);
    ~MachineWatch() override;

    QObject* machine() const { return m_entry.machine; }
    const QString& name() const { return m_entry.name; }
    /// The graph may be too large for a picture; null if the machine has no description.
    const MachineGraph* graph() const { return m_entry.graph.get(); }
    /// Null without a graph, and if it is too large.
    const MachineTrack* track() const { return m_track ? &*m_track : nullptr; }
    const std::deque<Step>& path() const { return m_path; }
    std::chrono::milliseconds stateTime() const;
    bool isStateTimeKnown() const;

Q_SIGNALS:
    /// Emitted in the middle of a step of the machine.
    void stepped();

private:
    using Machine = declarativestatemachine::DeclarativeStateMachine;

    void readRecording(const Machine& machine);
    void onFired(int transition);
    void onStateChanged();
    void addStep(const QDateTime& time, int transition);
    void addStep(Step step);

    MachineRegistry::Entry m_entry;
    std::optional<MachineTrack> m_track;
    std::deque<Step> m_path; // the newest first
    QString m_state;         // at the last change
    bool m_wasRunning = false;
    MachineTrack::Time m_since = MachineTrack::Clock::now();
    bool m_isSinceKnown = false;
};

} // namespace zeltools::quick
