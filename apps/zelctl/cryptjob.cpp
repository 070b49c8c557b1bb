#include "cryptjob.h"

#include "cleanreplacement.h"
#include "comparison.h"
#include "folder.h"
#include "progressbar.h"
#include "readfile.h"
#include "words.h"

#include <QFileInfo>

#include <new>
#include <system_error>

using zeltools::FileReplacement;

namespace
{

const QLatin1String s_standardStream("-");
constexpr auto s_isDifferent =
    QT_TRANSLATE_NOOP("zelctl", "what was written does not decrypt to it");

QString cannot(const Job& job, const QString& reason)
{
    const QString format = job.isEncryption ? Zelctl::tr("cannot encrypt %1: %2")
                                            : Zelctl::tr("cannot decrypt %1: %2");
    return format.arg(job.input, reason);
}

/// The message about a failure of the library, or an empty text.
QString explain(const Job& job, const SimpleCrypt::Failure& failure)
{
    switch (failure.code) {
    case SimpleCrypt::CryptNoError:
        return QString();
    case SimpleCrypt::CryptBadVersion:
        return cannot(job, Zelctl::tr("it is not a cyphertext"));
    case SimpleCrypt::CryptIntegrityMismatch:
        return cannot(job, Zelctl::tr("it is damaged, or the key is another one"));
    default: // the settings have been checked
        break;
    }
    if (failure.systemError.isEmpty())
        return cannot(job, Zelctl::tr("it has become shorter meanwhile"));
    if (failure.path.isEmpty() || failure.path == job.input)
        return cannot(job, failure.systemError);
    return Zelctl::tr("cannot write %1: %2").arg(job.output, failure.systemError);
}

/// The message about a decryption that has succeeded without the required check, or an empty text.
QString explainProtection(const Job& job)
{
    if (!job.required || job.crypt.checkedProtection() == *job.required)
        return QString();
    const bool isHash = *job.required == SimpleCrypt::ProtectionSha1;
    return cannot(job, isHash ? Zelctl::tr("it has no SHA-1 to check")
                              : Zelctl::tr("it has no checksum to check"));
}

bool isStreamed(const Job& job)
{
    return !job.isWhole && job.input != s_standardStream && job.output != s_standardStream &&
           QFileInfo(job.input).size() >= SimpleCrypt::shortestStreamed_B;
}

/// Decrypts the output of an encryption. Returns the problem, or an empty text.
QString checkOutput(const Job& job, const QString& output)
{
    ProgressBar bar(QT_TRANSLATE_NOOP("zelctl", "checking"));
    Comparison comparison(job.input);
    SimpleCrypt check = job.crypt;
    check.setPlainPayload(false); // the header has it
    const bool isRead =
        check.decryptFileSmart(output, comparison.path(), [&bar](qint64 done_B, qint64 total_B) {
            bar.show(done_B, total_B);
        });
    if (comparison.isSame() && isRead)
        return QString();
    const QString& error = check.lastFailure().systemError;
    if (!error.isEmpty())
        return Zelctl::tr("cannot check %1: %2").arg(job.output, error);
    return cannot(job, Zelctl::tr(s_isDifferent));
}

/// Returns the problem, or an empty text.
QString stream(Job& job, const QString& output)
{
    {
        ProgressBar bar(job.isEncryption ? QT_TRANSLATE_NOOP("zelctl", "encrypting")
                                         : QT_TRANSLATE_NOOP("zelctl", "decrypting"));
        const auto progress = [&bar](qint64 done_B, qint64 total_B) { bar.show(done_B, total_B); };
        if (job.isEncryption)
            job.crypt.encryptFileInChunks(job.input, output, progress);
        else
            job.crypt.decryptFileSmart(job.input, output, progress);
    }
    QString problem = explain(job, job.crypt.lastFailure());
    if (!problem.isEmpty())
        return problem;
    return job.isEncryption ? checkOutput(job, output) : explainProtection(job);
}

/// Encrypts or decrypts in memory. Returns the problem, or an empty text.
QString transform(Job& job, const QByteArray& bytes, QByteArray& result)
{
    result = job.isEncryption ? job.crypt.encryptToByteArray(bytes)
                              : job.crypt.decryptToByteArray(bytes);
    QString problem = explain(job, job.crypt.lastFailure());
    if (!problem.isEmpty())
        return problem;
    if (!job.isEncryption)
        return explainProtection(job);
    SimpleCrypt check = job.crypt;
    check.setPlainPayload(false); // the header has it
    const bool isSame = check.decryptToByteArray(result) == bytes;
    const QString& error = check.lastFailure().systemError;
    if (!error.isEmpty())
        return cannot(job, error);
    return isSame ? QString() : cannot(job, Zelctl::tr(s_isDifferent));
}

/// `file` is null for the standard output.
ExitStatus processWhole(Job& job, FileReplacement* file)
{
    const FileContent content = job.input == s_standardStream
                                    ? readStandardInput(SimpleCrypt::largestInMemory_B)
                                    : readFile(job.input, SimpleCrypt::largestInMemory_B);
    if (!content.error.isEmpty())
        return fail(Failed, content.error);
    QByteArray result;
    const QString problem = transform(job, content.bytes, result);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    if (file == nullptr)
        return writeOutput(result);
    return replaceCleanly(*file, result) ? Done : fail(Failed, file->errorString());
}

ExitStatus processFile(Job& job)
{
    const QString obstacle = job.input == s_standardStream ? QString() : whyUnreadable(job.input);
    if (!obstacle.isEmpty())
        return fail(Failed, obstacle);
    if (job.output == s_standardStream)
        return processWhole(job, nullptr);
    const QString problem = problemWithOutput(job.output);
    if (!problem.isEmpty())
        return fail(Failed, problem);
    FileReplacement file(job.output);
    if (!file.errorString().isEmpty())
        return fail(Failed, file.errorString());
    if (file.wouldLose(job.input) || file.wouldLose(job.keyFile))
        return fail(Failed,
                    Zelctl::tr("writing %1 would lose the input or the key").arg(job.output));
    if (!isStreamed(job))
        return processWhole(job, &file);
    const auto write = [&job](int descriptor) {
        return stream(job, QStringLiteral("/proc/self/fd/%1").arg(descriptor));
    };
    return replaceCleanly(file, write) ? Done : fail(Failed, file.errorString());
}

} // namespace

ExitStatus run(Job& job)
{
    ExitStatus status = Failed;
    try {
        status = processFile(job);
    } catch (const std::bad_alloc&) {
        return fail(Failed, cannot(job, Zelctl::tr("Cannot allocate memory")));
    } catch (const std::system_error& error) { // of a thread
        return fail(Failed, cannot(job, QString::fromLocal8Bit(error.what())));
    }
    if (status == Done && !job.isEncryption &&
        job.crypt.checkedProtection() == SimpleCrypt::ProtectionOff)
        fail(Done,
             Zelctl::tr("%1 has no checksum and no SHA-1: nothing was checked").arg(job.input));
    return status;
}
