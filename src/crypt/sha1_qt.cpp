#include "crypt/sha1_p.h"

#include <QCryptographicHash>

struct Sha1::Engine
{
    QCryptographicHash hash{QCryptographicHash::Sha1};
};

Sha1::Sha1()
    : m_engine(std::make_unique<Engine>())
{
}

Sha1::~Sha1() = default;

void Sha1::add(const char* bytes, qint64 size)
{
    m_engine->hash.addData(QByteArray::fromRawData(bytes, static_cast<int>(size)));
}

QByteArray Sha1::result()
{
    return m_engine->hash.result();
}
