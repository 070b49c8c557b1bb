#include "eventpage.h"

#include "readfile.h"
#include <zeltools/samefile.h>

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

namespace
{

struct EventFiles
{
    QStringList paths; ///< oldest first
    QVector<struct stat> states;

    bool areSameAs(const EventFiles& other) const
    {
        return paths == other.paths &&
               std::equal(states.begin(), states.end(), other.states.begin(), zeltools::isSameFile);
    }
};

/// Returns the reason if the files cannot be read, or an empty text. A file that cannot be opened
/// is found before anything is printed.
QString findFiles(const QString& folder, EventFiles& files)
{
    const QDir dir(folder);
    for (const QString& path : {dir.filePath(QStringLiteral("zel_events.log.1")),
                                dir.filePath(QStringLiteral("zel_events.log"))}) {
        struct stat status = {};
        if (stat(QFile::encodeName(path).constData(), &status) != 0 && errno == ENOENT)
            continue;
        QString obstacle = whyUnreadable(path);
        if (!obstacle.isEmpty())
            return obstacle;
        files.paths.append(path);
        files.states.append(status);
    }
    if (!files.paths.isEmpty())
        return QString();
    return dir.exists() ? folder + QStringLiteral(" holds no zel_events.log")
                        : QStringLiteral("no folder ") + folder;
}

} // namespace

QString readEventPage(const QString& folder, const EventRequest& request, EventHistory::Page& page)
{
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        EventFiles files;
        QString obstacle = findFiles(folder, files);
        if (!obstacle.isEmpty())
            return obstacle;
        page = EventHistory::page(files.paths, request.selection, request.page, request.perPage);
        EventFiles now;
        if (findFiles(folder, now).isEmpty() && now.areSameAs(files))
            return QString();
    }
    return QStringLiteral("the files in %1 rotate faster than they can be read").arg(folder);
}
