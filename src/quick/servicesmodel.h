#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/system/service.h>

#include <qqml.h>

#include <vector>

namespace zeltools::quick
{

/// The services that the application has added to ServiceManager, such as network time. The model
/// follows services that are added and switched.
///
/// It asks a service for its state when it appears and when one is switched; for network time this
/// may block while `timedatectl` runs. Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT ServicesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ServicesModel)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole = Qt::UserRole, ///< `name`: the name of the identifier, such as "Ntp"
        IdRole,                  ///< `id`: a system::Service::Id
        IsAvailableRole,         ///< `isAvailable`
        IsEnabledRole            ///< `isEnabled`
    };

    explicit ServicesModel(QObject* parent = nullptr);
    ~ServicesModel() override;

    /// Switches the service of the row, which needs Access::Operator, and writes an event line.
    /// Returns an empty text, or the reason for the user why the service is not switched.
    Q_INVOKABLE QString setEnabled(int row, bool isEnabled);

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row
    {
        system::Service* service;
        bool isEnabled;
    };

    void addServices();
    void updateStates();

    std::vector<Row> m_rows; // in the order in which they were added
};

} // namespace zeltools::quick
