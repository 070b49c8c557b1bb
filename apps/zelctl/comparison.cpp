#include "comparison.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

Comparison::Comparison(const QString& expectedPath)
    : m_expected(expectedPath)
{
    if (m_expected.open(QIODevice::ReadOnly) && pipe2(m_ends, O_CLOEXEC) == 0)
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

// Reads to the end in any case: the writer would wait for it.
void Comparison::compare()
{
    QByteArray buffer(65536, '\0');
    while (true) {
        const ssize_t count = read(m_ends[0], buffer.data(), static_cast<size_t>(buffer.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        m_isSame = m_isSame && m_expected.read(count) == buffer.left(static_cast<int>(count));
    }
}
