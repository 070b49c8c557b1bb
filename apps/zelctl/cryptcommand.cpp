#include "cryptcommand.h"

#include "commandparser.h"
#include "cryptinfo.h"
#include "cryptjob.h"
#include "cryptkey.h"

#include <QByteArrayList>

namespace
{

const QLatin1String s_encrypt("encrypt");
const QLatin1String s_decrypt("decrypt");
const QLatin1String s_info("info");

// In the order of the enumerations.
constexpr auto s_protections = "off checksum sha1";
constexpr auto s_compressions = "smaller forced off";

/// The index of the option's value among the names, or -1.
int choice(const CommandParser& parser, const char* option, const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' ')).indexOf(parser.value(option));
}

/// Reads the option of a decryption. Returns the problem with it, or an empty text.
QString readRequirement(const CommandParser& parser, Job& job)
{
    if (!parser.isSet("require"))
        return QString();
    const int protection = choice(parser, "require", s_protections);
    if (protection <= SimpleCrypt::ProtectionOff)
        return QStringLiteral("--require is checksum or sha1");
    job.required = static_cast<SimpleCrypt::ProtectionMode>(protection);
    return QString();
}

/// Reads the options of an encryption. Returns the problem with them, or an empty text.
QString readSettings(const CommandParser& parser, Job& job)
{
    const int protection = choice(parser, "protection", s_protections);
    const int compression = choice(parser, "compression", s_compressions);
    if (protection < 0)
        return QStringLiteral("--protection is off, checksum or sha1");
    if (compression < 0)
        return QStringLiteral("--compression is smaller, forced or off");
    const QString metadata = parser.value("metadata");
    for (const QChar character : metadata) {
        if (character.unicode() >= 0x80)
            return QStringLiteral(
                "--metadata takes ASCII only: anything else would be read back changed");
    }
    job.crypt.setProtection(static_cast<SimpleCrypt::ProtectionMode>(protection));
    job.crypt.setCompression(static_cast<SimpleCrypt::CompressionMode>(compression));
    job.crypt.setMetadata(metadata);
    job.crypt.setPlainPayload(parser.isSet("plain"));
    job.crypt.setRandomCharEnabled(!parser.isSet("fixed-lead"));
    job.isWhole = parser.isSet("whole-file") || compression != SimpleCrypt::CompressionOff ||
                  protection == SimpleCrypt::ProtectionChecksum;
    return QString();
}

void addOptions(CommandParser& parser)
{
    parser.setDescription(
        "Encrypts and decrypts files, and shows what their header says.\n\n"
        "  encrypt IN OUT  checks what it wrote by decrypting it\n"
        "  decrypt IN OUT\n"
        "  info FILE       version, flags, metadata, the number of bytes in front of the payload\n"
        "                  and where the digest is; needs no key\n\n"
        "OUT appears when it is complete. \"-\" is the standard input or output. Compression, a\n"
        "checksum and pipes need memory for several times the size of the file; all else is\n"
        "streamed. The key, 16 hexadecimal digits, comes from --key-file or from the\n"
        "environment variable ZEL_KEY.\n\n"
        "The flags of a file are not protected: one that has lost them is decrypted without a\n"
        "check, into garbage, and the program says only that nothing was checked. --require\n"
        "refuses such a file.");
    parser.addArgument("WORDS", "As above.",
                       "encrypt|decrypt IN OUT\n       zelctl crypt [options] info FILE");
    parser.addOptions({
        {"key-file", "Reads the key from FILE.", "FILE"},
        {"metadata", "Puts a readable ASCII text into the header.", "TEXT"},
        {"protection", "off, checksum or sha1, the default.", "MODE", "sha1"},
        {"compression", "smaller (where it pays), forced or off, the default.", "MODE", "off"},
        {"plain", "Does not encipher."},
        {"fixed-lead", "The same input gives the same output each time."},
        {"whole-file", "Does not stream."},
        {"require", "Decrypts only what is checked by this: checksum or sha1.", "MODE"},
        {"json", "Prints the info as one JSON object."},
    });
}

/// The options that do not belong to an action.
QByteArrayList misplacedOptions(const QString& action)
{
    const QByteArrayList forEncryption{"metadata", "protection", "compression", "plain",
                                       "fixed-lead"};
    if (action == s_encrypt)
        return {"require", "json"};
    if (action == s_info)
        return forEncryption + QByteArrayList{"key-file", "whole-file", "require"};
    return forEncryption + QByteArrayList{"json"};
}

/// The problem with the words and options, or an empty text.
QString misuseOf(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const QString action = words.value(0);
    const QByteArrayList misplaced = misplacedOptions(action);
    for (const QByteArray& option : misplaced) {
        if (parser.isSet(option.constData()))
            return QStringLiteral("--%1 does not belong to \"%2\"")
                .arg(QString::fromLatin1(option), action);
    }
    const bool isAction = action == s_encrypt || action == s_decrypt || action == s_info;
    if (!isAction || words.size() != (action == s_info ? 2 : 3) || words.contains(QString()))
        return QStringLiteral("see \"zelctl crypt --help\" for what crypt needs");
    return QString();
}

ExitStatus runJob(const CommandParser& parser, const QStringList& words)
{
    Job job;
    job.input = words[1];
    job.output = words[2];
    job.keyFile = parser.value("key-file");
    job.isEncryption = words[0] == s_encrypt;
    job.isWhole = parser.isSet("whole-file");
    const QString misuse =
        job.isEncryption ? readSettings(parser, job) : readRequirement(parser, job);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    const QString problem = readKey(parser, job.crypt);
    return problem.isEmpty() ? run(job) : fail(Failed, problem);
}

} // namespace

ExitStatus runCrypt(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parseSecretly(parser, arguments, misuseOf))
        return *status;
    const QStringList words = parser.arguments();
    return words[0] == s_info ? showInfo(words[1], parser.isSet("json")) : runJob(parser, words);
}
