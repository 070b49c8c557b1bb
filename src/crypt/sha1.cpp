#include "crypt/sha1_p.h"

QByteArray Sha1::of(const char* bytes, qint64 size)
{
    Sha1 hash;
    hash.add(bytes, size);
    return hash.result();
}
