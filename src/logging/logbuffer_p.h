#pragma once

#include "logging/logdelivery.h"
#include "logging/loglevel.h"
#include "logging/loglosses.h"
#include "logging/ringwriter_p.h"

#include <QStringList>

#include <atomic>
#include <chrono>
#include <memory>

class LogFileSet;

/// Buffered delivery: callers put their lines into a ring, and the writer thread carries them to
/// standard error, the files and the sinks. Any thread may call the functions unless they say
/// otherwise.
///
/// A full ring drops Debug lines first and keeps a part for Warning lines and above. Event, Error
/// and Critical lines wait up to LogDelivery::fullRingWait for space. Dropped lines are counted,
/// and the writer tells the counts in a line as soon as half of the ring is free.
class LogBuffer
{
public:
    /// The buffer in use; null in immediate delivery and in a forked child process. A buffer is
    /// never destroyed, since a thread may use it although another one has just stopped it.
    static LogBuffer* current() { return s_current.load(std::memory_order_acquire); }

    /// Creates the ring in the first folder that takes it, and starts the writer thread. Returns
    /// false with a text in `error` if that is impossible or if there is a buffer.
    static bool start(const LogDelivery& delivery, const QStringList& folders, LogFileSet& files,
                      SinkList& sinks, QString& error);
    /// Ends buffered delivery. Returns whether all lines were delivered in time. If not, the writer
    /// goes on as long as the process lives, and the next start recovers the rest.
    static bool stop(std::chrono::milliseconds timeout);
    /// The number that the kernel gives to the calling thread, without a system call after the
    /// first one.
    static qint32 thread();
    /// Makes the child process of a fork deliver immediately.
    static void forgetInChild();

    /// Puts the line, which ends with a line feed, into the ring, or counts it as lost. Returns
    /// false if another thread stops the buffer; the call returns when that is done, and the caller
    /// then delivers the line in the new way.
    bool add(RingLine line, const char* text, int size);
    /// Waits until all lines that were added before are delivered.
    bool flush(std::chrono::milliseconds timeout);
    /// The same without a limit of time. Returns at once if the ring is damaged, and in a sink.
    void flushWithoutLimit();
    /// The losses since the start of the process, also after buffered delivery has ended.
    static LogLosses losses();
    /// Sets the function that is called, in the thread that logs, after a line was lost. Call it
    /// before other threads log.
    static void setLossReceiver(void (*receiver)()) { s_lossReceiver = receiver; }

    /// The files of the ring. Call flush() before RingPlaces::remove().
    RingPlaces& places() { return m_places; }
    void setGeneralFileEnabled(bool isEnabled)
    {
        m_ring->header().isGeneralFileEnabled = isEnabled;
    }

private:
    LogBuffer(const LogDelivery& delivery, std::unique_ptr<RingFile> ring, LogFileSet& files,
              SinkList& sinks);

    static void flushAtExit();
    using Time = std::chrono::steady_clock::time_point;
    bool addInTime(const RingLine& line, const char* text, int size, Time deadline);
    bool flushUntil(Time deadline);
    bool waitForStop();
    bool finish(std::chrono::milliseconds timeout);
    void tellLastLosses();
    void giveUp();

    static std::atomic<LogBuffer*> s_current;
    static std::atomic<LogBuffer*> s_latest;
    static std::atomic<void (*)()> s_lossReceiver;

    const std::chrono::milliseconds m_fullRingWait;
    const std::unique_ptr<RingFile> m_ring;
    RingPlaces m_places;
    RingWriter m_writer;
};
