#include "supportbundle/bundlearchive_p.h"

#include <cerrno>
#include <memory>
#include <new>
#include <utility>

#include <archive.h>
#include <archive_entry.h>

namespace zeltools
{

BundleArchive::BundleArchive(Format format, int level, Output output)
    : m_archive(archive_write_new())
    , m_output(std::move(output))
{
    if (m_archive == nullptr)
        throw std::bad_alloc();
    constexpr int block_B = 1 << 20;
    check(archive_write_set_format_gnutar(m_archive));
    check(format == Format::Gzip ? archive_write_add_filter_gzip(m_archive)
                                 : archive_write_add_filter_zstd(m_archive));
    check(archive_write_set_bytes_per_block(m_archive, block_B));
    check(archive_write_set_bytes_in_last_block(m_archive, 1)); // no zeros behind the end
    check(archive_write_set_filter_option(m_archive, nullptr, "compression-level",
                                          QByteArray::number(level).constData()));
    if (m_error.isEmpty())
        check(archive_write_open(m_archive, this, nullptr, writeOutput, nullptr));
}

BundleArchive::~BundleArchive()
{
    // Freeing it would end the archive, as if it were complete.
    if (m_error.isEmpty())
        m_error = QStringLiteral("the archive was abandoned");
    archive_write_free(m_archive);
}

bool BundleArchive::beginMember(const QByteArray& name, qint64 size_B, const QDateTime& modified)
{
    const std::unique_ptr<archive_entry, decltype(&archive_entry_free)> entry(archive_entry_new(),
                                                                              archive_entry_free);
    if (!entry)
        throw std::bad_alloc();
    archive_entry_copy_pathname(entry.get(), name.constData());
    archive_entry_set_size(entry.get(), size_B);
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_mtime(entry.get(), modified.isValid() ? modified.toSecsSinceEpoch() : 0, 0);
    return m_error.isEmpty() && check(archive_write_header(m_archive, entry.get()));
}

bool BundleArchive::write(const char* bytes, size_t size)
{
    return m_error.isEmpty() &&
           check(archive_write_data(m_archive, bytes, size) < 0 ? ARCHIVE_FATAL : ARCHIVE_OK);
}

bool BundleArchive::close()
{
    return m_error.isEmpty() && check(archive_write_close(m_archive));
}

bool BundleArchive::check(int status)
{
    if (status != ARCHIVE_OK && m_error.isEmpty()) {
        const char* reason = archive_error_string(m_archive);
        m_error = reason != nullptr ? QString::fromLocal8Bit(reason)
                                    : QStringLiteral("the archive cannot be written");
    }
    return m_error.isEmpty();
}

ssize_t BundleArchive::writeOutput(archive* handle, void* self, const void* bytes, size_t size)
{
    auto* const me = static_cast<BundleArchive*>(self);
    if (me->m_error.isEmpty())
        me->m_error = me->m_output(static_cast<const char*>(bytes), size);
    if (me->m_error.isEmpty())
        return static_cast<ssize_t>(size);
    archive_set_error(handle, EIO, "the output was refused");
    return -1;
}

} // namespace zeltools
