#include "supportbundle/sha256_p.h"

#include <new>

#include <openssl/evp.h>

namespace zeltools
{

struct Sha256::Engine
{
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{EVP_MD_CTX_new(),
                                                                    EVP_MD_CTX_free};
};

Sha256::Sha256()
    : m_engine(std::make_unique<Engine>())
{
    // Every configuration of libcrypto offers this digest, so only memory can be missing.
    if (!m_engine->context ||
        EVP_DigestInit_ex(m_engine->context.get(), EVP_sha256(), nullptr) != 1)
        throw std::bad_alloc();
}

Sha256::~Sha256() = default;

void Sha256::add(const char* bytes, qint64 size)
{
    EVP_DigestUpdate(m_engine->context.get(), bytes, static_cast<size_t>(size));
}

QByteArray Sha256::result()
{
    QByteArray digest(EVP_MD_get_size(EVP_sha256()), '\0');
    EVP_DigestFinal_ex(m_engine->context.get(), reinterpret_cast<unsigned char*>(digest.data()),
                       nullptr);
    return digest;
}

} // namespace zeltools
