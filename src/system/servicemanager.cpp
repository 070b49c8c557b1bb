#include "system/servicemanager.h"

#include <utility>

namespace zeltools::system
{

ServiceManager& ServiceManager::instance()
{
    static auto* const manager = new ServiceManager;
    return *manager;
}

ServiceManager::ServiceManager() = default;

ServiceManager::~ServiceManager() = default;

void ServiceManager::add(std::unique_ptr<Service>&& service)
{
    std::unique_ptr<Service> taken = std::move(service); // is destroyed if the identifier is taken
    const auto [place, isNew] = m_services.try_emplace(taken->id(), std::move(taken));
    if (!isNew)
        return;
    connect(place->second.get(), &Service::enableChanged, this,
            &ServiceManager::serviceStatusChanged);
    Q_EMIT serviceAdded();
}

std::vector<Service*> ServiceManager::services() const
{
    std::vector<Service*> services;
    for (const auto& [id, service] : m_services)
        services.push_back(service.get());
    return services;
}

bool ServiceManager::available(Service::Id id) const
{
    return m_services.at(id)->available();
}

bool ServiceManager::enabled(Service::Id id) const
{
    return m_services.at(id)->enabled();
}

void ServiceManager::enable(Service::Id id, bool on)
{
    m_services.at(id)->enable(on);
}

void ServiceManager::refresh(Service::Id id)
{
    m_services.at(id)->refresh();
}

} // namespace zeltools::system
