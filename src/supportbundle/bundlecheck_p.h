#pragma once

#include "supportbundle/bundlewalk_p.h"
#include "supportbundle/supportbundlemanifest.h"

#include <QHash>

namespace zeltools
{

/// Reads all members of a bundle and compares them with its manifest.
class BundleCheck
{
public:
    enum class Depth { Sizes, Digests };

    BundleCheck(BundleWalk& walk, Depth depth);

    /// `goesOn` is asked after each piece. Returns the reason why the bundle is not complete, or an
    /// empty text.
    QString run(const std::function<bool()>& goesOn);

    SupportBundleManifest takeManifest() { return std::move(m_manifest); }
    bool hasMembers() const { return !m_found.isEmpty(); }

private:
    struct Found
    {
        qint64 size_B;
        QByteArray digest;
    };

    QString takeMember(const std::function<bool()>& goesOn);
    QByteArray readWhole(int limit_B);
    QString readManifest();
    QString compare();

    BundleWalk& m_walk;
    const Depth m_depth;
    QHash<QByteArray, Found> m_found;
    bool m_hasJson = false;
    bool m_hasDigest = false;
    QByteArray m_json;
    QByteArray m_digestLine;
    SupportBundleManifest m_manifest;
};

} // namespace zeltools
