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

/// Returns an empty content, and sets the fault, if the file cannot be read.
QByteArray contentOf(CrashSummary& summary)
{
    QFile file(summary.path);
    if (!QFileInfo(summary.path).isFile()) { // opening a pipe would wait for a process at its end
        summary.fault = CrashSummary::Gone;
    } else if (!file.open(QIODevice::ReadOnly)) {
        summary.fault = CrashSummary::Unreadable;
        summary.detail = file.errorString();
    } else {
        return file.read(CrashReport::largest_B + 1);
    }
    return {};
}

} // namespace

QString crashReportText(const QString& path)
{
    CrashSummary summary;
    summary.path = path;
    QByteArray content = contentOf(summary);
    const auto end = content.indexOf('\0'); // the rest of a file whose writer was interrupted
    content.truncate(end < 0 ? content.size() : end);
    return summary.fault == CrashSummary::None
               ? DisplayText::lines(QString::fromUtf8(content), int(content.size()))
               : summary.faultText();
}

void CrashSummary::read()
{
    time = modified;
    const QByteArray content = contentOf(*this);
    if (fault != None)
        return;
    const std::optional<CrashReport> report = CrashReport::parse(content, detail);
    if (!report) {
        fault = Damaged;
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

QString CrashSummary::faultText() const
{
    if (fault == Gone)
        return CrashReportsModel::tr("The file is no longer there.");
    return fault == Damaged ? CrashReportsModel::tr("The file is damaged: %1").arg(detail) : detail;
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
