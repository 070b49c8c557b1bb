#include "logging/lognode.h"

#include "logging/debugmodules.h"

#include <QMetaMethod>
#include <QMutex>

namespace
{

// The receivers of logged(), kept in one word so that a Debug line that nobody else sees costs one
// load. The low two bits are a state, and the bits above them count the changes of connections:
//
//     Unknown  --- isOnlyManagerListening() counts the receivers --->  OnlyManager or Others
//        ^                                                                     |
//        +--------- forgetAudience(): a connection has changed, count + 1 -----+
//
// isOnlyManagerListening() only stores its answer if the word is still the one from before the
// receivers were counted. The count makes sure of that, since the state alone may be Unknown again.
enum Audience : quint64 { Unknown = 0, OnlyManager = 1, Others = 2, AudienceMask = 3, Change = 4 };
std::atomic<quint64> s_audience{Unknown};

void forgetAudience()
{
    quint64 seen = s_audience.load();
    while (!s_audience.compare_exchange_weak(seen, (seen & ~quint64(AudienceMask)) + Change)) {
    }
}

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
    quint64 seen = s_audience.load();
    if ((seen & AudienceMask) == Unknown) {
        ManagerConnection& manager = managerConnection();
        bool managerListens = false;
        {
            const QMutexLocker locker(&manager.mutex);
            managerListens = bool(manager.connection);
        }
        const int count = receivers(SIGNAL(logged(LogLevel::Level, Log::Modules, QString)));
        const quint64 answer = seen | (managerListens && count == 1 ? OnlyManager : Others);
        if (!s_audience.compare_exchange_strong(seen, answer))
            return false;
        seen = answer;
    }
    return (seen & AudienceMask) == OnlyManager;
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
