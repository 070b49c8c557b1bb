#pragma once

#include <QtGlobal>

#include <cstddef>

#include "filedescriptor.h"

namespace zeltools
{

/// The mappings of this process, read from the kernel one after the other. Async-signal-safe.
class MemoryMap
{
public:
    struct Mapping
    {
        quintptr begin;
        quintptr end;
        bool isExecutable;
        quint64 offset;   ///< in the file
        const char* path; ///< Empty for anonymous memory; valid until the next call of next().
    };

    MemoryMap();

    /// Reads the next mapping. Returns false after the last one.
    bool next(Mapping& mapping);
    /// Whether the address is in an executable mapping. True if the mappings cannot be read.
    static bool isCode(quintptr address);

private:
    char* nextLine();

    const FileDescriptor m_file;
    size_t m_begin = 0;
    size_t m_end = 0;
    char m_bytes[8192] = {}; // A line has a path of at most 4096 bytes.
};

} // namespace zeltools
