#include "logarchive.h"

#include "words.h"

LogArchive::LogArchive(int descriptor)
{
    m_tar.setStandardInputFile(QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    m_tar.setStandardErrorFile(QProcess::nullDevice());
    m_tar.start(QStringLiteral("tar"), {QStringLiteral("-xzOf"), QStringLiteral("-")},
                QIODevice::ReadOnly);
}

LogArchive::~LogArchive()
{
    m_tar.kill();
    m_tar.waitForFinished();
}

qint64 LogArchive::read(char* to, qint64 size)
{
    while (m_tar.bytesAvailable() == 0) {
        if (m_tar.waitForReadyRead(-1))
            continue;
        m_tar.waitForFinished(-1);
        if (m_tar.bytesAvailable() > 0)
            break;
        if (m_tar.error() == QProcess::FailedToStart)
            m_error = Zelctl::tr("tar cannot be started");
        else if (m_tar.exitStatus() != QProcess::NormalExit || m_tar.exitCode() != 0)
            m_error = Zelctl::tr("tar finds it damaged");
        return 0;
    }
    return m_tar.read(to, size);
}
