#pragma once

#include <QByteArray>

#include <optional>

/// The readable bytes in front of the enciphered body of a cyphertext: version, flags and, if the
/// flags say so, the length of the metadata, its complement, the SHA-1 of the metadata and the
/// metadata. docs/format-crypt.md describes them. Fields that the data does not reach are 0.
namespace cryptheader
{

/// The length of a header without metadata: version and flags.
constexpr int shortestSize_B = 2;
constexpr int metadataHashOffset = 10;
/// The offset of the metadata themselves.
constexpr int metadataOffset = 30;

/// The first two bytes that are written today.
QByteArray versionAndFlags(int flags);
/// The 28 bytes between the flags and the metadata.
QByteArray metadataFields(const QByteArray& metadata);

int version(const QByteArray& data);
/// Whether the data has a version that can be read. An assertion fails on empty data.
bool isReadable(const QByteArray& data);
int flags(const QByteArray& data);
/// The stated length, which may be negative; empty if its complement does not match. Needs the
/// first ten bytes.
std::optional<qint32> metadataSize(const QByteArray& data);
/// The stated SHA-1. Needs the first thirty bytes.
QByteArray metadataHash(const QByteArray& data);

} // namespace cryptheader
