#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace zeltools
{

/// Owns a file descriptor and closes it at the end of its life. A negative number, the result of an
/// open() that failed, is allowed; nothing is closed then.
class FileDescriptor
{
public:
    /// Takes the ownership of the descriptor.
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    /// Closes the descriptor, if it is not negative.
    ~FileDescriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    Q_DISABLE_COPY(FileDescriptor)

    /// The descriptor, which stays owned by the object.
    operator int() const { return m_descriptor; }

private:
    const int m_descriptor;
};

} // namespace zeltools
