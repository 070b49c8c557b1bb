#include "dmesg/dmesgprocess.h"

#include "dmesg/kmsgfollower_p.h"
#include "dmesg/linecutter_p.h"
#include "dmesg/replayfilter_p.h"
#include "dmesg/restarter_p.h"
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

DmesgProcess::DmesgProcess(std::chrono::milliseconds patience,
                           std::chrono::milliseconds firstRestart)
    : m_patience(patience)
    , m_process(new zeltools::TimedProcess(endWithParent, this))
    , m_output(std::make_unique<LineCutter>())
    , m_errors(std::make_unique<LineCutter>())
    , m_follower(new KmsgFollower(this))
    , m_replay(new ReplayFilter(this))
    , m_restarter(new Restarter(firstRestart, this))
{
    connect(m_process, &QProcess::readyReadStandardOutput, this,
            &DmesgProcess::onProcessStdoutReadyRead);
    connect(m_process, &QProcess::readyReadStandardError, this,
            &DmesgProcess::onProcessStderrReadyRead);
    connect(m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int exitCode, QProcess::ExitStatus status) {
                onProcessFinished(exitCode);
                onEnded((status == QProcess::CrashExit ? QStringLiteral("ended by signal %1")
                                                       : QStringLiteral("exit code %1"))
                            .arg(exitCode));
            });
    connect(m_follower, &KmsgFollower::newLines, this, &DmesgProcess::newLines);
    connect(m_follower, &KmsgFollower::ended, this, &DmesgProcess::onEnded);
    connect(m_replay, &ReplayFilter::newLines, this, &DmesgProcess::newLines);
    connect(m_restarter, &Restarter::due, this, &DmesgProcess::relaunch);
    connect(m_process, &zeltools::TimedProcess::overdue, this, &DmesgProcess::onOverdue);
    connect(m_process, &QProcess::stateChanged, this, [this](QProcess::ProcessState state) {
        m_state = state;
        Q_EMIT runningChanged();
    });
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
    return m_state != QProcess::NotRunning || m_follower->isRunning() || m_restarter->isActive();
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
    m_follower->setFile(m_kernelDevice);
    m_replay->reset(m_isRestarting);
    if (m_isRestarting)
        m_restarter->begin();
    const QString obstacle = launch();
    Q_EMIT runningChanged();
    if (obstacle.isEmpty())
        return;
    LogFormatter(LogLevel::Error).log(Log::Global).noquote()
        << s_startSignature
        << (m_kernelDevice.isEmpty() ? QStringLiteral("Failed starting process") : obstacle);
    m_restarter->onEnd(obstacle);
    Q_EMIT runningChanged();
}

/// Starts the process or opens the device. Returns an empty text or the reason why that failed.
QString DmesgProcess::launch()
{
    m_restarter->onStart();
    if (!m_kernelDevice.isEmpty())
        return m_follower->start();
    m_output->clear();
    m_errors->clear();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TERM"), QStringLiteral("dumb"));
    m_process->setProcessEnvironment(environment);
    m_process->start();
    return m_process->waitForStarted() ? QString() : m_process->errorString();
}

void DmesgProcess::relaunch()
{
    m_replay->expectReplay();
    const QString obstacle = launch();
    if (!obstacle.isEmpty())
        m_restarter->onEnd(obstacle);
}

void DmesgProcess::stopSlot()
{
    if (!isRunning()) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << s_stopSignature << "Process is not started";
        return;
    }
    LogFormatter(LogLevel::Info).log(Log::Global) << s_stopSignature << "Stopping dmesg process";
    m_restarter->stop();
    m_follower->stop();
    Q_EMIT runningChanged();
    if (m_process->state() == QProcess::NotRunning)
        return;
    m_process->terminate();
    m_process->waitForEnd(m_patience);
}

void DmesgProcess::onProcessStdoutReadyRead()
{
    m_replay->take(m_output->cut(m_process->readAllStandardOutput()));
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

void DmesgProcess::onEnded(const QString& reason)
{
    m_restarter->onEnd(reason); // first, since a receiver of the lines may stop the capture
    m_replay->end();
    Q_EMIT runningChanged();
}

void DmesgProcess::onOverdue()
{
    LogFormatter(LogLevel::Warning).log(Log::Global)
        << s_stopSignature << "Process does not terminate, killing it";
}

} // namespace dmesg
