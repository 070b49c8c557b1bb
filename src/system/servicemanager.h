#pragma once

#include <zeltools/system/service.h>

#include <map>
#include <memory>

namespace zeltools::system
{

/// Owns the services that the application adds, one for each identifier, and passes on what is
/// asked of them. An identifier that was never added throws std::out_of_range. Belongs to one
/// thread.
class ZELTOOLS_EXPORT ServiceManager : public QObject
{
    Q_OBJECT

public:
    /// Created by the first call and never destroyed.
    static ServiceManager& instance();

    /// The service must not be null. Where there is one with its identifier already, that one stays
    /// and the new one is destroyed.
    void add(std::unique_ptr<Service>&& service);

    bool available(Service::Id id) const;
    bool enabled(Service::Id id) const;
    void enable(Service::Id id, bool on);
    void refresh(Service::Id id);

Q_SIGNALS:
    /// One of the services was switched.
    void serviceStatusChanged();

private:
    ServiceManager();
    ~ServiceManager() override;

    std::map<Service::Id, std::unique_ptr<Service>> m_services;
};

} // namespace zeltools::system
