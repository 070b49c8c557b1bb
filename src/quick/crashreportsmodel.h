#pragma once

#include <zeltools/folderlistmodel.h>
#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QDateTime>
#include <QVector>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

struct CrashSummary;
class CrashSummaryReader;

/// The crash reports in a folder, the newest first (see CrashReports). The model follows the folder
/// like FolderListModel, also when it vanishes and comes back; another thread reads the files.
///
/// A report may be cut or damaged: the roles then have what could be read, and `isComplete` is
/// false. A model belongs to one thread.
class ZELTOOLS_EXPORT CrashReportsModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(CrashReportsModel)
    Q_PROPERTY(QString folder READ folder WRITE setFolder NOTIFY folderChanged)
    Q_PROPERTY(bool isReadable READ isReadable NOTIFY isReadableChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString newest READ newest NOTIFY newestChanged)
    /// The time of the crash in the report that `newest` names.
    Q_PROPERTY(QDateTime newestTime READ newestTime NOTIFY newestChanged)

public:
    /// The roles, whose names in QML are given beside them.
    enum Role {
        FileNameRole = Qt::UserRole, ///< `fileName`
        PathRole,                    ///< `path`
        SizeRole,                    ///< `size`, in bytes
        TimeRole,                    ///< `time`, of the crash; of the file if it is not known
        ReasonRole,    ///< `reason`: the signal and the reason, or why it is not known
        ThreadRole,    ///< `thread`, the kernel's id; 0 if it is not known
        IsCompleteRole ///< `isComplete`
    };

    explicit CrashReportsModel(QObject* parent = nullptr);
    ~CrashReportsModel() override;

    /// The folder, which is CrashReports::folder() when the model is constructed.
    QString folder() const { return m_files.folder(); }
    void setFolder(const QString& folder);
    /// Whether the folder exists and may be read.
    bool isReadable() const { return m_files.status() == FolderListModel::Ready; }
    /// Whether the folder or its new files are still being read, so that the rows are not yet those
    /// of the folder.
    bool isLoading() const { return m_isLoading; }
    /// The reason and the time of the newest report; empty if there is none.
    QString newest() const;
    QDateTime newestTime() const;

    /// The whole text of a report, read now; or the reason why it cannot be read.
    Q_INVOKABLE QString report(int row) const;
    /// Deletes the file of a report, if the access level allows it; this is one event line. Returns
    /// an empty text, or the reason for the user why it did nothing.
    Q_INVOKABLE QString remove(int row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void folderChanged();
    void isReadableChanged();
    void isLoadingChanged();
    void newestChanged();

private:
    using FolderListModel = tools::datamodel::FolderListModel;
    using Rows = QVector<CrashSummary>;

    void read();
    void show(const Rows& rows);
    void updateLoading();
    Rows files() const;

    FolderListModel m_files;
    Rows m_rows;
    std::shared_ptr<CrashSummaryReader> m_reader; // the running one
    int m_serial = 0;                             // of the last reader
    bool m_isLoading = false;
};

} // namespace zeltools::quick
