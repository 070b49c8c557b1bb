#pragma once

#include <zeltools/monitoredthreads/monitor.h>
#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QTimer>
#include <QVector>
#include <qqml.h>

namespace zeltools::quick
{

/// The threads and items that monitored_threads::Monitor watches. The model follows the signals of
/// the monitor.
///
/// The time since the last tick grows without a signal. While `isLive` is true, which a page sets
/// while it is visible, the model reads it once a second. A model belongs to one thread.
class ZELTOOLS_EXPORT ThreadsModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(ThreadsModel)
    Q_PROPERTY(bool isEnabled READ isEnabled CONSTANT)
    Q_PROPERTY(bool isLive READ isLive WRITE setLive NOTIFY isLiveChanged)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole = Qt::UserRole, ///< `name`
        ThreadRole,              ///< `thread`, the kernel's id; 0 for an item
        StateRole,               ///< `state`, a number of monitored_threads::Monitor::State
        StateNameRole,           ///< `stateName`, in the language of the screen
        SinceTickRole,           ///< `sinceTick`, in milliseconds
        CallStackRole            ///< `callStack`, of a stalled thread, once it is known
    };

    explicit ThreadsModel(QObject* parent = nullptr);
    ~ThreadsModel() override;

    /// Whether the library was built with the monitor.
    bool isEnabled() const;
    /// Whether the time since the last tick is kept up to date. It is off by default.
    bool isLive() const { return m_timer.isActive(); }
    void setLive(bool on);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void isLiveChanged();

protected:
    /// Shows another monitor, which must outlive the model.
    ThreadsModel(monitored_threads::Monitor& monitor, QObject* parent);

private:
    void update();

    monitored_threads::Monitor& m_monitor;
    QVector<monitored_threads::Monitor::Item> m_rows;
    QTimer m_timer;
};

} // namespace zeltools::quick
