#include "logging/loginfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "logging/logtimestamp_p.h"
#include "path.h"

#include <QCoreApplication>
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
            &WriterThread::onWriteStringToFile, Qt::QueuedConnection);
}

LogInFile::~LogInFile()
{
    disconnect(this, &LogInFile::writeStringToFile, nullptr, nullptr);
    // On a busy machine an idle thread might never get to its last lines.
    m_writerThread->setPriority(QThread::NormalPriority);
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
    const QMutexLocker locker(m_file.mutex());
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
    // The lines logged before this call belong into the file.
    QMetaObject::invokeMethod(
        m_writerThread.get(), [] {}, Qt::BlockingQueuedConnection);
    const QMutexLocker locker(m_file.mutex());
    if (!m_file.file.isOpen()) {
        LogFormatter(LogLevel::Debug).log(Log::Global) << "bool LogInFile::closeFile()"
                                                       << "Log file is not opened";
        return false;
    }
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

void LogInFile::WriterThread::run()
{
    exec();
    // quit() may have overtaken lines that were logged before it.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void LogInFile::WriterThread::onWriteStringToFile(const QString& line)
{
    m_file->write(line.toUtf8()); // -1 while the file is closed: the line is not wanted
}
