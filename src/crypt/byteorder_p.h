#pragma once

#include <QByteArray>
#include <QtEndian>

/// Conversions of the 32-bit numbers in a header, which have the lowest byte first.
namespace byteorder
{

inline QByteArray bytesOf(qint32 value)
{
    QByteArray bytes(sizeof value, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

/// The byte at an offset; 0 beyond the end of the data.
inline int byteAt(const QByteArray& data, int offset)
{
    return offset < data.size() ? static_cast<quint8>(data.at(offset)) : 0;
}

/// The number at an offset. Missing bytes count as 0.
inline qint32 int32At(const QByteArray& data, int offset)
{
    quint32 value = 0;
    for (int i = sizeof value - 1; i >= 0; --i)
        value = value << 8 | static_cast<quint32>(byteAt(data, offset + i));
    return static_cast<qint32>(value);
}

} // namespace byteorder
