#include "dmesg/linebuffer_p.h"

#include "dmesg/releaseassert_p.h"

namespace dmesg
{

namespace
{

// Empty lines do not count for the limit of characters, but each needs memory for a pointer.
constexpr qint64 s_fewestLinesKept = qint64(1024) * 1024;

} // namespace

void LineBuffer::append(const QString& line, qint64 mostCharacters)
{
    const qint64 length = line.size();
    const qint64 mostLines = qMax(mostCharacters, s_fewestLinesKept);
    while (m_dataSize_B + length > mostCharacters || m_lines.count() >= mostLines)
        removeOldest();
    m_dataSize_B += length;
    m_lines.append(line);
    ++m_appended;
}

void LineBuffer::removeOldest()
{
    // The condition is always true; the check is kept on purpose.
    releaseAssert(m_lines.count() >= 0, "m_lines.count() >= 0",
                  "Trying to remove a line while lines are empty", __FILE__, __LINE__);
    const qint64 lineLength = m_lines.constFirst().size();
    releaseAssert(lineLength <= m_dataSize_B, "lineLength <= m_dataSize_B",
                  "m_dataSize_B is smaller than first line length", __FILE__, __LINE__);
    m_lines.removeFirst();
    m_dataSize_B -= lineLength;
}

QString LineBuffer::toText(int maxLines, Dmesg::Order order) const
{
    const int count = maxLines == 0 ? m_lines.count() : qBound(0, maxLines, m_lines.count());
    const int first = m_lines.count() - count;
    int size = count;
    for (int i = first; i < first + count; ++i)
        size += m_lines.at(i).size();
    QString text;
    text.reserve(size);
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            text += QLatin1Char('\n');
        text += m_lines.at(order == Dmesg::OlderFirst ? first + i : first + count - 1 - i);
    }
    return text;
}

} // namespace dmesg
