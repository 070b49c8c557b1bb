#pragma once

#include <QRegularExpression>
#include <QString>

#include <string>
#include <string_view>

/// Searches the lines of a file for a regular expression. Most lines do not match, so it looks for
/// the next place of a match in many lines at once: a plain text among the bytes, an expression in
/// their decoded form. An empty pattern is in every line.
class LinePattern
{
public:
    explicit LinePattern(const QString& pattern = QString());

    /// The reason why the pattern is not a regular expression; empty if it is one.
    QString error() const;

    /// Sets the block that find() searches. It has whole lines, each with its line feed, and stays
    /// unchanged until the next call.
    void setBlock(const char* begin, const char* end);
    /// Returns a place in the first line that can match, and the end of the block if there is none.
    /// `from` is the start of a line and not less than in the call before.
    const char* find(const char* from);
    /// Whether the line in which find() has found a place matches.
    bool confirms(std::string_view line) const;

private:
    const char* findExpression(const char* from);
    bool areAligned() const;
    int characterAt(const char* line);
    const char* lineAt(int character) const;

    QRegularExpression m_expression; ///< empty if the pattern is a plain text
    std::string m_literal;
    /// Whether a match in the block is found wherever a line alone has one. That is not so for a
    /// pattern that looks around itself or forbids to try again.
    bool m_isSearchable = false;

    const char* m_begin = nullptr;
    const char* m_end = nullptr;
    bool m_isConfirmed = false; ///< the match that find() has found lies in one line
    QString m_text;             ///< the decoded block; empty if each line is to be tried
    // The start of one line in the block and in the text, unless these are aligned.
    const char* m_byte = nullptr;
    int m_character = 0;
};
