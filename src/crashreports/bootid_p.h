#pragma once

#include <QFile>
#include <QString>

namespace zeltools
{

/// The kernel's id of the time since it has started. It changes with each boot.
inline QString bootId()
{
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readAll().trimmed())
                                          : QString();
}

} // namespace zeltools
