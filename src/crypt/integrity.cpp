#include "crypt/integrity_p.h"

#include "crypt/sha1_p.h"
#include "qtversion.h"
#include <QtEndian>

namespace integrity
{

SimpleCrypt::ProtectionMode protection(int flags)
{
    if ((flags & SimpleCrypt::FlagChecksum) != 0)
        return SimpleCrypt::ProtectionChecksum;
    return (flags & SimpleCrypt::FlagSha1) != 0 ? SimpleCrypt::ProtectionSha1
                                                : SimpleCrypt::ProtectionOff;
}

int size(int flags)
{
    switch (protection(flags)) {
    case SimpleCrypt::ProtectionChecksum:
        return sizeof(quint16);
    case SimpleCrypt::ProtectionSha1:
        return SHA1_SIZE;
    default:
        return 0;
    }
}

QByteArray of(int flags, const char* payload, qint64 size)
{
    switch (protection(flags)) {
    case SimpleCrypt::ProtectionChecksum: {
        // The one number of the format with its high byte first.
        QByteArray field(sizeof(quint16), '\0');
        qToBigEndian(zeltools::checksum(payload, size), field.data());
        return field;
    }
    case SimpleCrypt::ProtectionSha1:
        return Sha1::of(payload, size);
    default:
        return QByteArray();
    }
}

} // namespace integrity
