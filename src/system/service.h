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
    enum Id { Ntp = 0 };
    Q_ENUM(Id)

    explicit Service(Id id, QObject* parent = nullptr);
    ~Service() override;

    Id id() const { return m_id; }

    /// Whether the machine supports the service.
    virtual bool available() const = 0;
    virtual void enable(bool on) = 0;
    virtual bool enabled() const = 0;
    /// Makes an enabled service do its work immediately instead of at the next due time.
    virtual void refresh() = 0;

Q_SIGNALS:
    void enableChanged();

private:
    const Id m_id;
};

} // namespace zeltools::system
