#include "quick/threadsmodel.h"

#include "quick/displaytext_p.h"
#include "quick/rowsupdate_p.h"

#include <utility>

namespace zeltools::quick
{

using monitored_threads::Monitor;

ThreadsModel::ThreadsModel(QObject* parent)
    : ThreadsModel(*Monitor::instance(), parent)
{
}

ThreadsModel::ThreadsModel(Monitor& monitor, QObject* parent)
    : CountedModel(parent)
    , m_monitor(monitor)
{
    connect(&monitor, &Monitor::stateChanged, this, &ThreadsModel::update, Qt::QueuedConnection);
    connect(&monitor, &Monitor::itemsChanged, this, &ThreadsModel::update, Qt::QueuedConnection);
    followLanguage();
    m_timer.setInterval(std::chrono::seconds(1));
    connect(&m_timer, &QTimer::timeout, this, &ThreadsModel::update);
    update();
}

ThreadsModel::~ThreadsModel() = default;

bool ThreadsModel::isEnabled() const
{
    return m_monitor.isEnabled();
}

void ThreadsModel::setLive(bool on)
{
    if (on == isLive())
        return;
    if (on) {
        update();
        m_timer.start();
    } else {
        m_timer.stop();
    }
    Q_EMIT isLiveChanged();
}

void ThreadsModel::update()
{
    RowsUpdate::apply(*this, m_rows, m_monitor.items(), [](const Monitor::Item& item) {
        return std::make_pair(item.name, item.thread);
    });
}

int ThreadsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ThreadsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    const Monitor::Item& item = m_rows[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return DisplayText(item.name).text;
    case ThreadRole:
        return item.thread;
    case StateRole:
        return int(item.state);
    case StateNameRole:
        switch (item.state) {
        case Monitor::State::OnTime:
            return tr("on time");
        case Monitor::State::Late:
            return tr("late");
        case Monitor::State::Stalled:
            return tr("stalled");
        case Monitor::State::Paused:
            return tr("paused");
        }
        return {};
    case SinceTickRole:
        return qint64(item.sinceTick.count());
    case CallStackRole:
        return item.callStack;
    default:
        return {};
    }
}

QHash<int, QByteArray> ThreadsModel::roleNames() const
{
    return {{NameRole, "name"},           {ThreadRole, "thread"},
            {StateRole, "state"},         {StateNameRole, "stateName"},
            {SinceTickRole, "sinceTick"}, {CallStackRole, "callStack"}};
}

} // namespace zeltools::quick
