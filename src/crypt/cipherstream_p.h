#pragma once

#include <QtGlobal>

#include <array>

/// The cipher of SimpleCrypt. It XORs each byte with the next byte of the key, which repeats after
/// eight, and with the previous enciphered byte, which is 0 at first. An object enciphers or
/// deciphers one body, in pieces of any length. The cipher only obfuscates: eight known bytes of a
/// plaintext reveal the key. The destructor wipes the object's copy of the key.
class CipherStream
{
public:
    /// The bytes of the key, the lowest first.
    explicit CipherStream(const std::array<char, 8>& keyParts);
    ~CipherStream();
    Q_DISABLE_COPY(CipherStream)

    void encipher(char* bytes, qint64 size);
    void decipher(char* bytes, qint64 size);

private:
    void turnKey();

    quint64 m_key; // turned so that the next byte to use is the lowest
    quint8 m_last = 0;
};
