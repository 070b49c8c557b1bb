#include "quick/volumesmodel.h"

#include "quick/diskspace_p.h"
#include "quick/displaytext_p.h"
#include "quick/frameupdates_p.h"
#include "quick/readingpool_p.h"
#include "quick/rowsupdate_p.h"

#include <QFile>
#include <QStringList>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

namespace zeltools::quick
{

struct VolumesModel::Volume
{
    QString path;
    bool isWritable = false;
    DiskSpace space;

    bool operator==(const Volume& other) const
    {
        return path == other.path && isWritable == other.isWritable &&
               space.total_B == other.space.total_B && space.available_B == other.space.available_B;
    }
};

/// A question for the space of volumes, which a thread of a pool answers.
struct VolumesModel::Spaces
{
    std::vector<Volume> volumes; // shared with nothing in the thread of the model
    std::atomic<bool> isDone{false};
};

namespace
{

bool isRemovable(const QString& path, const QByteArray& fileSystem)
{
    // Asking for the space of these may block, or mount something.
    static const QList<QByteArray> excluded{"autofs", "nfs", "nfs4", "cifs", "smb3", "ceph", "9p"};
    static const QStringList folders{QStringLiteral("/media/"), QStringLiteral("/run/media/"),
                                     QStringLiteral("/mnt/")};
    return !excluded.contains(fileSystem) && !fileSystem.startsWith("fuse.") &&
           std::any_of(folders.begin(), folders.end(),
                       [&](const QString& folder) { return path.startsWith(folder); });
}

/// The kernel writes a blank, a tab, a line feed and a backslash as "\040".
QString unescaped(const QByteArray& text)
{
    QByteArray result;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size()) {
            result.append(static_cast<char>(text.mid(i + 1, 3).toInt(nullptr, 8)));
            i += 3;
        } else {
            result.append(text[i]);
        }
    }
    return QFile::decodeName(result);
}

} // namespace

VolumesModel::VolumesModel(QObject* parent)
    : CountedModel(parent)
    , m_mounts(std::make_unique<QFile>(QStringLiteral("/proc/self/mountinfo")))
    , m_answers(std::make_unique<FrameUpdates>([this] { readSpaces(); }))
{
    if (!m_mounts->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return;
    // The kernel marks the file as exceptional when something was mounted or unmounted.
    m_notifier = std::make_unique<QSocketNotifier>(m_mounts->handle(), QSocketNotifier::Exception);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &VolumesModel::refresh);
    refresh();
}

VolumesModel::~VolumesModel() = default;

void VolumesModel::refresh()
{
    if (!m_mounts->seek(0))
        return;
    QVector<Volume> volumes = volumesIn(m_mounts->readAll());
    m_spaces = std::make_shared<Spaces>();
    m_spaces->volumes.assign(volumes.cbegin(), volumes.cend());
    readingPool(Reading::Volumes).start([spaces = m_spaces, finished = m_answers->trigger()] {
        for (Volume& volume : spaces->volumes)
            volume.space = diskSpace(volume.path);
        spaces->isDone = true;
        finished();
    });
    for (Volume& volume : volumes) {
        for (const Volume& known : std::as_const(m_volumes)) {
            if (known.path == volume.path)
                volume.space = known.space;
        }
    }
    show(volumes);
}

void VolumesModel::readSpaces()
{
    if (m_spaces == nullptr || !m_spaces->isDone)
        return;
    const std::shared_ptr<Spaces> spaces = std::move(m_spaces);
    show(QVector<Volume>(spaces->volumes.begin(), spaces->volumes.end()));
}

void VolumesModel::show(const QVector<Volume>& volumes)
{
    RowsUpdate::apply(*this, m_volumes, volumes, [](const Volume& volume) { return volume.path; });
}

// A line is "36 35 98:0 /root /media/usb rw,noatime shared:1 - ext4 /dev/sda1 rw"; before the "-",
// there is any number of optional fields.
QVector<VolumesModel::Volume> VolumesModel::volumesIn(const QByteArray& mounts)
{
    constexpr int path = 4;
    constexpr int options = 5;
    QVector<Volume> volumes;
    const QList<QByteArray> lines = mounts.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        const auto separator = fields.indexOf("-", options);
        if (separator < 0 || separator + 3 >= fields.size())
            continue;
        Volume volume{unescaped(fields[path]), false, {}};
        if (!isRemovable(volume.path, fields[separator + 1]))
            continue;
        volume.isWritable = !fields[options].split(',').contains("ro") &&
                            !fields[separator + 3].split(',').contains("ro");
        // Of volumes that are mounted over each other, the last one is seen.
        const auto isBefore = [](const Volume& a, const Volume& b) { return a.path < b.path; };
        const auto place = std::lower_bound(volumes.begin(), volumes.end(), volume, isBefore);
        if (place != volumes.end() && place->path == volume.path)
            *place = volume;
        else
            volumes.insert(place, volume);
    }
    return volumes;
}

int VolumesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_volumes.size());
}

QVariant VolumesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Volume& volume = m_volumes[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return DisplayText(volume.path.section(QLatin1Char('/'), -1)).text;
    case PathRole:
        return volume.path;
    case AvailableRole:
        return volume.space.available_B;
    case TotalRole:
        return volume.space.total_B;
    case IsWritableRole:
        return volume.isWritable;
    default:
        return {};
    }
}

QHash<int, QByteArray> VolumesModel::roleNames() const
{
    return {{NameRole, "name"},
            {PathRole, "path"},
            {AvailableRole, "available"},
            {TotalRole, "total"},
            {IsWritableRole, "isWritable"}};
}

} // namespace zeltools::quick
