#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QCryptographicHash>

#include <memory>

namespace zeltools
{

/// Computes a digest over bytes that are added in pieces, with the result of QCryptographicHash.
/// libcrypto computes SHA-1 three times and SHA-256 six times as fast as Qt, with the instructions
/// of the processor. The first digest loads it, and the process never unloads it. Qt computes all
/// other digests, and these two where libcrypto is missing or if the library is built without it
/// (ZELTOOLS_LIBCRYPTO).
///
/// Only one thread at a time may use an object; other objects are independent of it.
class ZELTOOLS_EXPORT Digest
{
public:
    /// Begins a digest of no bytes.
    explicit Digest(QCryptographicHash::Algorithm algorithm);
    ~Digest();
    Q_DISABLE_COPY(Digest)

    /// Appends bytes. The result does not depend on how they are split into pieces.
    void add(const char* bytes, qint64 size_B);
    /// Returns the digest. No bytes may be added afterwards.
    QByteArray result();

    /// @{
    /// The digest of all bytes at once.
    static QByteArray of(const char* bytes, qint64 size_B, QCryptographicHash::Algorithm algorithm)
    {
        Digest digest(algorithm);
        digest.add(bytes, size_B);
        return digest.result();
    }
    static QByteArray of(const QByteArray& bytes, QCryptographicHash::Algorithm algorithm)
    {
        return of(bytes.constData(), bytes.size(), algorithm);
    }
    /// @}

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};

} // namespace zeltools
