#pragma once

#include <zeltools/logging/loglevel.h>

#include <QMap>
#include <QString>
#include <QtGlobal>

/// The lines that buffered delivery has dropped because the ring was full, see
/// LogManager::losses(). Each line counts once, under its level and the first of its modules.
struct LogLosses
{
    quint64 total = 0;
    QMap<LogLevel::Level, QMap<QString, quint64>> lines;
};
