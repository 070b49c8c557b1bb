#include "versioncommand.h"

#include "commandparser.h"
#include "words.h"
#include <zeltools/libraryversion.h>

namespace
{

/// The message about a part that is not a number, which the library would silently read as 0, or an
/// empty text.
QString wrongPart(const QString& version)
{
    const QStringList parts = version.split(QLatin1Char('.'));
    for (const QString& part : parts) {
        bool isNumber = false;
        part.toInt(&isNumber);
        if (!isNumber)
            return Zelctl::tr("\"%1\" in \"%2\" is not a number of a version").arg(part, version);
    }
    return QString();
}

VersionNumber firstParts(const VersionNumber& version, unsigned count)
{
    return VersionNumber(
        version.toString().section(QLatin1Char('.'), 0, static_cast<int>(count) - 1));
}

/// Compares as the machine does: by the parts that both have, and by the size only if these are
/// equal. A comparison of whole versions of different sizes would give a warning.
QString comparison(const VersionNumber& a, const VersionNumber& b)
{
    const unsigned count = qMin(a.size(), b.size());
    const VersionNumber left = firstParts(a, count);
    const VersionNumber right = firstParts(b, count);
    if (left == right)
        return a.size() == b.size() ? QStringLiteral("=") : QStringLiteral("!=");
    return left < right ? QStringLiteral("<") : QStringLiteral(">");
}

ExitStatus compare(const VersionNumber& a, const VersionNumber& b, bool isJson)
{
    const QString sign = comparison(a, b);
    const bool isSameSize = a.size() == b.size();
    if (!isSameSize)
        fail(Done, Zelctl::tr("%1 and %2 have different numbers of parts, which the machine warns "
                              "of; only those that both have decide between < and >")
                       .arg(a.toString(), b.toString()));
    return isJson ? printJson(jsonObject({{"a", a.toString()},
                                          {"b", b.toString()},
                                          {"comparison", sign},
                                          {"sameSize", isSameSize}}))
                  : printLine(sign);
}

} // namespace

void describeVersion(CommandParser& parser)
{
    parser.setDescription(QT_TRANSLATE_NOOP(
        "zelctl",
        "Compares two versions, such as 2.9 and 2.10, as the machine does: prints <, = or > as A "
        "is to B. For versions of which one begins with the other (1.2 and 1.2.7) the machine says "
        "yes to none of these; that is printed as != and explained on stderr.\n\n"
        "With one version it prints that in its usual form, with none the version of the "
        "library."));
    parser.addUsages({{"[A [B]]", ""}});
    parser.addValues({{"A", QT_TRANSLATE_NOOP("zelctl", "A version")},
                      {"B", QT_TRANSLATE_NOOP("zelctl", "Another version")}});
    parser.addOptions({{"json", QT_TRANSLATE_NOOP("zelctl", "Prints one JSON object.")}});
    parser.setExitStatuses(
        QT_TRANSLATE_NOOP("zelctl", "The versions were compared, or the version was printed."),
        QT_TRANSLATE_NOOP("zelctl", "A text is not a version."));
    parser.addExamples({{"zelctl version 2.9 2.10", QT_TRANSLATE_NOOP("zelctl", "Prints <.")}});
}

ExitStatus runVersion(const CommandParser& parser)
{
    const QStringList versions = parser.arguments();
    for (const QString& version : versions) {
        const QString reason = wrongPart(version);
        if (!reason.isEmpty())
            return fail(Failed, reason);
    }
    const bool isJson = parser.isSet("json");
    if (versions.size() == 2)
        return compare(versions[0], versions[1], isJson);
    const QString text = versions.isEmpty() ? zeltools::libraryVersion().toString()
                                            : VersionNumber(versions[0]).toString();
    return isJson ? printJson(jsonObject({{versions.isEmpty() ? "library" : "version", text}}))
                  : printLine(text);
}
