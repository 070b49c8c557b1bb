#pragma once

#include <QString>

namespace zeltools::quick
{

/// A text from outside in a form that the screen can show with any font. A control character, half
/// a character and a character that would change the direction of the text around it become U+FFFD.
struct DisplayText
{
    static constexpr int mostCharacters = 1000;          ///< of a row
    static constexpr int mostFullCharacters = 64 * 1024; ///< of the details of a row

    /// The text of a row, one line: line ends and tabulators become blanks.
    explicit DisplayText(const QString& given, int maximum = mostCharacters);

    /// The text in several lines: line feeds and tabulators stay, and the zero byte becomes U+2400,
    /// from which a page sees that a file is not text. Characters after the maximum are left out.
    static QString lines(const QString& given, int maximum = mostFullCharacters);
    /// The text in one line, with an ellipsis in place of what does not fit.
    static QString name(const QString& given, int maximum);

    QString text;       ///< the first characters, up to the maximum
    bool isCut = false; ///< whether the given text is longer
};

} // namespace zeltools::quick
