#pragma once

#include <zeltools/monitoredthreads/monitoredqthread.h>

/// The thread that heats. The monitor watches it while it runs.
class Boiler : public monitored_threads::MonitoredQThread
{
    Q_OBJECT

public:
    enum Fault { NoFault, Hanging, Dry };
    Q_ENUM(Fault)

    explicit Boiler(Fault fault);
    ~Boiler() override;

Q_SIGNALS:
    void hot(); ///< Emitted in this thread.

private:
    void heat();

    const Fault m_fault;
};
