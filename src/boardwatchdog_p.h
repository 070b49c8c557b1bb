#pragma once

#include "hardwarewatchdog.h"
#include "servicenotifier.h"

#include <QMutex>

#include <chrono>
#include <optional>

namespace zeltools
{

/// The watchdog behind WindowsTools: on the board that of the service manager if it watches this
/// process, else the device; on the desktop there is none. Any thread may call the functions.
class BoardWatchdog
{
public:
    explicit BoardWatchdog(const Machine& machine);

    /// The functions of WindowsTools.
    bool start(std::chrono::seconds timeLimit);
    void feed();

private:
    bool startOnBoard(std::chrono::seconds timeLimit);

    QMutex m_mutex;
    const bool m_isBoard;
    std::optional<ServiceNotifier> m_manager; // only while its watchdog is used
    HardwareWatchdog m_device;
};

} // namespace zeltools
