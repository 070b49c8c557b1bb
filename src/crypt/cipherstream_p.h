#pragma once

#include <QtGlobal>

#include <array>

/// The cipher of SimpleCrypt: each byte is XORed with a byte of the key, in turn, and with the
/// enciphered byte before it (0 before the first). One object takes one body through one
/// direction, in pieces of any length. Light obfuscation: who knows eight bytes of a plaintext has
/// the key. The object wipes its copy of the key when it goes.
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

    quint64 m_key; // the next byte of it lowest
    quint8 m_last = 0;
};
