#pragma once

#include <QByteArray>

#include <optional>

/// The plain bytes in front of the enciphered body of a cyphertext: version, flags and, with
/// SimpleCrypt::FlagMetadata, the length of the metadata, the complement of the length, the SHA-1
/// of the metadata, the metadata. See docs/format-crypt.md.
namespace cryptheader
{

/// Version and flags.
constexpr int shortSize = 2;
constexpr int metadataHashOffset = 10;
/// All that is before the metadata themselves.
constexpr int metadataOffset = 30;

/// Version and flags, as they are written today.
QByteArray start(int flags);
/// The 28 bytes between the flags and the metadata.
QByteArray metadataHeader(const QByteArray& metadata);

/// Four bytes, the lowest first.
QByteArray int32Bytes(qint32 value);

/// What is beyond the end of the data counts as 0.
qint32 int32At(const QByteArray& data, int offset);
int version(const QByteArray& data);
int flags(const QByteArray& data);
/// Needs ten bytes. Nothing when length and complement do not belong together; may be negative.
std::optional<qint32> metadataSize(const QByteArray& data);
/// Needs thirty bytes.
QByteArray metadataHash(const QByteArray& data);

} // namespace cryptheader
