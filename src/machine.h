#pragma once

#include <zeltools/platform.h>

#include <QString>

namespace zeltools
{

/// The machine that the library runs on, and the fixed places of its operating system. A new value
/// describes the machine that the library was built for. Classes accept another one only in
/// protected constructors, for tests.
struct Machine
{
    bool isBoard = platform::isBoard; ///< Whether operations that only a machine needs are real.
    /// @{
    /// The place of the system that the name says.

    QString gpioDir = QStringLiteral("/sys/class/gpio/");
    QString bootReasonFile = QStringLiteral("/var/run/zelbootreason.txt");
    QString canTestDir = QStringLiteral("/home/root/cantest");
    QString dbusConfigurationFile = QStringLiteral("/etc/dbus-1/system.d/zel.conf");

    QString dropCachesFile = QStringLiteral("/proc/sys/vm/drop_caches");
    QString kernelMessageFile = QStringLiteral("/dev/kmsg");
    QString kernelLogRestrictionFile = QStringLiteral("/proc/sys/kernel/dmesg_restrict");

    QString watchdogDevice = QStringLiteral("/dev/watchdog");

    QString zoneInfoDir = QStringLiteral("/usr/share/zoneinfo");
    QString localTimeFile = QStringLiteral("/etc/localtime");
    QString timeZoneFile = QStringLiteral("/etc/timezone");
    QString ntpConfigurationFile = QStringLiteral("/etc/ntp.conf");
    QString ntpInitScript = QStringLiteral("/etc/init.d/ntpd");
    QString ntpStartLink = QStringLiteral("/etc/rc2.d/S20ntpd");
    QString timeSyncConfigurationFile = QStringLiteral("/etc/systemd/timesyncd.conf");
    /// @}
    QString ntpStateFile = QStringLiteral("/usr/share/zel/ntp"); ///< See service::Ntp.
};

} // namespace zeltools
