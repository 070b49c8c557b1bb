#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

/// Bytes, and the hexadecimal text that technicians read in logs and type into menus. A plain
/// value, for one thread at a time.
///
/// A text that Qt cannot hold, which takes 2 GiB and more in memory, gives std::bad_alloc.
class ZELTOOLS_EXPORT BinaryDataFormatter
{
public:
    explicit BinaryDataFormatter(const QByteArray& bytes);
    /// See convertHexString().
    explicit BinaryDataFormatter(const QString& hexText);

    QByteArray data() const;

    /// The bytes that a text means; letters of either case, "-" and ":" anywhere and the prefix 0x
    /// are allowed: "0xde:AD-0xbe" is three bytes. Throws WrongByteDataException for anything else,
    /// blanks and line feeds included, and for an odd number of digits.
    ///
    /// In this order: the text becomes upper case, and loses every "-", every ":" and every "0X",
    /// even one that only the separators had parted or that stands between digits: "A0XB" is the
    /// byte AB. An empty text gives no bytes.
    static QByteArray convertHexString(const QString& hexText);

    /// The prefix and then the bytes, two digits each, parted by the separator. Digits and
    /// separator are in upper case, the prefix stays as it is, on purpose: the bytes 0A FF with
    /// "0x" and "-" are "0x0A-FF", while a separator " x" comes out as " X". No bytes give the
    /// prefix alone.
    QString format(const QString& prefix, const QString& separator) const;

private:
    QByteArray m_data;
};
