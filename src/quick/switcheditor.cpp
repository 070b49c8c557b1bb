#include "quick/switcheditor_p.h"

#include "envvar/envvarstore.h"
#include "keyvaluelines.h"
#include "quick/access.h"
#include "quick/displaytext_p.h"
#include "quick/switchtexts_p.h"
#include "secretmask.h"

namespace zeltools::quick
{

using envvar::EnvVar;
using envvar::EnvVarStore;

void SwitchEditor::setFile(const QString& path)
{
    m_file = path;
    m_failure.reset();
    m_unwritten.clear();
}

QString SwitchEditor::obstacle(const EnvVar* var)
{
    const QString refusal = Access::instance()->refusal(Access::Technician);
    return refusal.isEmpty() && var == nullptr ? tr("This switch is no longer there.") : refusal;
}

QString SwitchEditor::set(EnvVar* var, const QString& value)
{
    QString reason = obstacle(var);
    if (!reason.isEmpty())
        return reason;
    if (!var->isStringValueValid(value))
        return SwitchTexts::refusal(var->type(), value);
    if (!m_file.isEmpty() && !KeyValueLines::canHold(var->name(), value))
        return tr("The environment file cannot hold a line break, nor a blank at an end.");
    return change(*var, value);
}

QString SwitchEditor::reset(EnvVar* var)
{
    const QString reason = obstacle(var);
    return reason.isEmpty() ? change(*var, std::nullopt) : reason;
}

QString SwitchEditor::change(EnvVar& var, const std::optional<QString>& value)
{
    const QString name = var.name();
    const Values before = values();
    if (var.stringValueOpt(EnvVar::Env) != value) {
        var.setStringValueOpt(EnvVar::Env, value); // a receiver of changed() may delete the switch
        record(name, value);
    }
    m_unwritten.append(name);
    const Values now = values();
    for (auto other = now.begin(); other != now.end(); ++other) { // which it excludes, for example
        if (other.key() == name || before.value(other.key(), *other) == *other)
            continue;
        record(other.key(), *other);
        m_unwritten.append(other.key());
    }
    m_unwritten.removeDuplicates();
    return m_file.isEmpty() ? QString()
                            : finish(EnvVarStore::instance().saveInto(m_file, m_unwritten));
}

SwitchEditor::Values SwitchEditor::values()
{
    Values values;
    for (const EnvVar* var : EnvVarStore::instance().vars())
        values.insert(var->name(), var->stringValueOpt(EnvVar::Env));
    return values;
}

// The event file goes to places where a secret must not go, such as a support bundle.
void SwitchEditor::record(const QString& name, const std::optional<QString>& value)
{
    Access::instance()->recordChange(
        value ? QStringLiteral("Switch %1 set to %2")
                    .arg(name, DisplayText(withoutSecret(name, *value)).text)
              : QStringLiteral("Switch %1 reset").arg(name));
}

QString SwitchEditor::save()
{
    QString refusal = Access::instance()->refusal(Access::Technician);
    if (!refusal.isEmpty())
        return refusal;
    if (m_file.isEmpty())
        return tr("There is no environment file; changes last until the program ends.");
    QString problem = finish(EnvVarStore::instance().saveInto(m_file));
    if (problem.isEmpty())
        Access::instance()->recordChange(QLatin1String("Switches saved in ") + m_file);
    return problem;
}

QString SwitchEditor::finish(const envvar::SaveResult& result)
{
    m_failure.reset();
    if (result.success)
        m_unwritten.clear();
    else
        m_failure = result;
    return fileProblem();
}

QString SwitchEditor::fileProblem() const
{
    if (!m_failure)
        return {};
    return tr("The environment file is unchanged, and changes last until the program ends: %1")
        .arg(m_failure->message.value_or(tr("the file was refused")));
}

} // namespace zeltools::quick
