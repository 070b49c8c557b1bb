#include "dmesg/dmesg.h"

#include "dmesg/followcommand_p.h"
#include "dmesg/linebuffer_p.h"
#include "dmesg/releaseassert_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "path.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace dmesg
{

Dmesg* Dmesg::instance()
{
    static Dmesg dmesg;
    return &dmesg;
}

Dmesg::Dmesg()
    : Dmesg(zeltools::Machine())
{
}

Dmesg::Dmesg(const zeltools::Machine& machine)
    : m_isBoard(machine.isBoard)
    , m_kernelMessageFile(machine.kernelMessageFile)
    , m_buffer(std::make_unique<LineBuffer>())
{
    connect(&m_process, &DmesgProcess::newLines, this, &Dmesg::onProcessNewLines,
            Qt::DirectConnection);
    connect(&m_process, &DmesgProcess::runningChanged, this, &Dmesg::runningChanged,
            Qt::DirectConnection);
    initLogFile();
    setCommand(followCommand());
}

Dmesg::~Dmesg()
{
    if (m_process.isRunning())
        m_process.stop();
}

void Dmesg::start()
{
    if (m_isBoard)
        m_process.start();
}

void Dmesg::setConfig(const Config& config)
{
    releaseAssert(!m_process.isRunning(), "!m_process.isRunning()",
                  "Can't set config while running", __FILE__, __LINE__);
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
                  "Can't set command while running", __FILE__, __LINE__);
    m_command = command;
    m_process.setCommand(command);
    chooseSource();
}

void Dmesg::setSource(Source source)
{
    releaseAssert(!m_process.isRunning(), "!m_process.isRunning()",
                  "Can't set source while running", __FILE__, __LINE__);
    m_source = source;
    chooseSource();
}

void Dmesg::setRestarting(bool isRestarting)
{
    releaseAssert(!m_process.isRunning(), "!m_process.isRunning()",
                  "Can't set restarting while running", __FILE__, __LINE__);
    m_process.setRestarting(isRestarting);
}

RotatingLogFileConfiguration Dmesg::makeLogFileConfig(float maximumSizeMiB, int secondaryFilesCount,
                                                      bool compressed)
{
    return {maximumSizeMiB, secondaryFilesCount, compressed};
}

QStringList Dmesg::lines()
{
    const QMutexLocker locker(&m_mutex);
    return m_buffer->lines();
}

QStringList Dmesg::linesAfter(quint64& number, int mostLines)
{
    const QMutexLocker locker(&m_mutex);
    const auto newLines = m_buffer->appended() - std::exchange(number, m_buffer->appended());
    const auto most = static_cast<quint64>(qBound(0, mostLines, m_buffer->lines().size()));
    const auto count = static_cast<int>(std::min(newLines, most));
    return m_buffer->lines().mid(m_buffer->lines().size() - count);
}

QString Dmesg::linesToString(int maxLines, Order order)
{
    const QMutexLocker locker(&m_mutex);
    return m_buffer->toText(maxLines, order);
}

QString Dmesg::logFileName(int index) const
{
    QMutexLocker locker(&m_mutex);
    if (m_logFile)
        return m_logFile->filename(index);
    locker.unlock(); // the assertion handler may ask for the lines
    releaseAssert(false, "m_logFile", "Can't query logFileName if logging is not enabled", __FILE__,
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
    return QFileInfo(zeltools::Machine().kernelMessageFile).isWritable();
}

bool Dmesg::isDmesgRestricted()
{
    QFile file(zeltools::Machine().kernelLogRestrictionFile);
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

void Dmesg::chooseSource()
{
    const bool isDevice =
        m_source == KernelDevice || (m_source == Automatic && !isInstalled(m_command));
    m_process.setKernelDevice(isDevice ? m_kernelMessageFile : QString());
}

// Opens the file and logs without the lock, since receivers of log lines may ask for the lines.
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
    if (line.size() > m_config.maxRamSize_B) {
        locker.unlock(); // a receiver of the warning may ask for the lines
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << "Line length is bigger than max ram size, dropping it";
        Q_EMIT tooLongLine();
        locker.relock();
        return;
    }
    m_buffer->append(line, m_config.maxRamSize_B);
    Q_EMIT changed();
    Q_EMIT newLine(line);
}

void Dmesg::logLine(const QString& line, zeltools::MutexLocker& locker)
{
    const std::shared_ptr<RotatingLogFile> logFile = m_logFile;
    if (!m_config.logToFile || !logFile)
        return;
    locker.unlock(); // a receiver of a warning of the file may ask for the lines
    logFile->write(line.toLocal8Bit() + '\n');
    locker.relock();
}

} // namespace dmesg
