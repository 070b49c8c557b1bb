#include "elfbuildid.h"

#include "readfile.h"
#include <zeltools/filedescriptor.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include <elf.h>
#include <unistd.h>

namespace
{

/// A table of sections or of segments, and the fields that describe one of them.
template <typename Entry>
struct Table
{
    quint64 start;
    quint64 count;
    Elf64_Word noteType;
    Elf64_Word Entry::*type;
    Elf64_Off Entry::*offset;
    Elf64_Xword Entry::*size;
};

bool readAt(int file, quint64 offset, void* bytes, size_t size)
{
    constexpr quint64 most = std::numeric_limits<off_t>::max();
    return offset <= most && pread(file, bytes, size, off_t(offset)) == ssize_t(size);
}

quint64 padded(quint64 size)
{
    return (size + 3) & ~quint64(3);
}

QByteArray idInNotes(const QByteArray& notes)
{
    constexpr quint64 longestId = 64;
    const auto size = quint64(notes.size());
    Elf64_Nhdr note;
    for (quint64 start = 0; start + sizeof note <= size;) {
        std::memcpy(&note, notes.constData() + start, sizeof note);
        const quint64 name = start + sizeof note;
        const quint64 id = name + padded(note.n_namesz);
        if (id + note.n_descsz > size)
            break;
        if (note.n_type == NT_GNU_BUILD_ID && note.n_namesz == sizeof ELF_NOTE_GNU &&
            std::memcmp(notes.constData() + name, ELF_NOTE_GNU, sizeof ELF_NOTE_GNU) == 0)
            return notes.mid(int(id), int(std::min<quint64>(note.n_descsz, longestId)));
        start = id + padded(note.n_descsz);
    }
    return QByteArray();
}

template <typename Entry>
QByteArray idInTable(int file, const Table<Entry>& table)
{
    constexpr quint64 longestNotes = 65536;
    Entry entry;
    for (quint64 i = 0; i < table.count; ++i) {
        if (!readAt(file, table.start + i * sizeof entry, &entry, sizeof entry))
            break;
        if (entry.*table.type != table.noteType || entry.*table.size > longestNotes)
            continue;
        QByteArray notes(int(entry.*table.size), '\0');
        if (!readAt(file, entry.*table.offset, notes.data(), size_t(notes.size())))
            continue;
        QByteArray id = idInNotes(notes);
        if (!id.isEmpty())
            return id;
    }
    return QByteArray();
}

bool isKnownFormat(const Elf64_Ehdr& header)
{
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == ELFCLASS64 && header.e_ident[EI_DATA] == ELFDATA2LSB;
}

} // namespace

QByteArray readBuildId(const QString& path)
{
    QString error = whyUnreadable(path); // to open a device may have an effect
    if (!error.isEmpty())
        return QByteArray();
    const zeltools::FileDescriptor file(openFile(path, error));
    Elf64_Ehdr header;
    if (file < 0 || !readAt(file, 0, &header, sizeof header) || !isKnownFormat(header))
        return QByteArray();
    // The segments of a file with symbols alone may point anywhere, so the sections come first.
    const Table<Elf64_Shdr> sections{
        header.e_shoff,       header.e_shnum,         SHT_NOTE,
        &Elf64_Shdr::sh_type, &Elf64_Shdr::sh_offset, &Elf64_Shdr::sh_size};
    const Table<Elf64_Phdr> segments{
        header.e_phoff,      header.e_phnum,        PT_NOTE,
        &Elf64_Phdr::p_type, &Elf64_Phdr::p_offset, &Elf64_Phdr::p_filesz};
    QByteArray id = idInTable(file, sections);
    return id.isEmpty() ? idInTable(file, segments) : id;
}
