#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>

/// The cipher of SimpleCrypt: each byte is XORed with a byte of the key, in turn, and with the
/// enciphered byte before it (0 before the first). One object takes one body through one
/// direction, in pieces of any length. Light obfuscation: who knows eight bytes of a plaintext has
/// the key.
class ZELTOOLS_EXPORT CipherStream
{
public:
    /// Eight bytes; a missing key is a key of 0.
    explicit CipherStream(const QByteArray& keyParts);

    void encipher(char* bytes, qint64 size);
    void decipher(char* bytes, qint64 size);

private:
    void turnKey();

    quint64 m_key = 0; // the next byte of it lowest
    quint8 m_last = 0;
};
