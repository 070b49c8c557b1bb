#pragma once

#include <QString>
#include <QThreadPool>

#include <memory>

class RotatingLogFile;

/// Packs the first predecessor of a RotatingLogFile in a thread of its own. The size of the primary
/// P decides when a failed compression is tried again. The functions are called under the mutex of
/// the RotatingLogFile, except wait(), isInWorker() and pack(), which blocks while tar runs.
class LogCompression
{
public:
    explicit LogCompression(RotatingLogFile* log);

    /// Whether P may become P.1 now. A P.1 that is being packed, or that a power cut has left, is
    /// packed first, and P grows until then. If packing fails again and again, P replaces P.1 when
    /// P is larger than `total_B`, so that the disk usage stays bounded.
    bool mayReplacePredecessor(qint64 size_B, qint64 total_B) const;
    void setPredecessorReplaced() { m_nextAttempt_B = 0; }

    /// Starts to pack P.1 if there is one, no compression runs, and P has the size for an attempt.
    void start(qint64 size_B);
    /// Ends the compression. If P.1 is still there, start() tries it again at the size `retry_B`.
    void end(qint64 retry_B);
    /// Whether the calling thread runs the compression of this file.
    bool isInWorker() const;
    /// Returns when no compression runs.
    void wait();

    /// Packs the source into "ARCHIVE.part" with `tar`, and renames the result to the archive when
    /// all of it is on the storage. After a failure an earlier archive stays.
    static bool pack(const QString& source, const QString& archive, const RotatingLogFile& log);

private:
    RotatingLogFile* m_log;
    bool m_isRunning = false;
    qint64 m_nextAttempt_B = 0;            // 0: no compression has failed
    std::unique_ptr<QThreadPool> m_worker; // most files are never compressed
};
