#include "logging/journalentry_p.h"

#include "logging/logrenderer.h"

#include <QDateTime>

#include <syslog.h>

namespace
{

int priority(LogLevel::Level level)
{
    switch (level) {
    case LogLevel::Debug:
        return LOG_DEBUG;
    case LogLevel::Event:
        return LOG_NOTICE;
    case LogLevel::Warning:
        return LOG_WARNING;
    case LogLevel::Error:
        return LOG_ERR;
    case LogLevel::Critical:
        return LOG_CRIT;
    case LogLevel::Info:
    case LogLevel::Grinder:
    case LogLevel::Capsule:
    case LogLevel::M4:
        break;
    }
    return LOG_INFO;
}

// The text of an Event line is " KIND| text".
QByteArray eventKind(const QByteArray& message)
{
    const int end = message.indexOf("| ");
    return message.startsWith(' ') && end > 0 ? message.mid(1, end - 1) : QByteArray();
}

} // namespace

QVector<QByteArray> journalEntry(const LogRecord& record, const QByteArray& identifier)
{
    const QByteArray message = QString::fromLocal8Bit(record.text).toUtf8();
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(record.time_ms, Qt::UTC);
    QVector<QByteArray> fields = {
        "MESSAGE=" + message, "PRIORITY=" + QByteArray::number(priority(record.level)),
        "ZEL_LEVEL=" + LogRenderer::levelToString(record.level).trimmed().toUtf8(),
        "ZEL_TIME=" + time.toString(Qt::ISODateWithMs).toLatin1(),
        "TID=" + QByteArray::number(record.thread)};
    const QVector<LogModule*>& modules = LogModule::registeredModulesConst();
    for (const LogModule* module : modules) {
        if (record.modules.contains(*module))
            fields.append("ZEL_MODULE=" + module->name().toUtf8());
    }
    if (record.level == LogLevel::Event)
        fields.append("ZEL_EVENT=" + eventKind(message));
    if (!identifier.isEmpty())
        fields.append("SYSLOG_IDENTIFIER=" + identifier);
    return fields;
}
