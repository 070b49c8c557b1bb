#include "logging/journalsink.h"

#include "logging/journal_p.h"
#include "logging/journalentry_p.h"

JournalSink::JournalSink(const QString& identifier)
    : m_identifier(identifier.toUtf8())
{
    journal::load(); // not under the lock of the sinks, which write() runs under
}

JournalSink::~JournalSink() = default;

bool JournalSink::isAvailable()
{
    return journal::isAvailable();
}

void JournalSink::write(const LogRecord& record)
{
    if (!journal::send(journalEntry(record, m_identifier)))
        ++m_refusedLines;
}
