#pragma once

#include <zeltools/quotedwords.h>

#include <QByteArray>
#include <QString>
#include <QVector>

namespace zeltools::simulatorkit
{

/// Reads the lines of a script or a recording, and the words of each line from left to right. The
/// first problem ends the reading: from then on all functions return false or a default value, and
/// error() names the line, the column and the reason.
class LineReader
{
public:
    static constexpr int maximumLine_B = 300000;

    explicit LineReader(const QByteArray& content);

    /// Reads the first line, which must be the words "zelsim", `kind` and "1".
    bool readHead(const char* kind);
    /// Reads the next line that has words. Returns false at the end and after a problem.
    bool nextLine();
    /// The number of the line, from 1.
    int line() const { return m_line; }

    bool isAtEnd() const { return m_next == m_words.size(); } ///< of the line
    /// Whether the next word is this one, without quotes.
    bool isNext(const char* word) const;
    /// Takes the next word if it is this one.
    bool take(const char* word);
    /// Takes the next word, which must not have quotes.
    QByteArray takeBare();
    /// Takes the next word, a text in quotes of at most 65535 bytes.
    QByteArray takeText();
    /// Checks that the line has no further words.
    void requireEnd();

    /// Reports a problem with the next word, or with the one that was taken last.
    void fail(const QString& reason) { failAt(m_next, reason); }
    void failBefore(const QString& reason) { failAt(m_next - 1, reason); }
    const QString& error() const { return m_error; }

private:
    void failAt(int word, const QString& reason);
    bool splitLine();

    const QByteArray& m_content;
    QVector<QuotedWord> m_words;
    QString m_error;
    int m_begin = 0; // of the next line
    int m_length = 0;
    int m_line = 0;
    int m_next = 0;
};

} // namespace zeltools::simulatorkit
