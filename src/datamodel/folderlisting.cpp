#include "datamodel/folderlisting_p.h"

#include "ascii.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tools::datamodel
{

namespace
{

// Returns a null string if no text is encoded as this name.
QString decoded(const char* name)
{
    if (zeltools::isAscii(name, std::strlen(name)))
        return QString::fromLatin1(name);
    const QString text = QFile::decodeName(name);
    return QFile::encodeName(text) == name ? text : QString();
}

template <typename Number>
int compareNumbers(Number left, Number right)
{
    return int(left > right) - int(left < right);
}

int compareBy(FolderListModel::SortField field, const FolderEntry& left, const FolderEntry& right)
{
    switch (field) {
    case FolderListModel::SortByTime:
        return compareNumbers(left.modified_ms, right.modified_ms);
    case FolderListModel::SortBySize:
        return compareNumbers(left.size_B, right.size_B);
    case FolderListModel::SortBySuffix:
        return left.suffix().compare(right.suffix(), Qt::CaseInsensitive);
    case FolderListModel::SortByName:
        break;
    }
    return 0;
}

} // namespace

FolderListing::FolderListing(int serial, FolderQuery query, FolderRows before)
    : m_serial(serial)
    , m_query(std::move(query))
    , m_before(std::move(before))
{
}

void FolderListing::run()
{
    list();
    const QMutexLocker locker(&m_finishMutex);
    Q_EMIT finished(m_serial);
}

void FolderListing::abandon()
{
    cancel();
    const QMutexLocker locker(&m_finishMutex);
    disconnect();
}

void FolderListing::list()
{
    QElapsedTimer timer;
    timer.start();
    compileFilters();
    read();
    if (m_error != 0)
        m_rows.clear();
    std::sort(m_rows.begin(), m_rows.end(),
              [this](const auto& left, const auto& right) { return isBefore(*left, *right); });
    if (m_isCanceled)
        return;
    m_changes = findRowChanges(m_before, m_rows);
    chooseFilesToFollow();
    m_duration_ms = static_cast<int>(timer.elapsed());
}

// Leaves out invalid patterns, for which Qt would print a warning with each name.
void FolderListing::compileFilters()
{
    for (const QString& filter : m_query.nameFilters) {
        const QRegularExpression pattern(QRegularExpression::wildcardToRegularExpression(filter),
                                         QRegularExpression::CaseInsensitiveOption);
        if (pattern.isValid())
            m_filters.append(pattern);
    }
}

// QDir makes several system calls for each file, which take half of the time in a folder of 10,000
// files.
void FolderListing::read()
{
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(
        opendir(QFile::encodeName(m_query.folder).constData()), closedir);
    if (!folder) {
        m_error = errno;
        return;
    }
    struct stat state = {};
    if (fstat(dirfd(folder.get()), &state) == 0)
        m_folderId = {state.st_dev, state.st_ino};
    const auto next = [&folder] {
        errno = 0;
        return readdir(folder.get()); // No other thread uses this stream.
    };
    while (const dirent* const entry = next()) {
        if (m_isCanceled)
            return;
        if (entry->d_name[0] != '.')
            addEntry(dirfd(folder.get()), entry->d_name, entry->d_type);
    }
    m_error = errno; // 0 at the end of the folder, but not if the disk was removed
}

void FolderListing::addEntry(int folder, const char* name, unsigned char type)
{
    const QString text = decoded(name);
    if (text.isNull()) {
        ++m_undecodableNames;
        return;
    }
    const bool mayBeFolder = type == DT_DIR || type == DT_LNK || type == DT_UNKNOWN;
    const bool isWantedFile = m_query.showFiles && type != DT_DIR && matches(text);
    if (!isWantedFile && !(m_query.showFolders && mayBeFolder))
        return;
    struct stat state = {};
    if (fstatat(folder, name, &state, 0) != 0 &&
        fstatat(folder, name, &state, AT_SYMLINK_NOFOLLOW) != 0)
        return; // It was removed in the meantime.
    const bool isFolder = S_ISDIR(state.st_mode);
    if (!(isFolder ? m_query.showFolders : isWantedFile))
        return;
    if (m_names.contains(text))
        return; // A file that is replaced during the loop can come twice; names must be unique.
    m_names.insert(text);
    const bool hasSize = S_ISREG(state.st_mode);
    m_rows.append(FolderRows::value_type(
        new FolderEntry(text, isFolder, hasSize ? state.st_size : 0,
                        qint64(state.st_mtim.tv_sec) * 1000 + state.st_mtim.tv_nsec / 1000000)));
}

bool FolderListing::matches(const QString& name) const
{
    return m_query.nameFilters.isEmpty() ||
           std::any_of(m_filters.cbegin(), m_filters.cend(),
                       [&name](const auto& filter) { return filter.match(name).hasMatch(); });
}

bool FolderListing::isBefore(const FolderEntry& left, const FolderEntry& right) const
{
    if (left.isFolder != right.isFolder)
        return left.isFolder;
    int order = compareBy(m_query.sortField, left, right);
    if (order == 0)
        order = left.name.compare(right.name, Qt::CaseInsensitive);
    if (order == 0)
        order = left.name.compare(right.name);
    return m_query.sortReversed ? order > 0 : order < 0;
}

void FolderListing::chooseFilesToFollow()
{
    const int folders = static_cast<int>(std::count_if(
        m_rows.cbegin(), m_rows.cend(), [](const auto& row) { return row->isFolder; }));
    if (m_rows.size() - folders > maximumFilesToFollow)
        return;
    for (const auto& row : qAsConst(m_rows)) {
        const QString path = pathPrefix(m_query.folder) + row->name;
        if (!row->isFolder && access(QFile::encodeName(path).constData(), R_OK) == 0)
            m_filesToFollow.append(path);
    }
}

} // namespace tools::datamodel
