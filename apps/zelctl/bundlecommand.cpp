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
    const QString action = isReading ? words[0] : QStringLiteral("DIR OUT");
    QString misuse = problemWithOptions(
        parser, action,
        {{"json", "list, verify"}, {"environment", "DIR OUT"}, {"level", "DIR OUT"}});
    if (!misuse.isEmpty())
        return misuse;
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

ExitStatus runBundle(const CommandParser& parser)
{
    startSecretly();
    const QString misuse = misuseOf(parser);
    if (!misuse.isEmpty())
        return refuse(misuse);
    if (!parser.arguments().at(1).endsWith(QLatin1String(".crypt")) && !parser.isSet("key-file"))
        return runWords(parser, nullptr);
    SimpleCrypt crypt;
    const QString problem = readKey(parser, crypt);
    return problem.isEmpty() ? runWords(parser, &crypt) : fail(Failed, problem);
}
