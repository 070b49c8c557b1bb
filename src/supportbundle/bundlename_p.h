#pragma once

#include "supportbundle/bundlearchive_p.h"

#include <QString>

namespace zeltools
{

/// The form of a bundle as its name tells it: "x.tar.zst", "x.tar.gz", or one of the two with
/// ".crypt" behind.
class BundleName
{
public:
    explicit BundleName(const QString& path);

    BundleArchive::Format format() const;
    bool isEncrypted() const { return m_path != m_archive; }
    /// The level of the programs zstd and gzip where none is chosen.
    int usualLevel() const;
    int highestLevel() const;
    /// The reason why a bundle cannot have this name, or an empty text. A level of 0 is the usual
    /// one.
    QString problem(bool hasKey, int level) const;

private:
    const QString m_path;
    const QString m_archive; ///< the path without ".crypt"
};

} // namespace zeltools
