#include "logging/logcontent_p.h"

#include "logging/openwithoutwaiting_p.h"

#include <algorithm>

namespace logcontent
{

namespace
{

QStringList orderedLines(const QString& path, RotatingLogFile::Order order)
{
    QStringList found = lines(path);
    if (order == RotatingLogFile::NewestFirst)
        std::reverse(found.begin(), found.end());
    return found;
}

} // namespace

QStringList lines(const QString& path)
{
    QFile reader;
    const int descriptor = openWithoutWaiting(path, O_RDONLY);
    if (descriptor < 0 ||
        !reader.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return QStringList();
    const QByteArray content = reader.read(reader.size());
    if (reader.error() != QFileDevice::NoError)
        return QStringList();
    // fromUtf8() without a size would stop at the first NUL.
    const QString text = QString::fromUtf8(content.constData(), content.size()).trimmed();

    const auto isBreak = [](QChar c) { return c == QLatin1Char('\n') || c.isNull(); };
    QStringList lines;
    for (auto begin = text.begin();;) {
        const auto end = std::find_if(begin, text.end(), isBreak);
        lines.append(QString(begin, static_cast<int>(end - begin)));
        if (end == text.end())
            return lines;
        begin = std::find_if_not(end, text.end(), isBreak);
    }
}

QString total(const QStringList& paths, RotatingLogFile::Order order)
{
    QString content;
    for (const QString& path : paths)
        content += orderedLines(path, order).join(QLatin1Char('\n')) + QLatin1Char('\n');
    return content;
}

QString page(const QStringList& paths, unsigned firstLine, unsigned lastLine,
             RotatingLogFile::Order order)
{
    QStringList page;
    qint64 number = 0;
    for (const QString& path : paths) {
        if (number > lastLine)
            break;
        const QStringList lines = orderedLines(path, order);
        for (const QString& line : lines) {
            if (number >= firstLine && number <= lastLine)
                page.append(line);
            ++number;
        }
    }
    return page.join(QLatin1Char('\n'));
}

} // namespace logcontent
