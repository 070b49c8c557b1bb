#pragma once

#include "declarativestatemachine/machinerecorder_p.h"
#include "declarativestatemachine/playedmachine_p.h"

#include <QStringList>

#include <memory>
#include <set>

namespace zeltools::declarativestatemachine
{

/// Gives a machine the events of a recording, step by step, and compares what a recorder of its own
/// sees with the entries.
class RecordingPlayer
{
public:
    /// The machine calls the actions of the description, and its guards if `usesOwnGuards`. The
    /// recording and the log, which may be null, must outlive the player.
    RecordingPlayer(const MachineRecording& recording, const StateMachineDescription& description,
                    bool usesOwnGuards, QStringList* log);
    Q_DISABLE_COPY(RecordingPlayer)

    /// Returns the first difference; an empty text if there is none. Call it once.
    QString play();

private:
    bool begin();
    void playStep();
    void causeStep();
    bool isNext(int transition);
    void compareStep();
    void compare(const MachineRecording::Entry& did);
    void follow(const MachineRecorder::Happened& happened);
    bool answerOf(int transition);
    void differ(const QString& instead);

    const MachineRecording& m_recording;
    const QVector<MachineRecording::Entry>& m_entries;
    QStringList* const m_log;
    PlayedMachine m_machine;
    const std::shared_ptr<const RecordedNames> m_names;
    MachineRecorder m_recorder;
    std::set<int> m_direct; // entered states whose direct transitions are still to come
    int m_next = 0;         // the entry that the machine has to do next
    int m_stepEnd = 0;      // the first entry of the next step
    int m_nextGuard = 0;    // the entry that may answer the next guard
    QString m_difference;
};

} // namespace zeltools::declarativestatemachine
