#include "logging/eventpages_p.h"

#include "filedescriptor.h"
#include "logging/log.h"
#include "logging/logfileset_p.h"
#include "logging/logformatter.h"

#include <QFile>

#include <memory>
#include <optional>
#include <utility>

#include <fcntl.h>

namespace
{

void reportReadError(const QString& error)
{
    if (!error.isEmpty())
        LogFormatter(LogLevel::Error).log(Log::Global).noquote() << "Event history:" << error;
}

// Keeps the files of these paths, so that they can be read after they were renamed or deleted. It
// reads nothing, and does not wait for the other end of a FIFO.
class HeldFiles
{
public:
    explicit HeldFiles(const QStringList& paths)
        : m_paths(paths)
    {
        for (const QString& path : paths) {
            const auto file = std::make_shared<zeltools::FileDescriptor>(
                open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC));
            m_files.append(file);
            m_names.append(*file < 0 ? path : QStringLiteral("/proc/self/fd/%1").arg(int(*file)));
        }
    }

    // The paths by which the files can be opened.
    const QStringList& names() const { return m_names; }
    // The text with the paths that were given in place of these.
    QString withPaths(QString text) const
    {
        for (int i = 0; i < m_paths.size(); ++i)
            text.replace(m_names[i] + QLatin1Char(':'), m_paths[i] + QLatin1Char(':'));
        return text;
    }

private:
    const QStringList m_paths;
    QStringList m_names;
    QVector<std::shared_ptr<zeltools::FileDescriptor>> m_files;
};

} // namespace

EventPages::EventPages(LogFileSet& files)
    : m_files(files)
{
}

QStringList EventPages::lines() const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    return m_text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool EventPages::publish(const EventSelection& selection, int pageIndex, int eventsPerPage)
{
    const int pages = write(m_text, selection, pageIndex, eventsPerPage);
    return std::exchange(m_pagesCount, pages) != pages;
}

EventHistory::Page EventPages::page(const EventSelection& selection, int pageIndex,
                                    int eventsPerPage) const
{
    std::optional<HeldFiles> files;
    {
        const QMutexLocker locker(m_files.mutex(LogManager::Events));
        files.emplace(filesOldestFirst());
    }
    EventHistory::Page page =
        EventHistory::page(files->names(), selection, pageIndex, eventsPerPage);
    page.error = files->withPaths(page.error);
    return page;
}

QStringList EventPages::filesOldestFirst() const
{
    const RotatingLogFile* events = m_files.file(LogManager::Events);
    return events != nullptr ? events->filenames(RotatingLogFile::OldestFirst) : QStringList();
}

int EventPages::write(QString& text, const EventSelection& selection, int pageIndex,
                      int eventsPerPage) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    const EventHistory::Page page =
        EventHistory::page(filesOldestFirst(), selection, pageIndex, eventsPerPage);
    reportReadError(page.error);
    text = page.lines.join(QLatin1Char('\n'));
    return page.pagesCount;
}

QVector<int> EventPages::matches(const QString& fileName, const EventSelection& selection) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    QString error;
    QVector<int> numbers = EventHistory::matches(fileName, selection, error);
    reportReadError(error);
    return numbers;
}

void EventPages::appendLines(QString& text, const QString& fileName,
                             const QVector<int>& lineIndexes, int first, int count) const
{
    const QMutexLocker locker(m_files.mutex(LogManager::Events));
    QString error;
    EventHistory::appendLines(text, fileName, lineIndexes, first, count, error);
    reportReadError(error);
}
