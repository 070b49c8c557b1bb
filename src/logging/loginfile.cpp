#include "logging/loginfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logtimestamp.h"
#include "logging/tracedelivery_p.h"
#include "path.h"

#include <QFileInfo>

#include <sched.h>
#include <unistd.h>

LogInFile::LogInFile(QObject* parent, const QString& name, const LogModule& module,
                     const RotatingLogFileConfiguration& configuration)
    : QObject(parent)
    , m_file(configuration)
    , m_module(module)
    , m_writerThread(std::make_unique<WriterThread>(&m_file))
{
    m_file.setPrimaryFilename(Path::instance()->debugLogsDir + QFileInfo(name).fileName());
    m_writerThread->allowRing(configuration, module);
    m_writerThread->setObjectName(QLatin1String("Log thread ") + name);
    m_writerThread->start();
    m_writerThread->setPriority(QThread::IdlePriority);
    connect(this, &LogInFile::writeStringToFile, m_writerThread.get(),
            &WriterThread::onWriteStringToFile, Qt::DirectConnection);
}

LogInFile::~LogInFile()
{
    disconnect(this, &LogInFile::writeStringToFile, nullptr, nullptr);
    m_writerThread.reset();
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
        closeWhenWritten();
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
    if (!closeWhenWritten()) {
        LogFormatter(LogLevel::Debug).log(Log::Global) << "bool LogInFile::closeFile()"
                                                       << "Log file is not opened";
        return false;
    }
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

bool LogInFile::closeWhenWritten()
{
    m_writerThread->waitUntilWritten();
    const QMutexLocker locker(m_file.mutex());
    const bool wasOpen = m_file.file.isOpen();
    m_file.file.close();
    return wasOpen;
}

LogInFile::WriterThread::WriterThread(RotatingLogFile* file)
    : m_file(file)
    , m_delivery(std::make_unique<TraceDelivery>(file, [this] { waitForQueue(); }))
{
}

LogInFile::WriterThread::~WriterThread()
{
    m_delivery->waitForRing();
    setPolicy(SCHED_OTHER);
    m_delivery->queue.end();
    wait();
    m_kernelId.load(); // shows the order to a thread sanitizer that does not know wait()
}

void LogInFile::WriterThread::allowRing(const RotatingLogFileConfiguration& configuration,
                                        const LogModule& module)
{
    m_delivery->setRingAllowed(configuration, module);
}

void LogInFile::WriterThread::waitUntilWritten()
{
    m_delivery->waitForRing();
    waitForQueue();
}

void LogInFile::WriterThread::waitForQueue()
{
    if (!isRunning()) // Qt could not start the thread and has logged a warning
        return;
    setPolicy(SCHED_OTHER);
    m_delivery->queue.waitUntilWritten();
    setPolicy(SCHED_IDLE);
}

// While a thread waits for the writer, the writer has the normal policy, which QThread cannot set.
// This needs a privilege; without it the wait may be longer.
void LogInFile::WriterThread::setPolicy(int policy)
{
    const sched_param none = {};
    if (m_kernelId != 0)
        sched_setscheduler(m_kernelId, policy, &none);
}

void LogInFile::WriterThread::onWriteStringToFile(const QString& line)
{
    m_delivery->add(line.toUtf8());
}

// While the file is closed, write() returns -1, and the lines are dropped on purpose.
void LogInFile::WriterThread::run()
{
    m_kernelId = gettid();
    while (const TraceQueue::LinePointer line = m_delivery->queue.next()) {
        if (line->droppedBefore > 0) {
            const QString text = QStringLiteral("%1|%2 lines were dropped here: more than 64 MiB "
                                                "were waiting to be written\n");
            m_file->write(text.arg(logTimestamp()).arg(line->droppedBefore).toUtf8());
        }
        if (line->size > 0)
            m_file->write(line->bytes(), line->size);
    }
    m_kernelId = 0;
}
