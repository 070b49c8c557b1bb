#include "logfolder.h"

#include "readfile.h"
#include "words.h"
#include <zeltools/samefile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace
{

/// The files of a series that exist now, oldest first, not opened.
std::vector<OpenLog> listLogs(const LogSeries& series)
{
    const QFileInfo live(series.path);
    const QRegularExpression form(QStringLiteral(R"(^%1(?:\.(\d{1,6})(\.tar\.gz)?)?$)")
                                      .arg(QRegularExpression::escape(live.fileName())));
    std::vector<OpenLog> logs;
    const QDir dir(live.path());
    const QStringList names = dir.entryList({live.fileName() + QLatin1Char('*')}, QDir::Files);
    for (const QString& name : names) {
        const QRegularExpressionMatch match = form.match(name);
        if (match.hasMatch())
            logs.push_back({dir.filePath(name),
                            match.captured(1).toInt(),
                            !match.captured(2).isEmpty(),
                            -1,
                            nullptr,
                            {}});
    }
    // An archive is older than the file with the same number, which takes its place soon.
    std::sort(logs.begin(), logs.end(), [](const OpenLog& a, const OpenLog& b) {
        return std::make_pair(b.number, b.isArchive) < std::make_pair(a.number, a.isArchive);
    });
    return logs;
}

bool isInPlace(const OpenLog& log)
{
    struct stat now = {};
    return stat(QFile::encodeName(log.path).constData(), &now) == 0 &&
           zeltools::isSameFile(now, log.status);
}

/// Removes the files that cannot be opened, of which the first is in `error` with the reason.
/// Returns false at a file that is gone by now.
bool openAll(std::vector<OpenLog>& logs, QString& error)
{
    std::vector<OpenLog> opened;
    for (OpenLog& log : logs) {
        QString problem;
        log.descriptor = openFile(log.path, problem);
        if (error.isEmpty())
            error = problem;
        if (log.descriptor < 0 && errno == ENOENT)
            return false;
        if (log.descriptor < 0)
            continue;
        log.owner = std::make_shared<zeltools::FileDescriptor>(log.descriptor);
        fstat(log.descriptor, &log.status);
        opened.push_back(log);
    }
    logs = std::move(opened);
    return true;
}

/// Removes the archives that have the content of the file behind them. The machine removes that
/// file a moment after it has packed it. An archive that was not changed after the file is one of
/// the file before.
void removeCopies(std::vector<OpenLog>& logs)
{
    const auto isBefore = [](const timespec& a, const timespec& b) {
        return std::make_pair(a.tv_sec, a.tv_nsec) < std::make_pair(b.tv_sec, b.tv_nsec);
    };
    for (size_t i = 0; i + 1 < logs.size(); ++i) {
        const OpenLog& next = logs[i + 1];
        if (logs[i].isArchive && logs[i].number == next.number &&
            !isBefore(logs[i].status.st_mtim, next.status.st_mtim))
            logs.erase(logs.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

} // namespace

std::vector<LogSeries> findLogSeries(const QString& folder, bool areAllKinds)
{
    std::vector<LogSeries> found;
    for (const char* place : {".", "debug", "events", "logs/debug", "logs/events"}) {
        const QDir dir(QDir(folder).filePath(QString::fromLatin1(place)));
        std::vector<LogSeries> present;
        std::vector<LogSeries> all;
        for (const LogKindProperties& kind : logKinds()) {
            all.push_back({kind.kind, QDir::cleanPath(dir.filePath(kind.file))});
            if (!listLogs(all.back()).empty())
                present.push_back(all.back());
        }
        const auto& chosen = areAllKinds && !present.empty() ? all : present;
        found.insert(found.end(), chosen.begin(), chosen.end());
    }
    return found;
}

QString openLogs(const LogSeries& series, std::vector<OpenLog>& logs)
{
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        QString error;
        logs = listLogs(series);
        // A file that is gone, or has another name by now, has been rotated.
        if (openAll(logs, error) && std::all_of(logs.begin(), logs.end(), isInPlace)) {
            removeCopies(logs);
            return error;
        }
    }
    logs.clear();
    return Zelctl::tr("%1 rotates faster than it can be read").arg(series.path);
}
