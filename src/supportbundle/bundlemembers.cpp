#include "supportbundle/bundlemembers_p.h"

#include "libraryversion.h"
#include "supportbundle/piecereader_p.h"

#include <utility>

namespace zeltools
{

namespace
{

QByteArray digestOf(const QByteArray& content)
{
    return Digest::of(content, QCryptographicHash::Sha256);
}

} // namespace

BundleMembers::BundleMembers(BundleArchive& archive, std::function<void(qint64)> copied)
    : m_archive(archive)
    , m_copied(std::move(copied))
{
    const QDateTime now = QDateTime::currentDateTime();
    m_manifest.created = now.toOffsetFromUtc(now.offsetFromUtc());
    m_manifest.library = libraryVersion().toString();
}

bool BundleMembers::addFile(BundleFile& file)
{
    const QString fault = file.open();
    struct stat status = {};
    if (!fault.isEmpty() || fstat(*file.descriptor, &status) != 0) {
        omit(file.name, fault.isEmpty() ? qt_error_string() : fault);
        return true;
    }
    if (!isAccepted(file.name))
        return true;
    SupportBundleManifest::Member member;
    member.name = file.name;
    member.size_B = status.st_size;
    member.modified = QDateTime::fromMSecsSinceEpoch(
        status.st_mtim.tv_sec * qint64(1000) + status.st_mtim.tv_nsec / 1000000, Qt::UTC);
    const bool isDone =
        m_archive.beginMember(member.name, member.size_B, member.modified) && copy(file, member);
    file.descriptor.reset();
    m_manifest.members.append(member);
    return isDone;
}

bool BundleMembers::copy(const BundleFile& file, SupportBundleManifest::Member& member)
{
    PieceReader reader(*file.descriptor, member.size_B);
    while (true) {
        const PieceReader::Piece piece = reader.next();
        if (piece.size_B == 0)
            break;
        if (!m_archive.write(piece.bytes, size_t(piece.size_B)))
            return false;
        m_copied(piece.size_B);
    }
    member.sha256 = reader.digest();
    member.padded_B = reader.padded_B();
    member.fault = reader.fault();
    return true;
}

bool BundleMembers::addContent(const QByteArray& name, const QByteArray& content)
{
    if (!isAccepted(name))
        return true;
    m_manifest.members.append(
        {name, content.size(), digestOf(content), m_manifest.created, 0, QString()});
    return writeMember(name, content, m_manifest.created);
}

void BundleMembers::omit(const QByteArray& name, const QString& reason)
{
    if (m_manifest.missing.size() < SupportBundleManifest::mostMembers - 1)
        m_manifest.missing.append({name, reason});
    else
        ++m_omissionsLeftOut;
}

bool BundleMembers::finish()
{
    if (m_omissionsLeftOut > 0)
        m_manifest.missing.append({"...", QStringLiteral("%1 more files").arg(m_omissionsLeftOut)});
    const QByteArray json = m_manifest.toJson();
    return writeMember(SupportBundleManifest::ownName, json, m_manifest.created) &&
           writeMember(SupportBundleManifest::digestName,
                       SupportBundleManifest::digestLine(digestOf(json)), m_manifest.created);
}

/// Notes the reason if the bundle cannot hold a member of this name.
bool BundleMembers::isAccepted(const QByteArray& name)
{
    const QString problem = problemWith(name);
    if (problem.isEmpty())
        m_names.insert(name);
    else
        omit(name, problem);
    return problem.isEmpty();
}

QString BundleMembers::problemWith(const QByteArray& name) const
{
    if (!SupportBundleManifest::isSafeName(name) || SupportBundleManifest::isOwnName(name))
        return QStringLiteral("a bundle cannot hold this name");
    if (m_names.contains(name))
        return QStringLiteral("the bundle has a file of this name");
    if (m_names.size() >= SupportBundleManifest::mostMembers)
        return QStringLiteral("a bundle holds at most %1 files")
            .arg(SupportBundleManifest::mostMembers);
    return QString();
}

bool BundleMembers::writeMember(const QByteArray& name, const QByteArray& content,
                                const QDateTime& modified)
{
    return m_archive.beginMember(name, content.size(), modified) &&
           m_archive.write(content.constData(), size_t(content.size()));
}

} // namespace zeltools
