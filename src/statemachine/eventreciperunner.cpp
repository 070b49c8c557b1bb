#include "statemachine/eventreciperunner.h"

#include "statemachine/reciperun_p.h"

#include <QPointer>
#include <QScopeGuard>

#include <utility>

namespace tools
{

EventRecipeRunner::EventRecipeRunner(const EventRecipe& recipe, QObject* parent)
    : QObject(parent)
    , m_recipe(recipe)
{
    qRegisterMetaType<EventRecipe::Result>();
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &EventRecipeRunner::proceedUntilIdle);
}

EventRecipeRunner::~EventRecipeRunner() = default;

void EventRecipeRunner::start()
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    m_run = std::make_unique<RecipeRun>(m_recipe);
    connect(m_run.get(), &RecipeRun::woken, this, &EventRecipeRunner::proceed);
    proceed();
}

void EventRecipeRunner::cancel()
{
    if (m_isRunning)
        m_run->cancel();
}

EventRecipeRunner::Progress EventRecipeRunner::progress() const
{
    return m_run ? m_run->progress() : Progress();
}

std::vector<EventRecipeRunner::Failure> EventRecipeRunner::failures() const
{
    return m_run ? m_run->failures() : std::vector<Failure>();
}

QStringList EventRecipeRunner::journal() const
{
    return m_run ? m_run->journal() : QStringList();
}

// Like EventGroupHandler::nextEvent(): the loop of proceedUntilIdle() continues when the running
// callable returns, or the timer does so if the callable runs an event loop.
void EventRecipeRunner::proceed()
{
    constexpr int returnTime_ms = 1;
    if (!m_isProceeding)
        proceedUntilIdle();
    else if (!m_turn.isActive())
        m_turn.start(returnTime_ms);
}

void EventRecipeRunner::proceedUntilIdle()
{
    const QPointer<EventRecipeRunner> self(this);
    const bool wasProceeding = std::exchange(m_isProceeding, true);
    const auto leave = qScopeGuard([&] {
        if (!self)
            return;
        m_isProceeding = wasProceeding;
        m_turn.stop();
    });
    while (self && doNext()) {
    }
}

// Does one thing, which may destroy the runner. Returns whether there was anything to do.
bool EventRecipeRunner::doNext()
{
    if (!m_isRunning)
        return false;
    if (m_run->beginNext())
        return true;
    if (m_run->takeHasProgressed()) {
        Q_EMIT progressChanged();
        return true;
    }
    const auto result = m_run->result();
    if (!result)
        return false;
    m_isRunning = false;
    Q_EMIT finished(*result);
    return true;
}

} // namespace tools
