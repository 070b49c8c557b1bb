#include "statemachine/reciperun_p.h"

#include "statemachine/stephandler_p.h"
#include "statemachine/timerinterval_p.h"

#include <QMetaEnum>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace tools
{

using State = RecipeNode::State;

RecipeRun::RecipeRun(const EventRecipe& recipe)
    : m_nodes(RecipeNode::list(recipe))
    , m_due{0}
{
}

// A handler outlives the run if one of its callables is running.
RecipeRun::~RecipeRun()
{
    for (const RecipeNode& node : m_nodes) {
        if (node.handler == nullptr)
            continue;
        node.handler->disconnect(this);
        node.handler->cancel();
    }
}

bool RecipeRun::beginNext()
{
    if (m_due.empty())
        return false;
    const int number = m_due.back();
    m_due.pop_back();
    visit(number);
    return true;
}

void RecipeRun::cancel()
{
    if (m_nodes.front().state == State::New) // A receiver of finished() has just started the run.
        m_nodes.front().state = State::Running;
    const QPointer<RecipeRun> self(this);
    stop(0, Result::Canceled);
    if (self)
        Q_EMIT woken();
}

EventRecipeRunner::Progress RecipeRun::progress() const
{
    EventRecipeRunner::Progress progress;
    int ended = 0; // all nodes before this number have ended
    for (int number = 0; number < static_cast<int>(m_nodes.size()); ++number) {
        const RecipeNode& node = m_nodes[number];
        if (node.state == State::Ended)
            ended = std::max(ended, node.end);
        if (!node.recipe->isStep)
            continue;
        ++progress.stepCount;
        if (number < ended)
            ++progress.endedSteps;
        else if (node.handler)
            progress.runningSteps.push_back({node.recipe->name, node.handler->progress().attempt});
    }
    return progress;
}

// A group begins at most one child in each visit, so that a child that fails at once stops the
// others before they begin.
void RecipeRun::visit(int number)
{
    RecipeNode& node = m_nodes[number];
    if (node.state == State::New) {
        if (node.parent < 0 || m_nodes[node.parent].state == State::Running)
            begin(number);
        return;
    }
    if (node.state != State::Running || !node.isSetUp)
        return;
    if (const auto outcome = node.outcome()) {
        stop(number, *outcome);
    } else if (node.canBeginChild()) {
        m_due.push_back(number);
        m_due.push_back(node.nextChild);
        node.nextChild = m_nodes[node.nextChild].end;
    }
}

void RecipeRun::begin(int number)
{
    RecipeNode& node = m_nodes[number];
    node.state = State::Running;
    if (node.parent >= 0)
        ++m_nodes[node.parent].runningChildren;
    write(node, QStringLiteral("started"));
    if (node.recipe->isStep)
        beginStep(number);
    else
        beginGroup(number);
}

void RecipeRun::beginStep(int number)
{
    const QPointer<RecipeRun> self(this);
    const auto handler =
        makeStepHandler(m_nodes[number].recipe->event, [self, number](const QString& exception) {
            if (RecipeRun* const run = self)
                run->fail(number, FailureReason::Exception, exception);
        });
    m_nodes[number].handler = handler;
    connect(handler.get(), &EventGroupHandler::progressChanged, this, [=] { noteAttempt(number); });
    connect(handler.get(), &EventGroupHandler::success, this, [=] { endStep(number, true); });
    connect(handler.get(), &EventGroupHandler::failure, this, [=] { endStep(number, false); });
    connect(handler.get(), &EventGroupHandler::canceled, this, [=] { endStep(number, false); });
    handler->start();
}

void RecipeRun::beginGroup(int number)
{
    const QPointer<RecipeRun> self(this);
    const auto setup = m_nodes[number].recipe->setup; // A copy: it may destroy the runner.
    auto answer = EventRecipe::Setup::Run;
    std::optional<QString> exception;
    try {
        if (setup)
            answer = setup();
    } catch (...) {
        exception = currentExceptionText();
    }
    if (!self || m_nodes[number].state != State::Running)
        return;
    if (exception)
        fail(number, FailureReason::Exception, *exception);
    else if (answer == EventRecipe::Setup::Fail)
        fail(number, FailureReason::FailedByCaller);
    else if (answer == EventRecipe::Setup::Skip)
        stop(number, Result::Skipped);
    else
        openGroup(number);
}

void RecipeRun::openGroup(int number)
{
    RecipeNode& node = m_nodes[number];
    node.isSetUp = true;
    m_due.push_back(number);
    if (node.recipe->timeLimit.count() <= 0)
        return;
    node.timeLimit = std::make_unique<QTimer>();
    node.timeLimit->setSingleShot(true);
    connect(node.timeLimit.get(), &QTimer::timeout, this,
            [=] { fail(number, FailureReason::Timeout); });
    node.timeLimit->start(timerInterval(node.recipe->timeLimit));
}

void RecipeRun::noteAttempt(int number)
{
    const RecipeNode& node = m_nodes[number];
    const unsigned int attempt = node.handler->progress().attempt;
    if (attempt > 1)
        write(node, QStringLiteral("attempt %1").arg(attempt));
    m_hasProgressed = true;
    Q_EMIT woken();
}

void RecipeRun::endStep(int number, bool isSuccess)
{
    const RecipeNode& node = m_nodes[number];
    if (!isSuccess) {
        fail(number, node.handler->lastFailure().reason);
    } else if (node.state == State::Running) {
        stop(number, Result::Success);
        Q_EMIT woken();
    }
}

void RecipeRun::fail(int number, FailureReason reason, const QString& exception)
{
    if (m_nodes[number].state != State::Running)
        return;
    const QPointer<RecipeRun> self(this);
    noteFailure(number, reason, exception);
    stop(number, Result::Failure);
    if (self)
        Q_EMIT woken();
}

void RecipeRun::noteFailure(int number, FailureReason reason, const QString& exception)
{
    RecipeNode& node = m_nodes[number];
    m_failures.push_back({node.recipe->name, reason, exception});
    const char* const key =
        QMetaEnum::fromType<FailureReason>().valueToKey(static_cast<int>(reason));
    node.failure =
        QLatin1String(key) + (exception.isEmpty() ? exception : QStringLiteral(": ") + exception);
}

// Cancels the descendants of a node, the last one first, and ends the node.
void RecipeRun::stop(int number, Result result)
{
    const QPointer<RecipeRun> self(this);
    const int end = m_nodes[number].end;
    for (int i = number; i < end; ++i) {
        if (m_nodes[i].state == State::Running)
            m_nodes[i].state = State::Stopping;
    }
    for (int i = end - 1; i >= number && self; --i) {
        if (m_nodes[i].state == State::Stopping)
            endNode(i, i == number ? result : Result::Canceled);
    }
}

void RecipeRun::endNode(int number, Result result)
{
    m_nodes[number].state = State::Ending;
    m_nodes[number].timeLimit.reset();
    if (const auto handler = std::exchange(m_nodes[number].handler, nullptr)) {
        handler->disconnect(this);
        handler->cancel();
    }
    const QPointer<RecipeRun> self(this);
    result = callDone(number, result);
    if (!self)
        return;
    RecipeNode& node = m_nodes[number];
    node.state = State::Ended;
    m_hasProgressed = true;
    write(node, node.resultText(result));
    if (node.parent < 0) {
        m_result = result;
        return;
    }
    RecipeNode& parent = m_nodes[node.parent];
    --parent.runningChildren;
    parent.hasSuccess |= result == Result::Success;
    parent.hasFailure |= result == Result::Failure;
    m_due.push_back(node.parent);
}

EventRecipe::Result RecipeRun::callDone(int number, Result result)
{
    const QPointer<RecipeRun> self(this);
    const auto done = m_nodes[number].recipe->done; // A copy: it may destroy the runner.
    try {
        if (done && m_nodes[number].isSetUp)
            done(result);
    } catch (...) {
        if (self)
            noteFailure(number, FailureReason::Exception, currentExceptionText());
        return result == Result::Success ? Result::Failure : result;
    }
    return result;
}

void RecipeRun::write(const RecipeNode& node, const QString& text)
{
    constexpr int maximumLines = 10000;
    if (m_journal.size() == maximumLines)
        m_journal.removeFirst();
    m_journal.append(node.recipe->name + QLatin1String(": ") + text);
}

} // namespace tools
