#include "supportbundle/sha256_p.h"

#include <QCryptographicHash>

namespace zeltools
{

struct Sha256::Engine
{
    QCryptographicHash hash{QCryptographicHash::Sha256};
};

Sha256::Sha256()
    : m_engine(std::make_unique<Engine>())
{
}

Sha256::~Sha256() = default;

void Sha256::add(const char* bytes, qint64 size)
{
    m_engine->hash.addData(QByteArray::fromRawData(bytes, static_cast<int>(size)));
}

QByteArray Sha256::result()
{
    return m_engine->hash.result();
}

} // namespace zeltools
