#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>

namespace zeltools::declarativestatemachine
{

/// The largest text of a recording that is written and read.
constexpr int maximumTextSize_B = 16 * 1024 * 1024;

/// The recording without this number of its oldest entries; the next one must begin a step.
MachineRecording withoutOldest(const MachineRecording& recording, int count);

/// The words of an entry in the text of a recording, without its time: `left "Filling"`.
QByteArray happenedText(const MachineRecording::Entry& entry);

} // namespace zeltools::declarativestatemachine
