#pragma once

#include "logging/loglevel.h"
#include "logging/logmodules.h"

#include <QMutex>
#include <QQueue>
#include <QString>

#include <optional>

/// The lines of other threads that wait for the thread of the log manager. Posted events of Qt
/// would be lost with the application object, this queue can be emptied without one. Safe to call
/// from any thread.
class LineQueue
{
public:
    struct Line
    {
        LogLevel::Level level;
        LogModules modules;
        QString message;
    };

    /// Whether the queue was empty before: then somebody has to see to it.
    bool add(const Line& line);
    /// The oldest line, if there is one, and whether others wait behind it.
    std::optional<Line> take(bool& hasMore);

private:
    QMutex m_mutex;
    QQueue<Line> m_lines;
};
