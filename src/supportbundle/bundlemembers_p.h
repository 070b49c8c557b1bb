#pragma once

#include "supportbundle/bundlearchive_p.h"
#include "supportbundle/bundlefolder_p.h"
#include "supportbundle/supportbundlemanifest.h"

#include <QSet>

#include <functional>

namespace zeltools
{

/// Copies files and texts into the archive of a bundle and notes each in the manifest. A source
/// that cannot be read is noted too and stops nothing; the functions only return false if the
/// archive cannot be written.
class BundleMembers
{
public:
    /// `copied` is called with the number of bytes of a file after each piece.
    BundleMembers(BundleArchive& archive, std::function<void(qint64)> copied);

    /// The size of the file is taken once, so the lines that come later stay outside. If the file
    /// yields fewer bytes (it was truncated, or its disk fails), zeros take their place.
    bool addFile(BundleFile& file);
    bool addContent(const QByteArray& name, const QByteArray& content);
    void omit(const QByteArray& name, const QString& reason);
    /// Adds the manifest, and behind it the digest of the manifest in the form of sha256sum.
    bool finish();

    SupportBundleManifest takeManifest() { return std::move(m_manifest); }

private:
    bool isAccepted(const QByteArray& name);
    QString problemWith(const QByteArray& name) const;
    bool writeMember(const QByteArray& name, const QByteArray& content, const QDateTime& modified);
    bool copy(const BundleFile& file, SupportBundleManifest::Member& member);

    BundleArchive& m_archive;
    std::function<void(qint64)> m_copied;
    SupportBundleManifest m_manifest;
    QSet<QByteArray> m_names;
    int m_omissionsLeftOut = 0;
};

} // namespace zeltools
