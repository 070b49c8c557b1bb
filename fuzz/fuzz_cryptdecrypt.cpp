// Decrypts arbitrary bytes, and arbitrary bytes that were encrypted with every combination of
// settings.

#include "fuzz.h"
#include <zeltools/simplecrypt.h>

namespace
{

SimpleCrypt withSettings(quint8 bits)
{
    SimpleCrypt crypt(0x0123456789abcdef);
    crypt.setCompression(static_cast<SimpleCrypt::CompressionMode>(bits % 3));
    crypt.setProtection(static_cast<SimpleCrypt::ProtectionMode>(bits / 3 % 3));
    crypt.setPlainPayload(bits / 9 % 2 != 0);
    if (bits / 18 % 2 != 0)
        crypt.setMetadata("metadata");
    return crypt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    silenceWarnings();
    const QByteArray bytes = toBytes(data, size);

    SimpleCrypt reader = withSettings(0);
    constexpr int mostOfOneByte = 1032; // deflate expands one byte to no more
    require(reader.decryptToByteArray(bytes).size() <= bytes.size() * mostOfOneByte);

    SimpleCrypt crypt = withSettings(size > 0 ? data[size - 1] : 0);
    const QByteArray cyphertext = crypt.encryptToByteArray(bytes);
    require(crypt.decryptToByteArray(cyphertext) == bytes);
    require(crypt.lastError() == SimpleCrypt::CryptNoError);
    return 0;
}
