#include "supportbundle/supportbundlereader.h"

#include "filedescriptor.h"
#include "supportbundle/bundlecheck_p.h"
#include "supportbundle/cryptpipe_p.h"

#include <QFile>

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace zeltools
{

SupportBundleReader::SupportBundleReader(const QString& path, Progress progress)
    : m_path(path)
    , m_progress(std::move(progress))
{
}

bool SupportBundleReader::list()
{
    return read(false);
}

bool SupportBundleReader::verify()
{
    return read(true);
}

bool SupportBundleReader::read(bool hasDigests)
{
    m_manifest = SupportBundleManifest();
    m_error.clear();
    const FileDescriptor file(
        open(QFile::encodeName(m_path).constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status = {};
    if (file < 0 || fstat(file, &status) != 0)
        m_error = QStringLiteral("cannot read %1: %2").arg(m_path, qt_error_string(errno));
    else if (!S_ISREG(status.st_mode))
        m_error = QStringLiteral("cannot read %1: it is not a file").arg(m_path);
    if (!m_error.isEmpty())
        return false;
    const QString problem = readFile(file, hasDigests);
    if (!problem.isEmpty())
        m_error = QStringLiteral("%1 is not a complete support bundle: %2").arg(m_path, problem);
    return m_error.isEmpty();
}

QString SupportBundleReader::readFile(int file, bool hasDigests)
{
    struct stat status = {};
    fstat(file, &status);
    bool isArchive = false;
    return m_path.endsWith(QLatin1String(".crypt"))
               ? readEncrypted(file, status.st_size, hasDigests)
               : readMembers(file, status.st_size, hasDigests, isArchive);
}

QString SupportBundleReader::readEncrypted(int file, qint64 size_B, bool hasDigests)
{
    if (!m_crypt)
        return QStringLiteral("it needs a key");
    // Such a cyphertext is decrypted in memory, where it may become a thousand times as large.
    char head[SimpleCrypt::shortestHeader_B] = {};
    const ssize_t count = pread(file, head, sizeof head, 0);
    constexpr int inMemory = SimpleCrypt::FlagCompressed | SimpleCrypt::FlagChecksum;
    if (count < ssize_t(sizeof head) || (head[1] & inMemory) != 0)
        return QStringLiteral("it is not encrypted as a bundle is");
    CryptPipe pipe(*m_crypt, CryptPipe::Decrypt, file);
    bool isArchive = false;
    QString problem = readMembers(pipe.descriptor(), size_B, hasDigests, isArchive);
    if (!problem.isEmpty())
        pipe.cancel();
    const QString cryptProblem = pipe.finish();
    if (problem.isEmpty())
        problem = cryptProblem;
    else if (!isArchive)
        problem = QStringLiteral("it is damaged, or the key is another one");
    return problem;
}

QString SupportBundleReader::readMembers(int file, qint64 size_B, bool hasDigests, bool& isArchive)
{
    using Depth = BundleCheck::Depth;
    BundleWalk walk(file);
    BundleCheck check(walk, hasDigests ? Depth::Digests : Depth::Sizes);
    QString problem =
        check.run([&] { return !m_progress || m_progress(qMin(walk.packed_B(), size_B), size_B); });
    isArchive = check.hasMembers() || problem.isEmpty();
    if (problem.isEmpty())
        m_manifest = check.takeManifest();
    return problem;
}

} // namespace zeltools
