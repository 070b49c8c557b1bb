#pragma once

#include "logging/filesync_p.h"

#include <QString>

#include <atomic>
#include <functional>

class PrimaryFile;

/// Appends to the primary of a RotatingLogFile past the buffer of QFile, and follows the changes
/// that others make to the file or its name. It uses no mutex: RotatingLogFile calls it under its
/// own.
class PrimaryWriter
{
public:
    /// How often the file is checked for changes by others.
    static constexpr int checkInterval_ms = 100;

    explicit PrimaryWriter(PrimaryFile& file);

    /// Shares the flag that prevents a second Warning about another writer with other files.
    void shareWarning(std::atomic<bool>* isWarned) { m_isWarned = isWarned; }
    /// Makes `sync` force what is written to the storage.
    void setSync(LogSync* sync) { m_sync.setSync(sync); }
    /// Whether the Warning about another writer is due. It is due once.
    bool takeWarning();

    /// Forgets the file, which its owner closes and may open again with another content.
    void forget();
    /// Opens the file again if others have moved or removed it, takes its lock if that has become
    /// free, and updates the size. It does so once in checkInterval_ms, since these system calls
    /// cost as much as a write.
    void follow();
    /// Makes the open descriptor refer to the file that has the name now. Opens a closed file.
    void reopen(const QString& primary);
    /// Hands the data that the owner has written to the QFile to the operating system.
    void flush();

    /// The size of the file, or -1 if it is not known.
    qint64 size_B() const { return m_size_B; }
    void updateSize();
    /// The number of bytes by which append() extends the file.
    qint64 growth_B(qint64 length) const { return length + (m_hasHalfLine ? 1 : 0); }
    /// Appends the bytes as a whole and returns their number, or appends nothing and returns -1.
    qint64 append(const char* data, qint64 length);
    /// Sets a function that append() calls before it writes, with the descriptor, the size of the
    /// file and the number of bytes; null removes it.
    void setBeforeAppend(const std::function<void(int, qint64, qint64)>& call)
    {
        m_beforeAppend = call;
    }
    /// Makes append() end the last line first if it is unfinished.
    void endHalfLine();

    bool hasUnsyncedData() const { return m_hasUnsyncedData; }
    void setUnsyncedData(bool hasUnsyncedData) { m_hasUnsyncedData = hasUnsyncedData; }

private:
    PrimaryFile& m_file;
    FileSync m_sync;
    qint64 m_size_B = -1;
    qint64 m_nextCheck_ms = 0;
    bool m_hasHalfLine = false;
    bool m_hasUnsyncedData = false;
    bool m_isWarningDue = false;
    std::atomic<bool> m_isOwnWarned = false;
    std::atomic<bool>* m_isWarned = &m_isOwnWarned;
    std::function<void(int, qint64, qint64)> m_beforeAppend;
};
