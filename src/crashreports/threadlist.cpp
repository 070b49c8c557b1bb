#include "crashreports/threadlist_p.h"

#include <QtGlobal>

#include <algorithm>
#include <cstring>
#include <iterator>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

// An entry of a folder, as the kernel writes it.
struct Entry
{
    quint64 inode;
    qint64 offset;
    quint16 size;
    quint8 type;
    char name[1]; // ends with NUL
};

pid_t toNumber(const char* name)
{
    pid_t number = 0;
    for (; *name >= '0' && *name <= '9'; ++name)
        number = number * 10 + (*name - '0');
    return number;
}

} // namespace

ThreadList::ThreadList()
    : m_folder(::open("/proc/self/task", O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
}

pid_t ThreadList::next()
{
    for (;;) {
        if (m_place == m_size) {
            const long size = syscall(SYS_getdents64, int(m_folder), m_entries, sizeof m_entries);
            if (size <= 0)
                return 0;
            m_place = 0;
            m_size = size_t(size);
        }
        const char* const entry = m_entries + m_place;
        quint16 size = 0;
        std::memcpy(&size, entry + offsetof(Entry, size), sizeof size);
        m_place += size;
        if (const pid_t thread = toNumber(entry + offsetof(Entry, name)))
            return thread;
    }
}

ThreadName::ThreadName(pid_t thread)
{
    char path[64] = "/proc/self/task/";
    char digits[16];
    char* begin = std::end(digits);
    for (pid_t rest = thread; rest > 0; rest /= 10)
        *--begin = char('0' + rest % 10);
    char* const end = std::copy(begin, std::end(digits), path + std::strlen(path));
    std::strcpy(end, "/comm");
    const FileDescriptor file(::open(path, O_RDONLY | O_CLOEXEC));
    const ssize_t size = ::read(file, text, sizeof text - 1);
    std::fill(std::find(text, text + std::max<ssize_t>(size, 0), '\n'), std::end(text), '\0');
}

} // namespace zeltools
