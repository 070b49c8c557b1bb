#pragma once

#include <QByteArray>
#include <QStringList>

namespace dmesg
{

/// Cuts what a process prints into lines. Belongs to one thread.
class LineCutter
{
public:
    /// A line that has no end is kept up to this size, then handed on as a line, and what follows
    /// is another. Far above any line of a kernel (1 KiB), and above Dmesg's usual buffer, so that
    /// a line too long for that is still known as one.
    static constexpr int longestLine_B = 8 * 1024 * 1024;

    /// The lines that these bytes complete, from UTF-8, without white space at both ends.
    QStringList cut(const QByteArray& bytes);
    /// Forgets an unfinished line.
    void clear();

private:
    QByteArray m_pending; // holds no line feed between calls
};

} // namespace dmesg
