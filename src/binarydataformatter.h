#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>

/// Converts between bytes and the hexadecimal text that technicians read in logs and type into
/// menus. An object is a plain value, for one thread at a time.
///
/// A text that Qt cannot hold, which needs 2 GiB or more in memory, throws std::bad_alloc.
class ZELTOOLS_EXPORT BinaryDataFormatter
{
public:
    /// Takes the bytes as they are.
    explicit BinaryDataFormatter(const QByteArray& bytes);
    /// Converts the text like convertHexString().
    explicit BinaryDataFormatter(const QString& hexText);

    /// The bytes of the object.
    QByteArray data() const;

    /// Converts a text to bytes. It may have digits of either case, and "-", ":" and the prefix 0x
    /// at any position: "0xde:AD-0xbe" is three bytes. The function throws WrongByteDataException
    /// for all other characters, including blanks and line feeds, and for an odd number of digits.
    ///
    /// The text is converted to upper case. Then every "-", every ":" and finally every "0X" is
    /// removed, even one that separators had split or that is between digits: "A0XB" is the byte
    /// AB. An empty text gives no bytes.
    static QByteArray convertHexString(const QString& hexText);

    /// The prefix followed by the bytes, as two digits each with the separator between them. Digits
    /// and separator are converted to upper case, and the prefix is not, on purpose: the bytes
    /// 0A FF with "0x" and "-" are "0x0A-FF", while a separator " x" becomes " X". Without bytes
    /// the result is the prefix alone.
    QString format(const QString& prefix, const QString& separator) const;

private:
    QByteArray m_data;
};
