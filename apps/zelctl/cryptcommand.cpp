#include "cryptcommand.h"

#include "cryptinfo.h"
#include "cryptjob.h"
#include "cryptkey.h"

#include <QLoggingCategory>

#include <sys/prctl.h>

namespace
{

/// Which of the names is the value of an option; -1 when none is.
int choice(const QCommandLineParser& parser, const QString& option, const QStringList& names)
{
    return names.indexOf(parser.value(option));
}

/// What is wrong with the option of a decryption, or nothing.
QString readRequirement(const QCommandLineParser& parser, Job& job)
{
    if (!parser.isSet("require"))
        return QString();
    const int protection = choice(parser, "require", {"off", "checksum", "sha1"});
    if (protection <= SimpleCrypt::ProtectionOff)
        return "--require is checksum or sha1";
    job.required = static_cast<SimpleCrypt::ProtectionMode>(protection);
    return QString();
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
        "environment variable ZEL_KEY.\n\n"
        "The flags of a file are not protected: one that has lost them is decrypted without a\n"
        "check, into garbage, and the program says only that nothing was checked. --require\n"
        "refuses such a file.");
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
        {"require", "Decrypts only what is checked by this: checksum or sha1.", "MODE"},
        {"json", "Prints the info as one JSON object."},
    });
}

} // namespace

ExitStatus runCrypt(const QStringList& arguments)
{
    prctl(PR_SET_DUMPABLE, 0); // a core file would show the key
    // The results say it in one line.
    QLoggingCategory::setFilterRules("default.warning=false");
    QCommandLineParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parse(parser, arguments))
        return *status;
    const QStringList words = parser.positionalArguments();
    const QString action = words.value(0);
    const bool isInfo = action == "info";
    QStringList misplaced{"metadata", "protection", "compression", "plain", "fixed-lead"};
    if (action == "encrypt")
        misplaced = QStringList{"require"};
    misplaced += isInfo ? QStringList{"key-file", "whole-file", "require"} : QStringList{"json"};
    for (const QString& option : qAsConst(misplaced)) {
        if (parser.isSet(option))
            return fail(WrongUsage, "--" + option + " does not belong to \"" + action + '"');
    }
    if (words.size() != (isInfo ? 2 : 3) || words.contains(QString()) ||
        !QStringList({"encrypt", "decrypt", "info"}).contains(action))
        return fail(WrongUsage, "see \"zelctl crypt --help\" for what crypt needs");

    if (isInfo)
        return showInfo(words[1], parser.isSet("json"));
    Job job;
    job.input = words[1];
    job.output = words[2];
    job.keyFile = parser.value("key-file");
    job.isEncryption = action == "encrypt";
    job.isWhole = parser.isSet("whole-file");
    const QString misuse =
        job.isEncryption ? readSettings(parser, job) : readRequirement(parser, job);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    const QString why =
        parser.isSet("key-file") ? readKeyFile(job.keyFile, job.crypt) : readKeyVariable(job.crypt);
    return why.isEmpty() ? process(job) : fail(Failed, why);
}
