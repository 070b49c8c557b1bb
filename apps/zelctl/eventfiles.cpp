#include "eventfiles.h"

#include "folder.h"
#include "logfolder.h"
#include "readfile.h"
#include "words.h"
#include <zeltools/samefile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>

QString EventFiles::find(const QString& folder)
{
    const QDir dir(folder);
    for (const QString& path : {dir.filePath(QStringLiteral("zel_events.log.1")),
                                dir.filePath(QStringLiteral("zel_events.log"))}) {
        struct stat status = {};
        if (stat(QFile::encodeName(path).constData(), &status) != 0 && errno == ENOENT)
            continue;
        const QString obstacle = whyUnreadable(path);
        if (obstacle.isEmpty()) {
            paths.append(path);
            states.append(status);
        } else if (unread.isEmpty()) {
            unread = obstacle;
        }
    }
    if (!paths.isEmpty())
        return QString();
    return unread.isEmpty() ? Zelctl::tr("%1 holds no zel_events.log").arg(folder) : unread;
}

bool EventFiles::areSameAs(const EventFiles& other) const
{
    return paths == other.paths &&
           std::equal(states.begin(), states.end(), other.states.begin(), zeltools::isSameFile);
}

QString findEventFolder(const QString& given, QString& folder)
{
    folder = given;
    QString problem = problemWithFolder(given);
    if (!problem.isEmpty())
        return problem;
    QStringList found;
    for (const LogSeries& series : findLogSeries(given, false)) {
        if (series.kind == LogKind::Events)
            found.append(QFileInfo(series.path).path());
    }
    if (found.size() > 1)
        return Zelctl::tr("there are event files in %1; give one of these folders")
            .arg(found.join(Zelctl::tr(" and in ")));
    folder = found.value(0, given);
    return QString();
}
