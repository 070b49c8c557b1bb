#pragma once

#include <zeltools/dmesg/kmsgrecord.h>
#include <zeltools/filedescriptor.h>
#include <zeltools/machine.h>

#include <optional>

namespace dmesg
{

/// Reads the kernel log from /dev/kmsg, without another program. It begins with the oldest record
/// in the kernel's memory, never waits, and keeps no records in memory. Records that the kernel has
/// overwritten meanwhile are missing; the next record has their number.
///
/// A file or a FIFO with such records can be read as well, with any content. A field that arrives
/// in a FIFO only after its reader has found nothing more is malformed. An object belongs to one
/// thread.
class ZELTOOLS_EXPORT KmsgReader
{
public:
    /// The outcome of next().
    enum class Result {
        Record,
        Malformed, ///< Something that is not a record was skipped; there may be more at once.
        Nothing,   ///< No record now; descriptor() becomes readable with the next one.
        Ended,     ///< The end of a file, or no process writes to the FIFO; never of /dev/kmsg.
        Failed     ///< Reading is impossible, for the reason in error().
    };

    /// The longest record. The kernel's longest has less than 16 KiB.
    static constexpr int longestRecord_B = 64 * 1024;

    /// Takes the path of the device or of a file or FIFO in its format; open() opens it.
    explicit KmsgReader(const QString& file = zeltools::Machine().kernelMessageFile);

    /// Opens the file, and returns an empty text or the reason why it cannot be read. Opened again,
    /// the reader skips the records up to the last one that it has returned.
    QString open();
    /// Closes the file. The reader still knows the last record that it has returned.
    void close();
    /// Fills the record if the result is Record.
    Result next(KmsgRecord& record);

    /// For poll(2); negative if the file is not open.
    int descriptor() const { return m_descriptor ? int(*m_descriptor) : -1; }
    /// Why the last next() has failed, in the words of the system.
    QString error() const { return m_error; }

private:
    std::optional<QByteArray> takeRecord(bool isAll);
    std::optional<Result> readMore();
    bool accept(KmsgRecord& record);

    const QString m_file;
    std::optional<zeltools::FileDescriptor> m_descriptor;
    QByteArray m_bytes; // what was read from the file; taken up to m_position
    int m_position = 0;
    std::optional<quint64> m_lastSequence;
    bool m_isResuming = false;
    QString m_error;
};

} // namespace dmesg
