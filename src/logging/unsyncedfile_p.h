#pragma once

#include <QtGlobal>

#include <atomic>
#include <string>

/// A log file with data that may not be on the storage yet. It owns a descriptor of the file until
/// sync() or dropDeleted(). Two threads may call the functions at the same time.
class UnsyncedFile
{
public:
    /// `folder` is the folder whose entry for the file may be unsynced too, or empty.
    UnsyncedFile(int descriptor, std::string folder);
    ~UnsyncedFile();
    Q_DISABLE_COPY(UnsyncedFile)

    const std::string& folder() const { return m_folder; }
    /// Whether a later sync() covers what is in the file now.
    bool isWaiting() const { return m_descriptor >= 0; }
    /// Blocks until the data is on the storage. It ends isWaiting() first.
    void sync();
    /// Ends isWaiting() without a sync if the file has no name any more, so that its blocks become
    /// free.
    void dropDeleted();

private:
    std::atomic<int> m_descriptor;
    const std::string m_folder;
};
