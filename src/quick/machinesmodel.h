#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QTimer>
#include <QVector>
#include <qqml.h>

namespace zeltools::quick
{

/// The state machines that the host offers for viewing (see ViewedMachines), one in each row and in
/// the order in which they were offered. The roles follow the machines; however often a machine
/// changes its state, a row changes at most once in 16 ms.
class ZELTOOLS_EXPORT MachinesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MachinesModel)

public:
    /// The roles of QML.
    enum Role {
        NameRole = Qt::UserRole + 1,
        MachineRole,   ///< The object, for MachineView and MachineDiagram.
        StateRole,     ///< Empty if it does not run.
        IsRunningRole, ///< For a StateMachine, whether it has a state.
        HasPictureRole ///< Whether MachineDiagram can draw it.
    };
    Q_ENUM(Role)

    explicit MachinesModel(QObject* parent = nullptr);
    ~MachinesModel() override;

    /// The number of machines.
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Row
    {
        QObject* machine;
        QString name;
        QString state;
        bool isRunning;
        bool hasPicture;
        bool isStale;
    };

    static Row rowOf(QObject* machine);
    int indexOf(const QObject* machine) const;
    void onOffered(QObject* machine);
    void onWithdrawn(QObject* machine);
    void onStateChanged(const QObject* machine);
    void refresh();

    QVector<Row> m_rows;
    QTimer m_frame{this};
};

} // namespace zeltools::quick
