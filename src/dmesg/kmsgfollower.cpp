#include "dmesg/kmsgfollower_p.h"

#include "logging/log.h"
#include "logging/logformatter.h"

#include <utility>

namespace dmesg
{

KmsgFollower::KmsgFollower(QObject* parent)
    : QObject(parent)
{
}

void KmsgFollower::setFile(const QString& file)
{
    m_reader = std::make_unique<KmsgReader>(file);
    m_hasWarned = false;
}

QString KmsgFollower::start()
{
    stop();
    QString obstacle = m_reader->open();
    if (!obstacle.isEmpty())
        return obstacle;
    m_notifier = new QSocketNotifier(m_reader->descriptor(), QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &KmsgFollower::read);
    m_isRunning = true;
    return {};
}

void KmsgFollower::stop()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    m_notifier->setEnabled(false);
    m_notifier->deleteLater(); // it may be the sender of the current call
    m_reader->close();
}

/// Reads a limited number of records, so that a flood leaves time for other events. The notifier
/// calls again if there are more.
void KmsgFollower::read()
{
    constexpr int mostRecords = 256;
    QStringList lines;
    quint64 overwritten = 0;
    KmsgReader::Result result = KmsgReader::Result::Record;
    KmsgRecord record;
    for (int i = 0; i < mostRecords && result <= KmsgReader::Result::Malformed; ++i) {
        result = m_reader->next(record);
        if (result == KmsgReader::Result::Record) {
            lines += record.lines();
            overwritten += record.overwritten;
        } else if (result == KmsgReader::Result::Malformed && !std::exchange(m_hasWarned, true)) {
            LogFormatter(LogLevel::Warning).log(Log::Global)
                << "The kernel log has malformed records, which are skipped";
        }
    }
    if (overwritten > 0)
        LogFormatter(LogLevel::Warning).log(Log::Global).nospace()
            << "The kernel has overwritten " << overwritten << " records before they were read";
    const bool hasEnded = result > KmsgReader::Result::Nothing;
    const QString reason = result == KmsgReader::Result::Ended
                               ? QStringLiteral("the file has ended")
                               : m_reader->error();
    if (hasEnded)
        stop();
    if (!lines.isEmpty())
        Q_EMIT newLines(lines);
    if (!hasEnded || m_isRunning) // a receiver of the lines may have started it again
        return;
    LogFormatter(LogLevel::Info).log(Log::Global).noquote()
        << "Reading the kernel log has ended:" << reason;
    Q_EMIT ended(reason);
}

} // namespace dmesg
