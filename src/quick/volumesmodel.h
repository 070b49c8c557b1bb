#pragma once

#include <zeltools/quick/countedmodel.h>

#include <QSocketNotifier>
#include <QString>
#include <QVector>
#include <qqml.h>

#include <memory>

class QFile;

namespace zeltools::quick
{

class FrameUpdates;

/// The mounted removable volumes, such as memory sticks: what is mounted below /media, /run/media
/// or /mnt, except network disks, which may not answer. The kernel announces when one is mounted or
/// unmounted. Another thread asks for the space, since the kernel may read much of a slow stick for
/// it; until the answer, both sizes are 0. Use the model in the thread of the QML engine.
class ZELTOOLS_EXPORT VolumesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(VolumesModel)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        NameRole = Qt::UserRole, ///< `name`: the last part of the path
        PathRole,                ///< `path`: where the volume is mounted
        AvailableRole,           ///< `available`: bytes that can still be written
        TotalRole,               ///< `total`: bytes
        IsWritableRole           ///< `isWritable`: it is not mounted read-only
    };

    explicit VolumesModel(QObject* parent = nullptr);
    ~VolumesModel() override;

    /// Reads again how much space the volumes have, which the kernel does not announce.
    Q_INVOKABLE void refresh();

    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    struct Volume;
    struct Spaces;

    static QVector<Volume> volumesIn(const QByteArray& mounts);
    void readSpaces();
    void show(const QVector<Volume>& volumes);

    const std::unique_ptr<QFile> m_mounts;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QVector<Volume> m_volumes; // sorted by path
    const std::unique_ptr<FrameUpdates> m_answers;
    std::shared_ptr<Spaces> m_spaces; // the last question
};

} // namespace zeltools::quick
