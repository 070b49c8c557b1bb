#include "simulatorkit/linereader_p.h"

#include "simulationinterface/simulationprotocol.h"

#include <algorithm>

namespace zeltools::simulatorkit
{

LineReader::LineReader(const QByteArray& content)
    : m_content(content)
{
}

bool LineReader::readHead(const char* kind)
{
    const bool isHead = nextLine() && m_line == 1 && take("zelsim") && take(kind) && take("1");
    if (isHead) {
        requireEnd();
    } else if (m_error.isEmpty()) {
        m_line = 1;
        fail(QStringLiteral("the first line must be \"zelsim %1 1\"")
                 .arg(QString::fromLatin1(kind)));
    }
    return m_error.isEmpty();
}

bool LineReader::nextLine()
{
    while (m_error.isEmpty() && m_begin < m_content.size()) {
        ++m_line;
        if (splitLine() && !m_words.isEmpty())
            return true;
    }
    return false;
}

bool LineReader::splitLine()
{
    m_words.clear();
    m_next = 0;
    const int end = m_content.indexOf('\n', m_begin);
    m_length = (end < 0 ? m_content.size() : end) - m_begin;
    if (m_length > maximumLine_B) {
        fail(QStringLiteral("the line is longer than %1 bytes").arg(maximumLine_B));
        return false;
    }
    if (end < 0) {
        fail(QStringLiteral("the line feed at the end is missing"));
        return false;
    }
    const QByteArray line = QByteArray::fromRawData(m_content.constData() + m_begin, m_length);
    QString problem;
    auto words = splitQuotedWords(line, problem);
    m_begin = end + 1;
    if (!words) {
        m_error = QStringLiteral("line %1, %2").arg(m_line).arg(problem);
        return false;
    }
    m_words.swap(*words);
    return true;
}

bool LineReader::isNext(const char* word) const
{
    return m_error.isEmpty() && !isAtEnd() && !m_words[m_next].isQuoted &&
           m_words[m_next].text == word;
}

bool LineReader::take(const char* word)
{
    const bool isTaken = isNext(word);
    m_next += isTaken ? 1 : 0;
    return isTaken;
}

QByteArray LineReader::takeBare()
{
    if (isAtEnd() || m_words[m_next].isQuoted) {
        fail(QStringLiteral("a word without quotes is missing"));
        return {};
    }
    return m_words[m_next++].text;
}

QByteArray LineReader::takeText()
{
    if (isAtEnd() || !m_words[m_next].isQuoted) {
        fail(QStringLiteral("a text in quotes is missing"));
        return {};
    }
    if (m_words[m_next].text.size() > simulationinterface::SimulationProtocol::maximumPayload_B) {
        fail(QStringLiteral("the text is longer than 65535 bytes"));
        return {};
    }
    return m_words[m_next++].text;
}

void LineReader::requireEnd()
{
    if (!isAtEnd())
        fail(QStringLiteral("unexpected word"));
}

void LineReader::failAt(int word, const QString& reason)
{
    if (!m_error.isEmpty())
        return;
    const int column = word < m_words.size() ? m_words[word].column : m_length + 1;
    m_error =
        QStringLiteral("line %1, column %2: %3").arg(std::max(m_line, 1)).arg(column).arg(reason);
}

} // namespace zeltools::simulatorkit
