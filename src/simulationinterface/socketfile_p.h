#pragma once

#include "simulationinterface/unixsocketpath_p.h"

#include <sys/types.h>

namespace zeltools::simulationinterface
{

/// The file of an AF_UNIX socket that listens. Only the user of the process can connect to it. The
/// destructor removes the file, unless another one has taken its place.
class SocketFile
{
public:
    explicit SocketFile(const UnixSocketPath& path);
    ~SocketFile();
    Q_DISABLE_COPY(SocketFile)

    const UnixSocketPath& path() const { return m_path; }
    /// Makes the file and returns a non-blocking socket that listens, which belongs to the caller.
    /// The file of a socket that nobody holds any more is replaced. Returns -1 and sets errno if
    /// the path is in use or cannot be made. The call takes at most a second.
    int listen();

private:
    bool bindTo(int socket);
    bool isAbandoned() const;

    const UnixSocketPath m_path;
    dev_t m_device = 0;
    ino_t m_inode = 0; // 0 as long as there is no file
};

} // namespace zeltools::simulationinterface
