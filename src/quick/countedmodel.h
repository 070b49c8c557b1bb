#pragma once

#include <zeltools/zeltools_export.h>

#include <QAbstractListModel>
#include <qqml.h>

namespace zeltools::quick
{

/// A list model with the number of its rows as a property, because QAbstractItemModel has no such
/// property.
///
/// A derived class names it with its namespaces: otherwise the tools of QML do not find it.
class ZELTOOLS_EXPORT CountedModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    /// The number of rows.
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit CountedModel(QObject* parent = nullptr);
    ~CountedModel() override;

    /// The number of rows.
    int count() const { return rowCount({}); }

Q_SIGNALS:
    void countChanged();
    /// The language of the screen has changed, and with it the texts of the properties.
    void languageChanged();

protected:
    friend struct RowsUpdate;

    /// An update of the rows in several steps. While it lives, countChanged() is held back, and it
    /// follows afterwards if the number has changed. A receiver of the other signals may begin
    /// another update, whose result counts: the first one must then stop.
    class Update
    {
        Q_DISABLE_COPY(Update)

    public:
        /// Begins an update, which makes an earlier one of the model obsolete.
        explicit Update(CountedModel& model);
        /// Ends the update. The last open update of the model emits countChanged() if due.
        ~Update();

        /// Whether no other update has begun since this one.
        bool isLast() const { return m_number == m_model.m_updates; }

    private:
        CountedModel& m_model;
        const int m_count;
        const int m_number;
    };

    /// Announces all rows as changed whenever the language of the screen changes, for models whose
    /// rows or properties have translated texts.
    void followLanguage();

private:
    void noteCount();

    int m_updates = 0; // so far
    int m_openUpdates = 0;
};

} // namespace zeltools::quick
