#include "statemachine/eventrecipe.h"

namespace tools
{

EventRecipe EventRecipe::step(const QString& name, const Event& event)
{
    EventRecipe recipe;
    recipe.name = name;
    recipe.isStep = true;
    recipe.event = event;
    return recipe;
}

EventRecipe EventRecipe::sequence(const QString& name, const std::vector<EventRecipe>& children)
{
    return parallel(name, children, 1);
}

EventRecipe EventRecipe::parallel(const QString& name, const std::vector<EventRecipe>& children,
                                  int maximumRunning)
{
    EventRecipe recipe;
    recipe.name = name;
    recipe.children = children;
    recipe.maximumRunning = maximumRunning;
    return recipe;
}

EventRecipe EventRecipe::withPolicy(Policy value) const
{
    EventRecipe recipe = *this;
    recipe.policy = value;
    return recipe;
}

EventRecipe EventRecipe::withTimeLimit(std::chrono::milliseconds time) const
{
    EventRecipe recipe = *this;
    recipe.timeLimit = time;
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
