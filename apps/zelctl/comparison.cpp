#include "comparison.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace
{

constexpr size_t s_bufferSize = 65536;

} // namespace

Comparison::Comparison(const QString& expectedPath)
    : m_expected(expectedPath)
    , m_found(s_bufferSize)
    , m_wanted(s_bufferSize)
{
    if (m_expected.open(QIODevice::ReadOnly | QIODevice::Unbuffered) &&
        pipe2(m_ends, O_CLOEXEC) == 0)
        m_thread = std::thread([this] { compare(); });
}

Comparison::~Comparison()
{
    isSame();
    if (m_ends[0] >= 0)
        close(m_ends[0]);
}

QString Comparison::path() const
{
    return m_thread.joinable() ? QStringLiteral("/proc/self/fd/%1").arg(m_ends[1]) : QString();
}

bool Comparison::isSame()
{
    if (m_ends[1] >= 0)
        close(std::exchange(m_ends[1], -1));
    if (m_thread.joinable())
        m_thread.join();
    return m_ends[0] >= 0 && m_isSame && m_expected.atEnd();
}

// It reads to the end even after a difference, since the writer would wait otherwise.
void Comparison::compare()
{
    while (true) {
        const ssize_t count = read(m_ends[0], m_found.data(), m_found.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        m_isSame = m_isSame && m_expected.read(m_wanted.data(), count) == count &&
                   std::memcmp(m_found.data(), m_wanted.data(), static_cast<size_t>(count)) == 0;
    }
}
