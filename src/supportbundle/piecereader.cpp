#include "supportbundle/piecereader_p.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace zeltools
{

PieceReader::PieceReader(int file, qint64 size_B)
    : m_file(file)
    , m_left_B(size_B)
{
    const qint64 buffer_B = std::min(size_B, pieceSize_B);
    m_buffers[0].reset(new char[size_t(buffer_B)]);
    if (size_B > buffer_B)
        m_buffers[1].reset(new char[size_t(buffer_B)]);
    posix_fadvise(file, 0, 0, POSIX_FADV_SEQUENTIAL);
    m_ahead = readAhead();
}

PieceReader::Piece PieceReader::next()
{
    const Piece piece = m_ahead.get();
    m_ahead = readAhead();
    return piece;
}

std::future<PieceReader::Piece> PieceReader::readAhead()
{
    char* const buffer = m_buffers[m_nextBuffer].get();
    m_nextBuffer = 1 - m_nextBuffer;
    // A small file is not worth a thread. Without memory for a thread, this one does the work.
    const auto policy =
        m_left_B < pieceSize_B ? std::launch::deferred : std::launch::async | std::launch::deferred;
    return std::async(policy, [this, buffer] { return read(buffer); });
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
