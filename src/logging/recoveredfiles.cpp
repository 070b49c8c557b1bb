#include "logging/recoveredfiles_p.h"

#include "logging/logfileset_p.h"

#include <QFileInfo>

#include <algorithm>

RecoveredFiles::RecoveredFiles(RingFile& ring, LogFileSet* openFiles)
    : m_ring(ring)
    , m_openFiles(openFiles)
{
    // The half line that a file ended with when it was opened may be removed now.
    for (int place = 0; place < LogFileSet::count; ++place) {
        if (RotatingLogFile* const open = openFile(place))
            open->endHalfLine();
    }
}

RecoveredFiles::~RecoveredFiles() = default;

RotatingLogFile* RecoveredFiles::file(int place)
{
    if (place >= RingHeader::filesCount)
        return nullptr;
    if (RotatingLogFile* const open = openFile(place))
        return open;
    std::unique_ptr<RotatingLogFile>& file = m_files[size_t(place)];
    if (file == nullptr)
        file = open(m_ring.header().files[place]);
    return file.get();
}

bool RecoveredFiles::write(int place, const char* lines, qint64 size, bool)
{
    if (m_ring.header().files[place].pathText().isEmpty()) {
        m_isDamaged = true;
        return true;
    }
    return file(place)->write(lines, size) == size;
}

RotatingLogFile* RecoveredFiles::openFile(int place) const
{
    RotatingLogFile* const file =
        m_openFiles != nullptr ? m_openFiles->file(LogManager::LogFileId(place)) : nullptr;
    const QString path = m_ring.header().files[place].pathText();
    const bool isSame =
        file != nullptr && QFileInfo(file->primaryFilename()).canonicalFilePath() == path;
    return isSame ? file : nullptr;
}

std::unique_ptr<RotatingLogFile> RecoveredFiles::open(const RingHeader::File& settings)
{
    auto file = std::make_unique<RotatingLogFile>(
        RotatingLogFileConfiguration{1, std::clamp(settings.predecessorsCount, 0, mostPredecessors),
                                     settings.isCompressed != 0});
    if (settings.maximumSize_B > 0)
        file->setMaximumSizeMiB(double(settings.maximumSize_B) / (1024 * 1024));
    file->setPrimaryFilename(settings.pathText());
    if (file->file.open(QIODevice::Append))
        file->endHalfLine();
    return file;
}
