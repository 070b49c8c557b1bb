#include "escapedutf8.h"

#include <QString>

namespace zeltools
{

namespace
{

/// The number of bytes of the character at this position if it can stay, or 0.
int plainSize(const QByteArray& bytes, int at, bool (*isPlain)(char ascii))
{
    const auto lead = static_cast<uchar>(bytes[at]);
    if (lead < 0x80)
        return isPlain(bytes[at]) ? 1 : 0;
    const int size = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    const QByteArray character = bytes.mid(at, size);
    const QString decoded = QString::fromUtf8(character);
    const bool isValid = decoded.toUtf8() == character;
    return isValid && decoded.at(0).category() != QChar::Other_Control ? size : 0;
}

} // namespace

QByteArray escapedUtf8(const QByteArray& bytes, bool (*isPlain)(char ascii))
{
    QByteArray text;
    text.reserve(bytes.size());
    for (int at = 0; at < bytes.size();) {
        const int size = plainSize(bytes, at, isPlain);
        if (size > 0)
            text.append(bytes.constData() + at, size);
        else
            text += "\\x" + bytes.mid(at, 1).toHex();
        at += qMax(size, 1);
    }
    return text;
}

} // namespace zeltools
