#include "quick/pastlines_p.h"

#include "logging/logmanager.h"
#include "logging/logrenderer.h"
#include "quick/readingpool_p.h"
#include "samefile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

namespace
{

constexpr int s_timeLength = 23; // of "15/11/2026 03:37:40:123"

// The last bytes in front of a position, from the start of a line.
QByteArray tailOf(QFile& file, qint64 end_B, qint64 size_B)
{
    const qint64 start_B = std::max<qint64>(end_B - size_B, 0);
    file.seek(start_B);
    const QByteArray tail = file.read(end_B - start_B);
    return start_B == 0 ? tail : tail.mid(int(tail.indexOf('\n')) + 1);
}

qint64 timeOf(const QString& line)
{
    if (line.size() <= s_timeLength || line.at(s_timeLength) != QLatin1Char('|'))
        return -1;
    const QDateTime time =
        QDateTime::fromString(line.left(s_timeLength), QStringLiteral("dd/MM/yyyy hh:mm:ss:zzz"));
    return time.isValid() ? time.toMSecsSinceEpoch() : -1;
}

} // namespace

PastLines::PastLines()
{
    const QString path = LogManager::instance()->filePath(LogManager::General);
    if (::stat(QFile::encodeName(path).constData(), &m_end) != 0)
        m_end = {};
}

void PastLines::start(const std::shared_ptr<PastLines>& reading, std::function<void()> finished)
{
    readingPool(Reading::LogLines).start([reading, finished = std::move(finished)] {
        reading->run();
        finished();
    });
}

void PastLines::run()
{
    const QByteArray content = read();
    const QList<QByteArray> texts = content.split('\n');
    for (const QByteArray& text : texts)
        add(QString::fromLocal8Bit(text.constData(), int(text.size())));
    for (KeptLine& line : lines) {
        while (line.text.endsWith(QLatin1Char('\n')))
            line.text.chop(1);
    }
    m_isDone = true;
}

// After a rotation, the past ends in the predecessor, and all of the file is new.
QByteArray PastLines::read() const
{
    const QString path = LogManager::instance()->filePath(LogManager::General);
    QByteArray content;
    bool isPast = false;
    for (const QString& each : {path, QString(path + QLatin1String(".1"))}) {
        QFile file(each);
        struct stat status = {};
        if (content.size() >= maximum_B / 2 || !QFileInfo(each).isFile() || // a FIFO would wait
            !file.open(QIODevice::ReadOnly) || ::fstat(file.handle(), &status) != 0)
            continue;
        const bool isLast = isSameFile(status, m_end);
        isPast = isPast || isLast;
        if (isPast) {
            content.prepend(
                tailOf(file, isLast ? m_end.st_size : status.st_size, maximum_B - content.size()));
        }
    }
    return content;
}

// A line without a time continues the message before it.
void PastLines::add(const QString& line)
{
    const qint64 time_ms = timeOf(line);
    if (time_ms < 0 && lines.empty())
        return;
    if (time_ms < 0) {
        lines.back().text += QLatin1Char('\n') + line;
        return;
    }
    const QString rest = line.mid(s_timeLength + 1);
    for (int value = LogLevel::Debug; value <= int(LogLevel::Critical); ++value) {
        const auto level = LogLevel::Level(value);
        const QString begin =
            QLatin1Char(' ') + LogRenderer::levelText(level) + QLatin1String(" | ");
        if (rest.startsWith(begin)) {
            lines.push_back({time_ms, 0, level, 0, false, rest.mid(begin.size())});
            return;
        }
    }
    lines.push_back({time_ms, 0, LogLevel::Info, 0, false, rest});
}

} // namespace zeltools::quick
