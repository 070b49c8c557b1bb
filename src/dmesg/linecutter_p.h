#pragma once

#include <QByteArray>
#include <QStringList>

namespace dmesg
{

/// Cuts the output of a process into lines. An object belongs to one thread.
class LineCutter
{
public:
    /// An unfinished line that reaches this size is returned as a line, and the bytes after it
    /// begin another. The size is far above any line of a kernel (1 KiB), and above the default
    /// buffer of Dmesg, so that Dmesg still recognises a line as too long.
    static constexpr int longestLine_B = 8 * 1024 * 1024;

    /// Decodes the lines that these bytes complete from UTF-8 and removes white space at both ends.
    QStringList cut(const QByteArray& bytes);
    /// Discards an unfinished line.
    void clear();

private:
    QByteArray m_pending; // holds no line feed between calls
};

} // namespace dmesg
