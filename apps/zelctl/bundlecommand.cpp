#include "bundlecommand.h"

#include "bundlejob.h"
#include "commandparser.h"
#include "cryptkey.h"
#include <zeltools/simplecrypt.h>

namespace
{

const QLatin1String s_verify("verify");
const QLatin1String s_list("list");

void addOptions(CommandParser& parser)
{
    parser.setDescription(
        "Packs the logs of a machine and a description of the running system into one file, and\n"
        "reads such a file without unpacking it.\n\n"
        "  DIR OUT      packs the folder \"logs\", the one above it, or a folder with log files;\n"
        "               OUT ends in .tar.zst or .tar.gz, or with .crypt behind that\n"
        "  verify FILE  checks that all files are there and undamaged\n"
        "  list FILE    shows which files there are\n\n"
        "OUT appears when it is complete. What cannot be read is named on stderr and in the\n"
        "manifest. For a name that ends in .crypt, the key comes from --key-file or from the\n"
        "environment variable ZEL_KEY; the cipher only protects against casual reading.");
    parser.addArgument("WORDS", "As above.",
                       "DIR OUT\n       zelctl bundle [options] verify|list FILE");
    parser.addOptions({
        {"key-file", "Reads the key, 16 hexadecimal digits, from FILE.", "FILE"},
        {"environment", "Adds this environment file, with the values of secrets masked.", "FILE"},
        {"level", "Compression: 1 to 19 for .tar.zst (3), 1 to 9 for .tar.gz (6).", "N"},
        {"json", "Prints the manifest."},
    });
}

/// The problem with the words and options, or an empty text.
QString misuseOf(const CommandParser& parser)
{
    const QStringList words = parser.arguments();
    const bool isList = words.value(0) == s_list;
    const bool isReading = isList || words.value(0) == s_verify;
    if (words.size() != 2 || words.contains(QString()))
        return QStringLiteral("see \"zelctl bundle --help\" for what bundle needs");
    if (parser.isSet("json") && !isList)
        return QStringLiteral("--json belongs to \"list\"");
    if (isReading && (parser.isSet("environment") || parser.isSet("level")))
        return QStringLiteral("--environment and --level belong to a new bundle");
    bool isNumber = true;
    if (parser.isSet("level") && (parser.value("level").toInt(&isNumber) < 1 || !isNumber))
        return QStringLiteral("--level is a number above 0");
    return QString();
}

ExitStatus runWords(const CommandParser& parser, const SimpleCrypt* crypt)
{
    const QStringList words = parser.arguments();
    if (words[0] == s_verify)
        return verifyBundle(words[1], crypt);
    if (words[0] == s_list)
        return listBundle(words[1], crypt, parser.isSet("json"));
    return makeBundle({words[0], words[1], parser.value("environment"), parser.value("key-file"),
                       parser.value("level").toInt()},
                      crypt);
}

} // namespace

ExitStatus runBundle(const QStringList& arguments)
{
    CommandParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parseSecretly(parser, arguments, misuseOf))
        return *status;
    if (!parser.arguments().at(1).endsWith(QLatin1String(".crypt")) && !parser.isSet("key-file"))
        return runWords(parser, nullptr);
    SimpleCrypt crypt;
    const QString problem = readKey(parser, crypt);
    return problem.isEmpty() ? runWords(parser, &crypt) : fail(Failed, problem);
}
