#include "quotedwords.h"

#include "escapedutf8.h"

#include <cstring>

namespace zeltools
{

namespace
{

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isBare(char c)
{
    return c > ' ' && c < '\x7f' && std::strchr("\"\\#", c) == nullptr;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// Reads a word behind its opening quote. Returns false with a reason, and `next` at its place.
bool readQuoted(const char*& next, const char* end, QByteArray& text, QString& reason)
{
    constexpr char escapes[] = "\"\\nrt";
    constexpr char meanings[] = "\"\\\n\r\t";
    for (; next != end && *next != '"'; ++next) {
        if (*next != '\\') {
            text.append(*next);
            continue;
        }
        const char* const backslash = next++;
        const char* const escape =
            next != end && *next != '\0' ? std::strchr(escapes, *next) : nullptr;
        if (escape != nullptr) {
            text.append(meanings[escape - escapes]);
        } else if (end - next > 2 && *next == 'x' && isHexDigit(next[1]) && isHexDigit(next[2])) {
            text.append(QByteArray::fromHex(QByteArray(next + 1, 2)));
            next += 2;
        } else {
            next = backslash;
            reason = QStringLiteral("unknown escape");
            return false;
        }
    }
    if (next == end) {
        reason = QStringLiteral("the closing quote is missing");
        return false;
    }
    ++next;
    return true;
}

} // namespace

std::optional<QVector<QuotedWord>> splitQuotedWords(const QByteArray& line, QString& error)
{
    const char* const begin = line.constData();
    const char* const end = begin + line.size();
    const char* next = begin;
    QString reason;
    QVector<QuotedWord> words;
    for (; reason.isEmpty();) {
        while (next != end && isBlank(*next))
            ++next;
        if (next == end || *next == '#')
            return words;
        QuotedWord word{{}, *next == '"', static_cast<int>(next - begin) + 1};
        if (word.isQuoted) {
            readQuoted(++next, end, word.text, reason);
        } else {
            const char* const start = next;
            while (next != end && isBare(*next))
                ++next;
            word.text = QByteArray(start, static_cast<int>(next - start));
        }
        if (reason.isEmpty() && next != end && !isBlank(*next) && *next != '#')
            reason = QStringLiteral("unexpected character");
        words.append(word);
    }
    error = QStringLiteral("column %1: %2").arg(next - begin + 1).arg(reason);
    return std::nullopt;
}

QByteArray quotedWord(const QByteArray& bytes)
{
    const auto isPlain = [](char c) { return c >= ' ' && c < '\x7f' && c != '"' && c != '\\'; };
    return '"' + escapedUtf8(bytes, isPlain) + '"';
}

} // namespace zeltools
