// Parses arbitrary bytes as a recording of a simulation link, or as the rows of one. What is
// accepted must be the same after it was written and read again.

#include "fuzz.h"
#include <zeltools/simulatorkit/simulatorrecording.h>

using zeltools::simulatorkit::SimulatorEvent;
using zeltools::simulatorkit::SimulatorRecording;

namespace
{

bool isSame(const SimulatorEvent& a, const SimulatorEvent& b)
{
    return a.time == b.time && a.side == b.side && a.kind == b.kind && a.bytes == b.bytes;
}

void parse(const QByteArray& content)
{
    QString error;
    const auto recording = SimulatorRecording::parse(content, error);
    require(recording.has_value() == error.isEmpty());
    if (!recording)
        return;
    const auto again = SimulatorRecording::parse(recording->toText(), error);
    require(again && again->events.size() == recording->events.size());
    for (int i = 0; i < again->events.size(); ++i)
        require(isSame(again->events[i], recording->events[i]));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    parse(bytes);
    parse("zelsim recording 1\n" + bytes);
    parse("zelsim recording 1\n0 machine connected\n" + bytes + "\nend\n");
    return 0;
}
