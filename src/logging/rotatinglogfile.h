#pragma once

#include <zeltools/logging/primaryfile.h>
#include <zeltools/qtversion.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>

#include <memory>

class LogCompression;
class LogRotation;
class PrimaryWriter;

/// The limits of a RotatingLogFile and the storage of its predecessors.
struct RotatingLogFileConfiguration
{
    float maximumSizeMiB;       ///< Limit of the primary file.
    qint32 secondaryFilesCount; ///< Number of predecessors.
    bool compressed;            ///< Whether predecessors are kept as gzip-compressed tar archives.
};

/// A base class for hosts that run compressions as tasks of their own. The library creates no
/// objects of it.
class ZELTOOLS_EXPORT CompressionTask : public QObject
{
    Q_OBJECT

public:
    ~CompressionTask() override;
};

/// A text file that is bounded in size and has numbered predecessors: before a write would exceed
/// the limit, P becomes P.1, P.1 becomes P.2 and so on, and the oldest one is deleted. It can keep
/// one generation of erased files beside the live ones, and it reads all its files back as lines.
///
/// The file is ready when the owner has set the name and opened `file` for appending. Every write
/// reaches the operating system before it returns. If no new primary can be opened (no file
/// descriptor left, a folder that vanished), writing continues in the open file and each write
/// tries the primary again, so that nothing is lost. A line that does not fit on a full disk is
/// removed from the file as a whole. A rotation that fails or is interrupted at any step only loses
/// the oldest predecessor, and the next write that needs a rotation continues at that step.
///
/// The first writer of the primary locks it until it closes the file or ends, and only it rotates.
/// Another process or object with the same primary logs one Warning, appends, and takes over when
/// the lock is free.
///
/// All operations may be called from any thread. They are guarded by the recursive mutex().
class ZELTOOLS_EXPORT RotatingLogFile : public QObject
{
    Q_OBJECT

public:
    /// The order of filenames(). The primary is the newest file.
    enum Order { NewestFirst = 0, OldestFirst = 1 };

    /// Takes the settings; the file is neither created nor opened.
    explicit RotatingLogFile(const RotatingLogFileConfiguration& configuration,
                             QObject* parent = nullptr);
    /// Waits for a running compression, at most for WindowsTools::commandTimeLimit.
    ~RotatingLogFile() override;

    /// The primary file. Its owner opens it with QIODevice::Append and closes it. Write through
    /// write(), which first flushes data that was written to the QFile itself.
    PrimaryFile file;

    /// The mutex that every operation holds; hold it to combine several operations. It is a QMutex
    /// with Qt 5 and a QRecursiveMutex with Qt 6.
    zeltools::RecursiveMutex* mutex() const { return &m_mutex; }

    /// Sets the path of the primary. Returns false, with an Error line, while the file is open.
    bool setPrimaryFilename(const QString& filename);
    /// The path of the primary (P), empty before it is set.
    QString primaryFilename() const { return filename(0); }
    /// Sets the limit, which may be a fraction of a MiB and is truncated to whole bytes.
    void setMaximumSizeMiB(double size_MiB);
    /// The limit in bytes at which the primary is rotated.
    qint64 maximumSize_B() const;
    /// Sets the number of predecessors. With a negative count, filenames() is empty. With 0 the
    /// primary grows without limit.
    void setSecondaryFilesCount(int count);
    /// Sets whether deleteFile() keeps the deleted files, see deletedFilenames().
    void enableDeletedFilesStorage(bool enable);

    /// The path of the primary (P) for 0 and "P.<index>" for a predecessor; empty for a negative
    /// index or without a name. It never ends with ".tar.gz", which compressed predecessors have on
    /// disk.
    QString filename(int index) const;
    /// The primary and its predecessors, whether or not they exist.
    QStringList filenames(Order order) const;
    /// The paths under which deleteFile() keeps the files of filenames(): `/logs/zel.log.2` becomes
    /// `/logs/zel_deleted.log.2`.
    QStringList deletedFilenames(Order order) const;

    /// Whether there is a size limit, a name and an open file.
    bool isReady() const;
    /// Whether compressed rotations really compress, which is true on the board only. On the
    /// desktop the primary of a compressed file is never renamed and grows without limit.
    bool isLinux() const;
    /// Whether data was written since the last sync().
    bool dataWritten() const;

    /// Rotates if necessary and appends the unchanged bytes: callers pass whole lines. Returns the
    /// number of bytes written, or -1 if the file is not ready or the system refuses the write.
    qint64 write(const char* data, qint64 length);
    qint64 write(const char* text) { return write(text, qint64(qstrlen(text))); }
    qint64 write(const QByteArray& data) { return write(data.constData(), data.size()); }

    /// Rotates if `incoming` more bytes would exceed the limit; a file may reach it exactly.
    /// Always returns true.
    bool rotateIfNeeded(qint64 incoming);
    /// Passes the buffered data to the operating system and resets dataWritten(). It does not force
    /// the data to storage.
    void sync();
    /// Notes that the owner has written to `file` itself, so that dataWritten() returns true.
    void onDataWritten();
    /// Makes the next write end the last line first if it is unfinished, as after a power cut. Call
    /// it after opening the file.
    void endHalfLine();

    /// Deletes the primary and its predecessors and opens a fresh primary. With
    /// enableDeletedFilesStorage() it renames them to deletedFilenames() instead, which replaces
    /// the files kept before.
    void deleteFile();
    /// Removes the file. Returns true only if it existed and was removed.
    bool deleteFileByName(const QString& name);

    /// The lines of a file, decoded as UTF-8, without white space at both ends of the text. A run
    /// of line feeds and NUL characters (which a power cut leaves) is one line break. An empty file
    /// has one empty line. A file that cannot be read to its end, or that would block the caller (a
    /// FIFO), has none.
    static QStringList getLogLines(const QString& path);
    /// The lines of all files, first those of P, then those of P.1 and so on, each with a line
    /// feed. NewestFirst reverses the lines of each file; OldestFirst does not, so that lines are
    /// in order only within each file. Empty if the file is not ready.
    QString totalContent(Order order) const;
    /// The lines with the numbers first to last, counted from 0 in the order of totalContent(),
    /// without a final line feed. Empty if the file is not ready.
    QString pageContent(unsigned firstLine, unsigned lastLine, Order order) const;

    /// Packs the source with `tar` into the archive of the target's first predecessor, and emits
    /// workCompleted() of the target, which removes the source. The archive is written as
    /// "P.1.tar.gz.part" and renamed when all of it is on the storage; after any failure an earlier
    /// archive and the source stay. The function blocks and is meant for a worker thread.
    static void compressFile(const QString& source, RotatingLogFile* target);

Q_SIGNALS:
    /// A signal for owners that run the compression themselves, which the library never emits.
    void asynchronousCompression(const QString& filename);
    /// Announces the end of a compression with the name of the packed file, which is empty after a
    /// failure. Emitted in the thread of the compression.
    void workCompleted(const QString& iFilename);

private Q_SLOTS:
    void onWorkCompleted(const QString& name);

private:
    friend class LogFileSet;
    friend class RingDrain;

    bool isWritable() const;
    void completeWork(const QString& name);
    QStringList readableFiles() const;

    mutable zeltools::RecursiveMutex m_mutex;
    std::unique_ptr<PrimaryWriter> m_writer;
    std::unique_ptr<LogCompression> m_compression;
    std::unique_ptr<LogRotation> m_rotation;
    bool m_deletedFilesStorage = false;
};
