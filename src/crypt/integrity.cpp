#include "crypt/integrity_p.h"

#include "crypt/sha1_p.h"
#include "simplecrypt.h"

#include <QtEndian>

namespace integrity
{

int size(int flags)
{
    if ((flags & SimpleCrypt::FlagChecksum) != 0)
        return sizeof(quint16);
    return (flags & SimpleCrypt::FlagSha1) != 0 ? SHA1_SIZE : 0;
}

QByteArray of(int flags, const char* payload, qint64 size)
{
    if ((flags & SimpleCrypt::FlagChecksum) != 0) {
        // The one number of the format with its high byte first.
        QByteArray field(sizeof(quint16), '\0');
        qToBigEndian(qChecksum(payload, static_cast<uint>(size)), field.data());
        return field;
    }
    return (flags & SimpleCrypt::FlagSha1) != 0 ? Sha1::of(payload, size) : QByteArray();
}

} // namespace integrity
