#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>

namespace crash_simulator
{

/// Crashes or stalls the program on purpose, for tests of the watchdog, the crash handling and the
/// logs of a machine. The class catches nothing and logs under `Log::Global`.
class ZELTOOLS_EXPORT CrashSimulator : public QObject
{
    Q_OBJECT

public:
    explicit CrashSimulator(QObject* parent);
    ~CrashSimulator() override;

    /// Starts a thread that never ends and outlives the simulator.
    void simulateStallSecondaryThread();
    /// Stalls the main thread and never returns. In any other thread it only logs an Error line.
    void simulateStallMainThread();
    /// Reads from address zero and never returns.
    void simulateApplicationCrash();

    /// Sleeps forever in the calling thread.
    [[noreturn]] void stall();
};

} // namespace crash_simulator
