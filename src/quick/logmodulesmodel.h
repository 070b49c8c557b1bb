#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <qqml.h>

#include <memory>
#include <vector>

namespace zeltools::quick
{

/// The log modules and their debug switches, in the order of their names. It follows switches that
/// change elsewhere.
///
/// The rows are the modules that exist when the model is created. The model belongs to one thread,
/// that of the QML engine. Without a path layout, no switch can be changed.
class ZELTOOLS_EXPORT LogModulesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LogModulesModel)

public:
    /// The roles `name`, `variable` and `isDebugged` of QML.
    enum Role {
        NameRole = Qt::UserRole,
        VariableRole,  ///< The variable `ZEL_DEBUG_CANBUS`; empty if there is none.
        IsDebuggedRole ///< Whether the debug lines of the module are printed.
    };

    explicit LogModulesModel(QObject* parent = nullptr);
    ~LogModulesModel() override;

    /// Switches the debug lines of the module in the row until the process ends. Returns an empty
    /// text if that is done, otherwise the reason for the user. It needs Access::Operator.
    Q_INVOKABLE QString setDebugged(int row, bool on);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row;

    void update();

    std::vector<Row> m_rows;
};

} // namespace zeltools::quick
