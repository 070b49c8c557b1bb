#include "logging/ringplaces_p.h"

#include "logging/logfileset_p.h"

#include <QDir>
#include <QFileInfo>

namespace
{

// Returns false for a path that is too long, which is left out: its lines cannot be recovered.
bool describe(RingHeader::File& place, const QString& path,
              const RotatingLogFileConfiguration& configuration, qint64 maximumSize_B)
{
    const QFileInfo info(path);
    const QString folder = info.dir().canonicalPath();
    const QByteArray name = QFile::encodeName(
        folder.isEmpty() ? info.absoluteFilePath() : folder + QLatin1Char('/') + info.fileName());
    place.path[0] = '\0';
    if (name.size() >= RingHeader::pathSize)
        return false;
    place.maximumSize_B = maximumSize_B;
    place.predecessorsCount = configuration.secondaryFilesCount;
    place.isCompressed = configuration.compressed ? 1 : 0;
    qstrncpy(place.path, name.constData(), RingHeader::pathSize);
    return true;
}

} // namespace

RingPlaces::RingPlaces(RingHeader& header, LogFileSet& files)
    : m_header(header)
    , m_files(files)
{
    describeSet();
}

int RingPlaces::add(RotatingLogFile* file, const RotatingLogFileConfiguration& configuration)
{
    const QString path = file->primaryFilename();
    for (int place = LogFileSet::count; place < RingHeader::filesCount; ++place) {
        RotatingLogFile* none = nullptr;
        if (!m_traceFiles[size_t(place)].compare_exchange_strong(none, file))
            continue;
        if (describe(m_header.files[place], path, configuration, file->maximumSize_B()))
            return place;
        m_traceFiles[size_t(place)] = nullptr;
        return -1;
    }
    return -1;
}

void RingPlaces::describeSet()
{
    for (int i = 0; i < LogFileSet::count; ++i) {
        const RotatingLogFile* const file = m_files.file(LogManager::LogFileId(i));
        if (file == nullptr)
            continue;
        const int predecessors = int(file->filenames(RotatingLogFile::NewestFirst).size()) - 1;
        describe(m_header.files[i], file->primaryFilename(), {0, predecessors, false},
                 file->maximumSize_B());
    }
}

RotatingLogFile* RingPlaces::file(int place)
{
    return place < LogFileSet::count ? m_files.file(LogManager::LogFileId(place))
                                     : m_traceFiles[size_t(place)].load();
}

bool RingPlaces::write(int place, const char* lines, qint64 size, bool isUrgent)
{
    if (place < LogFileSet::count) {
        m_files.write(LogManager::LogFileId(place), lines, size,
                      isUrgent ? LogFileSet::Urgency::Urgent : LogFileSet::Urgency::Normal);
        return true;
    }
    return file(place)->write(lines, size) == size;
}
