#include "quick/countedmodel.h"

#include "quick/language_p.h"

namespace zeltools::quick
{

CountedModel::CountedModel(QObject* parent)
    : QAbstractListModel(parent)
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &CountedModel::noteCount);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &CountedModel::noteCount);
    connect(this, &QAbstractItemModel::modelReset, this, &CountedModel::noteCount);
}

CountedModel::~CountedModel() = default;

CountedModel::Update::Update(CountedModel& model)
    : m_model(model)
    , m_count(model.count())
    , m_number(++model.m_updates)
{
    ++model.m_openUpdates;
}

CountedModel::Update::~Update()
{
    --m_model.m_openUpdates;
    if (m_model.count() != m_count)
        m_model.noteCount();
}

void CountedModel::noteCount()
{
    if (m_openUpdates == 0)
        Q_EMIT countChanged();
}

void CountedModel::followLanguage()
{
    connect(Language::instance(), &Language::changed, this, [this] {
        if (count() > 0)
            Q_EMIT dataChanged(index(0), index(count() - 1));
        Q_EMIT languageChanged();
    });
}

} // namespace zeltools::quick
