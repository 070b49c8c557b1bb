#include "supportbundle/piecereader_p.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace zeltools
{

PieceReader::PieceReader(int file, qint64 size_B)
    : m_file(file)
    , m_left_B(size_B)
{
    const qint64 pieces = (size_B + pieceSize_B - 1) / pieceSize_B;
    for (qint64 i = 0; i < std::clamp<qint64>(pieces, 1, mostAhead + 1); ++i)
        m_buffers.emplace_back(new char[size_t(std::min(size_B, pieceSize_B))]);
    posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    if (pieces < 2)
        return;
    try {
        m_thread = std::thread([this] { runAhead(); });
    } catch (const std::system_error&) {
        // next() reads without a thread, which only takes longer.
    }
}

PieceReader::~PieceReader()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isAbandoned = true;
    }
    m_changed.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

PieceReader::Piece PieceReader::next()
{
    if (!m_thread.joinable())
        return read(buffer(0));
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_pieces.empty(); });
    const Piece piece = m_pieces.front();
    if (piece.size_B > 0) // the end stays in the queue
        m_pieces.pop_front();
    lock.unlock();
    m_changed.notify_one();
    return piece;
}

void PieceReader::runAhead()
{
    for (qint64 i = 0;; ++i) {
        // One buffer more than the queue holds, since the caller still uses the last piece.
        const Piece piece = read(buffer(i));
        std::unique_lock lock(m_mutex);
        m_pieces.push_back(piece);
        m_changed.notify_one();
        m_changed.wait(lock,
                       [this] { return m_isAbandoned || m_pieces.size() + 1 < m_buffers.size(); });
        if (m_isAbandoned || piece.size_B == 0)
            return;
    }
}

PieceReader::Piece PieceReader::read(char* buffer)
{
    const qint64 size_B = std::min(m_left_B, pieceSize_B);
    const qint64 found_B = m_fault.isEmpty() ? readBytes(buffer, size_B) : 0;
    if (found_B < size_B)
        std::memset(buffer + found_B, 0, size_t(size_B - found_B));
    m_padded_B += size_B - found_B;
    m_left_B -= size_B;
    m_digest.add(buffer, size_B);
    return {buffer, size_B};
}

qint64 PieceReader::readBytes(char* buffer, qint64 size_B)
{
    qint64 found_B = 0;
    while (found_B < size_B && m_fault.isEmpty()) {
        const ssize_t count = ::read(m_file, buffer + found_B, size_t(size_B - found_B));
        if (count > 0)
            found_B += count;
        else if (count == 0)
            m_fault = QStringLiteral("it has become shorter while the bundle was made");
        else if (errno != EINTR)
            m_fault = qt_error_string(errno);
    }
    return found_B;
}

} // namespace zeltools
