#include "quick/crashsummary_p.h"

#include "quick/crashreportsmodel.h"
#include "quick/displaytext_p.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace zeltools::quick
{

namespace
{

/// Returns an empty content, and the reason in `fault`, if the file cannot be read.
QByteArray contentOf(const QString& path, QString& fault)
{
    QFile file(path);
    if (!QFileInfo(path).isFile()) // opening a pipe would wait for a process at its other end
        fault = CrashReportsModel::tr("The file is no longer there.");
    else if (!file.open(QIODevice::ReadOnly))
        fault = file.errorString();
    else
        return file.read(CrashReport::largest_B + 1);
    return {};
}

} // namespace

QString crashReportText(const QString& path)
{
    QString fault;
    QByteArray content = contentOf(path, fault);
    const auto end = content.indexOf('\0'); // the rest of a file whose writer was interrupted
    content.truncate(end < 0 ? content.size() : end);
    return fault.isEmpty() ? DisplayText::lines(QString::fromUtf8(content), int(content.size()))
                           : fault;
}

void CrashSummary::read()
{
    time = modified;
    const QByteArray content = contentOf(path, fault);
    QString error;
    const std::optional<CrashReport> report = CrashReport::parse(content, error);
    if (!report) {
        if (fault.isEmpty())
            fault = CrashReportsModel::tr("The file is damaged: %1").arg(error);
        return;
    }
    if (report->time_ms != 0)
        time = QDateTime::fromMSecsSinceEpoch(report->time_ms);
    QStringList parts{report->signalName, report->reason};
    parts.removeAll({});
    reason = parts.join(QLatin1String(": "));
    thread = report->thread;
    isComplete = report->isComplete;
}

CrashSummaryReader::CrashSummaryReader(QVector<CrashSummary> summaries)
    : m_summaries(std::move(summaries))
{
}

CrashSummaryReader::~CrashSummaryReader() = default;

const QVector<CrashSummary>& CrashSummaryReader::summaries() const
{
    static_cast<void>(m_isDone.load());
    return m_summaries;
}

void CrashSummaryReader::run()
{
    for (CrashSummary& summary : m_summaries)
        summary.read();
    m_isDone = true;
    Q_EMIT finished();
}

} // namespace zeltools::quick
