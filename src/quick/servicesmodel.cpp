#include "quick/servicesmodel.h"

#include "quick/access.h"
#include "system/servicemanager.h"

#include <QMetaEnum>

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

using system::Service;
using system::ServiceManager;

namespace
{

QString nameOf(const Service& service)
{
    return QString::fromLatin1(QMetaEnum::fromType<Service::Id>().valueToKey(service.id()));
}

} // namespace

ServicesModel::ServicesModel(QObject* parent)
    : CountedModel(parent)
{
    const ServiceManager* const manager = &ServiceManager::instance();
    connect(manager, &ServiceManager::serviceAdded, this, &ServicesModel::addServices);
    connect(manager, &ServiceManager::serviceStatusChanged, this, &ServicesModel::updateStates);
    addServices();
}

ServicesModel::~ServicesModel() = default;

void ServicesModel::addServices()
{
    for (Service* const service : ServiceManager::instance().services()) {
        if (std::any_of(m_rows.begin(), m_rows.end(),
                        [&](const Row& row) { return row.service == service; }))
            continue;
        const bool isEnabled = service->enabled();
        beginInsertRows({}, count(), count());
        m_rows.push_back({service, isEnabled});
        endInsertRows();
    }
}

void ServicesModel::updateStates()
{
    for (int row = 0; row < count(); ++row) {
        Row& kept = m_rows[static_cast<size_t>(row)];
        const bool isEnabled = kept.service->enabled();
        if (isEnabled == std::exchange(kept.isEnabled, isEnabled))
            continue;
        Q_EMIT dataChanged(index(row), index(row), {IsEnabledRole});
    }
}

QString ServicesModel::setEnabled(int row, bool isEnabled)
{
    const Access& access = *Access::instance();
    QString refusal = access.refusal(Access::Operator);
    if (!refusal.isEmpty())
        return refusal;
    if (row < 0 || row >= count())
        return tr("There is no such service.");
    Service& service = *m_rows[static_cast<size_t>(row)].service;
    if (service.enabled() == isEnabled)
        return {};
    service.enable(isEnabled);
    if (service.enabled() != isEnabled)
        return tr("The service could not be switched.");
    access.recordChange(QStringLiteral("Service %1 switched %2")
                            .arg(nameOf(service), QLatin1String(isEnabled ? "on" : "off")));
    return {};
}

int ServicesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ServicesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows[static_cast<size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return nameOf(*row.service);
    case IdRole:
        return static_cast<int>(row.service->id());
    case IsAvailableRole:
        return row.service->available();
    case IsEnabledRole:
        return row.isEnabled;
    default:
        return {};
    }
}

QHash<int, QByteArray> ServicesModel::roleNames() const
{
    return {{NameRole, "name"},
            {IdRole, "id"},
            {IsAvailableRole, "isAvailable"},
            {IsEnabledRole, "isEnabled"}};
}

} // namespace zeltools::quick
