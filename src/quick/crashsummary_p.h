#pragma once

#include "crashreports/crashreport.h"

#include <QDateTime>
#include <QObject>
#include <QVector>

#include <atomic>

namespace zeltools::quick
{

/// The summary of a crash report for a row.
struct CrashSummary
{
    enum Fault { None, Gone, Unreadable, Damaged };

    QString path;
    qint64 size_B = 0;
    QDateTime modified;
    Fault fault = None; ///< why the file cannot be read
    QString detail;     ///< of the fault, in English
    QDateTime time;     ///< of the crash; of the file if the report does not tell
    QString reason;
    qint32 thread = 0;
    bool isComplete = false;

    bool isOfSameFile(const CrashSummary& other) const
    {
        return path == other.path && size_B == other.size_B && modified == other.modified;
    }
    /// Whether the rows are equal; the content of one file is always the same.
    bool operator==(const CrashSummary& other) const
    {
        return isOfSameFile(other) && fault == other.fault && time == other.time;
    }
    /// Reads the file to fill the members after `modified`.
    void read();
    /// The fault in the language of the screen; empty if there is none.
    QString faultText() const;
};

/// Reads files in a thread of a pool, since a disk may be slow or hang.
class CrashSummaryReader : public QObject
{
    Q_OBJECT

public:
    explicit CrashSummaryReader(QVector<CrashSummary> summaries);
    ~CrashSummaryReader() override;

    /// The results, once finished() was emitted.
    const QVector<CrashSummary>& summaries() const;
    /// Reads in the calling thread.
    void run();

Q_SIGNALS:
    void finished();

private:
    QVector<CrashSummary> m_summaries;
    // Orders the reading before the use of the results. The queued event does so, too, but the
    // thread sanitizer does not see that inside Qt.
    std::atomic<bool> m_isDone{false};
};

/// The lines of a report's file without control characters, or the reason why it cannot be read.
QString crashReportText(const QString& path);

} // namespace zeltools::quick
