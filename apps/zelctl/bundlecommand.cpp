#include "bundlecommand.h"

#include "bundlejob.h"
#include "commandparser.h"
#include "commandwords.h"
#include "cryptkey.h"
#include "words.h"
#include <zeltools/simplecrypt.h>

namespace
{

const QLatin1String s_verify("verify");
const QLatin1String s_list("list");

/// The problem with the words and options, or an empty text.
QString misuseOf(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const bool isReading = words[0] == s_list || words[0] == s_verify;
    QString misuse = problemWithOptions(parser, words[0], {{"json", "list, verify"}});
    if (!misuse.isEmpty())
        return misuse;
    if (isReading && (parser.isSet("environment") || parser.isSet("level")))
        return Zelctl::tr("--environment and --level belong to a new bundle");
    bool isNumber = true;
    if (parser.isSet("level") && (parser.value("level").toInt(&isNumber) < 1 || !isNumber))
        return Zelctl::tr("--level is a number above 0");
    return QString();
}

ExitStatus runWords(const CommandParser& parser, const SimpleCrypt* crypt)
{
    const QStringList words = parser.arguments();
    if (words[0] == s_verify)
        return verifyBundle(words[1], crypt, parser.isSet("json"));
    if (words[0] == s_list)
        return listBundle(words[1], crypt, parser.isSet("json"));
    return makeBundle({words[0], words[1], parser.value("environment"), parser.value("key-file"),
                       parser.value("level").toInt()},
                      crypt);
}

} // namespace

void describeBundle(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "Packs the logs of a machine and a description of the running system into one file, and "
        "reads such a file without unpacking it.\n\n"
        "OUT appears when it is complete. What cannot be read is named on stderr and in the "
        "manifest. For a name that ends in .crypt, the key comes from --key-file or from the "
        "environment variable ZEL_KEY; the cipher only protects against casual reading."));
    parser.addUsages({
        {"DIR OUT", QT_TRANSLATE_NOOP("zelctl", "Packs the log files.")},
        {"verify FILE",
         QT_TRANSLATE_NOOP("zelctl", "Checks that all files are there and undamaged.")},
        {"list FILE", QT_TRANSLATE_NOOP("zelctl", "Shows which files there are.")},
    });
    parser.addValues({
        {"DIR",
         QT_TRANSLATE_NOOP("zelctl",
                           "The folder \"logs\", the one above it, or a folder with log files"),
         CommandParser::Folder},
        {"OUT",
         QT_TRANSLATE_NOOP(
             "zelctl",
             "The new file; its name ends in .tar.zst or .tar.gz, or with .crypt behind that"),
         CommandParser::File},
        {"FILE", "", CommandParser::File},
    });
    parser.addOptions({
        {"key-file",
         QT_TRANSLATE_NOOP("zelctl", "Reads the key, 16 hexadecimal digits, from FILE."), "FILE"},
        {"environment",
         QT_TRANSLATE_NOOP("zelctl",
                           "Adds this environment file, with the values of secrets masked."),
         "FILE"},
        {"level",
         QT_TRANSLATE_NOOP("zelctl",
                           "Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6)."),
         "N"},
        {"json",
         QT_TRANSLATE_NOOP("zelctl", "list: prints the manifest. verify: prints one JSON object.")},
    });
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The bundle is complete, though what could not be read may be "
                                    "missing; or the file that was read is a complete bundle."),
        QT_TRANSLATE_NOOP("zelctl",
                          "There is no bundle, it is damaged, or the key is missing or wrong."));
    parser.addEnvironment(
        {{"ZEL_KEY",
          QT_TRANSLATE_NOOP("zelctl", "The key, 16 hexadecimal digits, without --key-file.")}});
    parser.addExamples({
        {"zelctl bundle /share/zel/logs machine-4711.tar.zst",
         QT_TRANSLATE_NOOP("zelctl", "Packs all logs of a machine.")},
        {"zelctl bundle list machine-4711.tar.zst --json",
         QT_TRANSLATE_NOOP("zelctl", "Prints the manifest as JSON.")},
    });
}

ExitStatus runBundle(const CommandParser& parser)
{
    startSecretly();
    const QString misuse = misuseOf(parser);
    if (!misuse.isEmpty())
        return fail(WrongUsage, misuse);
    if (!parser.arguments().at(1).endsWith(QLatin1String(".crypt")) && !parser.isSet("key-file"))
        return runWords(parser, nullptr);
    SimpleCrypt crypt;
    const QString problem = readKey(parser, crypt);
    return problem.isEmpty() ? runWords(parser, &crypt) : fail(Failed, problem);
}
