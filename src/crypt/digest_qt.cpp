#include "crypt/digest.h"

#include "crypt/addtohash_p.h"

namespace zeltools
{

struct Digest::Engine
{
    QCryptographicHash hash;
};

Digest::Digest(QCryptographicHash::Algorithm algorithm)
    : m_engine(new Engine{QCryptographicHash(algorithm)})
{
}

Digest::~Digest() = default;

void Digest::add(const char* bytes, qint64 size_B)
{
    addToHash(m_engine->hash, bytes, size_B);
}

QByteArray Digest::result()
{
    return m_engine->hash.result();
}

} // namespace zeltools
