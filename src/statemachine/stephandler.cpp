#include "statemachine/stephandler_p.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tools
{

namespace
{

template <typename Value, typename... Arguments>
std::function<Value(Arguments...)> guarded(const std::function<Value(Arguments...)>& callable,
                                           const std::weak_ptr<EventGroupHandler>& handler,
                                           const std::function<void(const QString&)>& failed)
{
    return [=](Arguments... arguments) -> Value {
        const auto kept = handler.lock();
        try {
            return callable(std::forward<Arguments>(arguments)...);
        } catch (...) {
            if (kept && kept->isRunning())
                failed(currentExceptionText());
        }
        return Value();
    };
}

} // namespace

QString currentExceptionText()
{
    try {
        throw;
    } catch (const std::exception& exception) {
        return QString::fromLocal8Bit(exception.what());
    } catch (...) {
        return QStringLiteral("unknown exception");
    }
}

std::shared_ptr<EventGroupHandler>
makeStepHandler(const EventGroupHandler::Event& step,
                const std::function<void(const QString&)>& failed)
{
    auto handler = std::make_shared<EventGroupHandler>(step);
    handler->setConnectionScope(EventGroupHandler::ConnectionScope::Handler);
    EventGroupHandler::Event event = step;
    // The time limit of a group can only end a step that returns to the event loop.
    using std::chrono::milliseconds;
    BackOff& pauses = event.backOff;
    if (event.attempts == 0)
        pauses = {std::max(pauses.firstPause, milliseconds(1)), std::max(pauses.factor, 1.0),
                  std::max(pauses.maximum, milliseconds(1))};
    event.trigger = guarded(step.trigger, handler, failed);
    event.connect = guarded(step.connect, handler, failed);
    event.check = guarded(step.check, handler, failed);
    handler->addEvent(event);
    return handler;
}

} // namespace tools
