#pragma once

#include "statemachine/eventrecipe.h"

#include <QTimer>

#include <memory>
#include <optional>
#include <vector>

namespace tools
{

/// A step or group of a recipe while the recipe runs. Nodes are numbered in pre-order: the
/// descendants of a node have the numbers behind its own, up to its end.
struct RecipeNode
{
    /// A node that is Stopping starts no more children; one that is Ending calls `done`.
    enum class State { New, Running, Stopping, Ending, Ended };

    /// Numbers the nodes of a recipe. They refer to the recipe, which must outlive them.
    static std::vector<RecipeNode> list(const EventRecipe& recipe);

    /// How a group ends that has nothing more to do, or nothing if it has.
    std::optional<EventRecipe::Result> outcome() const;
    bool canBeginChild() const;
    /// The result as the journal has it.
    QString resultText(EventRecipe::Result result) const;

    const EventRecipe* recipe = nullptr;
    int parent = -1; // -1 for the recipe as a whole
    int end = 0;     // the number behind the last descendant
    State state = State::New;
    int nextChild = 0;
    int runningChildren = 0;
    bool hasSuccess = false; // whether a child has succeeded
    bool hasFailure = false;
    bool isSetUp = false;
    QString failure;                            // the reason as text
    std::unique_ptr<QTimer> timeLimit;          // of a group
    std::shared_ptr<EventGroupHandler> handler; // of a step that runs
};

} // namespace tools
