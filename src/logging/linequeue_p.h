#pragma once

#include "logging/loglevel.h"
#include "logging/logmodules.h"

#include <QMutex>
#include <QQueue>
#include <QString>

#include <optional>

/// The lines of other threads that wait for the thread of the log manager. Unlike posted events of
/// Qt, they outlive the application object. Any thread may call the functions.
class LineQueue
{
public:
    struct Line
    {
        LogLevel::Level level;
        LogModules modules;
        QString message;
    };

    /// Returns whether the queue was empty before, so that the caller has to start its reader.
    bool add(const Line& line);
    /// Takes the oldest line, or nothing from an empty queue. `hasMore` is set to whether others
    /// wait behind it, for which add() has returned false.
    std::optional<Line> take(bool& hasMore);

private:
    QMutex m_mutex;
    QQueue<Line> m_lines;
};
