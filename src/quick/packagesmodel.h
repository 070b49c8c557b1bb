#pragma once

#include <zeltools/quick/countedmodel.h>

#include <qqml.h>

namespace zeltools::quick
{

/// The packages of the machine's image that PackagesManager looks for. The rows never change while
/// the process runs. Use it in the thread of the QML engine.
class ZELTOOLS_EXPORT PackagesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PackagesModel)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole = Qt::UserRole, ///< `name`: "Ntp", "Tzdata" or "TimeSync"
        IsAvailableRole          ///< `isAvailable`
    };

    explicit PackagesModel(QObject* parent = nullptr);
    ~PackagesModel() override;

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
};

} // namespace zeltools::quick
