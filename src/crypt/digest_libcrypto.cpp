#include "crypt/digest.h"

#include "crypt/addtohash_p.h"
#include "loadedfunction.h"

#include <atomic>
#include <memory>
#include <optional>

#include <openssl/evp.h>
#include <openssl/opensslv.h>

namespace zeltools
{

namespace
{

template <typename Function>
Function* find(const char* name)
{
    constexpr char library[] = "libcrypto.so." QT_STRINGIFY(OPENSSL_SHLIB_VERSION);
    return loadedFunction<Function>(library, name);
}

struct Libcrypto
{
    decltype(&EVP_MD_CTX_new) newContext = find<decltype(EVP_MD_CTX_new)>("EVP_MD_CTX_new");
    decltype(&EVP_MD_CTX_free) freeContext = find<decltype(EVP_MD_CTX_free)>("EVP_MD_CTX_free");
    decltype(&EVP_DigestInit_ex) begin = find<decltype(EVP_DigestInit_ex)>("EVP_DigestInit_ex");
    decltype(&EVP_DigestUpdate) add = find<decltype(EVP_DigestUpdate)>("EVP_DigestUpdate");
    decltype(&EVP_DigestFinal_ex) end = find<decltype(EVP_DigestFinal_ex)>("EVP_DigestFinal_ex");

    // Null if the configuration of libcrypto does not offer the algorithm. They are fetched once,
    // because that takes longer than the digest of a short text.
    EVP_MD* sha1 = nullptr;
    EVP_MD* sha256 = nullptr;

    Libcrypto()
    {
        const auto fetch = find<decltype(EVP_MD_fetch)>("EVP_MD_fetch");
        if (!newContext || !freeContext || !begin || !add || !end || !fetch)
            return;
        sha1 = fetch(nullptr, "SHA1", nullptr);
        sha256 = fetch(nullptr, "SHA256", nullptr);
    }
    ~Libcrypto()
    {
        const auto release = find<decltype(EVP_MD_free)>("EVP_MD_free");
        if (release != nullptr) {
            release(sha1);
            release(sha256);
        }
    }
    Q_DISABLE_COPY(Libcrypto)
};

// Threads that need it at the same time all load it, and one of them keeps it for the process: the
// lock of a static object would be held while the loader waits for other threads.
const Libcrypto& libcrypto()
{
    static std::atomic<const Libcrypto*> kept = nullptr;
    const Libcrypto* functions = kept;
    if (functions == nullptr) {
        auto mine = std::make_unique<const Libcrypto>();
        if (kept.compare_exchange_strong(functions, mine.get()))
            functions = mine.release();
    }
    return *functions;
}

const EVP_MD* implementation(QCryptographicHash::Algorithm algorithm)
{
    if (algorithm == QCryptographicHash::Sha1)
        return libcrypto().sha1;
    return algorithm == QCryptographicHash::Sha256 ? libcrypto().sha256 : nullptr;
}

} // namespace

struct Digest::Engine
{
    EVP_MD_CTX* context = nullptr;
    std::optional<QCryptographicHash> qtHash; // Qt computes it if libcrypto cannot.

    explicit Engine(QCryptographicHash::Algorithm algorithm)
    {
        const EVP_MD* const digest = implementation(algorithm);
        if (digest != nullptr)
            context = libcrypto().newContext();
        if (context == nullptr || libcrypto().begin(context, digest, nullptr) != 1)
            qtHash.emplace(algorithm);
    }
    ~Engine()
    {
        if (context != nullptr)
            libcrypto().freeContext(context);
    }
    Q_DISABLE_COPY(Engine)
};

Digest::Digest(QCryptographicHash::Algorithm algorithm)
    : m_engine(std::make_unique<Engine>(algorithm))
{
}

Digest::~Digest() = default;

void Digest::add(const char* bytes, qint64 size_B)
{
    if (m_engine->qtHash)
        addToHash(*m_engine->qtHash, bytes, size_B);
    else
        libcrypto().add(m_engine->context, bytes, static_cast<size_t>(size_B));
}

QByteArray Digest::result()
{
    if (m_engine->qtHash)
        return m_engine->qtHash->result();
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int size_B = 0;
    libcrypto().end(m_engine->context, digest, &size_B);
    return QByteArray(reinterpret_cast<const char*>(digest), static_cast<int>(size_B));
}

} // namespace zeltools
