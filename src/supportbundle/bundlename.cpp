#include "supportbundle/bundlename_p.h"

namespace zeltools
{

namespace
{

const QLatin1String s_gzip(".tar.gz");
const QLatin1String s_zstandard(".tar.zst");
const QLatin1String s_crypt(".crypt");

} // namespace

BundleName::BundleName(const QString& path)
    : m_path(path)
    , m_archive(path.endsWith(s_crypt) ? path.chopped(s_crypt.size()) : path)
{
}

BundleArchive::Format BundleName::format() const
{
    return m_archive.endsWith(s_gzip) ? BundleArchive::Format::Gzip
                                      : BundleArchive::Format::Zstandard;
}

int BundleName::usualLevel() const
{
    return format() == BundleArchive::Format::Gzip ? 6 : 3;
}

int BundleName::highestLevel() const
{
    return format() == BundleArchive::Format::Gzip ? 9 : 19;
}

QString BundleName::problem(bool hasKey, int level) const
{
    if (!m_archive.endsWith(s_gzip) && !m_archive.endsWith(s_zstandard))
        return QStringLiteral("the name of a bundle ends in .tar.zst or .tar.gz, or with .crypt "
                              "behind that: ") +
               m_path;
    if (hasKey && !isEncrypted())
        return QStringLiteral("the name of an encrypted bundle ends in .crypt: ") + m_path;
    if (!hasKey && isEncrypted())
        return QStringLiteral("an encrypted bundle needs a key: ") + m_path;
    if (level < 0 || level > highestLevel())
        return QStringLiteral("the level of this format is a number from 1 to %1")
            .arg(highestLevel());
    return QString();
}

} // namespace zeltools
