#pragma once

#include <zeltools/logging/logsink.h>

#include <QString>

#include <atomic>

/// Sends log lines to the journal of systemd, from where a machine can send them to a server; see
/// docs/fleet.md. The host adds it by LogManager::addSink() and removes it before it destroys it.
///
/// An entry has the text as MESSAGE (in UTF-8), the level as PRIORITY and by its name as ZEL_LEVEL,
/// one ZEL_MODULE for each module, the kind of an Event line as ZEL_EVENT, the thread as TID, the
/// identifier as SYSLOG_IDENTIFIER, and the moment of the line in UTC as ZEL_TIME. The journal's
/// own time is later in buffered delivery, and much later after a recovery.
///
/// The priorities are 7 for Debug, 6 for Info, 5 for Event, 4 for Warning, 3 for Error, 2 for
/// Critical, and 6 for Grinder, Capsule and M4.
class ZELTOOLS_EXPORT JournalSink final : public LogSink
{
public:
    /// Without an identifier, the journal gets the name of the program. The first sink of a process
    /// loads libsystemd.
    explicit JournalSink(const QString& identifier = {});
    ~JournalSink() override;
    Q_DISABLE_COPY(JournalSink)

    /// Whether the library was built with libsystemd, and a journal has its socket and libsystemd
    /// is installed on this machine.
    static bool isAvailable();

    /// Sends the line. It waits without a limit while the journal is alive and does not keep up:
    /// in immediate delivery the thread that logs waits then, in buffered delivery only the writer
    /// thread. Without a journal the line is dropped.
    void write(const LogRecord& record) override;

    /// The number of lines that the journal has refused, for example because it was not running
    /// although its socket was there. Without libsystemd, all lines count. Any thread may call it.
    qint64 refusedLines() const { return m_refusedLines; }

private:
    const QByteArray m_identifier;
    std::atomic<qint64> m_refusedLines = 0;
};
