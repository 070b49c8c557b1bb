#include "supportbundle/bundlewalk_p.h"

#include "supportbundle/supportbundlemanifest.h"

#include <new>

#include <archive.h>
#include <archive_entry.h>

namespace zeltools
{

namespace
{

constexpr size_t s_piece_B = 1 << 18;

} // namespace

BundleWalk::BundleWalk(int file)
    : m_archive(archive_read_new())
    , m_piece(int(s_piece_B), Qt::Uninitialized)
{
    if (m_archive == nullptr)
        throw std::bad_alloc();
    if (!open(file))
        failByArchive();
}

BundleWalk::~BundleWalk()
{
    archive_read_free(m_archive);
}

bool BundleWalk::open(int file)
{
    return archive_read_support_filter_zstd(m_archive) == ARCHIVE_OK &&
           archive_read_support_filter_gzip(m_archive) == ARCHIVE_OK &&
           archive_read_support_format_tar(m_archive) == ARCHIVE_OK &&
           archive_read_open_fd(m_archive, file, s_piece_B) == ARCHIVE_OK;
}

bool BundleWalk::next()
{
    if (!m_error.isEmpty())
        return false;
    archive_entry* entry = nullptr;
    const int status = archive_read_next_header(m_archive, &entry);
    if (status == ARCHIVE_EOF)
        return false;
    if (status != ARCHIVE_OK && status != ARCHIVE_WARN)
        return failByArchive();
    const QString problem = problemWith(entry);
    if (!problem.isEmpty())
        return fail(problem);
    m_name = archive_entry_pathname(entry);
    m_size_B = m_left_B = archive_entry_size(entry);
    if (m_names.contains(m_name))
        return fail(QStringLiteral("it has the member %1 twice")
                        .arg(SupportBundleManifest::escaped(m_name)));
    m_names.insert(m_name);
    return checkUnpacked();
}

QString BundleWalk::problemWith(archive_entry* entry) const
{
    // Each filter multiplies what a byte unpacks to; a bundle has one, and libarchive counts one
    // for the file itself.
    if (archive_filter_count(m_archive) != 2)
        return QStringLiteral("it is not compressed once");
    const QByteArray name = archive_entry_pathname(entry);
    if (!SupportBundleManifest::isSafeName(name))
        return QStringLiteral("it has a member with the name \"%1\"")
            .arg(SupportBundleManifest::escaped(name));
    const bool isFile = archive_entry_filetype(entry) == AE_IFREG &&
                        archive_entry_hardlink(entry) == nullptr &&
                        archive_entry_sparse_count(entry) == 0 && archive_entry_size(entry) >= 0;
    if (!isFile)
        return QStringLiteral("its member %1 is not a plain file")
            .arg(SupportBundleManifest::escaped(name));
    return m_names.size() > SupportBundleManifest::mostMembers + 2
               ? QStringLiteral("it has too many members")
               : QString();
}

QByteArray BundleWalk::read()
{
    if (!m_error.isEmpty() || m_left_B == 0)
        return {};
    const la_ssize_t count = archive_read_data(m_archive, m_piece.data(), size_t(m_piece.size()));
    if (count < 0)
        failByArchive();
    else if (count == 0)
        fail(QStringLiteral("it ends inside the member ") + SupportBundleManifest::escaped(m_name));
    if (count <= 0 || !checkUnpacked())
        return {};
    m_left_B -= count;
    return QByteArray::fromRawData(m_piece.constData(), static_cast<int>(count));
}

qint64 BundleWalk::packed_B() const
{
    return archive_filter_bytes(m_archive, -1);
}

bool BundleWalk::checkUnpacked()
{
    const qint64 most_B = mostUnpacked_B + mostPerByte * packed_B();
    return archive_filter_bytes(m_archive, 0) <= most_B ||
           fail(QStringLiteral("it unpacks to far more than a bundle of its size holds"));
}

bool BundleWalk::fail(const QString& reason)
{
    if (m_error.isEmpty())
        m_error = reason;
    return false;
}

bool BundleWalk::failByArchive()
{
    const char* const reason = archive_error_string(m_archive);
    return fail(reason != nullptr ? QString::fromLocal8Bit(reason)
                                  : QStringLiteral("it cannot be read"));
}

} // namespace zeltools
