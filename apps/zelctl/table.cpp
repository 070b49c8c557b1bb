#include "table.h"

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

/// Takes the part of the text that fits into a line, up to a blank if there is one.
QString takeLine(QString& text, int room)
{
    auto end = text.size();
    if (end > room) {
        const auto blank = text.lastIndexOf(QLatin1Char(' '), room);
        end = blank > 0 ? blank : room - (text.at(room).isLowSurrogate() ? 1 : 0);
    }
    QString line = text.left(end);
    text = text.mid(end).trimmed();
    return line;
}

/// The text behind the other columns of its row, which take `used` characters.
QString wrapped(QString text, int used, int width)
{
    constexpr int leastRoom = 20, indentation = 4;
    if (width == 0 || used + text.size() <= width)
        return text + QLatin1Char('\n');
    const bool isBeside = width - used >= leastRoom;
    const int begin = isBeside ? used : indentation;
    const int room = std::max(width - begin, leastRoom);
    QString lines = isBeside ? takeLine(text, room) : QString();
    while (!text.isEmpty())
        lines += QLatin1Char('\n') + QString(begin, QLatin1Char(' ')) + takeLine(text, room);
    return lines + QLatin1Char('\n');
}

} // namespace

QString table(const QVector<QStringList>& rows, int width)
{
    constexpr int maximumWidth = 50;
    QVector<int> widths(rows.value(0).size());
    for (const QStringList& row : rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] =
                std::max(widths[column], std::min<int>(row[column].size(), maximumWidth));
    }
    QString text;
    for (const QStringList& row : rows) {
        const auto begin = text.size();
        for (int column = 0; column < row.size() - 1; ++column)
            text += row[column].leftJustified(widths[column]) + QLatin1String("  ");
        const QString last = wrapped(row.last(), static_cast<int>(text.size() - begin), width);
        while (last.size() > 1 && last.startsWith(QLatin1Char('\n')) &&
               text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        text += last;
    }
    return text;
}

int terminalWidth()
{
    winsize size = {};
    return isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col
                                                                                      : 0;
}
