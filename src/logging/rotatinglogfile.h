#pragma once

#include <zeltools/logging/primaryfile.h>
#include <zeltools/qtversion.h>
#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QStringList>
#include <QThreadPool>

#include <atomic>

/// How large a RotatingLogFile grows and what becomes of its predecessors.
struct RotatingLogFileConfiguration
{
    float maximumSizeMiB;       ///< Limit of the primary file.
    qint32 secondaryFilesCount; ///< How many predecessors are kept.
    bool compressed;            ///< Whether predecessors are kept as gzip-compressed tar archives.
};

/// A name in the class tree for hosts that run compressions as tasks of their own. The library
/// makes none.
class ZELTOOLS_EXPORT CompressionTask : public QObject
{
    Q_OBJECT

public:
    ~CompressionTask() override;
};

/// A text file that is bounded in size and has numbered predecessors: before a write would exceed
/// the limit, P becomes P.1, P.1 becomes P.2 and so on, and the oldest goes. It can keep one
/// generation of erased files beside the live ones and reads all its files back as lines.
///
/// The owner gives the name and opens `file` for appending; then the file is ready. Every write
/// reaches the operating system before it returns. When no new primary can be opened (no file
/// descriptor left, a folder that vanished), writing goes on in the file that is open and the
/// primary is tried again, so that nothing written is lost. A line that does not fit on a full disk
/// is taken back whole. A rotation that fails or is interrupted at any step costs nothing but the
/// oldest predecessor, and goes on there with the next write that needs it.
///
/// The first that writes the primary locks it until it closes the file or ends, and it alone
/// rotates. Another process or object on the same primary writes one Warning, appends, and takes
/// over when the lock is free.
///
/// All operations are safe to call from several threads; mutex() is theirs and recursive.
class ZELTOOLS_EXPORT RotatingLogFile : public QObject
{
    Q_OBJECT

public:
    enum Order { NewestFirst = 0, OldestFirst = 1 };

    explicit RotatingLogFile(const RotatingLogFileConfiguration& configuration,
                             QObject* parent = nullptr);
    /// Waits for a compression that is under way, at the most for WindowsTools::commandTimeLimit.
    ~RotatingLogFile() override;

    /// The primary file. Its owner opens it with QIODevice::Append and closes it; bytes go through
    /// write(), which first hands on what was written to the QFile itself.
    PrimaryFile file;

    /// Held during every operation; hold it to make several of them one. A QMutex with Qt 5, a
    /// QRecursiveMutex with Qt 6.
    zeltools::RecursiveMutex* mutex() const { return &m_mutex; }

    /// False, with an Error line, while the file is open.
    bool setPrimaryFilename(const QString& filename);
    QString primaryFilename() const;
    /// Fractions of a MiB count; bytes are truncated.
    void setMaximumSizeMiB(double size_MiB);
    qint64 maximumSize_B() const;
    /// A negative count names no file at all. With 0 the primary grows without limit.
    void setSecondaryFilesCount(int count);
    /// Whether deleteFile() keeps what it deletes, see deletedFilenames().
    void enableDeletedFilesStorage(bool enable);

    /// P for 0, "P.<index>" above, empty below 0 or without a name. Never carries ".tar.gz", which
    /// compressed predecessors have on disk.
    QString filename(int index) const;
    /// The primary and its predecessors, whether or not they exist.
    QStringList filenames(Order order) const;
    /// Where deleteFile() keeps the files of filenames(): `/logs/zel.log.2` gives
    /// `/logs/zel_deleted.log.2`.
    QStringList deletedFilenames(Order order) const;

    /// Whether there is a size limit, a name and an open file.
    bool isReady() const;
    /// Whether compressed rotations really compress: on the board only. On the desktop the primary
    /// of a compressed file is never renamed and grows without limit.
    bool isLinux() const;
    /// Whether something was written since the last sync().
    bool dataWritten() const;

    /// Rotates if need be and appends the bytes as they are: callers pass whole lines. Returns the
    /// number of bytes written, or -1 when not ready or when the system refuses the write.
    qint64 write(const char* data, qint64 length);
    qint64 write(const char* text);
    qint64 write(const QByteArray& data);

    /// Rotates when `incoming` more bytes would exceed the limit; reaching it exactly does not.
    /// Always true.
    bool rotateIfNeeded(qint64 incoming);
    void sync();
    void onDataWritten();
    /// Has the next write end the last line first if that is unfinished, as a power cut may leave
    /// it: the next line then stands by itself. Call it after opening the file.
    void endHalfLine();

    /// Deletes the primary and its predecessors, or keeps them as deletedFilenames() in place of
    /// those kept before, and goes on with a fresh, open primary.
    void deleteFile();
    /// True only when the file existed and was removed.
    bool deleteFileByName(const QString& name);

    /// The lines of a file: UTF-8, white space at both ends trimmed, runs of line feeds and of NUL
    /// characters (which a power cut leaves) being one line break. An empty file has one empty
    /// line. A file that cannot be read to its end, or would have the caller wait (a FIFO), has
    /// none.
    static QStringList getLogLines(const QString& path);
    /// The lines of all files, P first, then P.1 and so on, each with a line feed. NewestFirst
    /// reverses the lines of each file; OldestFirst leaves them, so that it is in order only
    /// within each file. Empty when not ready.
    QString totalContent(Order order) const;
    /// The lines with the numbers first to last, counted from 0 in the order of totalContent(),
    /// without a final line feed. Empty when not ready.
    QString pageContent(unsigned firstLine, unsigned lastLine, Order order) const;

    /// Packs the source into the archive of the target's first predecessor with `tar` and tells the
    /// target by workCompleted(), which removes the source. The archive is written under another
    /// name, "P.1.tar.gz.part", and takes its own when all of it is in storage; whatever fails, an
    /// earlier archive and the source stay. Blocks until that is done: meant for a worker thread.
    static void compressFile(const QString& source, RotatingLogFile* target);

Q_SIGNALS:
    /// For owners that run the compression themselves; the library emits it nowhere.
    void asynchronousCompression(const QString& filename);
    /// A compression has ended; the name of the packed file, or empty when it failed. Emitted in
    /// the thread of the compression.
    void workCompleted(const QString& iFilename);

private Q_SLOTS:
    void onWorkCompleted(const QString& name);

private:
    friend class LogFileSet;

    qint64 append(const char* data, qint64 length);
    void flush();
    void rotate();
    bool shift();
    bool shiftCompressed();
    bool makeRoom(const QString& suffix);
    void endShift();
    QString shiftMark() const;
    int firstGap(const QString& suffix) const;
    void packPredecessor();
    void completeWork(const QString& name);
    void reopenPrimary();
    void checkOutsideChange();
    void claim();

    /// Calls `visit` with the lines of each file in the order of totalContent() until it returns
    /// false.
    template <typename Visit>
    void visitFiles(Order order, Visit&& visit) const;

    static constexpr int s_checkInterval_ms = 100; // of checkOutsideChange()

    mutable zeltools::RecursiveMutex m_mutex;
    QString m_primaryFilename;
    qint64 m_maximumSize_B;
    qint64 m_size_B = -1; // of the open file; -1: not known
    qint64 m_nextCheck_ms = 0;
    qint64 m_nextPacking_B = 0; // size of the primary at which packing is tried again; 0: at once
    qint32 m_secondaryFilesCount;
    bool m_compressed;
    bool m_isCompressing = false;
    bool m_isShifting = false; // remains set when a step fails
    bool m_deletedFilesStorage = false;
    bool m_dataWritten = false;
    bool m_hasHalfLine = false;
    bool m_isSharingToTell = false;
    std::atomic<bool> m_isOwnSharingTold = false;
    std::atomic<bool>* m_isSharingTold = &m_isOwnSharingTold; // files of a set have it in common
    QThreadPool m_compressor;
};
