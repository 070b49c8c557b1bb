#include "boiler.h"

using namespace monitored_threads;

//! [boiler]
Boiler::Boiler(Fault fault)
    : MonitoredQThread(QStringLiteral("Boiler"), AutoTick::On) // ticks from its event loop
    , m_fault(fault)
{
    connect(this, &QThread::started, this, &Boiler::heat, Qt::DirectConnection); // in the thread
}

Boiler::~Boiler()
{
    quit();
    wait();
}

void Boiler::heat()
{
    if (m_fault == Hanging)
        sleep(3); // longer than the monitor of this machine allows
    if (m_fault == Dry)
        qFatal("The boiler is dry");
    Q_EMIT hot();
}
//! [boiler]
