#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QThread>

#include <sys/mount.h>

/// A session daemon of LTTng that only this process and its children see. Construct it in a mount
/// namespace of its own, since it mounts empty folders over those of the daemons of the machine.
/// Without LTTng, startSession() returns false.
class TracingDaemon
{
public:
    TracingDaemon()
    {
        for (const char* folder : {"/run", "/dev/shm"}) {
            if (mount("none", folder, "tmpfs", 0, nullptr) != 0)
                return;
        }
        // The daemon ends with this process, also when that is killed.
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(QStringLiteral("setpriv"),
                        {QStringLiteral("--pdeathsig"), QStringLiteral("TERM"),
                         QStringLiteral("lttng-sessiond"), QStringLiteral("--no-kernel")});
    }
    ~TracingDaemon()
    {
        m_process.terminate();
        m_process.waitForFinished(s_timeout_ms);
    }
    Q_DISABLE_COPY(TracingDaemon)

    /// Records the event of stallevent.tp into the folder.
    bool startSession(const QString& folder)
    {
        while (m_process.state() == QProcess::Running && !isReady())
            QThread::msleep(100);
        return lttng({"create", "stall", "--shm-path=/dev/shm/stall", "--output=" + folder}) &&
               lttng({"enable-event", "--userspace", "stall:line"}) && lttng({"start"});
    }
    /// Returns the number of lost events.
    double endSession()
    {
        lttng({"stop"});
        QByteArray text;
        lttng({"--mi", "xml", "list", "stall"}, &text);
        lttng({"destroy"});
        const QRegularExpression count("<discarded_events>(\\d+)<");
        return count.match(text).captured(1).toDouble();
    }

private:
    static bool lttng(const QStringList& arguments, QByteArray* output = nullptr)
    {
        QProcess process;
        process.start("lttng", QStringList("--no-sessiond") + arguments);
        const bool hasEnded = process.waitForFinished(s_timeout_ms);
        if (output)
            *output = process.readAllStandardOutput();
        return hasEnded && process.exitCode() == 0;
    }
    bool isReady()
    {
        m_process.waitForFinished(1); // notices an early end
        return lttng({"list"});
    }

    static constexpr int s_timeout_ms = 60000;
    QProcess m_process;
};
