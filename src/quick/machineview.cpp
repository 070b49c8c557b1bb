#include "quick/machineview.h"

#include "quick/language_p.h"
#include "quick/machinewatch_p.h"
#include "statemachine/statemachine.h"

namespace zeltools::quick
{

MachineView::MachineView(QObject* parent)
    : QObject(parent)
{
    constexpr int frame_ms = 16;
    constexpr int tick_ms = 1000;
    m_frame.setSingleShot(true);
    m_frame.setInterval(frame_ms);
    m_tick.setInterval(tick_ms);
    connect(&m_frame, &QTimer::timeout, this, &MachineView::publish);
    connect(&m_tick, &QTimer::timeout, this, &MachineView::stateTimeChanged);
    connect(Language::instance(), &Language::changed, this, [this] {
        Q_EMIT machineChanged(); // for `problem`
        publish();
    });
    const MachineRegistry* const registry = MachineRegistry::instance();
    connect(registry, &MachineRegistry::offered, this, [this](QObject* offered) {
        if (offered == machine()) {
            m_watch.reset();
            setMachine(offered);
        }
    });
    connect(registry, &MachineRegistry::withdrawn, this, [this](const QObject* withdrawn) {
        if (withdrawn == machine())
            setMachine(nullptr);
    });
}

MachineView::~MachineView() = default;

QObject* MachineView::machine() const
{
    return m_watch != nullptr ? m_watch->machine() : nullptr;
}

void MachineView::setMachine(QObject* machine)
{
    if (machine == this->machine())
        return;
    m_watch.reset();
    if (machine != nullptr) {
        m_watch = std::make_unique<MachineWatch>(machine);
        connect(m_watch.get(), &MachineWatch::stepped, this, &MachineView::onMachineStep);
        // A machine that is not offered is not withdrawn either.
        connect(machine, &QObject::destroyed, m_watch.get(), [this] { setMachine(nullptr); });
    }
    Q_EMIT machineChanged();
    publish();
}

QString MachineView::name() const
{
    return m_watch != nullptr ? m_watch->name() : QString();
}

bool MachineView::hasPicture() const
{
    return track() != nullptr;
}

QString MachineView::problem() const
{
    if (m_watch == nullptr || track() != nullptr)
        return {};
    if (graph() != nullptr)
        return tr("The machine has %n state(s) and is too large for a picture.", nullptr,
                  graph()->stateCount);
    return tr("This machine is not described as data, so that there is no picture of it.");
}

bool MachineView::isRunning() const
{
    return m_watch != nullptr && viewedmachine::isRunning(m_watch->machine());
}

QString MachineView::state() const
{
    return m_watch != nullptr ? viewedmachine::stateOf(m_watch->machine()) : QString();
}

QVariantList MachineView::path() const
{
    QVariantList path;
    if (m_watch == nullptr)
        return path;
    for (const MachineWatch::Step& step : m_watch->path()) {
        const QString trigger =
            step.transition < 0 ? QString() : graph()->transitions[size_t(step.transition)].text();
        const QString way = QStringLiteral("%1 → %2").arg(step.from, step.to).trimmed();
        path.append(
            QVariantMap{{QStringLiteral("time"), step.time},
                        {QStringLiteral("from"), step.from},
                        {QStringLiteral("to"), step.to},
                        {QStringLiteral("trigger"), trigger},
                        {QStringLiteral("text"),
                         trigger.isEmpty() ? way : QStringLiteral("%1 (%2)").arg(way, trigger)}});
    }
    return path;
}

qreal MachineView::stateTime() const
{
    return isRunning() ? qreal(m_watch->stateTime().count()) : 0;
}

bool MachineView::isStateTimeKnown() const
{
    return !isRunning() || m_watch->isStateTimeKnown();
}

void MachineView::setLive(bool isLive)
{
    if (isLive == m_isLive)
        return;
    m_isLive = isLive;
    updateTick();
    Q_EMIT liveChanged();
}

const MachineGraph* MachineView::graph() const
{
    return m_watch != nullptr ? m_watch->graph() : nullptr;
}

const MachineTrack* MachineView::track() const
{
    return m_watch != nullptr ? m_watch->track() : nullptr;
}

void MachineView::onMachineStep()
{
    if (!m_frame.isActive())
        m_frame.start();
}

void MachineView::publish()
{
    m_frame.stop();
    updateTick();
    Q_EMIT changed();
    Q_EMIT stateTimeChanged();
}

// The second begins with the state, so that the time changes when it has passed.
void MachineView::updateTick()
{
    if (m_isLive && isRunning())
        m_tick.start();
    else
        m_tick.stop();
}

} // namespace zeltools::quick
