#include "supportbundle/cryptpipe_p.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

QString pathOf(int descriptor)
{
    return QStringLiteral("/proc/self/fd/%1").arg(descriptor);
}

} // namespace

CryptPipe::CryptPipe(const SimpleCrypt& crypt, Direction direction, int file)
    : m_crypt(crypt)
    , m_direction(direction)
    , m_own(direction == Encrypt ? 1 : 0)
{
    m_crypt.setCompression(SimpleCrypt::CompressionOff);
    m_crypt.setProtection(SimpleCrypt::ProtectionOff);
    if (pipe2(m_ends, O_CLOEXEC) != 0) {
        m_error = qt_error_string(errno);
        m_hasEnded = true;
        return;
    }
    constexpr int capacity_B = 1 << 20;
    fcntl(m_ends[0], F_SETPIPE_SZ, capacity_B); // smaller is only slower
    try {
        m_thread = std::thread([this, file] { run(file); });
    } catch (const std::system_error& error) {
        m_error = QString::fromLocal8Bit(error.what());
        m_hasEnded = true;
        ::close(std::exchange(m_ends[1 - m_own], -1));
    }
}

CryptPipe::~CryptPipe()
{
    cancel();
    finish();
}

QString CryptPipe::finish()
{
    // The thread writes into a decrypting pipe until its next chunk; reading to the end lets it.
    if (m_own == 0 && m_ends[0] >= 0)
        drain();
    if (m_own == 1 && m_ends[1] >= 0)
        ::close(std::exchange(m_ends[1], -1));
    if (m_thread.joinable())
        m_thread.join();
    for (int& end : m_ends) {
        if (end >= 0)
            ::close(std::exchange(end, -1));
    }
    return m_error;
}

void CryptPipe::run(int file)
{
    m_error = runCrypt(pathOf(file));
    m_hasEnded = true;
    if (m_direction == Encrypt)
        drain(); // closed earlier, the pipe would send a SIGPIPE to the owner
    else
        ::close(std::exchange(m_ends[1], -1));
}

QString CryptPipe::runCrypt(const QString& file)
{
    const auto progress = [this](qint64, qint64) {
        if (m_isCancelled)
            throw std::runtime_error("cancelled");
    };
    const QString pipe = pathOf(m_ends[1 - m_own]);
    const bool isDone = m_direction == Encrypt ? m_crypt.encryptFileInChunks(pipe, file, progress)
                                               : m_crypt.decryptFileSmart(file, pipe, progress);
    const SimpleCrypt::Failure& failure = m_crypt.lastFailure();
    if (isDone && failure.code == SimpleCrypt::CryptNoError)
        return QString();
    return failure.systemError.isEmpty()
               ? QStringLiteral("it is damaged, or the key is another one")
               : failure.systemError;
}

void CryptPipe::drain() const
{
    char bytes[65536];
    while (true) {
        const ssize_t count = ::read(m_ends[0], bytes, sizeof bytes);
        if (count == 0 || (count < 0 && errno != EINTR))
            return;
    }
}

} // namespace zeltools
