#include "crypt/sha1_p.h"

#include <QCryptographicHash>

#include <optional>

#include <openssl/evp.h>

namespace
{

// The algorithm of libcrypto; null if its configuration does not offer SHA-1. It is fetched once,
// because that takes longer than the digest of a short text.
const EVP_MD* algorithm()
{
    static const EVP_MD* const sha1 = EVP_MD_fetch(nullptr, "SHA1", nullptr);
    return sha1;
}

} // namespace

struct Sha1::Engine
{
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context{EVP_MD_CTX_new(),
                                                                    EVP_MD_CTX_free};
    std::optional<QCryptographicHash> qtHash; // if libcrypto offers no SHA-1 or has no memory

    Engine()
    {
        if (!context || algorithm() == nullptr ||
            EVP_DigestInit_ex(context.get(), algorithm(), nullptr) != 1)
            qtHash.emplace(QCryptographicHash::Sha1);
    }
};

Sha1::Sha1()
    : m_engine(std::make_unique<Engine>())
{
}

Sha1::~Sha1() = default;

void Sha1::add(const char* bytes, qint64 size)
{
    if (m_engine->qtHash)
        m_engine->qtHash->addData(QByteArray::fromRawData(bytes, static_cast<int>(size)));
    else
        EVP_DigestUpdate(m_engine->context.get(), bytes, static_cast<size_t>(size));
}

QByteArray Sha1::result()
{
    if (m_engine->qtHash)
        return m_engine->qtHash->result();
    QByteArray digest(EVP_MD_get_size(algorithm()), '\0');
    EVP_DigestFinal_ex(m_engine->context.get(), reinterpret_cast<unsigned char*>(digest.data()),
                       nullptr);
    return digest;
}
