// Compares the conversions between bytes and hexadecimal text with the steps that define them, and
// reads back each text that was written.

#include "fuzz.h"
#include <zeltools/binarydataformatter.h>
#include <zeltools/wrongbytedataexception.h>

#include <QRegularExpression>

#include <cstring>

namespace
{

struct Parsed
{
    QByteArray bytes;
    QByteArray error;
};

bool operator==(const Parsed& a, const Parsed& b)
{
    return a.bytes == b.bytes && a.error == b.error;
}

Parsed parse(const QString& text)
{
    try {
        return {BinaryDataFormatter(text).data(), {}};
    } catch (const WrongByteDataException& exception) {
        return {{}, exception.what()};
    }
}

Parsed parseInSteps(const QString& text)
{
    static const QRegularExpression digits(QStringLiteral("^[0-9A-F]*\\z"));
    QString cleaned = text.toUpper();
    cleaned.remove(QStringLiteral("-"));
    cleaned.remove(QStringLiteral(":"));
    cleaned.remove(QStringLiteral("0X"));
    QString details;
    if (!digits.match(cleaned).hasMatch())
        details = QStringLiteral("Wrong format: \"%1\" -> \"%2\"").arg(text, cleaned);
    else if (cleaned.size() % 2 != 0)
        details = QStringLiteral("Odd number of hex characters");
    else
        return {QByteArray::fromHex(cleaned.toLatin1()), {}};
    // The text of what() ends at a NUL.
    const QByteArray error =
        QStringLiteral("WrongByteDataException details: \"%1\"").arg(details).toLocal8Bit();
    return {{}, error.constData()};
}

QString formatInSteps(const QByteArray& bytes, const QString& prefix, const QString& separator)
{
    const char* const digits = "0123456789ABCDEF";
    QString text;
    for (const char byte : bytes) {
        text += text.isEmpty() ? QString() : separator;
        text += QLatin1Char(digits[static_cast<uchar>(byte) / 16]);
        text += QLatin1Char(digits[static_cast<uchar>(byte) % 16]);
    }
    return prefix + text.toUpper();
}

// Makes a string of arbitrary UTF-16 code units, including unpaired surrogates.
QString utf16Of(const QByteArray& bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), static_cast<size_t>(text.size()) * 2);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes = toBytes(data, size);
    const QString utf8 = QString::fromUtf8(bytes), utf16 = utf16Of(bytes);
    for (const QString& text : {utf8, utf16})
        require(parse(text) == parseInSteps(text));

    const BinaryDataFormatter formatter(bytes);
    for (const QString& separator : {utf8.left(2), utf16.left(2), QString()})
        require(formatter.format(utf16, separator) == formatInSteps(bytes, utf16, separator));
    require(parse(formatter.format(QStringLiteral("0x"), QStringLiteral("-0x"))) ==
            Parsed{bytes, {}});
    return 0;
}
