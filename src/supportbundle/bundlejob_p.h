#pragma once

#include "simplecrypt.h"
#include "supportbundle/bundlemembers_p.h"

#include <QVector>

#include <atomic>
#include <optional>
#include <utility>

namespace zeltools
{

/// The sources of a bundle and how it is written.
struct BundleSources
{
    QVector<BundleFolder> folders;
    QVector<std::pair<QByteArray, QString>> files; ///< Name in the bundle, path.
    QVector<std::pair<QByteArray, QByteArray>> contents;
    QString environmentFile;
    int level = 0;
    std::optional<SimpleCrypt> crypt;
};

/// Writes one bundle, in the thread that calls write().
class BundleJob
{
public:
    using Progress = std::function<void(qint64 done_B, qint64 total_B)>;

    /// write() fails soon when another thread sets `isCancelled`. The references must outlive the
    /// object.
    BundleJob(const BundleSources& sources, const std::atomic<bool>& isCancelled,
              Progress progress);

    /// Writes to an open file that becomes `path`. Returns the reason of a failure, or an empty
    /// text.
    QString write(int output, const QString& path);

    const SupportBundleManifest& manifest() const { return m_manifest; }

private:
    QString writeArchive(const QString& path, BundleArchive::Output output);
    bool addAll(BundleMembers& members);
    bool addEnvironment(BundleMembers& members);
    bool addReports(BundleMembers& members);
    std::vector<BundleFile> listFiles(BundleMembers& members) const;
    void removeOutput(std::vector<BundleFile>& files) const;
    void tell();

    const BundleSources& m_sources;
    const std::atomic<bool>& m_isCancelled;
    const Progress m_progress;
    int m_output = -1;
    QString m_path;
    qint64 m_done_B = 0;
    qint64 m_total_B = 0;
    SupportBundleManifest m_manifest;
};

} // namespace zeltools
