#pragma once

#include "filedescriptor.h"

#include <QByteArray>

#include <sys/types.h>

namespace zeltools
{

/// A new file that is locked while it is written and then takes the name of another one. Without
/// that it is removed at the end of the object's life.
///
/// The name is fixed, so that a file which a killed process has left behind is found and replaced.
/// A process removes a file of that name only while it holds the lock on it.
class HiddenFile
{
public:
    /// Creates the file in the open folder. After a failure `descriptor()` is negative and `errno`
    /// has the reason, which is EWOULDBLOCK if another process is writing such a file.
    HiddenFile(int folder, const QByteArray& name, mode_t mode);
    ~HiddenFile();
    Q_DISABLE_COPY(HiddenFile)

    int descriptor() const { return m_file; }
    /// Gives the file its final name in the same folder. Returns false with `errno` on failure.
    bool rename(const QByteArray& name);

private:
    const int m_folder;
    const QByteArray m_name;
    const FileDescriptor m_file;
    bool m_isRenamed = false;
};

} // namespace zeltools
