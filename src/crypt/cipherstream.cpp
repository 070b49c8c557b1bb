#include "crypt/cipherstream_p.h"

#include <QtEndian>

namespace
{

constexpr int s_word = sizeof(quint64);
constexpr quint64 s_everyByte = 0x0101010101010101U;

// Byte n becomes the XOR of the bytes 0 to n, the first byte being the lowest.
quint64 runningXor(quint64 word)
{
    word ^= word << 8;
    word ^= word << 16;
    return word ^ word << 32;
}

} // namespace

CipherStream::CipherStream(const QByteArray& keyParts)
{
    if (keyParts.size() == s_word)
        m_key = qFromLittleEndian<quint64>(keyParts.constData());
}

// Eight bytes at a time. What enters a word from the one before is one byte, the same for all
// eight, so that nothing but its XOR waits for the word before.
void CipherStream::encipher(char* bytes, qint64 size)
{
    const quint64 key = m_key;
    quint64 feedback = m_last * s_everyByte;
    for (; size >= s_word; size -= s_word, bytes += s_word) {
        const quint64 own = runningXor(qFromLittleEndian<quint64>(bytes) ^ key);
        qToLittleEndian(own ^ feedback, bytes);
        feedback ^= (own >> 56) * s_everyByte;
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
    quint64 last = m_last;
    for (; size >= s_word; size -= s_word, bytes += s_word) {
        const auto word = qFromLittleEndian<quint64>(bytes);
        qToLittleEndian(word ^ word << 8 ^ last ^ key, bytes);
        last = word >> 56;
    }
    m_last = static_cast<quint8>(last);
    for (; size > 0; --size, ++bytes) {
        const auto enciphered = static_cast<quint8>(*bytes);
        *bytes = static_cast<char>(enciphered ^ m_last ^ static_cast<quint8>(m_key));
        m_last = enciphered;
        turnKey();
    }
}

void CipherStream::turnKey()
{
    m_key = m_key >> 8 | m_key << 56;
}
