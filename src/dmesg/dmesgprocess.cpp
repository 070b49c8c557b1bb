#include "dmesg/dmesgprocess.h"

#include "dmesg/linecutter_p.h"
#include "logging/log.h"
#include "logging/logformatter.h"
#include "timedprocess.h"

#include <QProcessEnvironment>

#include <signal.h>
#include <sys/prctl.h>

namespace dmesg
{

namespace
{

constexpr const char* s_startSignature = "void dmesg::DmesgProcess::startSlot()";
constexpr const char* s_stopSignature = "void dmesg::DmesgProcess::stopSlot()";

// Without it, the child would survive a crash of the application until the kernel prints a line.
void endWithParent()
{
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

} // namespace

DmesgProcess::DmesgProcess()
    : DmesgProcess(std::chrono::seconds(30))
{
}

DmesgProcess::DmesgProcess(std::chrono::milliseconds patience)
    : m_patience(patience)
    , m_process(new zeltools::TimedProcess(endWithParent, this))
    , m_output(std::make_unique<LineCutter>())
    , m_errors(std::make_unique<LineCutter>())
{
    connect(m_process, &QProcess::readyReadStandardOutput, this,
            &DmesgProcess::onProcessStdoutReadyRead);
    connect(m_process, &QProcess::readyReadStandardError, this,
            &DmesgProcess::onProcessStderrReadyRead);
    connect(m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &DmesgProcess::onProcessFinished);
    connect(m_process, &zeltools::TimedProcess::overdue, this, &DmesgProcess::onOverdue);
    connect(m_process, &QProcess::stateChanged, this,
            [this](QProcess::ProcessState state) { m_state = state; });
    connect(this, &DmesgProcess::startSignal, this, &DmesgProcess::startSlot,
            Qt::BlockingQueuedConnection);
    connect(this, &DmesgProcess::stopSignal, this, &DmesgProcess::stopSlot,
            Qt::BlockingQueuedConnection);
    // The thread makes this call at its end. It also works when the application object is gone and
    // no event is delivered any more.
    connect(
        &m_thread, &QThread::finished, this,
        [this] {
            if (isRunning())
                stopSlot();
            m_hasEnded = true;
        },
        Qt::DirectConnection);
    moveToThread(&m_thread);
    m_thread.setObjectName(QStringLiteral("Kernel log"));
    m_thread.start();
}

DmesgProcess::~DmesgProcess()
{
    m_thread.quit();
    m_thread.wait();
    static_cast<void>(m_hasEnded.load());
}

void DmesgProcess::start()
{
    if (QThread::currentThread() == &m_thread)
        startSlot(); // the queued call would wait forever for its own thread
    else
        Q_EMIT startSignal();
}

void DmesgProcess::stop()
{
    if (QThread::currentThread() == &m_thread)
        stopSlot();
    else
        Q_EMIT stopSignal();
}

bool DmesgProcess::isRunning() const
{
    return m_state != QProcess::NotRunning;
}

void DmesgProcess::setCommand(const System::Command& command)
{
    m_process->setProgram(command.program);
    m_process->setArguments(command.arguments);
}

void DmesgProcess::startSlot()
{
    if (isRunning()) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << s_startSignature << "Process is already running";
        return;
    }
    LogFormatter(LogLevel::Info).log(Log::Global) << s_startSignature << "Starting dmesg process";
    m_output->clear();
    m_errors->clear();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
    m_process->setProcessEnvironment(environment);
    m_process->start();
    if (!m_process->waitForStarted())
        LogFormatter(LogLevel::Error).log(Log::Global)
            << s_startSignature << "Failed starting process";
}

void DmesgProcess::stopSlot()
{
    if (!isRunning()) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << s_stopSignature << "Process is not started";
        return;
    }
    LogFormatter(LogLevel::Info).log(Log::Global) << s_stopSignature << "Stopping dmesg process";
    m_process->terminate();
    m_process->waitForEnd(m_patience);
}

void DmesgProcess::onProcessStdoutReadyRead()
{
    Q_EMIT newLines(m_output->cut(m_process->readAllStandardOutput()));
}

void DmesgProcess::onProcessStderrReadyRead()
{
    const QStringList lines = m_errors->cut(m_process->readAllStandardError());
    for (const QString& line : lines)
        LogFormatter(LogLevel::Info).log(Log::Global).noquote().nospace()
            << "Got error from dmesg process: " << line;
}

void DmesgProcess::onProcessFinished(int exitCode)
{
    LogFormatter(LogLevel::Info).log(Log::Global).nospace()
        << "Process exited with code " << exitCode;
}

void DmesgProcess::onOverdue()
{
    LogFormatter(LogLevel::Warning).log(Log::Global)
        << s_stopSignature << "Process does not terminate, killing it";
}

} // namespace dmesg
