#include "supportbundle/bundlecheck_p.h"

#include "crypt/digest.h"

#include <utility>

namespace zeltools
{

namespace
{

const QLatin1String s_cancelled("the reading was cancelled");
const QLatin1String s_damaged("its manifest is damaged");

QString escaped(const QByteArray& name)
{
    return SupportBundleManifest::escaped(name);
}

} // namespace

BundleCheck::BundleCheck(BundleWalk& walk, Depth depth)
    : m_walk(walk)
    , m_depth(depth)
{
}

QString BundleCheck::run(const std::function<bool()>& goesOn)
{
    while (m_walk.next()) {
        QString problem = takeMember(goesOn);
        if (!m_walk.errorString().isEmpty())
            break;
        if (!problem.isEmpty())
            return problem;
    }
    if (!m_walk.errorString().isEmpty())
        return m_walk.errorString();
    if (!m_hasDigest)
        return QStringLiteral("it has no manifest at its end, so it is cut");
    const QString problem = readManifest();
    return problem.isEmpty() ? compare() : problem;
}

QString BundleCheck::takeMember(const std::function<bool()>& goesOn)
{
    constexpr int longestLine_B = 256;
    const QByteArray name = m_walk.name();
    if (name == SupportBundleManifest::digestName && m_hasJson) {
        m_hasDigest = true;
        m_digestLine = readWhole(longestLine_B);
        return m_digestLine.isEmpty() ? QString(s_damaged) : QString();
    }
    if (m_hasJson)
        return QStringLiteral("it goes on behind its manifest");
    if (name == SupportBundleManifest::ownName) {
        m_hasJson = true;
        m_json = readWhole(SupportBundleManifest::largest_B);
        return m_json.isEmpty() ? QStringLiteral("its manifest is too large or empty") : QString();
    }
    Digest digest(QCryptographicHash::Sha256);
    for (QByteArray piece = m_walk.read(); !piece.isEmpty(); piece = m_walk.read()) {
        if (m_depth == Depth::Digests)
            digest.add(piece.constData(), piece.size());
        if (!goesOn())
            return s_cancelled;
    }
    m_found.insert(name, {m_walk.size_B(), digest.result()});
    return QString();
}

/// The content of the member, or nothing if it is larger.
QByteArray BundleCheck::readWhole(int limit_B)
{
    QByteArray content;
    if (m_walk.size_B() > limit_B)
        return content;
    for (QByteArray piece = m_walk.read(); !piece.isEmpty(); piece = m_walk.read())
        content += piece;
    return content;
}

QString BundleCheck::readManifest()
{
    const QByteArray digest = Digest::of(m_json, QCryptographicHash::Sha256);
    if (m_digestLine != SupportBundleManifest::digestLine(digest))
        return s_damaged;
    QString error;
    std::optional<SupportBundleManifest> manifest = SupportBundleManifest::parse(m_json, error);
    if (!manifest)
        return QStringLiteral("its manifest is not readable: ") + error;
    m_manifest = std::move(*manifest);
    return QString();
}

QString BundleCheck::compare()
{
    for (const SupportBundleManifest::Member& member : qAsConst(m_manifest.members)) {
        const auto found = m_found.find(member.name);
        if (found == m_found.end())
            return QStringLiteral("it lacks the member ") + escaped(member.name);
        const bool isSame = found->size_B == member.size_B &&
                            (m_depth == Depth::Sizes || found->digest == member.sha256);
        if (!isSame)
            return QStringLiteral("its member %1 is damaged").arg(escaped(member.name));
        m_found.erase(found);
    }
    return m_found.isEmpty() ? QString()
                             : QStringLiteral("its manifest does not name the member ") +
                                   escaped(m_found.begin().key());
}

} // namespace zeltools
