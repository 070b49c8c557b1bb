#include "logging/filesync_p.h"

#include "logging/primaryfile.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

FileSync::FileSync(const PrimaryFile& file)
    : m_file(file)
{
}

// The three lowest descriptors would become standard streams of the host. If there is no descriptor
// left, the next write tries it again.
void FileSync::handOver()
{
    const int descriptor = fcntl(m_file.handle(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (descriptor < 0)
        return;
    std::string folder;
    if (std::exchange(m_isNewName, false))
        folder = QFile::encodeName(QFileInfo(m_file.fileName()).path()).toStdString();
    m_current = std::make_shared<UnsyncedFile>(descriptor, std::move(folder));
    m_sync->add(m_current);
}

// A rotation deletes the oldest predecessor, whose blocks must become free at once, as others may
// need them on a small disk.
void FileSync::onReplaced()
{
    m_isNewName = true;
    if (m_current != nullptr)
        m_former.push_back(std::move(m_current));
    for (const auto& file : m_former)
        file->dropDeleted();
    m_former.erase(std::remove_if(m_former.begin(), m_former.end(),
                                  [](const auto& file) { return !file->isWaiting(); }),
                   m_former.end());
}
