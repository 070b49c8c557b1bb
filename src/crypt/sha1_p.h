#pragma once

#include <QByteArray>

#include <memory>

/// Computes a SHA-1 over bytes that are added in pieces. libcrypto does it with the instructions of
/// the processor. If the library is built without libcrypto (ZELTOOLS_LIBCRYPTO), Qt does it.
class Sha1
{
public:
    Sha1();
    ~Sha1();
    Q_DISABLE_COPY(Sha1)

    void add(const char* bytes, qint64 size);
    /// Returns the 20 bytes of the hash. No bytes may be added afterwards.
    QByteArray result();

    static QByteArray of(const char* bytes, qint64 size)
    {
        Sha1 hash;
        hash.add(bytes, size);
        return hash.result();
    }
    static QByteArray of(const QByteArray& bytes) { return of(bytes.constData(), bytes.size()); }

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};
