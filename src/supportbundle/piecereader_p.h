#pragma once

#include "crypt/digest.h"

#include <QString>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace zeltools
{

/// Reads an open file in pieces and computes its digest, in a thread that is some pieces ahead of
/// the caller, so that reading and hashing take no time from the compression. A file of one piece
/// needs no thread. The result has exactly the given size: zeros take the place of bytes that
/// cannot be read.
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
    ~PieceReader();
    Q_DISABLE_COPY(PieceReader)

    /// The next piece, which stays valid until the next call.
    Piece next();

    // Valid at the end.
    QByteArray digest() { return m_digest.result(); }
    qint64 padded_B() const { return m_padded_B; }
    /// Why there are zeros, or an empty text.
    QString fault() const { return m_fault; }

private:
    static constexpr int mostAhead = 6;

    void runAhead();
    Piece read(char* buffer);
    qint64 readBytes(char* buffer, qint64 size_B);
    char* buffer(qint64 index) { return m_buffers[size_t(index) % m_buffers.size()].get(); }

    const int m_file;
    // Of the thread that reads.
    qint64 m_left_B;
    qint64 m_padded_B = 0;
    QString m_fault;
    Digest m_digest{QCryptographicHash::Sha256};

    std::vector<std::unique_ptr<char[]>> m_buffers;
    std::mutex m_mutex; // of the members below
    std::condition_variable m_changed;
    std::deque<Piece> m_pieces; // read, and not given to the caller yet
    bool m_isAbandoned = false;
    std::thread m_thread;
};

} // namespace zeltools
