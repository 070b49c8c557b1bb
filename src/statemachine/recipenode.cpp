#include "statemachine/recipenode_p.h"

namespace tools
{

std::vector<RecipeNode> RecipeNode::list(const EventRecipe& recipe)
{
    std::vector<RecipeNode> nodes;
    const auto append = [&](const EventRecipe& added, int owner) {
        RecipeNode node;
        node.recipe = &added;
        node.parent = owner;
        nodes.push_back(std::move(node));
        nodes.back().nextChild = static_cast<int>(nodes.size());
    };
    append(recipe, -1);
    std::vector<std::size_t> childCounts{0}; // for each open node, how many children are listed
    for (int open = 0; open >= 0;) {
        const auto& children = nodes[open].recipe->children;
        if (childCounts.back() < children.size()) {
            append(children[childCounts.back()++], open);
            open = static_cast<int>(nodes.size()) - 1;
            childCounts.push_back(0);
        } else {
            nodes[open].end = static_cast<int>(nodes.size());
            open = nodes[open].parent;
            childCounts.pop_back();
        }
    }
    return nodes;
}

std::optional<EventRecipe::Result> RecipeNode::outcome() const
{
    using Policy = EventRecipe::Policy;
    const Policy policy = recipe->policy;
    const bool isDecided = (policy == Policy::StopOnError && hasFailure) ||
                           (policy == Policy::StopOnSuccess && hasSuccess);
    if (!isDecided && (runningChildren > 0 || nextChild < end))
        return std::nullopt;
    const bool isSuccess = policy == Policy::StopOnSuccess ? hasSuccess : !hasFailure;
    return isSuccess ? EventRecipe::Result::Success : EventRecipe::Result::Failure;
}

bool RecipeNode::canBeginChild() const
{
    const int maximum = recipe->maximumRunning;
    return nextChild < end && (maximum <= 0 || runningChildren < maximum);
}

QString RecipeNode::resultText(EventRecipe::Result result) const
{
    switch (result) {
    case EventRecipe::Result::Success:
        return QStringLiteral("succeeded");
    case EventRecipe::Result::Canceled:
        return QStringLiteral("canceled");
    case EventRecipe::Result::Skipped:
        return QStringLiteral("skipped");
    case EventRecipe::Result::Failure:
        break;
    }
    const QString failed = QStringLiteral("failed");
    return failure.isEmpty() ? failed : failed + QStringLiteral(" (%1)").arg(failure);
}

} // namespace tools
