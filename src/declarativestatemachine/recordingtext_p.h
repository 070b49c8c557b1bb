#pragma once

#include <zeltools/declarativestatemachine/machinerecording.h>

namespace zeltools::declarativestatemachine
{

/// The words of an entry in the text of a recording, without its time: `left "Filling"`.
QByteArray happenedText(const MachineRecording::Entry& entry);

} // namespace zeltools::declarativestatemachine
