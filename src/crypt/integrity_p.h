#pragma once

#include "simplecrypt.h"

#include <QByteArray>

/// The field in front of a payload that reveals damage: nothing, a checksum or a SHA-1, depending
/// on the flags byte. If both flags are set, the field is a checksum.
namespace integrity
{

/// The flag of a protection; 0 for none.
int flag(SimpleCrypt::ProtectionMode mode);
SimpleCrypt::ProtectionMode protection(int flags);
int fieldSize(int flags);
/// The field for a payload as it is stored, after compression.
QByteArray field(int flags, const char* payload, qint64 size);

} // namespace integrity
