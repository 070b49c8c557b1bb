#pragma once

#include <zeltools/system/service.h>

#include <map>
#include <memory>
#include <vector>

namespace zeltools::system
{

/// Owns the services that the application adds, one for each identifier, and forwards calls to
/// them. An identifier that was never added throws std::out_of_range. The manager belongs to one
/// thread.
class ZELTOOLS_EXPORT ServiceManager : public QObject
{
    Q_OBJECT

public:
    /// The only manager, created by the first call and never destroyed.
    static ServiceManager& instance();

    /// Adds a service, which must not be null. If the manager has a service with that identifier,
    /// it keeps it and destroys the new one.
    void add(std::unique_ptr<Service>&& service);

    /// The services in the order of their identifiers. They live as long as the manager.
    std::vector<Service*> services() const;

    /// Works like Service::available() of the service.
    bool available(Service::Id id) const;
    /// Works like Service::enabled() of the service.
    bool enabled(Service::Id id) const;
    /// Works like Service::enable() of the service.
    void enable(Service::Id id, bool on);
    /// Works like Service::refresh() of the service.
    void refresh(Service::Id id);

Q_SIGNALS:
    /// Announces a service that was added.
    void serviceAdded();
    /// Announces that one of the services was switched.
    void serviceStatusChanged();

private:
    ServiceManager();
    ~ServiceManager() override;

    std::map<Service::Id, std::unique_ptr<Service>> m_services;
};

} // namespace zeltools::system
