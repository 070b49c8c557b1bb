#pragma once

#include "system.h"

#include <QStandardPaths>

namespace dmesg
{

/// The command that follows the kernel log unless the host sets another one.
inline System::Command followCommand()
{
    return {QStringLiteral("script"),
            {QStringLiteral("--quiet"), QStringLiteral("--command"),
             QStringLiteral("dmesg --follow --ctime"), QStringLiteral("/dev/null")}};
}

/// Whether the programs that the command needs are installed, as far as that is known.
inline bool isInstalled(const System::Command& command)
{
    const auto isFound = [](const QString& program) {
        return !QStandardPaths::findExecutable(program).isEmpty();
    };
    const bool needsDmesg = command == followCommand();
    return isFound(command.program) && (!needsDmesg || isFound(QStringLiteral("dmesg")));
}

} // namespace dmesg
