#pragma once

#include "logging/logsync_p.h"
#include "logging/unsyncedfile_p.h"

#include <memory>
#include <vector>

class PrimaryFile;

/// Tells LogSync which data of one RotatingLogFile is not on the storage: that of the primary, and
/// that of files which a rotation has renamed since. It does nothing without a LogSync. It uses no
/// mutex: PrimaryWriter calls it under that of the RotatingLogFile.
///
/// LogSync gets a duplicate of the descriptor when the first line is written after a sync. So it
/// needs no mutex of the file, and the file may be replaced or closed at any time.
class FileSync
{
public:
    explicit FileSync(const PrimaryFile& file);

    void setSync(LogSync* sync) { m_sync = sync; }
    /// Call it after each write.
    void onWritten()
    {
        if (m_sync != nullptr && (m_current == nullptr || !m_current->isWaiting()))
            handOver();
    }
    /// Call it when the descriptor of the file refers to another file, or will be closed.
    void onReplaced();

private:
    void handOver();

    const PrimaryFile& m_file;
    LogSync* m_sync = nullptr;
    bool m_isNewName = true; // the folder may not have the name of the file on the storage
    std::shared_ptr<UnsyncedFile> m_current;
    std::vector<std::shared_ptr<UnsyncedFile>> m_former;
};
