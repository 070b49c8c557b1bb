#include "supportbundle/bundlejob_p.h"

#include "samefile.h"
#include "secretmask.h"
#include "supportbundle/bundlename_p.h"
#include "supportbundle/cryptpipe_p.h"
#include "supportbundle/systemreport_p.h"
#include "writewhole.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

namespace zeltools
{

namespace
{

const QLatin1String s_cancelled("the bundle was cancelled");

QString cannotWrite(const QString& path, QString reason)
{
    if (reason == qt_error_string(EFBIG))
        reason += QStringLiteral("; FAT32 holds at most 4 GiB in a file");
    return QStringLiteral("cannot write %1: %2").arg(path, reason);
}

/// A file that a host names itself.
BundleFile namedFile(const QByteArray& name, const QString& path)
{
    BundleFile file;
    file.name = name;
    file.path = QFile::encodeName(path);
    file.isFollowed = true;
    if (stat(file.path.constData(), &file.status) != 0)
        file.fault = qt_error_string(errno);
    else if (!S_ISREG(file.status.st_mode))
        file.fault = QStringLiteral("it is not a plain file");
    return file;
}

/// Reads a file whole. Returns the reason of a failure, or an empty text.
QString readSmall(BundleFile& file, QByteArray& content)
{
    constexpr qint64 longest_B = qint64(16) * 1024 * 1024;
    QString fault = file.open();
    if (!fault.isEmpty())
        return fault;
    QFile opened;
    opened.open(*file.descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered);
    content = opened.read(longest_B + 1);
    if (opened.error() != QFileDevice::NoError)
        return opened.errorString();
    return content.size() > longest_B ? QStringLiteral("it is too large") : QString();
}

} // namespace

BundleJob::BundleJob(const BundleSources& sources, const std::atomic<bool>& isCancelled,
                     Progress progress)
    : m_sources(sources)
    , m_isCancelled(isCancelled)
    , m_progress(std::move(progress))
{
}

QString BundleJob::write(int output, const QString& path)
{
    m_output = output;
    m_path = path;
    if (!m_sources.crypt) {
        return writeArchive(path, [this](const char* bytes, size_t size) {
            const bool isWritten = writeWhole(m_output, bytes, size) == ssize_t(size);
            return isWritten ? QString() : cannotWrite(m_path, qt_error_string(errno));
        });
    }
    CryptPipe pipe(*m_sources.crypt, CryptPipe::Encrypt, output);
    QString error = writeArchive(path, [&pipe](const char* bytes, size_t size) {
        // The reason comes from finish().
        const bool isWritten =
            !pipe.hasEnded() && writeWhole(pipe.descriptor(), bytes, size) == ssize_t(size);
        return isWritten ? QString() : QStringLiteral("the encryption has ended");
    });
    // A cancel() from now on comes too late and must not hide a failure of the encryption.
    const bool isCancelled = m_isCancelled;
    if (isCancelled)
        pipe.cancel();
    const QString cryptError = pipe.finish();
    if (!cryptError.isEmpty())
        error = isCancelled ? QString(s_cancelled) : cannotWrite(path, cryptError);
    return error;
}

QString BundleJob::writeArchive(const QString& path, BundleArchive::Output output)
{
    const BundleName name(path);
    BundleArchive archive(name.format(), m_sources.level != 0 ? m_sources.level : name.usualLevel(),
                          std::move(output));
    BundleMembers members(archive, [this, &archive](qint64 size_B) {
        m_done_B += size_B;
        tell();
        if (m_isCancelled)
            archive.abandon(s_cancelled);
    });
    if (!addAll(members) || m_isCancelled || !members.finish() || !archive.close())
        return m_isCancelled ? QString(s_cancelled) : archive.errorString();
    m_manifest = members.takeManifest();
    return QString();
}

bool BundleJob::addAll(BundleMembers& members)
{
    std::vector<BundleFile> files = listFiles(members);
    for (const BundleFile& file : files)
        m_total_B += file.status.st_size;
    tell();
    for (BundleFile& file : files) {
        if (m_isCancelled || !members.addFile(file))
            return false;
    }
    for (const auto& [name, content] : m_sources.contents) {
        if (m_isCancelled || !members.addContent(name, content))
            return false;
    }
    return addEnvironment(members) && addReports(members);
}

std::vector<BundleFile> BundleJob::listFiles(BundleMembers& members) const
{
    size_t leftToOpen = mostOpenFiles();
    std::vector<BundleFile> files;
    for (const BundleFolder& folder : m_sources.folders) {
        const QString fault = listFolder(folder, leftToOpen, files);
        if (!fault.isEmpty())
            members.omit(folder.prefix, fault);
    }
    for (const auto& [name, path] : m_sources.files)
        files.push_back(namedFile(name, path));
    removeOutput(files);
    return files;
}

/// A bundle that is written into a folder with logs contains neither itself nor the file that it
/// replaces.
void BundleJob::removeOutput(std::vector<BundleFile>& files) const
{
    struct stat written = {};
    struct stat replaced = {};
    const bool isWritten = fstat(m_output, &written) == 0;
    const bool isReplacing = stat(QFile::encodeName(m_path).constData(), &replaced) == 0;
    files.erase(std::remove_if(files.begin(), files.end(),
                               [&](const BundleFile& file) {
                                   return (isWritten && isSameFile(file.status, written)) ||
                                          (isReplacing && isSameFile(file.status, replaced));
                               }),
                files.end());
}

bool BundleJob::addEnvironment(BundleMembers& members)
{
    if (m_sources.environmentFile.isEmpty())
        return true;
    BundleFile file = namedFile("environment", m_sources.environmentFile);
    QByteArray content;
    const QString fault = readSmall(file, content);
    if (fault.isEmpty())
        return members.addContent(file.name, withoutSecrets(content));
    members.omit(file.name, fault);
    return true;
}

bool BundleJob::addReports(BundleMembers& members)
{
    for (int i = 0; i < systemReportsCount(); ++i) {
        if (m_isCancelled)
            return false;
        const SystemReport report = systemReport(i);
        if (!report.fault.isEmpty())
            members.omit(report.name, report.fault);
        if (!report.content.isEmpty() && !members.addContent(report.name, report.content))
            return false;
    }
    return true;
}

void BundleJob::tell()
{
    // A log file may have grown since it was counted.
    m_progress(std::min(m_done_B, m_total_B), m_total_B);
}

} // namespace zeltools
