#include "quick/pastlines_p.h"

#include "logging/logmanager.h"
#include "logging/logrenderer.h"
#include "quick/readingpool_p.h"

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

// The last bytes of a file, from the start of a line.
QByteArray tailOf(const QString& path, qint64 size_B)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) // a FIFO would wait
        return {};
    const qint64 start = std::max<qint64>(file.size() - size_B, 0);
    file.seek(start);
    const QByteArray tail = file.read(size_B);
    return start == 0 ? tail : tail.mid(int(tail.indexOf('\n')) + 1);
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

PastLines::PastLines(qint64 latest_ms)
    : m_latest_ms(latest_ms)
{
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
    const QString path = LogManager::instance()->filePath(LogManager::General);
    QByteArray content = tailOf(path, maximum_B);
    if (content.size() < maximum_B / 2)
        content.prepend(tailOf(path + QLatin1String(".1"), maximum_B - content.size()));
    const QList<QByteArray> texts = content.split('\n');
    for (const QByteArray& text : texts)
        add(QString::fromLocal8Bit(text.constData(), int(text.size())));
    for (KeptLine& line : lines) {
        while (line.text.endsWith(QLatin1Char('\n')))
            line.text.chop(1);
    }
    m_isDone = true;
}

// A line without a time continues the message before it.
void PastLines::add(const QString& line)
{
    const qint64 time_ms = timeOf(line);
    if (time_ms > m_latest_ms || (time_ms < 0 && lines.empty()))
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
