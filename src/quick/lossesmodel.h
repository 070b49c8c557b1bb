#pragma once

#include <zeltools/quick/countedmodel.h>
#include <zeltools/zeltools_export.h>

#include <QVector>
#include <qqml.h>

#include <memory>

namespace zeltools::quick
{

class FrameUpdates;

/// The lines that buffered delivery has dropped since the process began, a row for each level and
/// module. The model follows further losses. It belongs to one thread, that of the QML engine.
class ZELTOOLS_EXPORT LossesModel : public zeltools::quick::CountedModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LossesModel)
    Q_PROPERTY(double total READ total NOTIFY totalChanged)

public:
    /// The roles `level`, `levelName`, `modules` and `lines` of QML.
    enum Role {
        LevelRole = Qt::UserRole, ///< LogLevel::Level as an int.
        LevelNameRole,            ///< The name in the language of the screen.
        ModulesRole,              ///< The name of the module.
        LinesRole                 ///< The number of lines.
    };

    explicit LossesModel(QObject* parent = nullptr);
    ~LossesModel() override;

    /// The number of all dropped lines.
    double total() const { return m_total; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void totalChanged();

private:
    struct Row
    {
        int level;
        QString module;
        double lines;

        bool operator==(const Row& other) const
        {
            return level == other.level && module == other.module && lines == other.lines;
        }
    };

    void update();

    QVector<Row> m_rows; // in the order of level and module
    double m_total = 0;
    const std::unique_ptr<FrameUpdates> m_updates;
};

} // namespace zeltools::quick
