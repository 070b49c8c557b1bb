#pragma once

#include <zeltools/logging/logeventmodule.h>
#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/logmodules.h>

#include <QObject>

#include <atomic>

/// The process-wide relay of finished log lines: LogFormatter hands them in, the log manager and
/// whoever else is connected to logged() receives them. It formats, filters and writes nothing.
/// Lines may be handed in from any thread; a direct connection is called in that thread.
class ZELTOOLS_EXPORT LogNode : public QObject
{
    Q_OBJECT

public:
    /// The one node, created by the first call and never destroyed.
    static LogNode* instance();

    /// Emits logged(). Before the first instance() the line goes to Qt's warning output as
    /// "LogNode node installed | " and the message, so that early lines are not lost.
    static void log(LogLevel::Level level, const LogModules& modules, const QString& message);

    /// False when nothing would come of such a line: only the log manager listens, and would not
    /// print it. LogFormatter then spares itself the text.
    static bool isHeard(LogLevel::Level level, const LogModules& modules);

    /// Announces an event line, which is then handed in as any other. LogManager, which receives
    /// it, is created for it if need be.
    static void announceEvent(LogEventModule::EventModule event, const QString& message);

Q_SIGNALS:
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
    static void setManagerConnection(const QMetaObject::Connection& connection);

    using EventReceiver = void (*)(LogEventModule::EventModule event, const QString& message);
    static bool setEventReceiver(EventReceiver receiver);

    static std::atomic<LogNode*> s_instance;
    static std::atomic<EventReceiver> s_eventReceiver;
};
