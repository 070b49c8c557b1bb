#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/lognode.h"
#include "logging/logrenderer.h"

#include <utility>

namespace
{

// A line with a longer text gives its memory back, so that no thread keeps a megabyte for ever.
constexpr int s_keptCapacity = 1024;

} // namespace

// Each thread keeps one line, with the memory of its text, for the next formatter. Most lines then
// allocate no memory.
struct Q_DECL_HIDDEN LogFormatter::Line::Spare
{
    enum Keeper { NotCreated, Alive, Destroyed };

    // A trivial variable stays readable after the keeper is destroyed: lines are logged until the
    // very end of a thread, also by destructors.
    Line* line;
    Keeper keeper;

    static thread_local Spare ofThread;

    /// Creates the object that deletes the line when the thread ends.
    static void createKeeper();
};

thread_local LogFormatter::Line::Spare LogFormatter::Line::Spare::ofThread{nullptr, NotCreated};

void LogFormatter::Line::Spare::createKeeper()
{
    struct KeeperOfThread
    {
        KeeperOfThread() { ofThread.keeper = Alive; }
        ~KeeperOfThread()
        {
            ofThread.keeper = Destroyed;
            delete std::exchange(ofThread.line, nullptr);
        }
    };
    static thread_local const KeeperOfThread keeper;
}

LogFormatter::Line& LogFormatter::line() const
{
    if (m_line == nullptr)
        m_line = Line::take(m_state);
    return *m_line;
}

void LogFormatter::release()
{
    if (--line().references == 0)
        finish();
}

void LogFormatter::finish()
{
    Line* line = m_line;
    if (line->state.isCollected) {
        line->end();
        QString& message = line->message;
        if (line->state.level == LogLevel::Event) {
            message = QLatin1Char(' ') + LogRenderer::eventToString(line->event) +
                      QLatin1String("| ") + message;
            LogNode::announceEvent(line->event, message);
        }
        LogNode::log(line->state.level, line->modules, message);
    }
    Line::release(line);
}

LogFormatter::Line* LogFormatter::Line::take(const State& state)
{
    Line* line = std::exchange(Spare::ofThread.line, nullptr);
    if (line == nullptr)
        line = new Line;
    line->references = 1;
    line->state = state;
    line->size = 0;
    line->event = LogEventModule::NoneEvent;
    line->modules = Log::None;
    return line;
}

void LogFormatter::Line::endItem()
{
    if (state.isSpaced)
        append(' ');
}

void LogFormatter::Line::useMessage()
{
    message.setUnicode(reinterpret_cast<const QChar*>(text.data()), size);
}

void LogFormatter::Line::end()
{
    if (debug) {
        const bool isSpaced = debug->autoInsertSpaces();
        debug.reset();
        if (isSpaced && message.endsWith(QLatin1Char(' ')))
            message.chop(1);
        return;
    }
    if (state.isSpaced && size > 0 && text[size_t(size) - 1] == ' ')
        --size;
    useMessage();
}

void LogFormatter::Line::release(Line* line)
{
    // A receiver may have kept a copy of the text, which must not change.
    if (!line->message.isDetached() || line->message.capacity() > s_keptCapacity)
        line->message = QString();
    Spare& spare = Spare::ofThread;
    if (spare.line != nullptr || spare.keeper == Spare::Destroyed) {
        delete line;
        return;
    }
    spare.line = line;
    if (spare.keeper == Spare::NotCreated)
        Spare::createKeeper();
}
