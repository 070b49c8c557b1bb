#include "quick/logmodulesmodel.h"

#include "logging/debugmodules.h"
#include "logging/logmanager.h"
#include "path.h"
#include "quick/access.h"

#include <algorithm>

namespace zeltools::quick
{

struct LogModulesModel::Row
{
    LogModule module;
    QString variable;
    bool isDebugged;
};

namespace
{

bool isDebugged(const LogModule& module)
{
    return DebugModules::shared().containsOneOf(module);
}

} // namespace

LogModulesModel::LogModulesModel(QObject* parent)
    : CountedModel(parent)
{
    QVector<LogModule*> modules = LogModule::registeredModulesConst();
    std::sort(modules.begin(), modules.end(), [](const LogModule* a, const LogModule* b) {
        return a->name().compare(b->name(), Qt::CaseInsensitive) < 0;
    });
    m_rows.reserve(size_t(modules.size()));
    for (const LogModule* module : modules)
        m_rows.push_back({*module, module->debugEnvVarName(), isDebugged(*module)});
    if (Path::exists())
        connect(LogManager::instance(), &LogManager::moduleDebuggingChanged, this,
                &LogModulesModel::update);
}

LogModulesModel::~LogModulesModel() = default;

QString LogModulesModel::setDebugged(int row, bool on)
{
    QString refusal = Access::instance()->refusal(Access::Operator);
    if (!refusal.isEmpty())
        return refusal;
    if (row < 0 || row >= count())
        return tr("This module does not exist.");
    const LogModule& module = m_rows[size_t(row)].module;
    if (isDebugged(module) == on)
        return {};
    if (on)
        LogManager::instance()->enableModuleDebugging(module);
    else
        LogManager::instance()->disableModuleDebugging(module);
    Access::instance()->recordChange(
        QStringLiteral("Debug lines of %1 switched %2")
            .arg(module.name(), on ? QStringLiteral("on") : QStringLiteral("off")));
    return {};
}

void LogModulesModel::update()
{
    for (int i = 0; i < count(); ++i) {
        Row& row = m_rows[size_t(i)];
        const bool isOn = isDebugged(row.module);
        if (isOn == row.isDebugged)
            continue;
        row.isDebugged = isOn;
        Q_EMIT dataChanged(index(i), index(i), {IsDebuggedRole});
    }
}

int LogModulesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant LogModulesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Row& row = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return row.module.name();
    case VariableRole:
        return row.variable;
    case IsDebuggedRole:
        return row.isDebugged;
    default:
        return {};
    }
}

QHash<int, QByteArray> LogModulesModel::roleNames() const
{
    return {{NameRole, "name"}, {VariableRole, "variable"}, {IsDebuggedRole, "isDebugged"}};
}

} // namespace zeltools::quick
