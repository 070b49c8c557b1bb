#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace crash_simulator
{

/// Fails on purpose, so that the watchdog, the crash handling and the logs of a machine can be
/// tried out. Nothing of it is caught. The lines go to `Log::Global`.
class ZELTOOLS_EXPORT CrashSimulator : public QObject
{
    Q_OBJECT

public:
    explicit CrashSimulator(QObject* parent);
    ~CrashSimulator() override;

    /// Starts a thread that never ends and is never deleted, whatever becomes of the simulator.
    void simulateStallSecondaryThread();
    /// Never returns. From another thread than the main one an Error line, and nothing else.
    void simulateStallMainThread();
    /// Reads from address zero. Never returns.
    void simulateApplicationCrash();

    /// Sleeps for ever in the thread that calls it.
    [[noreturn]] void stall();
};

} // namespace crash_simulator
