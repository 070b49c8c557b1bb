#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace zeltools::system
{

/// A service that the application can switch on and off, and that ServiceManager finds by its
/// identifier.
class ZELTOOLS_EXPORT Service : public QObject
{
    Q_OBJECT

public:
    /// The identifiers, of which ServiceManager has one service each.
    enum Id { Ntp = 0 };
    Q_ENUM(Id)

    /// The identifier cannot be changed later.
    explicit Service(Id id, QObject* parent = nullptr);
    ~Service() override;

    /// The identifier of the service.
    Id id() const { return m_id; }

    /// Whether the machine supports the service.
    virtual bool available() const = 0;
    /// Switches the service on or off.
    virtual void enable(bool on) = 0;
    /// Whether the service is on.
    virtual bool enabled() const = 0;
    /// Makes an enabled service do its work immediately instead of at the next due time.
    virtual void refresh() = 0;

Q_SIGNALS:
    /// Emitted when the service was switched on or off.
    void enableChanged();

private:
    const Id m_id;
};

} // namespace zeltools::system
