#include "crashreports/moduletable_p.h"

#include "crashreports/crashreportwriter.h"
#include "crashreports/memorymap_p.h"
#include "crashreports/ownmemory_p.h"

#include <algorithm>
#include <cstring>

#include <link.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

// Neighbouring mappings of one file.
struct Module
{
    MemoryMap::Mapping mapping; // the first one, but all of their range
    char path[4096];
};

// The header of an ELF file that is loaded.
class LoadedElf
{
public:
    explicit LoadedElf(quintptr begin)
        : m_begin(begin)
        , m_isElf(readOwnMemory(begin, &m_header, sizeof m_header) &&
                  std::memcmp(m_header.e_ident, ELFMAG, SELFMAG) == 0)
    {
    }

    // An address in memory is the sum of this one and the address in the file.
    quintptr base() const
    {
        ElfW(Phdr) segment;
        for (int i = 0; readSegment(i, segment); ++i) {
            if (segment.p_type == PT_LOAD)
                return m_begin - quintptr(segment.p_vaddr - segment.p_offset);
        }
        return m_begin;
    }

    void writeBuildId(CrashReportWriter& writer) const
    {
        const quintptr loadBase = base();
        ElfW(Phdr) segment;
        for (int i = 0; readSegment(i, segment); ++i) {
            if (segment.p_type == PT_NOTE &&
                writeBuildIdOf(loadBase + quintptr(segment.p_vaddr), segment.p_memsz, writer))
                return;
        }
        writer.text("-");
    }

private:
    bool readSegment(int number, ElfW(Phdr) & segment) const
    {
        return m_isElf && number < m_header.e_phnum &&
               readOwnMemory(m_begin + m_header.e_phoff + size_t(number) * sizeof segment, &segment,
                             sizeof segment);
    }

    static bool writeBuildIdOf(quintptr notes, size_t size, CrashReportWriter& writer);

    quintptr m_begin;
    ElfW(Ehdr) m_header{};
    bool m_isElf;
};

constexpr size_t padded(size_t size)
{
    return (size + 3) / 4 * 4;
}

void writeDigits(const char* bytes, size_t size, CrashReportWriter& writer)
{
    for (size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const char* const digits = "0123456789abcdef";
        const char pair[2]{digits[byte / 16], digits[byte % 16]};
        writer.text(pair, sizeof pair);
    }
}

bool LoadedElf::writeBuildIdOf(quintptr notes, size_t size, CrashReportWriter& writer)
{
    char bytes[1024];
    size = std::min(size, sizeof bytes);
    if (!readOwnMemory(notes, bytes, size))
        return false;
    constexpr char owner[4] = "GNU";
    ElfW(Nhdr) note;
    for (size_t name = sizeof note; name <= size;) {
        std::memcpy(&note, bytes + name - sizeof note, sizeof note);
        const size_t id = name + padded(note.n_namesz);
        if (id + padded(note.n_descsz) > size)
            return false;
        if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == sizeof owner &&
            std::memcmp(bytes + name, owner, sizeof owner) == 0) {
            writeDigits(bytes + id, note.n_descsz, writer);
            return true;
        }
        name = id + padded(note.n_descsz) + sizeof note;
    }
    return false;
}

void write(const Module& module, CrashReportWriter& writer)
{
    const bool isFile = module.path[0] == '/' || std::strcmp(module.path, "[vdso]") == 0;
    if (!isFile || !module.mapping.isExecutable)
        return;
    const LoadedElf elf(module.mapping.begin);
    writer.hex(elf.base()).text(" ").hex(module.mapping.end).text(" ");
    elf.writeBuildId(writer);
    writer.text(" ").text(module.path).endLine();
}

void copyPath(const char* path, Module& module)
{
    const size_t size = std::min(std::strlen(path), sizeof module.path - 1);
    std::memcpy(module.path, path, size);
    module.path[size] = '\0';
}

} // namespace

void writeModules(CrashReportWriter& writer)
{
    static Module module; // too large for the stack of a handler, of which only one runs
    module.path[0] = '\0';
    module.mapping = {};
    MemoryMap map;
    MemoryMap::Mapping mapping;
    while (map.next(mapping)) {
        if (std::strcmp(mapping.path, module.path) == 0) {
            module.mapping.end = mapping.end;
            module.mapping.isExecutable |= mapping.isExecutable;
        } else {
            write(module, writer);
            module.mapping = mapping;
            copyPath(mapping.path, module);
        }
    }
    write(module, writer);
}

} // namespace zeltools
