#pragma once

#include "statemachine/eventgrouphandler.h"

#include <QString>

#include <functional>
#include <memory>

namespace tools
{

/// Returns the text of the exception that is being handled.
QString currentExceptionText();

/// Returns a handler for one step of a recipe, with a connection of its own. The handler lives at
/// least until its running callable has returned, even if the callable ends the step. If a callable
/// throws while the step runs, the text of the exception goes to `failed`, which must end the step;
/// a handler that has been canceled calls nothing.
std::shared_ptr<EventGroupHandler>
makeStepHandler(const EventGroupHandler::Event& step,
                const std::function<void(const QString&)>& failed);

} // namespace tools
