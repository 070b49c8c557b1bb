#pragma once

#include "statemachine/eventreciperunner.h"
#include "statemachine/recipenode_p.h"

namespace tools
{

/// One run of a recipe: starts and ends its nodes and remembers what has happened. It starts
/// nothing by itself; the runner calls beginNext() in a loop, so that steps that end immediately
/// take no stack. All callables may destroy the run.
class RecipeRun : public QObject
{
    Q_OBJECT

public:
    using Result = EventRecipe::Result;
    using FailureReason = EventGroupHandler::FailureReason;

    /// The recipe must outlive the run.
    explicit RecipeRun(const EventRecipe& recipe);
    ~RecipeRun() override;

    /// Starts or ends the next node. Returns false if there is none at the moment.
    bool beginNext();
    void cancel();

    /// Whether the progress has changed since the last call.
    bool takeHasProgressed() { return std::exchange(m_hasProgressed, false); }
    /// The result of the recipe, or nothing while it runs.
    std::optional<Result> result() const { return m_result; }
    EventRecipeRunner::Progress progress() const;
    const std::vector<EventRecipeRunner::Failure>& failures() const { return m_failures; }
    QStringList journal() const { return m_journal; }

Q_SIGNALS:
    /// There is a next node, progress or the result. The signal may come from within beginNext().
    void woken();

private:
    void visit(int number);
    void begin(int number);
    void beginStep(int number);
    void beginGroup(int number);
    void openGroup(int number);
    void noteAttempt(int number);
    void endStep(int number, bool isSuccess);
    void fail(int number, FailureReason reason, const QString& exception = {});
    void noteFailure(int number, FailureReason reason, const QString& exception);
    void stop(int number, Result result);
    void endNode(int number, Result result);
    Result callDone(int number, Result result);
    void write(const RecipeNode& node, const QString& text);

    std::vector<RecipeNode> m_nodes;
    std::vector<int> m_due; // the numbers of nodes to visit, the next one last
    QStringList m_journal;
    std::vector<EventRecipeRunner::Failure> m_failures;
    std::optional<Result> m_result;
    bool m_hasProgressed = false;
};

} // namespace tools
