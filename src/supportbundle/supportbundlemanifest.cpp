#include "supportbundle/supportbundlemanifest.h"

#include "escapedutf8.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace zeltools
{

namespace
{

using Member = SupportBundleManifest::Member;
using Omission = SupportBundleManifest::Omission;

const QLatin1String s_format("ZelTools support bundle");
constexpr int s_version = 1;
constexpr int s_digest_B = 32;

QString key(const char* name)
{
    return QString::fromLatin1(name);
}

QJsonObject toObject(const Member& member)
{
    QJsonObject object{{key("name"), SupportBundleManifest::escaped(member.name)},
                       {key("size"), member.size_B},
                       {key("sha256"), QString::fromLatin1(member.sha256.toHex())}};
    if (member.modified.isValid())
        object[key("modified")] = member.modified.toUTC().toString(Qt::ISODateWithMs);
    if (member.padded_B > 0) {
        object[key("padded")] = member.padded_B;
        object[key("fault")] = member.fault;
    }
    return object;
}

/// A number of bytes, or -1 for anything else. Larger numbers are not exact in JSON.
qint64 sizeOf(const QJsonValue& value, qint64 most = qint64(1) << 53)
{
    const double number = value.toDouble(-1);
    const bool isSize = number >= 0 && number <= double(most) && std::floor(number) == number;
    return isSize ? static_cast<qint64>(number) : -1;
}

QByteArray nameOf(const QJsonObject& object)
{
    return SupportBundleManifest::unescaped(object[key("name")].toString()).value_or(QByteArray());
}

std::optional<Member> toMember(const QJsonObject& object)
{
    Member member;
    member.name = nameOf(object);
    member.size_B = sizeOf(object[key("size")]);
    const QByteArray digest = object[key("sha256")].toString().toLatin1();
    member.sha256 = QByteArray::fromHex(digest);
    member.modified = QDateTime::fromString(object[key("modified")].toString(), Qt::ISODateWithMs);
    member.padded_B =
        object.contains(key("padded")) ? sizeOf(object[key("padded")], member.size_B) : 0;
    member.fault = object[key("fault")].toString();
    const bool isMember = SupportBundleManifest::isSafeName(member.name) && member.size_B >= 0 &&
                          member.padded_B >= 0 && member.sha256.size() == s_digest_B &&
                          member.sha256.toHex() == digest;
    return isMember ? std::optional(member) : std::nullopt;
}

/// The reason why the object is not the head of a manifest, or an empty text.
QString problemOf(const QJsonObject& object)
{
    if (object[key("format")].toString() != s_format)
        return QStringLiteral("it is not a manifest");
    if (object[key("version")].toInt() != s_version)
        return QStringLiteral("it has a version that this program does not know");
    const auto count = object[key("members")].toArray().size() + //
                       object[key("missing")].toArray().size();
    return count > 2 * SupportBundleManifest::mostMembers ? QStringLiteral("it is too long")
                                                          : QString();
}

/// Whether the text has more values than any manifest. Each value takes far more memory than its
/// text, so that they are counted before the text is parsed.
bool hasTooManyValues(const QByteArray& json)
{
    constexpr int mostOfObject = 8; // with those that a later version adds
    int left = mostOfObject * 2 * SupportBundleManifest::mostMembers;
    bool isInString = false;
    for (const char* at = json.begin(); at != json.end() && left > 0; ++at) {
        if (*at == '"')
            isInString = !isInString;
        else if (isInString && *at == '\\' && at + 1 != json.end())
            ++at;
        else if (!isInString && (*at == ',' || *at == '[' || *at == '{'))
            --left;
    }
    return left == 0;
}

/// The backslash is not plain, since it begins an escape sequence.
bool isPlain(char ascii)
{
    return ascii >= ' ' && ascii < 0x7F && ascii != '\\';
}

} // namespace

bool Member::operator==(const Member& other) const
{
    return name == other.name && size_B == other.size_B && sha256 == other.sha256 &&
           modified == other.modified && padded_B == other.padded_B && fault == other.fault;
}

bool Omission::operator==(const Omission& other) const
{
    return name == other.name && reason == other.reason;
}

QByteArray SupportBundleManifest::toJson() const
{
    QJsonArray memberObjects;
    for (const Member& member : members)
        memberObjects.append(toObject(member));
    QJsonArray omissions;
    for (const Omission& omission : missing)
        omissions.append(
            QJsonObject{{key("name"), escaped(omission.name)}, {key("reason"), omission.reason}});
    return QJsonDocument(QJsonObject{{key("format"), s_format},
                                     {key("version"), s_version},
                                     {key("created"), created.toString(Qt::ISODateWithMs)},
                                     {key("library"), library},
                                     {key("members"), memberObjects},
                                     {key("missing"), omissions}})
        .toJson();
}

std::optional<SupportBundleManifest> SupportBundleManifest::parse(const QByteArray& json,
                                                                  QString& error)
{
    if (hasTooManyValues(json)) {
        error = QStringLiteral("it has too many values");
        return std::nullopt;
    }
    QJsonParseError fault;
    const QJsonObject object = QJsonDocument::fromJson(json, &fault).object();
    error = fault.error != QJsonParseError::NoError ? fault.errorString() : problemOf(object);
    if (!error.isEmpty())
        return std::nullopt;
    SupportBundleManifest manifest;
    manifest.created = QDateTime::fromString(object[key("created")].toString(), Qt::ISODateWithMs);
    manifest.library = object[key("library")].toString();
    const QJsonArray memberObjects = object[key("members")].toArray();
    for (const auto& value : memberObjects) {
        const std::optional<Member> member = toMember(value.toObject());
        if (!member) {
            error = QStringLiteral("its member %1 is not one").arg(manifest.members.size() + 1);
            return std::nullopt;
        }
        manifest.members.append(*member);
    }
    const QJsonArray omissions = object[key("missing")].toArray();
    for (const auto& value : omissions)
        manifest.missing.append(
            {nameOf(value.toObject()), value.toObject()[key("reason")].toString()});
    return manifest;
}

bool SupportBundleManifest::isSafeName(const QByteArray& name)
{
    constexpr int longest = 4096;
    if (name.size() > longest || name.contains('\0'))
        return false;
    const QList<QByteArray> components = name.split('/');
    for (const QByteArray& component : components) {
        if (component.isEmpty() || component == "." || component == "..")
            return false;
    }
    return true;
}

QString SupportBundleManifest::escaped(const QByteArray& name)
{
    return QString::fromUtf8(escapedUtf8(name, isPlain));
}

std::optional<QByteArray> SupportBundleManifest::unescaped(const QString& text)
{
    QByteArray name;
    const QStringList parts = text.split(QLatin1Char('\\'));
    name += parts.first().toUtf8();
    for (int i = 1; i < parts.size(); ++i) {
        const QByteArray digits = parts[i].mid(1, 2).toLatin1();
        const QByteArray byte = QByteArray::fromHex(digits);
        if (!parts[i].startsWith(QLatin1Char('x')) || digits.size() != 2 || byte.toHex() != digits)
            return std::nullopt;
        name += byte + parts[i].mid(3).toUtf8();
    }
    return name;
}

} // namespace zeltools
