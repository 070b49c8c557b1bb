#pragma once

class QFile;
class QString;

namespace zeltools
{

/// Forces data from memory to storage as System describes. On the desktop it does nothing, apart
/// from the Error line for a file that cannot be opened.
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
    /// Syncs all, then drops the page cache if this file of the kernel can be opened.
    void dropPageCache(const QString& dropCachesFile) const;

private:
    void syncOpenFile(QFile& file) const;
    QString force(int fileDescriptor) const;

    bool m_isBoard;
};

} // namespace zeltools
