#include "cryptjob.h"

#include "cleanreplacement.h"
#include "comparison.h"
#include "progressbar.h"
#include "readfile.h"

#include <QFileInfo>

#include <new>
#include <system_error>

using zeltools::FileReplacement;

namespace
{

QString cannot(const Job& job, const QString& why)
{
    return QStringLiteral("cannot %1 %2: %3")
        .arg(job.isEncryption ? "encrypt" : "decrypt", job.input, why);
}

/// What has hindered the library; empty when nothing has.
QString explain(const Job& job, const SimpleCrypt::Failure& failure)
{
    switch (failure.code) {
    case SimpleCrypt::CryptNoError:
        return QString();
    case SimpleCrypt::CryptBadVersion:
        return cannot(job, "it is not a cyphertext");
    case SimpleCrypt::CryptIntegrityMismatch:
        return cannot(job, "it is damaged, or the key is another one");
    default: // the settings have been checked
        break;
    }
    if (failure.systemError.isEmpty())
        return cannot(job, "it has become shorter meanwhile");
    if (failure.path.isEmpty() || failure.path == job.input)
        return cannot(job, failure.systemError);
    return "cannot write " + job.output + ": " + failure.systemError;
}

/// The same for a decryption that has succeeded: whether that was with the check that is asked for.
QString explainProtection(const Job& job)
{
    if (!job.required || job.crypt.checkedProtection() == *job.required)
        return QString();
    const bool isHash = *job.required == SimpleCrypt::ProtectionSha1;
    return cannot(job, isHash ? "it has no SHA-1 to check" : "it has no checksum to check");
}

bool isStreamed(const Job& job)
{
    return !job.isWhole && job.input != "-" && job.output != "-" &&
           QFileInfo(job.input).size() >= SimpleCrypt::shortestStreamed_B;
}

/// Decrypts what an encryption has written. Returns what went wrong, or nothing.
QString checkOutput(const Job& job, const QString& output)
{
    ProgressBar bar("checking");
    Comparison comparison(job.input);
    SimpleCrypt check = job.crypt;
    check.setPlainPayload(false); // the header says it
    const bool isRead =
        check.decryptFileSmart(output, comparison.path(), [&bar](qint64 done_B, qint64 total_B) {
            bar.show(done_B, total_B);
        });
    if (comparison.isSame() && isRead)
        return QString();
    const QString& error = check.lastFailure().systemError;
    return error.isEmpty() ? cannot(job, "what was written does not decrypt to it")
                           : "cannot check " + job.output + ": " + error;
}

/// Returns what went wrong, or nothing.
QString stream(Job& job, const QString& output)
{
    {
        ProgressBar bar(job.isEncryption ? "encrypting" : "decrypting");
        const auto progress = [&bar](qint64 done_B, qint64 total_B) { bar.show(done_B, total_B); };
        if (job.isEncryption)
            job.crypt.encryptFileInChunks(job.input, output, progress);
        else
            job.crypt.decryptFileSmart(job.input, output, progress);
    }
    QString why = explain(job, job.crypt.lastFailure());
    if (!why.isEmpty())
        return why;
    return job.isEncryption ? checkOutput(job, output) : explainProtection(job);
}

/// Sets `why` on failure.
QByteArray transform(Job& job, const QByteArray& bytes, QString& why)
{
    QByteArray result = job.isEncryption ? job.crypt.encryptToByteArray(bytes)
                                         : job.crypt.decryptToByteArray(bytes);
    why = explain(job, job.crypt.lastFailure());
    if (!why.isEmpty())
        return result;
    if (!job.isEncryption) {
        why = explainProtection(job);
        return result;
    }
    SimpleCrypt check = job.crypt;
    check.setPlainPayload(false); // the header says it
    const bool isSame = check.decryptToByteArray(result) == bytes;
    if (!check.lastFailure().systemError.isEmpty())
        why = cannot(job, check.lastFailure().systemError);
    else if (!isSame)
        why = cannot(job, "what was written does not decrypt to it");
    return result;
}

/// `file` is null for the standard output.
ExitStatus processWhole(Job& job, FileReplacement* file)
{
    const FileContent content = job.input == "-"
                                    ? readStandardInput(SimpleCrypt::largestInMemory_B)
                                    : readFile(job.input, SimpleCrypt::largestInMemory_B);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    QString why;
    const QByteArray result = transform(job, content.bytes, why);
    if (!why.isEmpty())
        return fail(Failed, why);
    if (file == nullptr)
        return writeOutput(result);
    return replaceCleanly(*file, result) ? Done : fail(Failed, file->errorString());
}

ExitStatus processFile(Job& job)
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

} // namespace

ExitStatus process(Job& job)
{
    ExitStatus status = Failed;
    try {
        status = processFile(job);
    } catch (const std::bad_alloc&) {
        return fail(Failed, cannot(job, "Cannot allocate memory"));
    } catch (const std::system_error& error) { // of a thread
        return fail(Failed, cannot(job, error.what()));
    }
    if (status == Done && !job.isEncryption &&
        job.crypt.checkedProtection() == SimpleCrypt::ProtectionOff)
        fail(Done, job.input + " has no checksum and no SHA-1: nothing was checked");
    return status;
}
