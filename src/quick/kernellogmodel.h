#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QString>
#include <qqml.h>

#include <deque>
#include <memory>

namespace dmesg
{
class Dmesg;
}

namespace zeltools::quick
{

class FrameUpdates;

/// The lines of the kernel log that dmesg::Dmesg captures, the oldest first. The model begins with
/// the lines in memory and follows the capture, at most once in each frame of the screen.
///
/// Lines may have any content. The role `text` is the line without its time, and `fullText` the
/// whole line, both shortened and without control characters. The model starts no capture, which is
/// for the application to decide. It belongs to one thread.
class ZELTOOLS_EXPORT KernelLogModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(KernelLogModel)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(int maximumRows READ maximumRows WRITE setMaximumRows NOTIFY maximumRowsChanged)
    Q_PROPERTY(bool isRestricted READ isRestricted CONSTANT)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        TimeRole = Qt::UserRole, ///< `time`; invalid for a line that continues another one
        TextRole,                ///< `text`
        IsCutRole,               ///< `isCut`, whether `text` is shortened
        FullTextRole             ///< `fullText`
    };

    /// The memory of the lines, in characters; older ones make room.
    static constexpr qint64 mostCharacters = qint64(8) * 1024 * 1024;

    explicit KernelLogModel(QObject* parent = nullptr);
    ~KernelLogModel() override;

    /// A text that the line contains, without regard to case.
    QString filter() const { return m_filter; }
    void setFilter(const QString& filter);
    /// How many lines the model keeps, whether the filter shows them or not; 10,000 by default. The
    /// model also keeps at most `mostCharacters` of them.
    int maximumRows() const { return m_maximumRows; }
    void setMaximumRows(int count);
    /// Whether the kernel shows its log to privileged processes only.
    bool isRestricted() const;
    /// Whether the capture runs.
    bool isRunning() const { return m_isRunning; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void filterChanged();
    void maximumRowsChanged();
    void isRunningChanged();

protected:
    /// Follows another capture, which must outlive the model.
    KernelLogModel(dmesg::Dmesg& kernelLog, QObject* parent);

private:
    struct Row
    {
        quint64 number; // of the line
        QString line;
    };
    using Rows = std::deque<Row>;

    void takeNewLines();
    void append(const Rows& newRows);
    void limit();
    Rows matching(const Rows& rows) const;
    void updateRunning();

    dmesg::Dmesg& m_kernelLog;
    const std::unique_ptr<FrameUpdates> m_updates;
    quint64 m_number = 0; // of the last line
    Rows m_kept;
    qint64 m_characters = 0; // of m_kept
    Rows m_rows;             // those of m_kept that match the filter
    QString m_filter;
    int m_maximumRows = 10000;
    bool m_isRunning = false;
};

} // namespace zeltools::quick
