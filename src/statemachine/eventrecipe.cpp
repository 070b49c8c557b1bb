#include "statemachine/eventrecipe.h"

namespace tools
{

EventRecipe::EventRecipe(const QString& stepName, const Event& stepEvent)
    : name(stepName)
    , isStep(true)
    , event(stepEvent)
{
}

EventRecipe::EventRecipe(const QString& groupName, Order order,
                         const std::vector<EventRecipe>& members, std::chrono::milliseconds limit)
    : name(groupName)
    , children(members)
    , maximumRunning(order == Sequence ? 1 : 0)
    , timeLimit(limit)
{
}

EventRecipe EventRecipe::withPolicy(Policy value) const
{
    EventRecipe recipe = *this;
    recipe.policy = value;
    return recipe;
}

EventRecipe EventRecipe::withMaximumRunning(int count) const
{
    EventRecipe recipe = *this;
    recipe.maximumRunning = count;
    return recipe;
}

EventRecipe EventRecipe::withSetup(const std::function<Setup()>& callable) const
{
    EventRecipe recipe = *this;
    recipe.setup = callable;
    return recipe;
}

EventRecipe EventRecipe::withDone(const std::function<void(Result)>& callable) const
{
    EventRecipe recipe = *this;
    recipe.done = callable;
    return recipe;
}

} // namespace tools
