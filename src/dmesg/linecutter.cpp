#include "dmesg/linecutter_p.h"

namespace dmesg
{

namespace
{

QString toLine(const char* begin, int size_B)
{
    const QByteArray bytes = QByteArray::fromRawData(begin, size_B).trimmed();
    if (bytes.isEmpty())
        return {};                                             // a null string allocates no memory
    return QString::fromUtf8(bytes.constData(), bytes.size()); // the size keeps what follows a NUL
}

} // namespace

QStringList LineCutter::cut(const QByteArray& bytes)
{
    QStringList lines;
    int end = bytes.indexOf('\n');
    if (end < 0) {
        m_pending += bytes;
    } else {
        m_pending.append(bytes.constData(), end);
        lines.append(toLine(m_pending.constData(), m_pending.size()));
        int begin = end + 1;
        while ((end = bytes.indexOf('\n', begin)) >= 0) {
            lines.append(toLine(bytes.constData() + begin, end - begin));
            begin = end + 1;
        }
        m_pending = bytes.mid(begin);
    }
    if (m_pending.size() >= longestLine_B) {
        lines.append(toLine(m_pending.constData(), m_pending.size()));
        m_pending.clear();
    }
    return lines;
}

void LineCutter::clear()
{
    m_pending.clear();
}

} // namespace dmesg
