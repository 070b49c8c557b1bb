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

/// The types of the two sizes of ELF files.
struct Elf32
{
    using Header = Elf32_Ehdr;
    using Section = Elf32_Shdr;
    using Segment = Elf32_Phdr;
};
struct Elf64
{
    using Header = Elf64_Ehdr;
    using Section = Elf64_Shdr;
    using Segment = Elf64_Phdr;
};

/// A place in the file that a table of sections or segments tells.
struct Place
{
    bool hasNotes;
    quint64 offset;
    quint64 size;
};

template <typename Section>
Place sectionPlace(const Section& section)
{
    return {section.sh_type == SHT_NOTE, section.sh_offset, section.sh_size};
}

template <typename Segment>
Place segmentPlace(const Segment& segment)
{
    return {segment.p_type == PT_NOTE, segment.p_offset, segment.p_filesz};
}

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
    Elf64_Nhdr note; // the same in files of 32 bits
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
QByteArray idInTable(int file, quint64 start, quint64 count, Place (*placeOf)(const Entry&))
{
    constexpr quint64 longestNotes = 65536;
    Entry entry;
    for (quint64 i = 0; i < count; ++i) {
        if (!readAt(file, start + i * sizeof entry, &entry, sizeof entry))
            break;
        const Place place = placeOf(entry);
        if (!place.hasNotes || place.size > longestNotes)
            continue;
        QByteArray notes(int(place.size), '\0');
        if (!readAt(file, place.offset, notes.data(), size_t(notes.size())))
            continue;
        QByteArray id = idInNotes(notes);
        if (!id.isEmpty())
            return id;
    }
    return QByteArray();
}

template <typename Elf>
QByteArray idInFile(int file)
{
    typename Elf::Header header;
    if (!readAt(file, 0, &header, sizeof header))
        return QByteArray();
    // The segments of a file with symbols alone may point anywhere, so the sections come first.
    QByteArray id = idInTable<typename Elf::Section>(file, header.e_shoff, header.e_shnum, //
                                                     sectionPlace);
    return !id.isEmpty() ? id
                         : idInTable<typename Elf::Segment>(file, header.e_phoff, header.e_phnum,
                                                            segmentPlace);
}

} // namespace

QByteArray readBuildId(const QString& path)
{
    QString error = whyUnreadable(path); // to open a device may have an effect
    if (!error.isEmpty())
        return QByteArray();
    const zeltools::FileDescriptor file(openFile(path, error));
    uchar identity[EI_NIDENT];
    if (file < 0 || !readAt(file, 0, identity, sizeof identity) ||
        std::memcmp(identity, ELFMAG, SELFMAG) != 0 || identity[EI_DATA] != ELFDATA2LSB)
        return QByteArray();
    switch (identity[EI_CLASS]) {
    case ELFCLASS32:
        return idInFile<Elf32>(file);
    case ELFCLASS64:
        return idInFile<Elf64>(file);
    default:
        return QByteArray();
    }
}
