#pragma once

#include <zeltools/zeltools_export.h>

#include <QFile>

/// The file of a RotatingLogFile: a QFile that never waits for a peer, and that knows whether its
/// name still refers to it and whether another open file holds its lock. It uses no mutex.
class ZELTOOLS_EXPORT PrimaryFile : public QFile
{
public:
    using QFile::QFile;
    ~PrimaryFile() override;

    using QFile::open;
    /// Opens regular files and character devices only. Opening a FIFO, for example, would block
    /// until another process reads it.
    bool open(OpenMode mode) override;
    void close() override;

    /// Whether the name still refers to the open file, which has been neither moved nor removed.
    bool hasName() const;
    /// Makes the open descriptor refer to the file that has the name now, and creates this file if
    /// it is missing. If that fails, it returns false, and the descriptor refers to the same file
    /// as before. The lock of the new file is taken before that of the old one is released.
    bool reopen();
    /// The size of the open file without the data in QFile's buffer. 0 if the system call fails.
    qint64 openSize_B() const;
    /// Takes the lock of the open file, which lasts until the file is closed or the process ends.
    /// False only if another open file holds it, in this process or in another one. On a file
    /// system without locks, and for a device, it returns true, and so do all other callers.
    bool lock();
    /// Whether this object holds the lock, or works as if on a file system without locks.
    bool isLocked() const { return m_isLocked; }

private:
    void unlock();

    bool m_isLocked = false;
    int m_lockingProcess = 0;
};
