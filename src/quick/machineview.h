#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QTimer>
#include <QVariant>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

class MachineWatch;
struct MachineGraph;
class MachineTrack;

/// Follows one of the machines that the host offers (see ViewedMachines): its present state, the
/// time in it and the last changes. Of a machine that records (setRecording()), the changes and
/// times from before the view exist, too; of others, only those since then.
///
/// A view connects to the signals of the machine and changes nothing in it. The properties follow
/// the machine at most once in 16 ms. If the machine is destroyed or withdrawn, `machine` becomes
/// null.
class ZELTOOLS_EXPORT MachineView : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(MachineView)
    /// The machine, one of MachinesModel; null for none.
    Q_PROPERTY(QObject* machine READ machine WRITE setMachine NOTIFY machineChanged)
    Q_PROPERTY(QString name READ name NOTIFY machineChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY machineChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY machineChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY changed)
    Q_PROPERTY(QString state READ state NOTIFY changed)
    Q_PROPERTY(QVariantList path READ path NOTIFY changed)
    Q_PROPERTY(qreal stateTime READ stateTime NOTIFY stateTimeChanged)
    Q_PROPERTY(bool isStateTimeKnown READ isStateTimeKnown NOTIFY stateTimeChanged)
    Q_PROPERTY(bool live READ isLive WRITE setLive NOTIFY liveChanged)

public:
    /// The changes that `path` has at most.
    static constexpr int maximumPath = 50;

    explicit MachineView(QObject* parent = nullptr);
    ~MachineView() override;

    QObject* machine() const;
    void setMachine(QObject* machine);
    /// The name under which the machine is offered.
    QString name() const;
    /// Whether the machine has a description that can be drawn.
    bool hasPicture() const;
    /// Why there is no picture, in the language of the screen; empty if there is one.
    QString problem() const;

    /// Whether the machine runs.
    bool isRunning() const;
    /// The names of the present states that have no present child, joined by ", "; empty if the
    /// machine does not run.
    QString state() const;
    /// The last changes, the newest first, each with the keys `time` (a date), `from`, `to` and
    /// `trigger`; `text` has them in one line. Texts are cut at 200 characters.
    QVariantList path() const;

    /// How long the machine has been in the present state, in ms; 0 if it does not run.
    qreal stateTime() const;
    /// Whether the time is exact. It is only a minimum if the machine was in the state before the
    /// view existed and did not record.
    bool isStateTimeKnown() const;

    /// Whether stateTimeChanged() is also emitted each second, as by default. A page that is not
    /// visible sets it to false.
    bool isLive() const { return m_isLive; }
    void setLive(bool isLive);

    /// For MachineDiagram; null if the machine has no picture.
    const MachineGraph* graph() const;
    /// The history of the machine, for the diagram.
    const MachineTrack* track() const;

Q_SIGNALS:
    void machineChanged();
    void changed();
    void stateTimeChanged();
    void liveChanged();

private:
    void onMachineStep();
    void publish();
    void updateTick();

    std::unique_ptr<MachineWatch> m_watch; // null without a machine
    QTimer m_frame{this};
    QTimer m_tick{this};
    bool m_isLive = true;
};

} // namespace zeltools::quick
