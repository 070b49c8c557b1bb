#include "quick/machinesmodel.h"

#include "quick/machineregistry_p.h"

#include <algorithm>

namespace zeltools::quick
{

MachinesModel::MachinesModel(QObject* parent)
    : CountedModel(parent)
{
    constexpr int frame_ms = 16;
    m_frame.setSingleShot(true);
    m_frame.setInterval(frame_ms);
    connect(&m_frame, &QTimer::timeout, this, &MachinesModel::refresh);
    const MachineRegistry* const registry = MachineRegistry::instance();
    connect(registry, &MachineRegistry::offered, this, &MachinesModel::onOffered);
    connect(registry, &MachineRegistry::withdrawn, this, &MachinesModel::onWithdrawn);
    for (const MachineRegistry::Entry& entry : registry->entries())
        onOffered(entry.machine);
}

MachinesModel::~MachinesModel() = default;

int MachinesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant MachinesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows[index.row()];
    switch (role) {
    case NameRole:
        return row.name;
    case MachineRole:
        return QVariant::fromValue(row.machine);
    case StateRole:
        return row.state;
    case IsRunningRole:
        return row.isRunning;
    case HasPictureRole:
        return row.hasPicture;
    default:
        return {};
    }
}

QHash<int, QByteArray> MachinesModel::roleNames() const
{
    return {{NameRole, "name"},
            {MachineRole, "machine"},
            {StateRole, "state"},
            {IsRunningRole, "isRunning"},
            {HasPictureRole, "hasPicture"}};
}

MachinesModel::Row MachinesModel::rowOf(QObject* machine)
{
    const MachineRegistry::Entry entry = MachineRegistry::instance()->entryOf(machine);
    const bool hasPicture = entry.graph != nullptr && !entry.graph->isTooLarge();
    return {
        machine,    entry.name, viewedmachine::stateOf(machine), viewedmachine::isRunning(machine),
        hasPicture, false};
}

int MachinesModel::indexOf(const QObject* machine) const
{
    const auto found = std::find_if(m_rows.begin(), m_rows.end(),
                                    [&](const Row& row) { return row.machine == machine; });
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void MachinesModel::onOffered(QObject* machine)
{
    const int known = indexOf(machine);
    if (known >= 0) {
        m_rows[known] = rowOf(machine);
        Q_EMIT dataChanged(index(known), index(known));
        return;
    }
    viewedmachine::follow(machine, this, [this, machine] { onStateChanged(machine); });
    beginInsertRows({}, count(), count());
    m_rows.append(rowOf(machine));
    endInsertRows();
}

void MachinesModel::onWithdrawn(QObject* machine)
{
    const int row = indexOf(machine);
    if (row < 0)
        return;
    disconnect(machine, nullptr, this, nullptr);
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

void MachinesModel::onStateChanged(const QObject* machine)
{
    const int row = indexOf(machine);
    if (row < 0)
        return;
    m_rows[row].isStale = true;
    if (!m_frame.isActive())
        m_frame.start();
}

void MachinesModel::refresh()
{
    for (int i = 0; i < count(); ++i) {
        if (!m_rows[i].isStale)
            continue;
        m_rows[i] = rowOf(m_rows[i].machine);
        Q_EMIT dataChanged(index(i), index(i), {StateRole, IsRunningRole});
    }
}

} // namespace zeltools::quick
