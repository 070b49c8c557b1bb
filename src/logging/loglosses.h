#pragma once

#include <zeltools/logging/loglevel.h>

#include <QMap>
#include <QString>
#include <QtGlobal>

/// The lines that buffered delivery has dropped because the ring was full, see
/// LogManager::losses(). Each line counts once, under its level and the first of its modules.
struct LogLosses
{
    /// The sum of all counts in `lines`.
    quint64 total = 0;
    /// The counts by level, and by the name of the module.
    QMap<LogLevel::Level, QMap<QString, quint64>> lines;
};
