// Parses arbitrary bytes as a script of a simulator, or as the rows of one. What is accepted must
// be the same after it was written and read again.

#include "fuzz.h"
#include <zeltools/simulatorkit/simulatorscript.h>

using zeltools::simulatorkit::SimulatorRow;
using zeltools::simulatorkit::SimulatorScript;

namespace
{

bool isSame(const SimulatorRow& a, const SimulatorRow& b)
{
    return a.trigger == b.trigger && a.triggerText == b.triggerText && a.period == b.period &&
           a.maximumTriggers == b.maximumTriggers && a.delay == b.delay &&
           a.repetitions == b.repetitions && (a.pause == b.pause || a.repetitions == 1) &&
           a.action == b.action && a.text == b.text;
}

void parse(const QByteArray& content)
{
    QString error;
    const auto script = SimulatorScript::parse(content, error);
    require(script.has_value() == error.isEmpty());
    if (!script)
        return;
    const auto again = SimulatorScript::parse(script->toText(), error);
    require(again && again->rows.size() == script->rows.size());
    for (int i = 0; i < again->rows.size(); ++i)
        require(isSame(again->rows[i], script->rows[i]));
    require(again->toText() == script->toText());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    parse(bytes);
    parse("zelsim script 1\n" + bytes);
    return 0;
}
