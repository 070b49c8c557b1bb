#pragma once

#include <QByteArray>

#include <memory>

/// A SHA-1 over bytes that come in pieces: by libcrypto, which uses the processor's own
/// instructions for it, or by Qt where the library is built without (ZELTOOLS_LIBCRYPTO).
class Sha1
{
public:
    Sha1();
    ~Sha1();
    Q_DISABLE_COPY(Sha1)

    void add(const char* bytes, qint64 size);
    /// 20 bytes. Nothing may be added afterwards.
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
