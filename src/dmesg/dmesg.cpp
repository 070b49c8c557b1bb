#include "dmesg/dmesg.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/zelassert.h"
#include "path.h"
#include <zeltools/platform.h>

#include <QFile>
#include <QFileInfo>

#include <cstdlib>

namespace dmesg
{

namespace
{

// Empty lines count nothing for the limit, but each takes a pointer.
constexpr qint64 s_fewestLinesKept = qint64(1024) * 1024;

void releaseAssert(bool isTrue, const char* condition, const char* message, int line)
{
    if (isTrue)
        return;
    printReleaseAssertMsg(condition, message, __FILE__, line);
    // No destructors: that of the capture would wait for the thread that may have failed.
    std::_Exit(1);
}

} // namespace

Dmesg* Dmesg::instance()
{
    static Dmesg dmesg;
    return &dmesg;
}

Dmesg::Dmesg()
{
    connect(&m_process, &DmesgProcess::newLines, this, &Dmesg::onProcessNewLines,
            Qt::DirectConnection);
    initLogFile();
    setCommand({QStringLiteral("script"),
                {QStringLiteral("--quiet"), QStringLiteral("--command"),
                 QStringLiteral("dmesg --follow --ctime"), QStringLiteral("/dev/null")}});
}

Dmesg::~Dmesg()
{
    if (m_process.isRunning())
        m_process.stop();
}

void Dmesg::start()
{
    if constexpr (platform::isBoard)
        m_process.start();
}

void Dmesg::setConfig(const Config& config)
{
    releaseAssert(!m_process.isRunning(), "!m_process.isRunning()",
                  "Can't set config while running", __LINE__);
    std::shared_ptr<RotatingLogFile> closed;
    QMutexLocker locker(&m_mutex);
    closed.swap(m_logFile);
    m_config = config;
    locker.unlock();
    closed.reset(); // may wait for a compression, which may log
    initLogFile();
}

void Dmesg::setCommand(const System::Command& command)
{
    releaseAssert(!m_process.isRunning(), "!m_process.isRunning()",
                  "Can't set command while running", __LINE__);
    m_process.setCommand(command);
}

RotatingLogFileConfiguration Dmesg::makeLogFileConfig(float maximumSizeMiB, int secondaryFilesCount,
                                                      bool compressed)
{
    return {maximumSizeMiB, secondaryFilesCount, compressed};
}

QStringList Dmesg::lines()
{
    const QMutexLocker locker(&m_mutex);
    return m_lines;
}

QString Dmesg::linesToString(int maxLines, Order order)
{
    const QMutexLocker locker(&m_mutex);
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
        text += m_lines.at(order == OlderFirst ? first + i : first + count - 1 - i);
    }
    return text;
}

QString Dmesg::logFileName(int index) const
{
    QMutexLocker locker(&m_mutex);
    if (m_logFile)
        return m_logFile->filename(index);
    locker.unlock(); // the assertion handler may want the lines
    releaseAssert(false, "m_logFile", "Can't query logFileName if logging is not enabled",
                  __LINE__);
    return {};
}

void Dmesg::syncLogFile()
{
    const QMutexLocker locker(&m_mutex);
    if (m_logFile)
        m_logFile->sync();
}

bool Dmesg::isKmsgWrittable()
{
    return QFileInfo(QStringLiteral("/dev/kmsg")).isWritable();
}

bool Dmesg::isDmesgRestricted()
{
    QFile file(QStringLiteral("/proc/sys/kernel/dmesg_restrict"));
    return file.open(QIODevice::ReadOnly) && file.read(1) == "1";
}

void Dmesg::onProcessNewLines(const QStringList& lines)
{
    QMutexLocker locker(&m_mutex);
    for (const QString& line : lines) {
        appendLine(line, locker);
        logLine(line, locker);
    }
    if (m_config.logToFile && m_logFile)
        m_logFile->sync();
}

// The file opens and logs without the lock: receivers of log lines may ask for the lines.
void Dmesg::initLogFile()
{
    QMutexLocker locker(&m_mutex);
    const Config config = m_config;
    const bool isInitialized = m_logFile != nullptr;
    locker.unlock();
    if (isInitialized) {
        LogFormatter(LogLevel::Error).log(Log::Global) << "void dmesg::Dmesg::initLogFile()"
                                                       << "log file is already initialized";
        return;
    }
    if (!config.logToFile)
        return;
    const auto logFile = std::make_shared<RotatingLogFile>(config.logFile);
    logFile->setPrimaryFilename(Path::instance()->debugLogsDir + QLatin1String("dmesg.log"));
    if (logFile->file.open(QIODevice::Append))
        logFile->endHalfLine();
    else
        LogFormatter(LogLevel::Error).log(Log::Global) << "Failed opening log file";
    locker.relock();
    m_logFile = logFile;
}

void Dmesg::appendLine(const QString& line, zeltools::MutexLocker& locker)
{
    const qint64 length = line.size();
    if (length > m_config.maxRamSize_B) {
        locker.unlock(); // a receiver of the warning may ask for the lines
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << "Line length is bigger than max ram size, dropping it";
        Q_EMIT tooLongLine();
        locker.relock();
        return;
    }
    const qint64 mostLines = qMax(m_config.maxRamSize_B, s_fewestLinesKept);
    while (m_dataSize_B + length > m_config.maxRamSize_B || m_lines.count() >= mostLines)
        removeOldestLine();
    m_dataSize_B += length;
    m_lines.append(line);
    Q_EMIT changed();
    Q_EMIT newLine(line);
}

void Dmesg::removeOldestLine()
{
    // Always true, and kept.
    releaseAssert(m_lines.count() >= 0, "m_lines.count() >= 0",
                  "Trying to remove a line while lines are empty", __LINE__);
    const qint64 lineLength = m_lines.constFirst().size();
    releaseAssert(lineLength <= m_dataSize_B, "lineLength <= m_dataSize_B",
                  "m_dataSize_B is smaller than first line length", __LINE__);
    m_lines.removeFirst();
    m_dataSize_B -= lineLength;
}

void Dmesg::logLine(const QString& line, zeltools::MutexLocker& locker)
{
    const std::shared_ptr<RotatingLogFile> logFile = m_logFile;
    if (!m_config.logToFile || !logFile)
        return;
    locker.unlock(); // a receiver of the file's own warning may ask for the lines
    logFile->write(line.toLocal8Bit() + '\n');
    locker.relock();
}

} // namespace dmesg
