// RotatingLogFile read back.

#include "logging/rotatinglogfile.h"

#include "logging/openwithoutwaiting_p.h"

#include <algorithm>

QStringList RotatingLogFile::getLogLines(const QString& path)
{
    QFile reader;
    const int descriptor = openWithoutWaiting(path, O_RDONLY);
    if (descriptor < 0 ||
        !reader.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return QStringList();
    const QByteArray content = reader.read(reader.size());
    if (reader.error() != QFileDevice::NoError)
        return QStringList();
    // The form without a size would stop at the first NUL.
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

template <typename Visit>
void RotatingLogFile::visitFiles(Order order, Visit&& visit) const
{
    QStringList names = filenames(NewestFirst);
    if (!names.contains(m_primaryFilename))
        names.append(m_primaryFilename);
    for (const QString& name : names) {
        QStringList lines = getLogLines(name);
        if (order == NewestFirst)
            std::reverse(lines.begin(), lines.end());
        if (!visit(lines))
            return;
    }
}

QString RotatingLogFile::totalContent(Order order) const
{
    const QMutexLocker locker(&m_mutex);
    QString content;
    if (!isReady())
        return content;
    visitFiles(order, [&content](const QStringList& lines) {
        content += lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
        return true;
    });
    return content;
}

QString RotatingLogFile::pageContent(unsigned firstLine, unsigned lastLine, Order order) const
{
    const QMutexLocker locker(&m_mutex);
    if (!isReady())
        return QString();
    QStringList page;
    qint64 number = 0;
    visitFiles(order, [&](const QStringList& lines) {
        for (const QString& line : lines) {
            if (number >= firstLine && number <= lastLine)
                page.append(line);
            ++number;
        }
        return number <= lastLine;
    });
    return page.join(QLatin1Char('\n'));
}
