#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <functional>

#include <sys/types.h>

struct archive;

namespace zeltools
{

/// Writes a tar archive that is compressed by zstd or gzip, member by member. libarchive does it;
/// names are written by their bytes in the GNU form, which every tar reads.
///
/// After the first failure all functions return false, and errorString() gives the reason.
class BundleArchive
{
public:
    enum class Format { Zstandard, Gzip };
    /// Takes compressed bytes. Returns the reason why they could not be written, or an empty text.
    using Output = std::function<QString(const char* bytes, size_t size)>;

    BundleArchive(Format format, int level, Output output);
    ~BundleArchive();
    Q_DISABLE_COPY(BundleArchive)

    /// Begins a member of exactly this size.
    bool beginMember(const QByteArray& name, qint64 size_B, const QDateTime& modified);
    bool write(const char* bytes, size_t size);
    /// Ends the archive.
    bool close();
    /// Makes all further calls fail with this reason.
    void abandon(const QString& reason) { m_error = reason; }

    QString errorString() const { return m_error; }

private:
    bool check(int status);
    static ssize_t writeOutput(archive* handle, void* self, const void* bytes, size_t size);

    archive* m_archive;
    Output m_output;
    QString m_error;
};

} // namespace zeltools
