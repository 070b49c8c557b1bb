#pragma once

#include "simplecrypt.h"

#include <QByteArray>

/// The field that tells a damaged payload: none, a checksum or a SHA-1, as the flags of
/// SimpleCrypt say. When both are set the checksum is the one that is looked at.
namespace integrity
{

SimpleCrypt::ProtectionMode protection(int flags);
int size(int flags);
/// The field for a payload, compressed already where it will be.
QByteArray of(int flags, const char* payload, qint64 size);

} // namespace integrity
