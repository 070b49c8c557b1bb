#pragma once

#include <zeltools/zeltools_export.h>

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

namespace zeltools
{

/// The words of a line of text, which blanks and tabs separate. A word in double quotes may hold
/// any bytes: `\"`, `\\`, `\n`, `\r`, `\t`, and `\x1b` for the byte of two hexadecimal digits. A
/// bare word holds printable ASCII characters without `"`, `\` and `#`. A `#` outside of quotes
/// begins a comment, which ends with the line.
///
///     when "a\"b" answer 5      # four words
struct QuotedWord
{
    QByteArray text;       ///< The word without quotes and escapes.
    bool isQuoted = false; ///< A quoted word is never a keyword.
    int column = 0;        ///< The column of the first character, from 1.
};

/// Splits a line without its line feed. Returns no value if the line cannot be read, with the
/// column and the reason in `error`. A line of blanks or a comment has no words.
ZELTOOLS_EXPORT std::optional<QVector<QuotedWord>> splitQuotedWords(const QByteArray& line,
                                                                    QString& error);

/// The bytes as a word in quotes. Printable UTF-8 stays as it is; control characters and other
/// bytes become escapes.
ZELTOOLS_EXPORT QByteArray quotedWord(const QByteArray& bytes);

} // namespace zeltools
