#include "cryptcommand.h"

#include "comparison.h"
#include "progressbar.h"
#include "replacefile.h"
#include "simplecrypt.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <cerrno>
#include <cstring>

#include <sys/stat.h>

namespace
{

constexpr qint64 s_chunkSize = 0x100000; // of the streamed format
constexpr int s_shortestStreamed = 30;   // what decryptFileSmart() takes
// What a QByteArray can hold together with what stands in front of it.
constexpr qint64 s_largestInMemory = qint64(1900) * 1024 * 1024;

/// The first warning of the library since clear(): says more than its error code.
class Warning
{
public:
    Warning() { qInstallMessageHandler(keep); }
    ~Warning() { qInstallMessageHandler(nullptr); }
    Q_DISABLE_COPY(Warning)

    /// Without the signature in front of it.
    static QString text()
    {
        return s_text.mid(s_text.indexOf(") ") < 0 ? 0 : s_text.indexOf(") ") + 2);
    }

private:
    static void keep(QtMsgType, const QMessageLogContext&, const QString& text)
    {
        if (s_text.isEmpty())
            s_text = text;
    }
    static inline QString s_text;
};

struct Job
{
    QString input;
    QString output;
    quint64 key = 0;
    SimpleCrypt crypt;
    bool isEncryption = false;
    bool isWhole = false;
    int prefixSize = 0; // what a streamed encryption puts in front of the payload

    bool isPiped() const { return input == "-" || output == "-"; }
};

/// What the library or the system says; empty when all went well.
QString failure(const Job& job)
{
    const QString why = Warning::text();
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
    if (job.isWhole || job.isPiped())
        return false;
    const qint64 size = QFileInfo(job.input).size();
    if (!job.isEncryption)
        return size >= s_shortestStreamed;
    // The streamed form of an empty file cannot be decrypted, and the last bytes of one that is
    // little larger than some chunks would be lost.
    const qint64 tail = size % s_chunkSize;
    return size > 0 && (size < s_chunkSize || tail == 0 || tail > job.prefixSize);
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
    const QByteArray result = job.isEncryption ? job.crypt.encryptToByteArray(bytes)
                                               : job.crypt.decryptToByteArray(bytes);
    const QString reason = failure(job);
    if (!reason.isEmpty())
        why = explain(job, reason);
    else if (job.isEncryption && SimpleCrypt(job.key).decryptToByteArray(result) != bytes)
        why = explain(job, "what was written does not decrypt to it");
    return result;
}

ExitStatus writeStandardOutput(const QByteArray& bytes)
{
    const auto size = static_cast<size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return Done;
    return fail(Failed, QStringLiteral("cannot write the output: ") + std::strerror(errno));
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
        return writeStandardOutput(result);
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

QStringList flagNames(int flags)
{
    const QPair<int, const char*> names[]{{SimpleCrypt::FlagCompressed, "compressed"},
                                          {SimpleCrypt::FlagChecksum, "checksum"},
                                          {SimpleCrypt::FlagSha1, "sha1"},
                                          {SimpleCrypt::FlagMetadata, "metadata"},
                                          {SimpleCrypt::FlagPlain, "plain"}};
    QStringList set;
    for (const auto& [flag, name] : names) {
        if ((flags & flag) != 0)
            set += name;
    }
    return set;
}

ExitStatus showInfo(const QString& path, bool isJson)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return fail(Failed, "cannot read " + path + ": " +
                                (file.exists() && !QFileInfo(path).isFile() ? "it is not a file"
                                                                            : file.errorString()));
    const QByteArray start = file.read(2);
    SimpleCrypt crypt;
    if (start.size() < 2 || !crypt.checkVersion(start))
        return fail(Failed, path + " is not a cyphertext");
    const int version = start.at(0);
    const int flags = start.at(1);
    const bool hasMetadata = (flags & SimpleCrypt::FlagMetadata) != 0;
    const bool hasChecksum = (flags & SimpleCrypt::FlagChecksum) != 0;
    const bool hasHash = (flags & SimpleCrypt::FlagSha1) != 0 && !hasChecksum;
    const QString metadata = hasMetadata ? crypt.getMetadataFromFile(path) : QString();
    const int baseLength = crypt.getHeaderLength(path);
    if (!Warning::text().isEmpty())
        return fail(Failed, path + ": " + Warning::text());
    // The library's length, which leaves a checksum out, and counts a SHA-1 beside one.
    const int leadEnd = baseLength - ((flags & SimpleCrypt::FlagSha1) != 0 ? SHA1_SIZE : 0);
    const int digestSize = hasChecksum ? 2 : hasHash ? SHA1_SIZE : 0;
    QJsonObject info{{"version", version},
                     {"flags", QJsonArray::fromStringList(flagNames(flags))},
                     {"headerLength", leadEnd + digestSize}};
    if (hasMetadata)
        info["metadata"] = metadata;
    if (digestSize > 0)
        info["digestOffset"] = leadEnd;
    if (isJson)
        return print(QJsonDocument(info).toJson(QJsonDocument::Compact) + '\n');
    return print(QStringLiteral("version        %1\nflags          %2\nmetadata       %3\n"
                                "header length  %4\ndigest offset  %5\n")
                     .arg(version)
                     .arg(flagNames(flags).join(' '), hasMetadata ? metadata : "none")
                     .arg(leadEnd + digestSize)
                     .arg(digestSize > 0 ? QString::number(leadEnd) : "none"));
}

/// What is wrong with the key, or nothing.
QString readKey(const QCommandLineParser& parser, quint64& key)
{
    QString source = "the environment variable ZEL_KEY";
    QByteArray text = qgetenv("ZEL_KEY");
    if (parser.isSet("key-file")) {
        source = parser.value("key-file");
        const FileContent file = readFile(source);
        if (!file.error.isEmpty())
            return file.error;
        text = file.bytes;
    } else if (text.isEmpty()) {
        return "a key is missing: --key-file or the environment variable ZEL_KEY";
    }
    static const QRegularExpression form("^(0[xX])?([0-9a-fA-F]{16})$");
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(text.trimmed()));
    if (!match.hasMatch())
        return source + " holds no key of 16 hexadecimal digits";
    key = match.captured(2).toULongLong(nullptr, 16);
    return QString();
}

/// Which of the names is the value of an option; -1 when none is.
int choice(const QCommandLineParser& parser, const QString& option, const QStringList& names)
{
    return names.indexOf(parser.value(option));
}

/// What is wrong with the options of an encryption, or nothing.
QString readSettings(const QCommandLineParser& parser, Job& job)
{
    const int protection = choice(parser, "protection", {"off", "checksum", "sha1"});
    const int compression = choice(parser, "compression", {"smaller", "forced", "off"});
    if (protection < 0)
        return "--protection is off, checksum or sha1";
    if (compression < 0)
        return "--compression is smaller, forced or off";
    const QString metadata = parser.value("metadata");
    for (const QChar character : metadata) {
        if (character.unicode() >= 0x80)
            return "--metadata takes ASCII only: anything else would be read back changed";
    }
    job.crypt.setProtection(static_cast<SimpleCrypt::ProtectionMode>(protection));
    job.crypt.setCompression(static_cast<SimpleCrypt::CompressionMode>(compression));
    job.crypt.setMetadata(metadata);
    job.crypt.setPlainPayload(parser.isSet("plain"));
    job.crypt.setRandomCharEnabled(!parser.isSet("fixed-lead"));
    job.prefixSize = protection == SimpleCrypt::ProtectionSha1 ? 1 + SHA1_SIZE : 1;
    job.isWhole = parser.isSet("whole-file") || compression != SimpleCrypt::CompressionOff ||
                  protection == SimpleCrypt::ProtectionChecksum;
    return QString();
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "Encrypts and decrypts files, and shows what their header says.\n\n"
        "  encrypt IN OUT  checks what it wrote by decrypting it\n"
        "  decrypt IN OUT\n"
        "  info FILE       version, flags, metadata, the number of bytes in front of the payload\n"
        "                  and where the digest is; needs no key\n\n"
        "OUT appears when it is complete. \"-\" is the standard input or output. Compression, a\n"
        "checksum and pipes need memory for several times the size of the file; all else is\n"
        "streamed. The key, 16 hexadecimal digits, comes from --key-file or from the\n"
        "environment variable ZEL_KEY.");
    parser.addPositionalArgument("WORDS", "As above.",
                                 "encrypt|decrypt IN OUT\n       zelctl crypt [options] info FILE");
    parser.addOptions({
        {"key-file", "Reads the key from FILE.", "FILE"},
        {"metadata", "Puts a readable ASCII text into the header.", "TEXT"},
        {"protection", "off, checksum or sha1, the default.", "MODE", "sha1"},
        {"compression", "smaller (where it pays), forced or off, the default.", "MODE", "off"},
        {"plain", "Does not encipher."},
        {"fixed-lead", "The same input gives the same output each time."},
        {"whole-file", "Does not stream."},
        {"json", "Prints the info as one JSON object."},
    });
}

} // namespace

ExitStatus runCrypt(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parse(parser, arguments))
        return *status;
    const QStringList words = parser.positionalArguments();
    const QString action = words.value(0);
    const bool isInfo = action == "info";
    QStringList misplaced{"metadata", "protection", "compression", "plain", "fixed-lead"};
    if (action == "encrypt")
        misplaced.clear();
    misplaced += isInfo ? QStringList{"key-file", "whole-file"} : QStringList{"json"};
    for (const QString& option : qAsConst(misplaced)) {
        if (parser.isSet(option))
            return fail(WrongUsage, "--" + option + " does not belong to \"" + action + '"');
    }
    if (words.size() != (isInfo ? 2 : 3) || words.contains(QString()) ||
        !QStringList({"encrypt", "decrypt", "info"}).contains(action))
        return fail(WrongUsage, "see \"zelctl crypt --help\" for what crypt needs");

    const Warning warning;
    if (isInfo)
        return showInfo(words[1], parser.isSet("json"));
    Job job;
    job.input = words[1];
    job.output = words[2];
    job.isEncryption = action == "encrypt";
    job.isWhole = parser.isSet("whole-file");
    const QString misuse = job.isEncryption ? readSettings(parser, job) : QString();
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    const QString why = readKey(parser, job.key);
    if (!why.isEmpty())
        return fail(Failed, why);
    job.crypt.setKey(job.key);
    return process(job);
}
