#pragma once

#include "logging/linering_p.h"
#include "logging/losscounts_p.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// The content of a record of the ring, in front of the bytes of the line.
struct RingLine
{
    qint64 time_ms;        ///< Since 1970.
    quint64 modules;       ///< A bit for each of the first 64 modules.
    qint32 thread;         ///< The kernel's id.
    qint16 file;           ///< The place of its file in RingHeader::files, or -1.
    quint16 messageOffset; ///< The length of the prefix of the line.
    quint8 level;
    quint8 isPrinted; ///< Whether the line goes to standard error.
    quint8 isForSinks;
    quint8 isOfRecovery; ///< Whether a recovery has added it.
    quint8 unused[4];

    static RingLine of(const LineRing<>::Record& record)
    {
        RingLine line = {};
        std::memcpy(&line, record.content, sizeof line);
        return line;
    }
    /// The bytes of the line, which stay in the ring.
    static QByteArray textOf(const LineRing<>::Record& record)
    {
        return QByteArray::fromRawData(record.content + sizeof(RingLine),
                                       int(record.size - sizeof(RingLine)));
    }
};
static_assert(sizeof(RingLine) == 32);

/// The beginning of a ring file. Zeros are valid for all that a new ring does not set.
struct RingHeader
{
    static constexpr char expectedMagic[8] = {'Z', 'E', 'L', 'R', 'I', 'N', 'G', '1'};
    static constexpr int filesCount = 64;
    static constexpr int pathSize = 480;

    /// A log file that the ring has lines for.
    struct File
    {
        qint64 maximumSize_B;
        qint32 predecessorsCount;
        quint32 isCompressed;
        char path[pathSize]; ///< Ends with a NUL; empty if nothing was ever there.

        QString pathText() const;
    };

    /// The piece of a file that the consumer appends with the records from `begin` on. It is set
    /// before the write, so that a recovery can see how much of it has reached the file.
    struct Append
    {
        std::atomic<quint64> begin; ///< One more than the position; 0 if nothing was ever appended.
        quint64 device;
        quint64 inode;
        qint64 offset;
        qint64 length;
    };

    char magic[sizeof expectedMagic];
    quint32 headerSize;
    qint32 process;
    quint64 capacity;
    std::atomic<quint32> isWriterAsleep;
    std::atomic<quint32> isGeneralFileEnabled;
    RingCursors cursors;
    std::atomic<quint64> printed; ///< The end of the records that standard error has got.
    Append append;
    LossCounts losses;
    File files[filesCount];
};

/// A ring in a file that is mapped into memory. The kernel keeps its content when the process ends
/// in any way. Whoever has the file open holds its lock, which says that the ring is in use.
class RingFile
{
public:
    static constexpr quint64 headerSize = 65536; ///< A multiple of every page size.
    static_assert(sizeof(RingHeader) <= headerSize);
    /// Whether a file of this name is a ring.
    static bool isName(const QString& name);
    /// The space that only the lines of a recovery may take.
    static constexpr quint64 reserve_B = 16384;

    /// Creates a ring in the folder. Returns null with the reason in `error`.
    static std::unique_ptr<RingFile> create(const QString& folder, qint64 capacity, QString& error);
    /// Opens the ring of a process that has ended, if it has log files in the folder or below it.
    /// Returns null otherwise; `error` then says why a ring cannot be used, and is empty if it has
    /// other files, or if a process uses or recovers it. A damaged ring is set aside.
    static std::unique_ptr<RingFile> openAbandoned(const QString& path, const QString& logFolder,
                                                   QString& error);
    ~RingFile();
    Q_DISABLE_COPY(RingFile)

    RingHeader& header() { return *static_cast<RingHeader*>(static_cast<void*>(m_memory)); }
    LineRing<> lines()
    {
        return {header().cursors, m_memory + headerSize, m_capacity, sizeof(RingLine)};
    }
    quint64 capacity() const { return m_capacity; }
    /// Adds a line, if at most `limit` bytes of the ring are then in use. Any thread may call it.
    bool add(const RingLine& line, const char* text, int size, quint64 limit);
    const QString& path() const { return m_path; }
    /// Removes the file's name. The memory stays usable.
    void remove();
    /// Renames a ring that cannot be read, so that no later start tries again. Returns a text that
    /// tells it.
    static QString setAside(const QString& path);
    /// Gives up the file in a child process, whose descriptor and mapping would keep the lock. The
    /// memory is then the child's own and empty.
    void releaseInChild();

private:
    RingFile(const QString& path, int descriptor, char* memory, quint64 capacity);
    void initialize();
    bool giveName(const QString& folder);

    QString m_path;
    int m_descriptor;
    char* m_memory;
    quint64 m_capacity;
};
