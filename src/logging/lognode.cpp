#include "logging/lognode.h"

#include "logging/debugmodules.h"
#include "logging/debugswitch.h"

#include <QMetaMethod>
#include <QMutex>

using zeltools::DebugSwitch;

namespace
{

struct ManagerConnection
{
    QMutex mutex;
    QMetaObject::Connection connection;
};

// It is never destroyed, like the node.
ManagerConnection& managerConnection()
{
    static auto* connection = new ManagerConnection;
    return *connection;
}

} // namespace

std::atomic<LogNode*> LogNode::s_instance{nullptr};

std::atomic<LogNode::EventReceiver> LogNode::s_eventReceiver{nullptr};

LogNode::~LogNode() = default;

LogNode* LogNode::instance()
{
    static LogNode* const node = [] {
        s_instance = new LogNode;
        return s_instance.load();
    }();
    return node;
}

void LogNode::log(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    if (LogNode* node = s_instance.load(std::memory_order_acquire))
        node->_log(level, modules, message);
    else
        qWarning("LogNode node installed | %s", qUtf8Printable(message));
}

void LogNode::announceEvent(LogEventModule::EventModule event, const QString& message)
{
    if (const EventReceiver receiver = s_eventReceiver.load(std::memory_order_acquire))
        receiver(event, message);
}

bool LogNode::setEventReceiver(EventReceiver receiver)
{
    s_eventReceiver.store(receiver, std::memory_order_release);
    return receiver != nullptr;
}

void LogNode::_log(LogLevel::Level level, const LogModules& modules, const QString& message)
{
    Q_EMIT logged(level, modules, message);
}

bool LogNode::isHeard(LogLevel::Level level, const LogModules& modules)
{
    if (level != LogLevel::Debug || DebugModules::shared().containsOneOf(modules))
        return true;
    LogNode* node = s_instance.load(std::memory_order_acquire);
    return node == nullptr || !node->isOnlyManagerListening();
}

bool LogNode::isOnlyManagerListening()
{
    std::atomic<quint64>& audience = DebugSwitch::s_audience;
    quint64 seen = audience.load();
    if ((seen & DebugSwitch::AudienceMask) == DebugSwitch::Unknown) {
        ManagerConnection& manager = managerConnection();
        bool managerListens = false;
        {
            const QMutexLocker locker(&manager.mutex);
            managerListens = bool(manager.connection);
        }
        const int count = receivers(SIGNAL(logged(LogLevel::Level, Log::Modules, QString)));
        const quint64 answer =
            seen | (managerListens && count == 1 ? DebugSwitch::OnlyManager : DebugSwitch::Others);
        if (!audience.compare_exchange_strong(seen, answer))
            return false;
        seen = answer;
    }
    return (seen & DebugSwitch::AudienceMask) == DebugSwitch::OnlyManager;
}

void LogNode::forgetAudience()
{
    std::atomic<quint64>& audience = DebugSwitch::s_audience;
    quint64 seen = audience.load();
    while (!audience.compare_exchange_weak(seen, (seen & ~quint64(DebugSwitch::AudienceMask)) +
                                                     DebugSwitch::AudienceChange)) {
    }
}

void LogNode::setManagerConnection(const QMetaObject::Connection& connection)
{
    ManagerConnection& manager = managerConnection();
    {
        const QMutexLocker locker(&manager.mutex);
        manager.connection = connection;
    }
    forgetAudience();
}

void LogNode::connectNotify(const QMetaMethod&)
{
    forgetAudience();
}

void LogNode::disconnectNotify(const QMetaMethod&)
{
    forgetAudience();
}
