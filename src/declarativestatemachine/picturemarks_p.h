#pragma once

#include <QStringList>

#include <chrono>
#include <vector>

namespace zeltools::declarativestatemachine
{

class DescriptionIndex;
class RecordedNames;
struct MachineRecording;

/// The marks that a recording makes in a picture: texts and attributes for Graphviz, by the numbers
/// of DescriptionIndex. Line widths and fills tell the same as the colours, for readers who cannot
/// tell these apart. Entries that do not fit to the description are left out and counted.
class PictureMarks
{
public:
    /// Marks nothing: all texts and attributes are empty.
    PictureMarks() = default;
    PictureMarks(const DescriptionIndex& index, const MachineRecording& recording);

    /// The machine, the recording and what the marks mean; empty without a recording.
    const QString& caption() const { return m_caption; }
    /// How long the state was active and how often it was entered, such as "1.2 s in 3 visits".
    QString stateText(int state) const;
    /// For a node, or for the frame of a state with children. Those of a state that is not active
    /// have a white fill.
    QStringList stateAttributes(int state, bool isFrame) const;
    /// How often the transition fired, such as "3x"; empty for a transition that did not.
    QString transitionText(int transition) const;
    QStringList transitionAttributes(int transition) const;
    /// For the arrow to the initial child of a state, or to that of the machine for -1.
    QStringList initialAttributes(int state) const;

private:
    struct State
    {
        std::chrono::microseconds spent{0};
        int visits = 0;
        int entriesByDefault = 0; ///< the visits in which its initial child was entered with it
        bool isPresent = false;
    };

    void readEntries(const RecordedNames& names, const MachineRecording& recording);
    void readStates(const RecordedNames& names, const MachineRecording& recording);
    void countDefaultEntries(const DescriptionIndex& index);

    std::vector<State> m_states;
    std::vector<int> m_timesFired; // of each transition
    int m_starts = 0;
    int m_misfits = 0;
    QString m_caption;
};

} // namespace zeltools::declarativestatemachine
