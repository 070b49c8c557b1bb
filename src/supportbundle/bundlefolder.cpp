#include "supportbundle/bundlefolder_p.h"

#include "samefile.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>

namespace zeltools
{

namespace
{

const QLatin1String s_isReplaced("it was replaced while the bundle was made");

/// Returns nothing for a file that has just been deleted and for a folder.
std::optional<BundleFile> toFile(const QByteArray& prefix, const QByteArray& path,
                                 const dirent& entry)
{
    BundleFile file;
    file.name = prefix + entry.d_name;
    file.path = path + '/' + entry.d_name;
    const bool isKnown = lstat(file.path.constData(), &file.status) == 0;
    if (!isKnown && errno != ENOENT && entry.d_type != DT_DIR)
        file.fault = qt_error_string(errno);
    else if (!isKnown || S_ISDIR(file.status.st_mode))
        return std::nullopt;
    else if (!S_ISREG(file.status.st_mode))
        file.fault = QStringLiteral("it is not a plain file");
    return file;
}

QString listNames(const BundleFolder& source, std::vector<BundleFile>& files)
{
    const QByteArray path = QFile::encodeName(source.path);
    const auto close = [](DIR* open) { closedir(open); };
    const std::unique_ptr<DIR, decltype(close)> folder(opendir(path.constData()), close);
    if (!folder)
        return qt_error_string(errno);
    while (true) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (entry == nullptr)
            break;
        if (source.hasOnlyLogs && !isLogName(QFile::decodeName(entry->d_name)))
            continue;
        if (std::optional<BundleFile> file = toFile(source.prefix, path, *entry))
            files.push_back(std::move(*file));
    }
    QString fault = errno != 0 ? qt_error_string(errno) : QString();
    std::sort(files.begin(), files.end(),
              [](const BundleFile& a, const BundleFile& b) { return a.name < b.name; });
    return fault;
}

/// Whether all files have the names that they had when the folder was listed. A file whose status
/// is not known then has the mode 0.
bool areInPlace(const std::vector<BundleFile>& files)
{
    return std::all_of(files.begin(), files.end(), [](const BundleFile& file) {
        struct stat now = {};
        return file.status.st_mode == 0 ||
               (lstat(file.path.constData(), &now) == 0 && isSameFile(now, file.status));
    });
}

/// Opens up to `most` files and returns their number. If the descriptors run out, it closes all
/// again, since the host needs some too.
size_t openAhead(std::vector<BundleFile>& files, size_t most)
{
    most = std::min(files.size(), most);
    for (size_t i = 0; i < most; ++i) {
        if (files[i].open().isEmpty() || !files[i].fault.isEmpty())
            continue;
        for (BundleFile& file : files)
            file.descriptor.reset();
        return 0;
    }
    return most;
}

} // namespace

QString BundleFile::open()
{
    if (descriptor || !fault.isEmpty())
        return fault;
    auto opened = std::make_shared<const FileDescriptor>(
        ::open(path.constData(),
               O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK | (isFollowed ? 0 : O_NOFOLLOW)));
    struct stat now = {};
    if (*opened < 0 && (errno == EMFILE || errno == ENFILE))
        return qt_error_string(errno);
    if (*opened < 0 || fstat(*opened, &now) != 0)
        fault = qt_error_string(errno);
    else if (!isSameFile(now, status))
        fault = s_isReplaced;
    else
        descriptor = std::move(opened);
    return fault;
}

bool isLogName(const QString& name)
{
    static const QRegularExpression form(
        QStringLiteral("^(zel_[a-z0-9_]+|m4_ab|dmesg)\\.log(\\.[0-9]{1,6}(\\.tar\\.gz)?)?$"));
    return form.match(name).hasMatch();
}

size_t mostOpenFiles()
{
    constexpr rlim_t most = 200;
    rlimit limit = {};
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? std::min(most, limit.rlim_cur / 4) : most;
}

QString listFolder(const BundleFolder& folder, size_t& leftToOpen, std::vector<BundleFile>& files)
{
    constexpr int attempts = 20;
    std::vector<BundleFile> found;
    QString fault;
    size_t opened = 0;
    for (int i = 0; i < attempts; ++i) {
        found.clear();
        fault = listNames(folder, found);
        opened = openAhead(found, leftToOpen);
        if (!fault.isEmpty() || areInPlace(found))
            break;
    }
    leftToOpen -= opened;
    std::move(found.begin(), found.end(), std::back_inserter(files));
    return fault;
}

} // namespace zeltools
