#pragma once

#include <QString>
#include <QtGlobal>

#include <chrono>

/// The settings for the delivery of log lines from the calling thread to standard error and the
/// files, see LogManager::setDelivery().
struct LogDelivery
{
    /// The thread that writes a line.
    enum Mode {
        Immediate, ///< The calling thread writes the line before the call returns.
        Buffered   ///< The calling thread puts the line into a ring, which a thread writes out.
    };

    /// The default suits programs whose threads may wait for the storage.
    Mode mode = Immediate;
    /// Rounded up to a power of two between 256 KiB and 512 MiB. A line takes 40 bytes more than
    /// its text.
    qint64 ringSize_B = qint64(4) * 1024 * 1024;
    /// How long an Event, Error or Critical line waits for space in a full ring. No time is
    /// negative or longer than a day; such values count as the nearest of these.
    std::chrono::milliseconds fullRingWait{100};
    /// How long a written line may be missing from the storage. It applies to both modes.
    std::chrono::milliseconds syncInterval{5000};
    /// The same time for Event, Error and Critical lines.
    std::chrono::milliseconds urgentSyncDelay{200};
    /// The folder of the ring; by default the first memory-backed one of /run and /dev/shm.
    QString ringFolder;
};
