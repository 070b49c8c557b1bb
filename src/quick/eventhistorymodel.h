#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QFileSystemWatcher>
#include <QStringList>
#include <QVariantList>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

struct EventQuery;
class EventReading;
class FrameUpdates;

/// A page of the event history of the log manager, with the newest event in the first row. It
/// follows new events, rotations and the deletion of the file.
///
/// Another thread reads the files, so that neither large files nor a storage that hangs block the
/// screen. New events insert and remove rows; another page or filter resets the model. The model
/// belongs to one thread, that of the QML engine.
class ZELTOOLS_EXPORT EventHistoryModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(EventHistoryModel)
    Q_PROPERTY(int kind READ kind WRITE setKind NOTIFY kindChanged)
    Q_PROPERTY(QVariantList kinds READ kinds NOTIFY languageChanged)
    Q_PROPERTY(QString from READ from WRITE setFrom NOTIFY fromChanged)
    Q_PROPERTY(QString to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(int page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(int rowsPerPage READ rowsPerPage WRITE setRowsPerPage NOTIFY rowsPerPageChanged)
    Q_PROPERTY(int pagesCount READ pagesCount NOTIFY pagesCountChanged)
    Q_PROPERTY(zeltools::quick::EventHistoryModel::Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString error READ error NOTIFY statusChanged)

public:
    /// The roles `time`, `kind`, `text`, `isCut` and `fullText` of QML.
    enum Role {
        TimeRole = Qt::UserRole, ///< QDateTime; invalid for a line that is not an event.
        KindRole,                ///< The name in the language of the screen; empty for such a line.
        TextRole,                ///< At most 1,000 characters in one line.
        IsCutRole,               ///< Whether `fullText` has more than `text`.
        FullTextRole             ///< At most 65,536 characters.
    };
    /// How current the rows are.
    enum Status {
        Loading, ///< The rows are those from before the last change of a property.
        Ready,
        Failed ///< `error` has the reason. The rows that could be read are there.
    };
    Q_ENUM(Status)

    explicit EventHistoryModel(QObject* parent = nullptr);
    /// Does not wait for a running reading.
    ~EventHistoryModel() override;

    /// One of LogManager::EventModuleFilter. A value that is not a filter counts as AllEvent.
    int kind() const;
    void setKind(int kind);
    /// The filters as a list of {value, name}; the names are in the language of the screen.
    QVariantList kinds() const;
    /// The first day as "dd/MM/yyyy"; an empty text means no limit. With a text that is not a date,
    /// the model fails.
    QString from() const;
    void setFrom(const QString& date);
    /// The last day, in the same form as `from`.
    QString to() const;
    void setTo(const QString& date);
    /// Page 0 has the newest events. The value returns to 0 when a filter or the size of a page
    /// changes, and to the last page when there are fewer pages than before.
    int page() const;
    void setPage(int page);
    /// At least 1, 100 by default.
    int rowsPerPage() const;
    void setRowsPerPage(int rows);
    /// The number of pages of the whole selection.
    int pagesCount() const { return m_pagesCount; }
    /// Whether the rows are those of the properties.
    Status status() const { return m_status; }
    /// The reason for the user why the files could not be read; empty unless the status is Failed.
    QString error() const { return m_error; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void kindChanged();
    void fromChanged();
    void toChanged();
    void pageChanged();
    void rowsPerPageChanged();
    void pagesCountChanged();
    void statusChanged();

private:
    template <typename Value>
    void change(Value EventQuery::*member, const Value& value,
                void (EventHistoryModel::*changed)());
    void movePage(int page);
    void requestReading();
    void read();
    QString obstacle() const;
    void finish();
    void setStatus(Status status, const QString& error = QString());
    void show(const EventQuery& query, const QStringList& lines, int pagesCount);

    const std::unique_ptr<EventQuery> m_query;
    const std::unique_ptr<EventQuery> m_shownQuery;
    const std::unique_ptr<FrameUpdates> m_updates;
    const std::unique_ptr<FrameUpdates> m_endOfReading;
    std::shared_ptr<EventReading> m_reading; // the running one
    bool m_isStale = false;                  // another reading is due after the running one
    QFileSystemWatcher m_watcher;
    QStringList m_lines;
    int m_pagesCount = 0;
    Status m_status = Loading;
    QString m_error;
};

} // namespace zeltools::quick
