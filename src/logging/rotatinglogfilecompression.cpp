// Compressed predecessors of a RotatingLogFile.

#include "logging/rotatinglogfile.h"

#include "logging/log.h"
#include "logging/logformatter.h"
#include "windowstools.h"

#include <QFileInfo>

namespace
{

QString quotedForShell(QString text)
{
    return text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
}

} // namespace

void RotatingLogFile::compressFile(const QString& source, RotatingLogFile* target)
{
    const QFileInfo info(source);
    const QString archive = target->filename(0) + QLatin1String(".1.tar.gz");
    const QString command = QStringLiteral("tar -C '%1' -zcvf '%2' '%3'")
                                .arg(quotedForShell(info.path()), quotedForShell(archive),
                                     quotedForShell(info.fileName()));
    if (WindowsTools::runCommands({command})) {
        Q_EMIT target->workCompleted(source);
        return;
    }
    QFile::remove(archive); // the half that tar leaves on a full disk would pass for a predecessor
    Q_EMIT target->workCompleted(QString());
    LogFormatter(LogLevel::Error).log(Log::Global)
        << "static void RotatingLogFile::compressFile(const QString&, RotatingLogFile*)"
        << "Failed to compress " << source;
}

void RotatingLogFile::onWorkCompleted(const QString& name)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_isCompressing = false;
        m_hasCompressionFailed = name.isEmpty();
    }
    if (!name.isEmpty() && !deleteFileByName(name)) {
        LogFormatter(LogLevel::Error).log(Log::Global)
            << "void RotatingLogFile::onWorkCompleted(const QString&)"
            << "Failed to delete file after compression" << name;
    }
}
