#include "cryptjob.h"

#include "comparison.h"
#include "librarywarning.h"
#include "progressbar.h"
#include "replacefile.h"

#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <sys/stat.h>

namespace
{

constexpr qint64 s_chunkSize = 0x100000; // of the streamed format
constexpr int s_shortestStreamed = 30;   // what decryptFileSmart() takes
// What a QByteArray can hold together with what stands in front of it.
constexpr qint64 s_largestInMemory = qint64(1900) * 1024 * 1024;

/// What the library or the system says; empty when all went well.
QString failure(const Job& job)
{
    QString why = LibraryWarning::text();
    switch (job.crypt.lastError()) {
    case SimpleCrypt::CryptNoError:
        return why;
    case SimpleCrypt::CryptBadVersion:
        return "it is not a cyphertext";
    case SimpleCrypt::CryptIntegrityMismatch:
        return "it is damaged, or the key is another one";
    default:
        return errno != 0 ? QString::fromLocal8Bit(std::strerror(errno)) : why;
    }
}

QString explain(const Job& job, const QString& why)
{
    return QStringLiteral("cannot %1 %2: %3")
        .arg(job.isEncryption ? "encrypt" : "decrypt", job.input, why);
}

bool isStreamed(const Job& job)
{
    if (job.isWhole || job.input == "-" || job.output == "-")
        return false;
    const qint64 size = QFileInfo(job.input).size();
    if (size < s_shortestStreamed)
        return false;
    // The streamed form would lose the last bytes of a file that is little larger than some chunks.
    const qint64 tail = size % s_chunkSize;
    return !job.isEncryption || size < s_chunkSize || tail == 0 || tail > job.prefixSize;
}

/// Returns what went wrong, or nothing.
QString stream(Job& job, const QString& output)
{
    errno = 0;
    {
        ProgressBar bar(job.isEncryption ? "encrypting" : "decrypting");
        const auto progress = [&bar](qint64 done_B, qint64 total_B) { bar.show(done_B, total_B); };
        const bool isDone = job.isEncryption
                                ? job.crypt.encryptFileSmart(job.input, output, progress)
                                : job.crypt.decryptFileSmart(job.input, output, progress);
        const QString why = failure(job);
        if (!isDone || !why.isEmpty())
            return explain(job, why.isEmpty() ? "the library refuses it" : why);
    }
    if (!job.isEncryption)
        return QString();
    ProgressBar bar("checking");
    Comparison comparison(job.input);
    SimpleCrypt check(job.key);
    const bool isRead =
        check.decryptFileSmart(output, comparison.path(), [&bar](qint64 done_B, qint64 total_B) {
            bar.show(done_B, total_B);
        });
    return comparison.isSame() && isRead ? QString()
                                         : explain(job, "what was written does not decrypt to it");
}

/// Sets `why` on failure.
QByteArray transform(Job& job, const QByteArray& bytes, QString& why)
{
    QByteArray result = job.isEncryption ? job.crypt.encryptToByteArray(bytes)
                                         : job.crypt.decryptToByteArray(bytes);
    const QString reason = failure(job);
    if (!reason.isEmpty())
        why = explain(job, reason);
    else if (job.isEncryption && SimpleCrypt(job.key).decryptToByteArray(result) != bytes)
        why = explain(job, "what was written does not decrypt to it");
    return result;
}

ExitStatus processWhole(Job& job)
{
    const FileContent content = job.input == "-" ? readStandardInput(s_largestInMemory)
                                                 : readFile(job.input, s_largestInMemory);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    errno = 0;
    QString why;
    const QByteArray result = transform(job, content.bytes, why);
    if (!why.isEmpty())
        return fail(Failed, why);
    if (job.output == "-")
        return writeOutput(result);
    ReplaceFile file(job.output, ReplaceFile::Overwrite);
    return file.replace(result) ? Done : fail(Failed, file.error());
}

/// What hinders the work from the start, or nothing.
QString obstacle(const Job& job)
{
    if (job.input == "-")
        return QString();
    struct stat input = {};
    if (stat(QFile::encodeName(job.input).constData(), &input) != 0)
        return "cannot read " + job.input + ": " + std::strerror(errno);
    if (!S_ISREG(input.st_mode))
        return "cannot read " + job.input + ": it is not a file";
    struct stat output = {};
    if (job.output != "-" && stat(QFile::encodeName(job.output).constData(), &output) == 0 &&
        input.st_dev == output.st_dev && input.st_ino == output.st_ino)
        return job.output + " is the input itself";
    return QString();
}

} // namespace

ExitStatus process(Job& job)
{
    const QString why = obstacle(job);
    if (!why.isEmpty())
        return fail(Failed, why);
    if (!isStreamed(job))
        return processWhole(job);
    ReplaceFile file(job.output, ReplaceFile::Overwrite);
    const auto write = [&job](int descriptor) {
        return stream(job, QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    };
    return file.replace(write) ? Done : fail(Failed, file.error());
}
