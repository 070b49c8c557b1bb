#pragma once

#include "quick/machinegraph_p.h"

#include <QObject>
#include <QVector>

#include <memory>

namespace zeltools::quick
{

/// The list behind ViewedMachines, which the types of the screen follow.
class MachineRegistry : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QString name; ///< as DisplayText::name() makes it
        QObject* machine = nullptr;
        std::shared_ptr<const MachineGraph> graph; ///< null for a machine without a description
    };

    /// The only object, which is never destroyed.
    static MachineRegistry* instance();

    const QVector<Entry>& entries() const { return m_entries; }
    /// An entry without a machine if it is not offered.
    Entry entryOf(const QObject* machine) const;

    void offer(Entry entry);
    void withdraw(QObject* machine);

Q_SIGNALS:
    void offered(QObject* machine);
    /// The machine may be half destroyed already; only its address counts.
    void withdrawn(QObject* machine);

private:
    int indexOf(const QObject* machine) const;

    QVector<Entry> m_entries;
};

/// The functions that both kinds of machine share.
namespace viewedmachine
{

/// The names of the present state or states in one line; empty if the machine does not run.
QString stateOf(const QObject* machine);
bool isRunning(const QObject* machine);
/// Calls the callable whenever the machine changes its state, starts or stops, while the context
/// lives.
void follow(QObject* machine, QObject* context, const std::function<void()>& callable);

} // namespace viewedmachine

} // namespace zeltools::quick
