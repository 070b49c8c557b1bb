#include "logging/log.h"
#include "logging/logformatter.h"

namespace
{

// A line with a longer text gives its memory back, so that no thread keeps a megabyte for ever.
constexpr int s_keptCapacity = 1024;

} // namespace

// Each thread keeps one line, with the memory of its text, for the next formatter. Most lines then
// allocate no memory.
struct LogFormatter::Line::Spare
{
    // Trivial variables stay readable after the keeper is destroyed: lines are logged until the
    // very end of a thread, also by destructors.
    static thread_local Line* line;
    static thread_local bool isOver;

    ~Spare()
    {
        isOver = true;
        delete line;
        line = nullptr;
    }

    static void keepUntilThreadEnds() { static thread_local Spare keeper; }
};

thread_local LogFormatter::Line* LogFormatter::Line::Spare::line = nullptr;
thread_local bool LogFormatter::Line::Spare::isOver = false;

LogFormatter::Line* LogFormatter::Line::take(const State& state)
{
    Line* line = Spare::line;
    if (line != nullptr)
        Spare::line = nullptr;
    else
        line = new Line;
    line->references = 1;
    line->state = state;
    line->event = LogEventModule::NoneEvent;
    line->modules = Log::None;
    return line;
}

void LogFormatter::Line::release(Line* line)
{
    // A receiver may have kept a copy of the text, which must not change.
    if (!line->message.isDetached() || line->message.capacity() > s_keptCapacity)
        line->message = QString();
    else
        line->message.resize(0);
    if (Spare::line != nullptr || Spare::isOver) {
        delete line;
        return;
    }
    Spare::keepUntilThreadEnds();
    Spare::line = line;
}
