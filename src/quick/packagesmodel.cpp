#include "quick/packagesmodel.h"

#include "system/packagesmanager.h"

#include <QMetaEnum>

namespace zeltools::quick
{

using system::PackagesManager;

PackagesModel::PackagesModel(QObject* parent)
    : CountedModel(parent)
{
}

PackagesModel::~PackagesModel() = default;

int PackagesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : QMetaEnum::fromType<PackagesManager::Package>().keyCount();
}

QVariant PackagesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const auto packages = QMetaEnum::fromType<PackagesManager::Package>();
    if (role == NameRole || role == Qt::DisplayRole)
        return QString::fromLatin1(packages.key(index.row()));
    if (role == IsAvailableRole)
        return PackagesManager::packageAvailable(
            static_cast<PackagesManager::Package>(packages.value(index.row())));
    return {};
}

QHash<int, QByteArray> PackagesModel::roleNames() const
{
    return {{NameRole, "name"}, {IsAvailableRole, "isAvailable"}};
}

} // namespace zeltools::quick
