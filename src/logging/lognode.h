#pragma once

#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/logmodules.h>

#include <QObject>

#include <atomic>

/// The process-wide relay of finished log lines. LogFormatter passes lines to it, and the log
/// manager and all other receivers of logged() get them. The node formats, filters and writes
/// nothing. Any thread may log a line; directly connected receivers run in that thread.
class ZELTOOLS_EXPORT LogNode : public QObject
{
    Q_OBJECT

public:
    /// The only node, created by the first call and never destroyed.
    static LogNode* instance();

    /// Emits logged(). Before the first call of instance(), the line goes to Qt's warning output
    /// as "LogNode node installed | " and the message, so that early lines are not lost.
    static void log(LogLevel::Level level, const LogModules& modules, const QString& message);

    /// Whether such a line has any effect. It has none if only the log manager is connected and
    /// would not print it; LogFormatter then does not collect the text.
    static bool isHeard(LogLevel::Level level, const LogModules& modules);

    /// Announces an event line, which the caller then logs like any other. The announcement creates
    /// LogManager, which receives it, if necessary.
    static void announceEvent(LogEventModule::EventModule event, const QString& message);

Q_SIGNALS:
    /// Emitted for every line that has a receiver, in the thread that logs it, with the text before
    /// LogRenderer adds the time and the level.
    void logged(LogLevel::Level level, const Log::Modules& modules, const QString& message);

protected:
    void connectNotify(const QMetaMethod& signal) override;
    void disconnectNotify(const QMetaMethod& signal) override;

private:
    friend class LogManager;

    LogNode() = default;
    ~LogNode() override;

    void _log(LogLevel::Level level, const LogModules& modules, const QString& message);
    bool isOnlyManagerListening();
    static void forgetAudience();
    using LineReceiver = void (*)(LogLevel::Level level, const LogModules& modules,
                                  const QString& message);
    /// Sets the connection of the manager, and the function that does the same as its slot. The
    /// node calls the function instead of emitting the signal while nobody else is connected.
    static void setManagerConnection(const QMetaObject::Connection& connection,
                                     LineReceiver receiver);

    using EventReceiver = void (*)(LogEventModule::EventModule event, const QString& message);
    static bool setEventReceiver(EventReceiver receiver);

    static std::atomic<LogNode*> s_instance;
    static std::atomic<EventReceiver> s_eventReceiver;
    static std::atomic<LineReceiver> s_lineReceiver;
};
