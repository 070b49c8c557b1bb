#include "logging/loginfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logtimestamp_p.h"
#include "path.h"

#include <QFileInfo>

LogInFile::LogInFile(QObject* parent, const QString& name, const LogModule& module,
                     const RotatingLogFileConfiguration& configuration)
    : QObject(parent)
    , m_file(configuration)
    , m_module(module)
    , m_writerThread(std::make_unique<WriterThread>(&m_file))
{
    m_file.setPrimaryFilename(Path::instance()->debugLogsDir + QFileInfo(name).fileName());
    m_writerThread->setObjectName(QLatin1String("Log thread ") + name);
    m_writerThread->start();
    m_writerThread->setPriority(QThread::IdlePriority);
    connect(this, &LogInFile::writeStringToFile, m_writerThread.get(),
            &WriterThread::onWriteStringToFile, Qt::DirectConnection);
}

LogInFile::~LogInFile()
{
    disconnect(this, &LogInFile::writeStringToFile, nullptr, nullptr);
    m_writerThread->writePending();
    m_writerThread->quit();
    m_writerThread->wait();
}

void LogInFile::logString(const QString& text)
{
    if (m_logInDebug)
        LogFormatter(LogLevel::Info).log(m_module) << text;
    if (m_logInFile)
        Q_EMIT writeStringToFile(logTimestamp() + QLatin1Char('|') + text + QLatin1Char('\n'));
}

void LogInFile::setLogInFile(bool enable)
{
    if (m_logInFile.exchange(enable) == enable)
        return;
    if (enable)
        openForAppending();
    else
        closeFile();
}

void LogInFile::setLogInDebug(bool enable)
{
    m_logInDebug = enable;
}

bool LogInFile::openFile()
{
    const char* const signature = "bool LogInFile::openFile()";
    if (m_file.file.isOpen()) {
        LogFormatter(LogLevel::Warning).log(Log::Global)
            << signature << "Log file is already opened !";
        return false;
    }
    if (!openForAppending()) {
        LogFormatter(LogLevel::Warning).log(Log::Global) << signature << "Failed opening log file";
        return false;
    }
    return true;
}

bool LogInFile::closeFile()
{
    m_writerThread->writePending();
    if (!m_file.file.isOpen()) {
        LogFormatter(LogLevel::Debug).log(Log::Global) << "bool LogInFile::closeFile()"
                                                       << "Log file is not opened";
        return false;
    }
    const QMutexLocker locker(m_file.mutex());
    m_file.file.close();
    return true;
}

bool LogInFile::openForAppending()
{
    const QMutexLocker locker(m_file.mutex());
    if (m_file.file.isOpen() || !m_file.file.open(QIODevice::Append))
        return m_file.file.isOpen();
    m_file.endHalfLine();
    return true;
}

LogInFile::WriterThread::WriterThread(RotatingLogFile* file)
    : m_file(file)
{
    moveToThread(this);
}

LogInFile::WriterThread::~WriterThread() = default;

void LogInFile::WriterThread::onWriteStringToFile(const QString& line)
{
    constexpr qint64 longestPending = qint64(1024) * 1024;
    QMutexLocker locker(&m_pendingMutex);
    const bool isFirst = m_pending.isEmpty();
    m_pending.enqueue(line);
    m_pendingLength += line.size();
    const bool isTooMuch = m_pendingLength > longestPending;
    locker.unlock();
    if (isTooMuch)
        writePending();
    else if (isFirst)
        QMetaObject::invokeMethod(this, &WriterThread::writePending, Qt::QueuedConnection);
}

void LogInFile::WriterThread::writePending()
{
    while (writeNext()) {
    }
}

// Holds the order for one line at a time: who waits for this thread, which may be the least urgent
// of a busy machine, waits for no more than that.
bool LogInFile::WriterThread::writeNext()
{
    const QMutexLocker order(&m_orderMutex);
    QString line;
    {
        const QMutexLocker locker(&m_pendingMutex);
        if (m_pending.isEmpty())
            return false;
        line = m_pending.dequeue();
        m_pendingLength -= line.size();
    }
    m_file->write(line.toUtf8()); // -1 while the file is closed: the line is not wanted
    return true;
}
