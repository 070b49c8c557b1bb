#include "cryptjob.h"

#include "cleanreplacement.h"
#include "comparison.h"
#include "crypt/cryptlimits_p.h"
#include "librarywarning.h"
#include "progressbar.h"
#include "readfile.h"

#include <QFileInfo>

#include <cerrno>
#include <cstring>

using zeltools::FileReplacement;

namespace
{

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
    default: // only that a file could not be read or written
        return errno != 0 ? QString::fromLocal8Bit(std::strerror(errno))
                          : "it is too large, or has become shorter meanwhile";
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
    if (size < cryptlimits::shortestStreamed_B)
        return false;
    // The streamed form would lose the last bytes of a file that is little larger than some chunks.
    const qint64 tail = size % cryptlimits::chunkSize_B;
    return !job.isEncryption || size < cryptlimits::chunkSize_B || tail == 0 ||
           tail > job.prefixSize;
}

/// Returns what went wrong, or nothing.
QString stream(Job& job, const QString& output)
{
    {
        ProgressBar bar(job.isEncryption ? "encrypting" : "decrypting");
        errno = 0;
        const auto progress = [&bar](qint64 done_B, qint64 total_B) { bar.show(done_B, total_B); };
        const bool isDone = job.isEncryption
                                ? job.crypt.encryptFileSmart(job.input, output, progress)
                                : job.crypt.decryptFileSmart(job.input, output, progress);
        const QString why = failure(job);
        if (!isDone || !why.isEmpty())
            return explain(job, why);
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

/// `file` is null for the standard output.
ExitStatus processWhole(Job& job, FileReplacement* file)
{
    const FileContent content = job.input == "-"
                                    ? readStandardInput(cryptlimits::largestInMemory_B)
                                    : readFile(job.input, cryptlimits::largestInMemory_B);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    errno = 0;
    QString why;
    const QByteArray result = transform(job, content.bytes, why);
    if (!why.isEmpty())
        return fail(Failed, why);
    if (file == nullptr)
        return writeOutput(result);
    return replaceCleanly(*file, result) ? Done : fail(Failed, file->errorString());
}

} // namespace

ExitStatus process(Job& job)
{
    const QString obstacle = job.input == "-" ? QString() : whyUnreadable(job.input);
    if (!obstacle.isEmpty())
        return fail(Failed, obstacle);
    if (job.output == "-")
        return processWhole(job, nullptr);
    FileReplacement file(job.output);
    if (!file.errorString().isEmpty())
        return fail(Failed, file.errorString());
    if (file.wouldLose(job.input) || file.wouldLose(job.keyFile))
        return fail(Failed, "writing " + job.output + " would lose the input or the key");
    if (!isStreamed(job))
        return processWhole(job, &file);
    const auto write = [&job](int descriptor) {
        return stream(job, QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    };
    return replaceCleanly(file, write) ? Done : fail(Failed, file.errorString());
}
