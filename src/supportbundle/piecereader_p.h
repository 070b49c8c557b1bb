#pragma once

#include "supportbundle/sha256_p.h"

#include <QString>

#include <future>
#include <memory>

namespace zeltools
{

/// Reads an open file in pieces and computes its digest, in another thread and one piece ahead of
/// the caller, so that reading and hashing take no time from the compression. The result has
/// exactly the given size: zeros take the place of bytes that cannot be read.
class PieceReader
{
public:
    static constexpr qint64 pieceSize_B = 1 << 20;

    struct Piece
    {
        const char* bytes;
        qint64 size_B; ///< 0 at the end
    };

    /// The descriptor must stay open while the object lives.
    PieceReader(int file, qint64 size_B);

    /// The next piece, which stays valid until the next call.
    Piece next();

    // Valid at the end.
    QByteArray digest() { return m_digest.result(); }
    qint64 padded_B() const { return m_padded_B; }
    /// Why there are zeros, or an empty text.
    QString fault() const { return m_fault; }

private:
    Piece read(char* buffer);
    qint64 readBytes(char* buffer, qint64 size_B);
    std::future<Piece> readAhead();

    const int m_file;
    qint64 m_left_B; ///< Not read yet. Like the members below, changed by one thread at a time.
    qint64 m_padded_B = 0;
    QString m_fault;
    Sha256 m_digest;
    std::unique_ptr<char[]> m_buffers[2];
    int m_nextBuffer = 0;
    std::future<Piece> m_ahead; // the last member, since its destructor waits for the thread
};

} // namespace zeltools
