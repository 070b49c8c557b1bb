#include "binarydataformatter.h"

#include "wrongbytedataexception.h"

#include <algorithm>
#include <climits>

namespace
{

/// Removes each "0X" once, from the left. QString::remove() does the same but moves the rest of the
/// text each time, which takes minutes for a large text.
QString withoutPrefixes(const QString& text)
{
    QString rest;
    int start = 0;
    for (int found = 0; (found = text.indexOf(QLatin1String("0X"), start)) >= 0; start = found + 2)
        rest.append(text.constData() + start, found - start);
    return rest.append(text.constData() + start, text.size() - start);
}

bool isHexadecimal(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return (character >= QLatin1Char('0') && character <= QLatin1Char('9')) ||
               (character >= QLatin1Char('A') && character <= QLatin1Char('F'));
    });
}

} // namespace

BinaryDataFormatter::BinaryDataFormatter(const QByteArray& bytes)
    : m_data(bytes)
{
}

BinaryDataFormatter::BinaryDataFormatter(const QString& hexText)
    : m_data(convertHexString(hexText))
{
}

QByteArray BinaryDataFormatter::data() const
{
    return m_data;
}

QByteArray BinaryDataFormatter::convertHexString(const QString& hexText)
{
    const QString cleaned =
        withoutPrefixes(hexText.toUpper().remove(QLatin1Char('-')).remove(QLatin1Char(':')));
    if (!isHexadecimal(cleaned))
        throw WrongByteDataException(
            QStringLiteral("Wrong format: \"%1\" -> \"%2\"").arg(hexText, cleaned));
    if (cleaned.size() % 2 != 0)
        throw WrongByteDataException(QStringLiteral("Odd number of hex characters"));
    return QByteArray::fromHex(cleaned.toLatin1());
}

QString BinaryDataFormatter::format(const QString& prefix, const QString& separator) const
{
    const qint64 size = qint64(m_data.size()) * (2 + qint64(separator.size()));
    if (size >= INT_MAX)
        qBadAlloc(); // Qt does so from half of that size on
    // In upper case already, since QString::toUpper() skips a letter behind half a surrogate pair.
    const QString digits = QString::fromLatin1(m_data.toHex().toUpper());
    // QString::toUpper() moves the rest of a text for each letter that grows, so the separator is
    // converted once. If it ends in half a surrogate pair, the character behind it matters too.
    const bool isHalfPair = !separator.isEmpty() && separator.back().isHighSurrogate();
    const QString between = isHalfPair ? separator : separator.toUpper();
    QString text;
    text.reserve(static_cast<int>(size));
    for (int i = 0; i < digits.size(); i += 2) {
        if (i > 0)
            text += between;
        text.append(digits.constData() + i, 2);
    }
    return prefix + (isHalfPair ? text.toUpper() : text);
}
