#include "logging/unsyncedfile_p.h"

#include <utility>

#include <sys/stat.h>
#include <unistd.h>

UnsyncedFile::UnsyncedFile(int descriptor, std::string folder)
    : m_descriptor(descriptor)
    , m_folder(std::move(folder))
{
}

UnsyncedFile::~UnsyncedFile()
{
    if (isWaiting())
        ::close(m_descriptor);
}

void UnsyncedFile::sync()
{
    const int descriptor = m_descriptor.exchange(-1);
    if (descriptor < 0)
        return;
    fdatasync(descriptor);
    ::close(descriptor);
}

// If sync() takes the descriptor at the same time, its number may already belong to another file,
// and nothing is closed here.
void UnsyncedFile::dropDeleted()
{
    int descriptor = m_descriptor;
    struct stat file;
    if (descriptor >= 0 && fstat(descriptor, &file) == 0 && file.st_nlink == 0 &&
        m_descriptor.compare_exchange_strong(descriptor, -1))
        ::close(descriptor);
}
