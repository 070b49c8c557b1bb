#pragma once

#include "logging/filesync_p.h"

#include <QString>

#include <array>
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

    /// What may fail. Opening is that of a new or lost primary.
    enum Step { Opening, Rotating, Writing };

    explicit PrimaryWriter(PrimaryFile& file);

    /// The error number of the last attempt of this step, or 0 if it has succeeded.
    int error(Step step) const { return m_errors[step]; }
    void setError(Step step, int error);
    /// Whether a step has failed. Any thread may call it.
    bool hasFault() const;
    /// Whether the open file has been removed, so that nobody can read what is written to it.
    bool isDeleted() const { return m_isDeleted; }

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
    void setOpened();

    PrimaryFile& m_file;
    FileSync m_sync;
    qint64 m_size_B = -1;
    qint64 m_nextCheck_ms = 0;
    bool m_hasHalfLine = false;
    bool m_hasUnsyncedData = false;
    bool m_isWarningDue = false;
    bool m_isDeleted = false;
    std::array<std::atomic<int>, 3> m_errors = {};
    std::atomic<bool> m_isOwnWarned = false;
    std::atomic<bool>* m_isWarned = &m_isOwnWarned;
    std::function<void(int, qint64, qint64)> m_beforeAppend;
};
