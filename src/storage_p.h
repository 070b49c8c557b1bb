#pragma once

class QFile;
class QString;

namespace zeltools
{

/// Forces data from memory to storage as described at System. On the desktop it forces nothing.
class Storage
{
public:
    constexpr explicit Storage(bool isBoard)
        : m_isBoard(isBoard)
    {
    }

    void sync(QFile& file) const;
    void sync(int fileDescriptor) const;
    void syncAll() const;
    /// Syncs, then writes the kernel's command into this file, if it can be opened.
    void dropPageCache(const QString& dropCachesFile) const;

private:
    void syncOpenFile(QFile& file) const;
    QString force(int fileDescriptor) const;

    bool m_isBoard;
};

} // namespace zeltools
