#pragma once

#include <zeltools/zeltools_export.h>

#include <QFile>

/// The file of a RotatingLogFile: a QFile that never waits for a peer, and that knows whether it is
/// still the file of its name and whether another open file has its lock. Takes no mutex.
class ZELTOOLS_EXPORT PrimaryFile : public QFile
{
public:
    using QFile::QFile;
    ~PrimaryFile() override;

    using QFile::open;
    /// Refuses what is neither a regular file nor a character device: opening a FIFO, for example,
    /// blocks until somebody reads it.
    bool open(OpenMode mode) override;
    void close() override;

    /// Whether the open file is the one that has the name: nobody has moved or removed it.
    bool hasName() const;
    /// Makes the open descriptor refer to the file that has the name, created where there is none.
    /// False when that fails; the descriptor then refers to the same file as before. Who has the
    /// lock keeps it until that of the other file is there.
    bool reopen();
    /// The size of the open file; what QFile still holds back does not count. 0 when the system
    /// does not tell.
    qint64 openSize_B() const;
    /// Takes the lock of the open file, which lasts until the file is closed or the process ends.
    /// False only when another open file has it, in this process or in another one; where the file
    /// system knows no locks, and for a device, there is none to be had by anybody.
    bool lock();
    bool isLocked() const { return m_isLocked; }

private:
    bool m_isLocked = false;
};
