#include "eventfollow.h"

#include "words.h"

#include <QDir>

namespace
{

LogSelection logSelection(const EventRequest& request)
{
    LogSelection selection;
    for (const QString& kind : request.kinds)
        selection.eventFields.push_back(' ' + kind.toStdString());
    selection.from = readLogTime(request.days.startDate, false).value_or(selection.from);
    selection.to = readLogTime(request.days.stopDate, true).value_or(selection.to);
    return selection;
}

} // namespace

EventFollow::EventFollow(const QString& folder, const EventRequest& request)
    : m_folder(folder)
    , m_request(request)
    , m_selection(logSelection(request))
{
}

// The page is read between two looks at the end of the live file. If an event came meanwhile, it
// is not known whether the page has it.
QString EventFollow::readPage(EventHistory::Page& page)
{
    const LogSeries events{LogKind::Events,
                           QDir(m_folder).filePath(QStringLiteral("zel_events.log"))};
    constexpr int attempts = 50;
    for (int i = 0; i < attempts; ++i) {
        m_reader = std::make_unique<LogReader>(events, m_selection, m_ledger);
        m_reader->source().openAtEnd();
        QString obstacle = readEventPage(m_folder, m_request, page);
        if (!obstacle.isEmpty())
            return obstacle;
        if (!page.error.isEmpty() || m_reader->source().isAtEnd()) {
            m_reader->follow();
            return QString();
        }
    }
    return Zelctl::tr("the files in %1 grow faster than they can be read").arg(m_folder);
}

QStringList EventFollow::takeNewLines()
{
    QStringList lines;
    while (m_reader->next()) {
        const std::string_view text = m_reader->entry().text;
        lines.append(QString::fromUtf8(text.data(), static_cast<int>(text.size())));
    }
    return lines;
}
