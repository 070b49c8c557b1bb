#include "quick/switchesmodel.h"

#include "envvar/envvarstore.h"
#include "quick/access.h"
#include "quick/rowsupdate_p.h"
#include "quick/switchdata_p.h"
#include "quick/switcheditor_p.h"
#include "quick/switchtexts_p.h"

#include <algorithm>
#include <utility>

namespace zeltools::quick
{

using envvar::EnvVar;
using envvar::EnvVarStore;

SwitchesModel::SwitchesModel(QObject* parent)
    : CountedModel(parent)
    , m_editor(std::make_unique<SwitchEditor>())
{
    // A switch is announced while it is constructed, when its type cannot be asked yet.
    connect(&EnvVarStore::instance(), &EnvVarStore::envVarAdded, this, [this] {
        QMetaObject::invokeMethod(this, &SwitchesModel::follow, Qt::QueuedConnection);
    });
    connect(&EnvVarStore::instance(), &EnvVarStore::unregisterEnvVar, this, &SwitchesModel::forget);
    connect(Access::instance(), &Access::levelChanged, this, [this] {
        if (!m_rows.isEmpty())
            Q_EMIT dataChanged(index(0), index(count() - 1)); // also the values of secrets
    });
    followLanguage();
    connect(this, &CountedModel::languageChanged, this, &SwitchesModel::updateRows);
    connect(this, &CountedModel::languageChanged, this, &SwitchesModel::categoriesChanged);
    connect(this, &CountedModel::languageChanged, this, &SwitchesModel::fileProblemChanged);
    follow();
}

SwitchesModel::~SwitchesModel() = default;

void SwitchesModel::follow()
{
    const QVector<EnvVar*> vars = EnvVarStore::instance().vars();
    for (EnvVar* const var : vars) {
        if (m_followed.contains(var))
            continue;
        connect(var, &EnvVar::changed, this, [this, var] { onChanged(var); });
        connect(var, &QObject::destroyed, this, &SwitchesModel::forget);
    }
    m_followed = vars;
    updateRows();
    Q_EMIT categoriesChanged();
}

// The switch may be half destroyed or gone.
void SwitchesModel::forget(QObject* var)
{
    const auto isThis = [var](const QObject* each) { return each == var; };
    const auto followed = std::find_if(m_followed.begin(), m_followed.end(), isThis);
    if (followed == m_followed.end())
        return;
    disconnect(var, nullptr, this, nullptr);
    // A receiver that looks at the row once more before it goes sees none of its data.
    const int row = m_rows.indexOf(*followed);
    if (row >= 0)
        m_rows[row] = nullptr;
    m_followed.erase(followed);
    updateRows();
    Q_EMIT categoriesChanged();
}

bool SwitchesModel::isShown(const EnvVar& var) const
{
    return (m_category < 0 || var.category() == m_category) &&
           (m_showHidden || var.flags().testFlag(envvar::Visible)) &&
           (!m_onlyChanged || var.stringValueOpt(EnvVar::Env)) &&
           (var.name().contains(m_filter, Qt::CaseInsensitive) ||
            SwitchTexts::description(var).contains(m_filter, Qt::CaseInsensitive));
}

void SwitchesModel::updateRows()
{
    QVector<EnvVar*> wanted;
    for (EnvVar* const var : std::as_const(m_followed)) {
        if (isShown(*var))
            wanted.append(var);
    }
    // A list with a heading for each category shows each heading once.
    std::stable_sort(wanted.begin(), wanted.end(), [](const EnvVar* left, const EnvVar* right) {
        return left->category() < right->category();
    });
    RowsUpdate::apply(*this, m_rows, wanted, [](const EnvVar* var) { return var; });
}

void SwitchesModel::onChanged(EnvVar* var)
{
    if (isShown(*var) != m_rows.contains(var))
        updateRows();
    const int row = m_rows.indexOf(var);
    if (row >= 0)
        Q_EMIT dataChanged(index(row), index(row));
}

template <typename Value, typename Signal>
void SwitchesModel::set(Value& member, const Value& value, Signal signal)
{
    if (value == member)
        return;
    member = value;
    updateRows();
    Q_EMIT(this->*signal)();
}

void SwitchesModel::setCategory(int category)
{
    set(m_category, category, &SwitchesModel::categoryChanged);
}

void SwitchesModel::setFilter(const QString& filter)
{
    set(m_filter, filter, &SwitchesModel::filterChanged);
}

void SwitchesModel::setOnlyChanged(bool on)
{
    set(m_onlyChanged, on, &SwitchesModel::onlyChangedChanged);
}

void SwitchesModel::setShowHidden(bool on)
{
    set(m_showHidden, on, &SwitchesModel::showHiddenChanged);
}

QVariantList SwitchesModel::categories() const
{
    return SwitchTexts::categories(m_followed);
}

EnvVar* SwitchesModel::at(int row) const
{
    return row >= 0 && row < count() ? m_rows[row] : nullptr;
}

QString SwitchesModel::tell(const QString& result)
{
    Q_EMIT fileProblemChanged();
    return result;
}

QString SwitchesModel::setValue(int row, const QString& text)
{
    return tell(m_editor->set(at(row), text));
}

QString SwitchesModel::reset(int row)
{
    return tell(m_editor->reset(at(row)));
}

QString SwitchesModel::save()
{
    return tell(m_editor->save());
}

QString SwitchesModel::environmentFile() const
{
    return m_editor->file();
}

QString SwitchesModel::fileProblem() const
{
    return m_editor->fileProblem();
}

void SwitchesModel::setEnvironmentFile(const QString& path)
{
    if (path == environmentFile())
        return;
    m_editor->setFile(path);
    Q_EMIT environmentFileChanged();
    Q_EMIT fileProblemChanged();
}

int SwitchesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant SwitchesModel::data(const QModelIndex& index, int role) const
{
    const EnvVar* const var = m_rows.value(index.row());
    return var != nullptr ? switchData(*var, role) : QVariant();
}

QHash<int, QByteArray> SwitchesModel::roleNames() const
{
    return switchRoleNames();
}

} // namespace zeltools::quick
