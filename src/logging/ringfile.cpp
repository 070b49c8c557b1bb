#include "logging/ringfile_p.h"

#include "logging/openwithoutwaiting_p.h"

#include <QDir>
#include <QFileInfo>
#include <QtAlgorithms>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/file.h>
#include <sys/mman.h>

namespace
{

constexpr quint64 s_smallest_B = quint64(256) * 1024; // a multiple of every page size
constexpr quint64 s_largest_B = quint64(512) * 1024 * 1024;

QString reason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

quint64 powerOfTwo(qint64 size_B)
{
    quint64 capacity = s_smallest_B;
    while (capacity < s_largest_B && qint64(capacity) < size_B)
        capacity *= 2;
    return capacity;
}

// Maps the file, and its data a second time behind it. Returns null with `errno` on failure.
char* map(int descriptor, quint64 capacity)
{
    const quint64 size = RingFile::headerSize + capacity;
    void* const memory = mmap(nullptr, size + capacity, PROT_NONE,
                              MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    char* const begin = static_cast<char*>(memory);
    const auto mapPart = [&](char* at, quint64 length, quint64 offset) {
        return mmap(at, length, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED | MAP_POPULATE,
                    descriptor, off_t(offset)) != MAP_FAILED;
    };
    if (mapPart(begin, size, 0) && mapPart(begin + size, capacity, RingFile::headerSize))
        return begin;
    munmap(memory, size + capacity);
    return nullptr;
}

bool isPowerOfTwo(quint64 capacity)
{
    return capacity >= s_smallest_B && capacity <= s_largest_B && qPopulationCount(capacity) == 1;
}

// Reads the header of the file, all of which may be random. Returns whether it is valid.
bool readHeader(int descriptor, RingHeader& header)
{
    struct stat file;
    if (fstat(descriptor, &file) != 0 ||
        pread(descriptor, static_cast<void*>(&header), sizeof header, 0) != ssize_t(sizeof header))
        return false;
    const quint64 written = header.cursors.written;
    const quint64 tail = header.cursors.tail;
    const quint64 head = LineRing<>::endOf(header.cursors.head);
    return std::equal(std::begin(header.magic), std::end(header.magic),
                      RingHeader::expectedMagic) &&
           header.headerSize == sizeof(RingHeader) && isPowerOfTwo(header.capacity) &&
           quint64(file.st_size) == RingFile::headerSize + header.capacity && tail <= written &&
           written <= head && head - tail <= header.capacity && (tail | written | head) % 8 == 0;
}

bool hasFilesIn(const RingHeader& header, const QString& folder)
{
    const QString beginning = QDir(folder).canonicalPath() + QLatin1Char('/');
    return QDir(folder).exists() && std::any_of(std::begin(header.files), std::end(header.files),
                                                [&](const RingHeader::File& file) {
                                                    return file.pathText().startsWith(beginning);
                                                });
}

} // namespace

QString RingHeader::File::pathText() const
{
    return QFile::decodeName(QByteArray(path, int(qstrnlen(path, pathSize))));
}

// A wildcard would be compiled at the start of each host.
bool RingFile::isName(const QString& name)
{
    return name.startsWith(QLatin1String("zeltools-log-")) && name.endsWith(QLatin1String(".ring"));
}

RingFile::RingFile(const QString& path, int descriptor, char* memory, quint64 capacity)
    : m_path(path)
    , m_descriptor(descriptor)
    , m_memory(memory)
    , m_capacity(capacity)
{
}

RingFile::~RingFile()
{
    munmap(m_memory, headerSize + 2 * m_capacity);
    if (m_descriptor >= 0)
        close(m_descriptor);
}

// The file gets its name when it is complete and locked, so that no recovery sees it before. All
// its blocks are allocated here: later a full file system would end the process by SIGBUS.
std::unique_ptr<RingFile> RingFile::create(const QString& folder, qint64 capacity, QString& error)
{
    const quint64 size_B = powerOfTwo(capacity);
    const int descriptor = open(QFile::encodeName(folder).constData(),
                                O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    char* memory = nullptr;
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
        errno = posix_fallocate(descriptor, 0, off_t(headerSize + size_B));
        memory = errno == 0 ? map(descriptor, size_B) : nullptr;
    }
    if (memory == nullptr) {
        error = folder + QStringLiteral(": ") + reason();
        if (descriptor >= 0)
            close(descriptor);
        return nullptr;
    }
    std::unique_ptr<RingFile> ring(new RingFile(QString(), descriptor, memory, size_B));
    ring->initialize();
    if (ring->giveName(folder))
        return ring;
    error = folder + QStringLiteral(": ") + reason();
    return nullptr;
}

void RingFile::initialize()
{
    RingHeader& ring = header();
    std::copy(std::begin(RingHeader::expectedMagic), std::end(RingHeader::expectedMagic),
              ring.magic);
    ring.headerSize = sizeof(RingHeader);
    ring.process = getpid();
    ring.capacity = m_capacity;
}

// Another process may have had the same number, and its ring may not be recovered yet.
bool RingFile::giveName(const QString& folder)
{
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(m_descriptor);
    for (int number = 1; number < 1000; ++number) {
        m_path = QStringLiteral("%1/zeltools-log-%2-%3.ring").arg(folder).arg(getpid()).arg(number);
        if (linkat(AT_FDCWD, link.constData(), AT_FDCWD, QFile::encodeName(m_path).constData(),
                   AT_SYMLINK_FOLLOW) == 0)
            return true;
        if (errno != EEXIST)
            return false;
    }
    return false;
}

// A ring that is not for this folder is not locked, not even for a moment, since its own recovery
// would take that for a process that uses it.
std::unique_ptr<RingFile> RingFile::openAbandoned(const QString& path, const QString& logFolder,
                                                  QString& error)
{
    const int descriptor = openWithoutWaiting(path, O_RDWR | O_NOFOLLOW);
    const auto fail = [&](const QString& text) {
        error = text.isEmpty() ? text : path + QStringLiteral(": ") + text;
        if (descriptor >= 0)
            close(descriptor);
        return nullptr;
    };
    struct stat file;
    if (descriptor < 0 || fstat(descriptor, &file) != 0)
        return fail(errno == ENOENT ? QString() : reason()); // another recovery has removed it
    if (file.st_uid != geteuid())
        return fail(QStringLiteral("The ring belongs to another user"));
    auto header = std::make_unique<RingHeader>();
    if (readHeader(descriptor, *header) && !hasFilesIn(*header, logFolder))
        return fail(QString());
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        return fail(QString());
    if (!readHeader(descriptor, *header))
        return fail(QStringLiteral("The ring is damaged or of another version") + setAside(path));
    char* const memory = map(descriptor, header->capacity);
    if (memory == nullptr)
        return fail(reason());
    std::unique_ptr<RingFile> ring(new RingFile(path, descriptor, memory, header->capacity));
    ring->lines().open();
    return ring;
}

bool RingFile::add(const RingLine& line, const char* text, int size, quint64 limit)
{
    return lines().add(quint32(sizeof line) + quint32(size), limit, [&](char* content) {
        std::memcpy(content, &line, sizeof line);
        std::memcpy(content + sizeof line, text, size_t(size));
    });
}

QString RingFile::setAside(const QString& path)
{
    const QString name = path + QStringLiteral(".unreadable");
    const bool isDone =
        rename(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0;
    return isDone ? QStringLiteral(" and kept as %1").arg(QFileInfo(name).fileName()) : QString();
}

void RingFile::remove()
{
    unlink(QFile::encodeName(m_path).constData());
}

void RingFile::releaseInChild()
{
    // If it fails, the child keeps the lock, and the lines stay until the child ends.
    static_cast<void>(mmap(m_memory, headerSize + 2 * m_capacity, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED | MAP_NORESERVE, -1, 0));
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_descriptor = -1;
}
