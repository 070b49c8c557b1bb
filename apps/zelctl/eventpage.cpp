#include "eventpage.h"

#include "eventfiles.h"
#include "words.h"

#include <algorithm>

namespace
{

void keepFirst(QString& error, const QString& another)
{
    if (error.isEmpty())
        error = another;
}

/// The numbers of the lines of any of the kinds, sorted.
QVector<int> matches(const QString& path, const EventRequest& request, QString& error)
{
    QVector<int> numbers;
    EventSelection selection = request.days;
    const QStringList kinds = request.kinds.isEmpty() ? QStringList(QString()) : request.kinds;
    for (const QString& kind : kinds) {
        selection.kind = kind;
        QString problem;
        numbers += EventHistory::matches(path, selection, problem);
        keepFirst(error, problem);
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

EventHistory::Page readPage(const QStringList& paths, const EventRequest& request)
{
    EventHistory::Page page = {};
    QVector<QVector<int>> found;
    qint64 total = 0;
    for (const QString& path : paths) {
        found.append(matches(path, request, page.error));
        total += found.last().size();
    }
    page.pagesCount = static_cast<int>((total + request.perPage - 1) / request.perPage);
    qint64 end = total - qint64(request.page) * request.perPage; // counted in the file at hand
    qint64 begin = end - request.perPage;
    QString text;
    for (int i = 0; i < paths.size(); ++i) {
        const auto size = static_cast<qint64>(found[i].size());
        const auto from = static_cast<int>(std::clamp<qint64>(begin, 0, size));
        const auto to = static_cast<int>(std::clamp<qint64>(end, from, size));
        QString problem;
        EventHistory::appendLines(text, paths[i], found[i], from, to - from, problem);
        keepFirst(page.error, problem);
        begin -= size;
        end -= size;
    }
    page.lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return page;
}

} // namespace

QString readEventPage(const QString& folder, const EventRequest& request, EventHistory::Page& page)
{
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        EventFiles files;
        QString obstacle = files.find(folder);
        if (!obstacle.isEmpty())
            return obstacle;
        page = readPage(files.paths, request);
        keepFirst(page.error, files.unread);
        EventFiles now;
        if (now.find(folder).isEmpty() && now.areSameAs(files))
            return QString();
    }
    return Zelctl::tr("the files in %1 rotate faster than they can be read").arg(folder);
}
