#pragma once

#include "dmesg/dmesg.h"

namespace dmesg
{

/// The last lines of the capture. Their characters together stay within a limit. The caller locks.
class LineBuffer
{
public:
    /// Appends a line, which must not be longer than the limit, and removes the oldest lines that
    /// no longer fit.
    void append(const QString& line, qint64 mostCharacters);

    const QStringList& lines() const { return m_lines; }
    /// How many lines were appended since the start.
    quint64 appended() const { return m_appended; }
    /// The text that Dmesg::linesToString() describes.
    QString toText(int maxLines, Dmesg::Order order) const;

private:
    void removeOldest();

    QStringList m_lines; // oldest first; removes its first line without moving the others
    qint64 m_dataSize_B = 0;
    quint64 m_appended = 0;
};

} // namespace dmesg
