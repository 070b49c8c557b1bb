#include "settings.h"

#include <zeltools/hierarchical/hierarchicaldbobject.h>

#include <QMap>

namespace
{

/// Stands in for the machine's database.
struct Store
{
    QMap<QString, int> values;
    QStringList journal;
};

/// A setting, or a group of settings, which has no value of its own.
class Setting : public tools::HierarchicalDbObject
{
public:
    Setting(const char* name, Store& store)
        : m_store(store)
    {
        setObjectName(QLatin1String(name));
        connect(this, &Setting::modifiedChanged, [this](bool isModified) {
            m_store.journal += (isModified ? QLatin1Char('+') : QLatin1Char('-')) + objectName();
        });
    }

    Setting* add(const char* name)
    {
        auto* setting = new Setting(name, m_store);
        addChild(setting);
        return setting;
    }
    int value() const { return m_value; }
    void setValue(int value)
    {
        m_value = value;
        setModified();
    }

protected:
    bool commitSelf() override
    {
        if (m_value < 0) // like a constraint of a database
            return false;
        m_store.values.insert(objectName(), m_value);
        return true;
    }
    bool revertSelf() override
    {
        m_value = m_store.values.value(objectName());
        return true;
    }

private:
    Store& m_store;
    int m_value = 0;
};

} // namespace

bool changeSettings(QTextStream& out)
{
    Store store;
    Setting machine("machine", store);
    Setting* const grinder = machine.add("grinder");
    Setting* const dose = grinder->add("dose");
    Setting* const boiler = machine.add("boiler");
    const bool isLoaded = machine.revert() && !machine.isModified();
    store.journal.clear();

    dose->setValue(7);
    boiler->setValue(92);
    const bool isStored = machine.commit();
    dose->setValue(9);
    const bool isTakenBack = grinder->revert() && dose->value() == 7;
    boiler->setValue(-1);
    const bool isRefused = !machine.commit() && boiler->isModified();
    boiler->setValue(95);
    const bool isStoredAgain = machine.commit();

    const QString journal = store.journal.join(QLatin1Char(' '));
    out << "\nSettings, modified (+) and unmodified again (-): " << journal << "\nStored:";
    for (auto value = store.values.cbegin(); value != store.values.cend(); ++value)
        out << ' ' << value.key() << '=' << value.value();
    out << '\n';
    return isLoaded && isStored && isTakenBack && isRefused && isStoredAgain &&
           store.values.value(QStringLiteral("dose")) == 7 &&
           store.values.value(QStringLiteral("boiler")) == 95 &&
           journal == QLatin1String("+dose +grinder +machine +boiler -dose -grinder -boiler "
                                    "-machine +dose +grinder +machine -dose -grinder -machine "
                                    "+boiler +machine -boiler -machine");
}
