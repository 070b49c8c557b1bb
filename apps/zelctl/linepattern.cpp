#include "linepattern.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr QLatin1Char s_feed('\n');

bool isPlain(const QString& pattern)
{
    const QString special = QStringLiteral("\\^$.[]|()?*+{}");
    return std::none_of(pattern.begin(), pattern.end(),
                        [&special](QChar character) { return special.contains(character); });
}

bool looksAround(const QString& pattern)
{
    static const QRegularExpression forms(
        QStringLiteral(R"(\(\?(?!:|i\))|\(\*|\\[AzZGKCQ]|[*+?}]\+)"));
    return pattern.contains(forms);
}

} // namespace

LinePattern::LinePattern(const QString& pattern)
{
    if (isPlain(pattern)) {
        m_literal = pattern.toStdString();
        return;
    }
    m_expression.setPattern(pattern);
    m_expression.setPatternOptions(QRegularExpression::MultilineOption);
    m_expression.optimize();
    m_isSearchable = !looksAround(pattern);
}

QString LinePattern::error() const
{
    return m_expression.isValid() ? QString() : m_expression.errorString();
}

void LinePattern::setBlock(const char* begin, const char* end)
{
    m_begin = m_byte = begin;
    m_end = end;
    m_character = 0;
    m_text = m_isSearchable ? QString::fromUtf8(begin, static_cast<int>(end - begin)) : QString();
}

const char* LinePattern::find(const char* from)
{
    m_isConfirmed = false;
    if (!m_text.isEmpty() && from != m_end)
        return findExpression(from);
    if (m_literal.empty())
        return from;
    const void* const found =
        memmem(from, size_t(m_end - from), m_literal.data(), m_literal.size());
    return found != nullptr ? static_cast<const char*>(found) : m_end;
}

const char* LinePattern::findExpression(const char* from)
{
    const QRegularExpressionMatch match =
        m_expression.match(m_text, characterAt(from), QRegularExpression::NormalMatch,
                           QRegularExpression::DontCheckSubjectStringMatchOption);
    if (!match.isValid()) { // it would take too many steps
        m_text.clear();
        return from;
    }
    if (!match.hasMatch())
        return m_end;
    const int start = match.capturedStart();
    m_isConfirmed = match.capturedEnd() <= m_text.indexOf(s_feed, start);
    return lineAt(start);
}

// No byte becomes more than one character. In a text of as many characters as bytes they have the
// same places; otherwise the places are found by the line feeds before them.
bool LinePattern::areAligned() const
{
    return m_text.size() == m_end - m_begin;
}

int LinePattern::characterAt(const char* line)
{
    if (areAligned())
        return static_cast<int>(line - m_begin);
    for (auto feeds = std::count(m_byte, line, '\n'); feeds > 0; --feeds)
        m_character = static_cast<int>(m_text.indexOf(s_feed, m_character)) + 1;
    m_byte = line;
    return m_character;
}

const char* LinePattern::lineAt(int character) const
{
    if (areAligned())
        return m_begin + character;
    const char* line = m_byte;
    const QChar* const text = m_text.constData();
    for (auto feeds = std::count(text + m_character, text + character, s_feed); feeds > 0; --feeds)
        line = static_cast<const char*>(std::memchr(line, '\n', size_t(m_end - line))) + 1;
    return line;
}

bool LinePattern::confirms(std::string_view line) const
{
    return m_expression.pattern().isEmpty() || m_isConfirmed ||
           m_expression.match(QString::fromUtf8(line.data(), static_cast<int>(line.size())))
               .hasMatch();
}
