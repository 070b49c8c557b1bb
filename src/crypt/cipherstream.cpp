#include "crypt/cipherstream_p.h"

#include <QtEndian>

#include <cstring>

#include <string.h>

namespace
{

// Both directions work on blocks of words on the stack, in loops that the compiler turns into
// vector instructions. Working in place, word by word, takes three times as long; so does a larger
// block.
constexpr int s_wordsInBlock = 32;
using Block = quint64[s_wordsInBlock];

constexpr quint64 s_everyByte = 0x0101010101010101U;

void load(Block& block, const char* bytes)
{
    std::memcpy(block, bytes, sizeof block);
    for (quint64& word : block)
        word = qFromLittleEndian(word);
}

void store(char* bytes, Block& block)
{
    for (quint64& word : block)
        word = qToLittleEndian(word);
    std::memcpy(bytes, block, sizeof block);
}

} // namespace

CipherStream::CipherStream(const std::array<char, 8>& keyParts)
    : m_key(qFromLittleEndian<quint64>(keyParts.data()))
{
}

CipherStream::~CipherStream()
{
    explicit_bzero(&m_key, sizeof m_key);
}

void CipherStream::encipher(char* bytes, qint64 size)
{
    const quint64 key = m_key;
    quint64 feedback = m_last * s_everyByte;
    Block block;
    for (; size >= qint64(sizeof block); size -= sizeof block, bytes += sizeof block) {
        load(block, bytes);
        // Byte n of a word becomes the XOR of its bytes 0 to n. Byte 0 is the lowest.
        for (quint64& word : block) {
            word ^= key;
            word ^= word << 8;
            word ^= word << 16;
            word ^= word << 32;
        }
        // The last byte of the previous word is XORed with all eight bytes of a word.
        for (quint64& word : block) {
            const quint64 own = word;
            word ^= feedback;
            feedback ^= (own >> 56) * s_everyByte;
        }
        store(bytes, block);
    }
    m_last = static_cast<quint8>(feedback);
    for (; size > 0; --size, ++bytes) {
        m_last ^= static_cast<quint8>(*bytes) ^ static_cast<quint8>(m_key);
        *bytes = static_cast<char>(m_last);
        turnKey();
    }
}

void CipherStream::decipher(char* bytes, qint64 size)
{
    const quint64 key = m_key;
    Block enciphered;
    Block plain;
    for (; size >= qint64(sizeof plain); size -= sizeof plain, bytes += sizeof plain) {
        load(enciphered, bytes);
        plain[0] = enciphered[0] ^ enciphered[0] << 8 ^ m_last ^ key;
        for (int i = 1; i < s_wordsInBlock; ++i)
            plain[i] = enciphered[i] ^ enciphered[i] << 8 ^ enciphered[i - 1] >> 56 ^ key;
        m_last = static_cast<quint8>(enciphered[s_wordsInBlock - 1] >> 56);
        store(bytes, plain);
    }
    for (; size > 0; --size, ++bytes) {
        const auto byte = static_cast<quint8>(*bytes);
        *bytes = static_cast<char>(byte ^ m_last ^ static_cast<quint8>(m_key));
        m_last = byte;
        turnKey();
    }
}

void CipherStream::turnKey()
{
    m_key = m_key >> 8 | m_key << 56;
}
