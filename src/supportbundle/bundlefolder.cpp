#include "supportbundle/bundlefolder_p.h"

#include "samefile.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include <dirent.h>
#include <fcntl.h>

namespace zeltools
{

namespace
{

const QLatin1String s_isReplaced("it was replaced while the bundle was made");

QString listNames(const QByteArray& path, const QByteArray& prefix, std::vector<BundleFile>& files)
{
    const auto close = [](DIR* open) { closedir(open); };
    const std::unique_ptr<DIR, decltype(close)> folder(opendir(path.constData()), close);
    if (!folder)
        return qt_error_string(errno);
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (entry == nullptr)
            break;
        BundleFile file;
        file.name = prefix + entry->d_name;
        file.path = path + '/' + entry->d_name;
        if (lstat(file.path.constData(), &file.status) != 0)
            continue; // it has just been deleted
        if (!S_ISREG(file.status.st_mode) && !S_ISDIR(file.status.st_mode))
            file.fault = QStringLiteral("it is not a plain file");
        if (!S_ISDIR(file.status.st_mode))
            files.push_back(std::move(file));
    }
    const QString fault = errno != 0 ? qt_error_string(errno) : QString();
    std::sort(files.begin(), files.end(),
              [](const BundleFile& a, const BundleFile& b) { return a.name < b.name; });
    return fault;
}

/// Whether all files have the names that they had when the folder was listed.
bool areInPlace(const std::vector<BundleFile>& files)
{
    return std::all_of(files.begin(), files.end(), [](const BundleFile& file) {
        struct stat now = {};
        return lstat(file.path.constData(), &now) == 0 && isSameFile(now, file.status);
    });
}

} // namespace

QString BundleFile::open()
{
    if (descriptor || !fault.isEmpty())
        return fault;
    auto opened = std::make_shared<const FileDescriptor>(
        ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | O_NOFOLLOW));
    struct stat now = {};
    if (*opened < 0 || fstat(*opened, &now) != 0)
        fault = qt_error_string(errno);
    else if (!isSameFile(now, status))
        fault = s_isReplaced;
    else
        descriptor = std::move(opened);
    return fault;
}

QString listFolder(const QByteArray& path, const QByteArray& prefix, size_t mostOpen,
                   std::vector<BundleFile>& files)
{
    constexpr int attempts = 20;
    std::vector<BundleFile> found;
    QString fault;
    for (int i = 0; i < attempts; ++i) {
        found.clear();
        fault = listNames(path, prefix, found);
        for (size_t at = 0; at < std::min(found.size(), mostOpen); ++at)
            found[at].open();
        if (!fault.isEmpty() || areInPlace(found))
            break;
    }
    std::move(found.begin(), found.end(), std::back_inserter(files));
    return fault;
}

} // namespace zeltools
