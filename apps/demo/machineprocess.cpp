#include "machineprocess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace
{

constexpr int s_timeout_ms = 20000;

} // namespace

MachineProcess::MachineProcess(const QString& mode, const QString& folder,
                               const QString& acknowledgementsFolder)
    : m_folder(folder)
    , m_acknowledgements(acknowledgementsFolder + QLatin1Char('/') + mode)
{
    m_process.setStandardOutputFile(m_acknowledgements);
    m_process.setProgram(QCoreApplication::applicationFilePath());
    // The mode is the one that is shown, whatever the environment says about the demo itself.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LOG_DELIVERY"));
    environment.remove(QStringLiteral("LOG_FROM_MAIN_THREAD"));
    m_process.setProcessEnvironment(environment);
    m_process.setArguments({QStringLiteral("--machine"), mode, QStringLiteral("--dir"), folder});
}

void MachineProcess::start()
{
    m_process.start();
    m_processId = m_process.processId();
}

bool MachineProcess::waitForAllThreads() const
{
    const QDeadlineTimer deadline(s_timeout_ms);
    const auto isAtWork = [](const LineAcknowledgement& thread) { return thread.count > 0; };
    for (; !deadline.hasExpired(); QThread::msleep(1)) {
        const Acknowledgements threads = acknowledgements();
        if (std::all_of(threads.begin(), threads.end(), isAtWork))
            return true;
    }
    return false;
}

void MachineProcess::kill()
{
    const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
    m_killedAt_ns = now.count();
    m_process.kill();
}

bool MachineProcess::waitForEnd()
{
    return m_process.waitForFinished(s_timeout_ms);
}

MachineProcess::Acknowledgements MachineProcess::acknowledgements() const
{
    Acknowledgements threads;
    QFile file(m_acknowledgements);
    if (file.open(QIODevice::ReadOnly))
        file.read(reinterpret_cast<char*>(threads.data()), sizeof threads);
    return threads;
}

double MachineProcess::longestWait_ms() const
{
    qint64 longest_ns = 0;
    for (const LineAcknowledgement& thread : acknowledgements()) {
        longest_ns = qMax(longest_ns, thread.longestWait_ns);
        if (thread.calledAt_ns > 0)
            longest_ns = qMax(longest_ns, m_killedAt_ns - thread.calledAt_ns);
    }
    return double(longest_ns) / 1e6;
}

MachineProcess::LineCounts MachineProcess::linesInFile() const
{
    LineCounts counts;
    QFile file(m_folder + QLatin1String("/share/zel/logs/debug/zel_logs.log"));
    if (!file.open(QIODevice::ReadOnly))
        return counts;
    const QRegularExpression line(QStringLiteral("at work, line (\\d+) (\\d+)\n"));
    auto match = line.globalMatch(QString::fromUtf8(file.readAll()));
    while (match.hasNext()) {
        const QRegularExpressionMatch one = match.next();
        ++counts[{one.captured(1).toInt(), one.captured(2).toInt()}];
    }
    return counts;
}
