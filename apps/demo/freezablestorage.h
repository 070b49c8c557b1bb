#pragma once

#include <QString>
#include <QtGlobal>

/// An ext4 file system that can be frozen, so that every process that writes to it waits, like
/// storage that stalls. It is mounted by a loop device in a mount namespace of its own, which the
/// process and its later children share. This takes root; without it isMounted() returns false.
///
/// A guard process thaws the file system as soon as this process has ended, however it ended, and
/// at the latest five seconds after freeze(). Construct the object while the process has one
/// thread, and only one object in a process. The process must not write to the file system itself
/// while it is frozen.
class FreezableStorage
{
public:
    /// Mounts an empty file system of 64 MiB at the existing folder.
    explicit FreezableStorage(const QString& folder);
    /// Thaws and unmounts the file system.
    ~FreezableStorage();
    Q_DISABLE_COPY(FreezableStorage)

    bool isMounted() const { return m_descriptor >= 0; }
    /// Both return false on failure; freeze() returns after the data in memory were written.
    bool freeze();
    bool thaw();

private:
    bool mountImage();
    bool startGuard();
    bool tellGuard(char event);

    const QByteArray m_folder;
    int m_descriptor = -1;
    int m_guardSocket = -1;
    int m_guardProcess = -1;
};
