#pragma once

#include <zeltools/simplecrypt.h>
#include <zeltools/supportbundle/supportbundlemanifest.h>

#include <QString>

#include <functional>
#include <optional>

namespace zeltools
{

/// Reads a support bundle without unpacking it to disk, and checks whether it is complete. A bundle
/// comes from outside and may be forged: whatever it holds, reading it stores nothing, takes at
/// most some 200 MiB of memory, ends after an unpacked GiB plus a thousand times the size of the
/// file, and gives one clear reason of refusal. The digests find damage, not a forger, who can
/// write his own.
///
/// The functions block. An object belongs to one thread.
class ZELTOOLS_EXPORT SupportBundleReader
{
public:
    /// A callback with the number of bytes that have been read of the file. Reading fails if it
    /// returns false.
    using Progress = std::function<bool(qint64 done_B, qint64 total_B)>;

    /// Takes the path of a bundle; nothing is read yet. The function is called with the progress.
    explicit SupportBundleReader(const QString& path, Progress progress = Progress());

    /// Sets the key for a file whose name ends in ".crypt".
    void setCrypt(const SimpleCrypt& crypt) { m_crypt = crypt; }

    /// Reads the manifest and compares it with the names and sizes of the members.
    bool list();
    /// Does the same, and also compares the SHA-256 of each member.
    bool verify();

    /// The manifest, after list() or verify() have returned true.
    const SupportBundleManifest& manifest() const { return m_manifest; }
    /// Why the file could not be read or is not a complete bundle, in one line with its path.
    QString errorString() const { return m_error; }

private:
    bool read(bool hasDigests);
    QString readFile(int file, bool hasDigests);
    QString readEncrypted(int file, qint64 size_B, bool hasDigests);
    QString readMembers(int file, qint64 size_B, bool hasDigests, bool& isArchive);

    const QString m_path;
    const Progress m_progress;
    std::optional<SimpleCrypt> m_crypt;
    SupportBundleManifest m_manifest;
    QString m_error;
};

} // namespace zeltools
