#include "crypt/integrity_p.h"

#include "crypt/digest.h"
#include "qtversion.h"

#include <QtEndian>

namespace integrity
{

int flag(SimpleCrypt::ProtectionMode mode)
{
    if (mode == SimpleCrypt::ProtectionChecksum)
        return SimpleCrypt::FlagChecksum;
    return mode == SimpleCrypt::ProtectionSha1 ? SimpleCrypt::FlagSha1 : 0;
}

SimpleCrypt::ProtectionMode protection(int flags)
{
    if ((flags & SimpleCrypt::FlagChecksum) != 0)
        return SimpleCrypt::ProtectionChecksum;
    return (flags & SimpleCrypt::FlagSha1) != 0 ? SimpleCrypt::ProtectionSha1
                                                : SimpleCrypt::ProtectionOff;
}

int fieldSize(int flags)
{
    const auto mode = protection(flags);
    return mode == SimpleCrypt::ProtectionOff    ? 0
           : mode == SimpleCrypt::ProtectionSha1 ? SHA1_SIZE
                                                 : int(sizeof(quint16));
}

QByteArray field(int flags, const char* payload, qint64 size)
{
    const auto mode = protection(flags);
    if (mode == SimpleCrypt::ProtectionOff)
        return QByteArray();
    if (mode == SimpleCrypt::ProtectionSha1)
        return zeltools::Digest::of(payload, size, QCryptographicHash::Sha1);
    // The checksum has its high byte first, unlike the numbers of the header.
    QByteArray checksum(sizeof(quint16), '\0');
    qToBigEndian(zeltools::checksum(payload, size), checksum.data());
    return checksum;
}

} // namespace integrity
