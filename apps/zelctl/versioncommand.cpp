#include "versioncommand.h"

#include <zeltools/libraryversion.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace
{

/// The library counts such a part as 0 without a word; empty when there is none.
QString wrongPart(const QString& version)
{
    for (const QString& part : version.split('.')) {
        bool isNumber = false;
        part.toInt(&isNumber);
        if (!isNumber)
            return QStringLiteral("\"%1\" in \"%2\" is no number of a version").arg(part, version);
    }
    return QString();
}

VersionNumber firstParts(const VersionNumber& version, unsigned count)
{
    return VersionNumber(version.toString().section('.', 0, static_cast<int>(count) - 1));
}

/// As the machine compares: by the parts that both have, and by the size only where these are
/// equal. Compared as a whole, two sizes would be a warning.
QString comparison(const VersionNumber& a, const VersionNumber& b)
{
    const unsigned count = qMin(a.size(), b.size());
    const VersionNumber left = firstParts(a, count);
    const VersionNumber right = firstParts(b, count);
    if (left == right)
        return a.size() == b.size() ? "=" : "!=";
    return left < right ? "<" : ">";
}

ExitStatus printJson(const QJsonObject& object)
{
    return print(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + '\n');
}

ExitStatus compare(const VersionNumber& a, const VersionNumber& b, bool isJson)
{
    const QString sign = comparison(a, b);
    const bool isSameSize = a.size() == b.size();
    if (!isSameSize)
        fail(Done, QStringLiteral("%1 and %2 have different numbers of parts, which the machine "
                                  "warns of; only those that both have decide between < and >")
                       .arg(a.toString(), b.toString()));
    return isJson ? printJson({{"a", a.toString()},
                               {"b", b.toString()},
                               {"comparison", sign},
                               {"sameSize", isSameSize}})
                  : print(sign + '\n');
}

void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        "Compares two versions, such as 2.9 and 2.10, as the machine does: prints <, = or > as A\n"
        "is to B. For versions of which one begins with the other (1.2 and 1.2.7) the machine\n"
        "says yes to none of these; that is printed as != and explained on stderr.\n\n"
        "With one version it prints that in its usual form, with none the version of the library.");
    parser.addPositionalArgument("A", "A version.", "[A [B]]");
    parser.addPositionalArgument("B", "Another version.", QString());
    parser.addOption({"json", "Prints one JSON object."});
}

} // namespace

ExitStatus runVersion(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (const std::optional<ExitStatus> status = parse(parser, arguments))
        return *status;
    const QStringList versions = parser.positionalArguments();
    if (versions.size() > 2)
        return fail(WrongUsage, "version needs two versions, see \"zelctl version --help\"");
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
    return isJson ? printJson({{versions.isEmpty() ? "library" : "version", text}})
                  : print(text + '\n');
}
