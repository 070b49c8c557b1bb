#include "cryptcommand.h"

#include "cryptjob.h"
#include "librarywarning.h"
#include "readfile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace
{

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
    const QString obstacle = whyUnreadable(path);
    if (!obstacle.isEmpty() || !file.open(QIODevice::ReadOnly))
        return fail(Failed, obstacle.isEmpty() ? path + ": " + file.errorString() : obstacle);
    const QByteArray start = file.read(2);
    SimpleCrypt crypt;
    if (start.size() < 2 || !crypt.checkVersion(start))
        return fail(Failed, path + " is not a cyphertext");
    const int version = static_cast<quint8>(start.at(0));
    const int flags = static_cast<quint8>(start.at(1));
    const bool hasMetadata = (flags & SimpleCrypt::FlagMetadata) != 0;
    const bool hasChecksum = (flags & SimpleCrypt::FlagChecksum) != 0;
    const bool hasHash = (flags & SimpleCrypt::FlagSha1) != 0 && !hasChecksum;
    const QString metadata = hasMetadata ? crypt.getMetadataFromFile(path) : QString();
    const int baseLength = crypt.getHeaderLength(path);
    // The library's length, which leaves a checksum out, and counts a SHA-1 beside one.
    const int leadEnd = baseLength - ((flags & SimpleCrypt::FlagSha1) != 0 ? SHA1_SIZE : 0);
    const int digestSize = hasChecksum ? 2 : hasHash ? SHA1_SIZE : 0;
    if (!LibraryWarning::text().isEmpty() || leadEnd + digestSize > file.size())
        return fail(Failed, "the header of " + path + " is damaged");
    QJsonObject info{{"version", version},
                     {"flags", QJsonArray::fromStringList(flagNames(flags))},
                     {"headerLength", leadEnd + digestSize}};
    if (hasMetadata)
        info["metadata"] = metadata;
    if (digestSize > 0)
        info["digestOffset"] = leadEnd;
    if (isJson)
        return print(QJsonDocument(info).toJson(QJsonDocument::Compact) + '\n');
    return print(
        QStringLiteral("version        %1\nflags          %2\nmetadata       %3\n"
                       "header length  %4\ndigest offset  %5\n")
            .arg(version)
            .arg(flagNames(flags).join(' '), hasMetadata ? withoutControls(metadata) : "none")
            .arg(leadEnd + digestSize)
            .arg(digestSize > 0 ? QString::number(leadEnd) : "none"));
}

/// What is wrong with the key, or nothing.
QString readKey(const QCommandLineParser& parser, Job& job)
{
    QString source = "the environment variable ZEL_KEY";
    QByteArray text = qgetenv("ZEL_KEY");
    if (parser.isSet("key-file")) {
        source = parser.value("key-file");
        const FileContent file = readFile(source);
        if (!file.error.isEmpty())
            return file.error;
        text = file.bytes;
        job.keyFile = source;
    } else if (text.isEmpty()) {
        return "a key is missing: --key-file or the environment variable ZEL_KEY";
    }
    static const QRegularExpression form("^(0[xX])?([0-9a-fA-F]{16})$");
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(text.trimmed()));
    if (!match.hasMatch())
        return source + " holds no key of 16 hexadecimal digits";
    job.key = match.captured(2).toULongLong(nullptr, 16);
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

    const LibraryWarning warning;
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
    const QString why = readKey(parser, job);
    if (!why.isEmpty())
        return fail(Failed, why);
    job.crypt.setKey(job.key);
    return process(job);
}
