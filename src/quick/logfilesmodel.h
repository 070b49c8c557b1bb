#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <qqml.h>

namespace zeltools::quick
{

/// The five files of the log manager and their health, which the model follows. It has no rows in a
/// program without a path layout. It belongs to one thread, that of the QML engine.
class ZELTOOLS_EXPORT LogFilesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LogFilesModel)

public:
    /// The roles `name`, `path`, `isHealthy`, `problem` and `linesNotWritten` of QML.
    enum Role {
        NameRole = Qt::UserRole, ///< The name in the language of the screen.
        PathRole,                ///< Empty while the file is closed.
        IsHealthyRole,
        ProblemRole,        ///< The step that fails and the system's text, or nothing.
        LinesNotWrittenRole ///< The count of this process when a fault last began or ended.
    };

    explicit LogFilesModel(QObject* parent = nullptr);
    ~LogFilesModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    const bool m_hasFiles;
};

} // namespace zeltools::quick
