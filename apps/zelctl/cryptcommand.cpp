#include "cryptcommand.h"

#include "commandparser.h"
#include "commandwords.h"
#include "cryptinfo.h"
#include "cryptjob.h"
#include "cryptkey.h"
#include "words.h"

namespace
{

const QLatin1String s_encrypt("encrypt");
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
        return Zelctl::tr("--require is checksum or sha1");
    job.required = static_cast<SimpleCrypt::ProtectionMode>(protection);
    return QString();
}

/// Reads the options of an encryption. Returns the problem with them, or an empty text.
QString readSettings(const CommandParser& parser, Job& job)
{
    const int protection = choice(parser, "protection", s_protections);
    const int compression = choice(parser, "compression", s_compressions);
    if (protection < 0)
        return Zelctl::tr("--protection is off, checksum or sha1");
    if (compression < 0)
        return Zelctl::tr("--compression is smaller, forced or off");
    const QString metadata = parser.value("metadata");
    for (const QChar character : metadata) {
        if (character.unicode() >= 0x80)
            return Zelctl::tr(
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
        return refuse(misuse);
    const QString problem = readKey(parser, job.crypt);
    return problem.isEmpty() ? run(job) : fail(Failed, problem);
}

} // namespace

void describeCrypt(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "Encrypts and decrypts files, and shows what their header says.\n\n"
        "OUT appears when it is complete. Compression, a checksum and pipes need memory for "
        "several times the size of the file; all else is streamed. The key, 16 hexadecimal digits, "
        "comes from --key-file or from the environment variable ZEL_KEY.\n\n"
        "The flags of a file are not protected: one that has lost them is decrypted without a "
        "check, into garbage, and the program says only that nothing was checked. --require "
        "refuses such a file."));
    parser.addUsages({
        {"encrypt IN OUT",
         QT_TRANSLATE_NOOP("zelctl", "Encrypts, and checks what it wrote by decrypting it.")},
        {"decrypt IN OUT", QT_TRANSLATE_NOOP("zelctl", "Decrypts.")},
        {"info FILE",
         QT_TRANSLATE_NOOP("zelctl", "Shows version, flags, metadata, the number of bytes in front "
                                     "of the payload and where the digest is; needs no key.")},
    });
    parser.addValues({
        {"IN", QT_TRANSLATE_NOOP("zelctl", "A file, or \"-\" for the standard input"),
         CommandParser::File},
        {"OUT", QT_TRANSLATE_NOOP("zelctl", "A file, or \"-\" for the standard output"),
         CommandParser::File},
        {"FILE", "", CommandParser::File},
    });
    parser.addOptions({
        {"key-file", QT_TRANSLATE_NOOP("zelctl", "Reads the key from FILE."), "FILE"},
        {"metadata", QT_TRANSLATE_NOOP("zelctl", "Puts a readable ASCII text into the header."),
         "TEXT"},
        {"protection", QT_TRANSLATE_NOOP("zelctl", "What a decryption checks; sha1 unless given."),
         "off|checksum|sha1", "sha1"},
        {"compression",
         QT_TRANSLATE_NOOP("zelctl", "smaller compresses where it pays; off unless given."),
         "smaller|forced|off", "off"},
        {"plain", QT_TRANSLATE_NOOP("zelctl", "Does not encipher.")},
        {"fixed-lead",
         QT_TRANSLATE_NOOP("zelctl", "The same input gives the same output each time.")},
        {"whole-file", QT_TRANSLATE_NOOP("zelctl", "Does not stream.")},
        {"require", QT_TRANSLATE_NOOP("zelctl", "Decrypts only what is checked by this."),
         "checksum|sha1"},
        {"json", QT_TRANSLATE_NOOP("zelctl", "Prints the info as one JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "OUT is complete, or the header was shown."),
        QT_TRANSLATE_NOOP("zelctl", "There is no OUT: a file cannot be read or written, is "
                                    "damaged, or the key is missing or wrong."));
    parser.addEnvironment(
        {{"ZEL_KEY",
          QT_TRANSLATE_NOOP("zelctl", "The key, 16 hexadecimal digits, without --key-file.")}});
    parser.addExamples({
        {"zelctl crypt encrypt machine.db backup.db --key-file key --metadata \"machine 4711\"",
         QT_TRANSLATE_NOOP("zelctl", "Encrypts a file.")},
        {"zelctl crypt info backup.db", QT_TRANSLATE_NOOP("zelctl", "Shows what it is.")},
    });
}

ExitStatus runCrypt(const CommandParser& parser)
{
    startSecretly();
    const QStringList words = parser.arguments();
    const QString misuse = problemWithOptions(parser, words[0],
                                              {{"metadata", "encrypt"},
                                               {"protection", "encrypt"},
                                               {"compression", "encrypt"},
                                               {"plain", "encrypt"},
                                               {"fixed-lead", "encrypt"},
                                               {"key-file", "encrypt, decrypt"},
                                               {"whole-file", "encrypt, decrypt"},
                                               {"require", "decrypt"},
                                               {"json", "info"}});
    if (!misuse.isEmpty())
        return refuse(misuse);
    return words[0] == s_info ? showInfo(words[1], parser.isSet("json")) : runJob(parser, words);
}
