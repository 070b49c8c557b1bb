#pragma once

#include "simplecrypt.h"

#include <QString>

#include <atomic>
#include <thread>

namespace zeltools
{

/// A pipe of which one end is a file that a SimpleCrypt writes or reads in a thread of its own, so
/// that no plaintext is stored. The other end belongs to the thread that owns the object.
///
/// Written cyphertexts have no SHA-1, since that stands in front of the content and would need a
/// second pass; the manifest of the bundle has the digests. Cyphertexts that are compressed or have
/// a checksum are refused, because they are decrypted in memory.
class CryptPipe
{
public:
    enum Direction { Encrypt, Decrypt };

    /// Encrypts into or decrypts from the open file.
    CryptPipe(const SimpleCrypt& crypt, Direction direction, int file);
    ~CryptPipe();
    Q_DISABLE_COPY(CryptPipe)

    /// The owner's end of the pipe.
    int descriptor() const { return m_ends[m_own]; }
    /// Whether the other thread needs no more bytes, or has failed.
    bool hasEnded() const { return m_hasEnded; }
    /// Closes the owner's end, waits for the thread, and returns why it has failed, or an empty
    /// text.
    QString finish();
    /// Makes the thread end early.
    void cancel() { m_isCancelled = true; }

private:
    void run(int file);
    QString runCrypt(const QString& file);
    void drain() const;

    SimpleCrypt m_crypt;
    const Direction m_direction;
    const int m_own;
    int m_ends[2] = {-1, -1};
    std::atomic<bool> m_isCancelled = false;
    std::atomic<bool> m_hasEnded = false;
    QString m_error;
    std::thread m_thread;
};

} // namespace zeltools
