#include "binarydataformatter.h"

#include "wrongbytedataexception.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <optional>

namespace
{

constexpr uchar s_noDigit = 0x80;

/// What a character of the Latin-1 range counts as a digit, or s_noDigit.
constexpr std::array<uchar, 256> makeValues()
{
    std::array<uchar, 256> values{};
    for (uchar& value : values)
        value = s_noDigit;
    for (uchar digit = 0; digit < 10; ++digit)
        values['0' + digit] = digit;
    for (uchar digit = 10; digit < 16; ++digit)
        values['A' + digit - 10] = values['a' + digit - 10] = digit;
    return values;
}

using Digits = std::array<ushort, 2>;

constexpr std::array<Digits, 256> makeDigits()
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::array<Digits, 256> all{};
    for (size_t byte = 0; byte < all.size(); ++byte)
        all[byte] = {static_cast<ushort>(digits[byte / 16]),
                     static_cast<ushort>(digits[byte % 16])};
    return all;
}

constexpr std::array<uchar, 256> s_values = makeValues();
constexpr std::array<Digits, 256> s_digits = makeDigits();

/// The byte of two characters; above 255 when they are not two digits.
uint byteOf(const ushort* pair)
{
    const uint high = s_values[pair[0] & 0xff], low = s_values[pair[1] & 0xff];
    return high << 4 | low | (low & s_noDigit) << 4 | (pair[0] & 0xff00) | (pair[1] & 0xff00);
}

bool isSeparator(ushort character)
{
    return character == '-' || character == ':';
}

bool isPrefix(const ushort* pair)
{
    return pair[0] == '0' && (pair[1] | 0x20) == 'x';
}

/// To the end of the separators and prefixes that the text begins with.
const ushort* skipLead(const ushort* next, const ushort* end)
{
    while (next != end) {
        if (isSeparator(*next))
            ++next;
        else if (end - next > 1 && isPrefix(next))
            next += 2;
        else
            break;
    }
    return next;
}

bool isLead(const ushort* next, const ushort* lead, qint64 size)
{
    bool isSame = true; // without a jump out of a loop that is this short
    for (qint64 i = 0; i < size; ++i)
        isSame = isSame && next[i] == lead[i];
    return isSame;
}

/// Reads pairs of ASCII digits, with separators and prefixes before, between and behind the pairs.
/// Returns the end of the bytes, or nothing when the text has anything else in it and is to be read
/// in another way.
char* readPairs(const ushort* next, const ushort* end, char* out)
{
    while (true) {
        const ushort* const lead = next;
        next = skipLead(lead, end);
        if (next == end)
            return out;
        uint byte = end - next > 1 ? byteOf(next) : UINT_MAX;
        if (byte > 0xff)
            return nullptr;
        // Most texts have the same before each pair, or nothing.
        const qint64 leadSize = next - lead;
        do {
            *out++ = static_cast<char>(byte);
            next += 2;
            if (end - next < leadSize + 2 || !isLead(next, lead, leadSize))
                break;
            byte = byteOf(next + leadSize);
            next += byte <= 0xff ? leadSize : 0;
        } while (byte <= 0xff);
    }
}

std::optional<QByteArray> readPairs(const QString& text)
{
    QByteArray bytes(text.size() / 2, Qt::Uninitialized);
    const auto* const begin = reinterpret_cast<const ushort*>(text.constData());
    const char* const end = readPairs(begin, begin + text.size(), bytes.data());
    if (end == nullptr)
        return std::nullopt;
    bytes.truncate(static_cast<int>(end - bytes.constData()));
    return bytes;
}

/// Each occurrence once, from the left, as QString::remove() does, which moves the rest each time.
QString withoutPrefixes(const QString& text)
{
    QString rest;
    int start = 0;
    for (int found = 0; (found = text.indexOf(QLatin1String("0X"), start)) >= 0; start = found + 2)
        rest.append(text.constData() + start, found - start);
    return start == 0 ? text : rest.append(text.constData() + start, text.size() - start);
}

bool isHexadecimal(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) {
        return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
    });
}

/// For every text: also with a separator inside a pair, or a ligature that is FF in upper case.
QByteArray readAny(const QString& hexText)
{
    const QString cleaned = withoutPrefixes(hexText.toUpper().remove('-').remove(':'));
    if (!isHexadecimal(cleaned))
        throw WrongByteDataException(
            QStringLiteral("Wrong format: \"%1\" -> \"%2\"").arg(hexText, cleaned));
    if (cleaned.size() % 2 != 0)
        throw WrongByteDataException(QStringLiteral("Odd number of hex characters"));
    return readPairs(cleaned).value();
}

ushort* writeByte(ushort* out, uchar byte)
{
    std::memcpy(out, s_digits[byte].data(), sizeof(Digits));
    return out + 2;
}

QString join(const QString& prefix, const QByteArray& bytes, const QString& separator)
{
    if (bytes.isEmpty())
        return prefix;
    const qint64 size =
        prefix.size() + qint64(2) * bytes.size() + (qint64(bytes.size()) - 1) * separator.size();
    if (size >= INT_MAX)
        qBadAlloc(); // as Qt does from half of that on
    QString text(static_cast<int>(size), Qt::Uninitialized);
    auto* out = reinterpret_cast<ushort*>(std::copy(prefix.begin(), prefix.end(), text.begin()));
    const auto* next = reinterpret_cast<const uchar*>(bytes.constData());
    const auto* const last = next + bytes.size() - 1;
    const ushort* const between = separator.utf16();
    for (const int betweenSize = separator.size(); next != last; ++next) {
        out = writeByte(out, *next);
        for (int i = 0; i < betweenSize; ++i)
            *out++ = between[i];
    }
    writeByte(out, *last);
    return text;
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
    const std::optional<QByteArray> bytes = readPairs(hexText);
    return bytes ? *bytes : readAny(hexText);
}

QString BinaryDataFormatter::format(const QString& prefix, const QString& separator) const
{
    // The upper case of the parts is that of the whole, unless there are halves of surrogate pairs:
    // Qt takes what follows them for the other half.
    if (std::any_of(separator.begin(), separator.end(),
                    [](QChar character) { return character.isHighSurrogate(); }))
        return prefix + join(QString(), m_data, separator).toUpper();
    return join(prefix, m_data, separator.toUpper());
}
