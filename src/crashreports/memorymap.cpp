#include "crashreports/memorymap_p.h"

#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

// Reads the number and moves behind the character that follows it.
quint64 takeHex(const char*& text)
{
    quint64 number = 0;
    for (; *text != '\0'; ++text) {
        const char* const digits = "0123456789abcdef";
        const char* const digit = std::strchr(digits, *text);
        if (digit == nullptr)
            break;
        number = number * 16 + quint64(digit - digits);
    }
    if (*text != '\0')
        ++text;
    return number;
}

void skipField(const char*& text)
{
    while (*text != '\0' && *text != ' ')
        ++text;
    while (*text == ' ')
        ++text;
}

} // namespace

MemoryMap::MemoryMap()
    : m_file(::open("/proc/self/maps", O_RDONLY | O_CLOEXEC))
{
}

// A line is such as "7f1c2000-7f1c5000 r-xp 00002000 08:01 1234    /usr/lib/libm.so.6".
bool MemoryMap::next(Mapping& mapping)
{
    const char* text = nextLine();
    if (text == nullptr)
        return false;
    mapping.begin = quintptr(takeHex(text));
    mapping.end = quintptr(takeHex(text));
    mapping.isExecutable = std::strncmp(text, "r-x", 3) == 0 || std::strncmp(text, "rwx", 3) == 0 ||
                           std::strncmp(text, "--x", 3) == 0;
    skipField(text);
    mapping.offset = takeHex(text);
    skipField(text); // device
    skipField(text); // inode
    mapping.path = text;
    return true;
}

bool MemoryMap::isCode(quintptr address)
{
    MemoryMap map;
    Mapping mapping;
    while (map.next(mapping)) {
        if (address >= mapping.begin && address < mapping.end)
            return mapping.isExecutable;
    }
    return map.m_file < 0;
}

// The line ends with NUL and is valid until the next call; null at the end of the file.
char* MemoryMap::nextLine()
{
    for (;;) {
        char* const line = m_bytes + m_begin;
        if (auto* const end = static_cast<char*>(std::memchr(line, '\n', m_end - m_begin))) {
            *end = '\0';
            m_begin = size_t(end + 1 - m_bytes);
            return line;
        }
        std::memmove(m_bytes, line, m_end - m_begin);
        m_end -= m_begin;
        m_begin = 0;
        const ssize_t count = ::read(m_file, m_bytes + m_end, sizeof m_bytes - m_end);
        if (count <= 0)
            return nullptr;
        m_end += size_t(count);
    }
}

} // namespace zeltools
