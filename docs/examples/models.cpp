// The code of docs/models.md: a tree of settings that is changed and stored.

//! [tree]
#include <zeltools/hierarchical/hierarchicaldbobject.h>

#include <QSettings>
#include <QTextStream>

class Dose : public tools::HierarchicalDbObject
{
public:
    explicit Dose(QSettings& store)
        : m_store(store)
    {
    }
    void setGrams(double grams)
    {
        m_grams = grams;
        setModified();
    }

protected:
    bool commitSelf() override
    {
        m_store.setValue(QStringLiteral("dose"), m_grams);
        m_store.sync();
        return m_store.status() == QSettings::NoError;
    }
    bool revertSelf() override
    {
        m_grams = m_store.value(QStringLiteral("dose")).toDouble();
        return true;
    }

private:
    QSettings& m_store;
    double m_grams = 0;
};
//! [tree]

int main()
{
    QTextStream out(stdout);
    QSettings store(QStringLiteral("settings.ini"), QSettings::IniFormat);
    //! [use]
    tools::HierarchicalDbObject machine;
    auto* const grinder = new tools::HierarchicalDbObject;
    auto* const dose = new Dose(store);
    machine.addChild(grinder); // the machine owns it
    grinder->addChild(dose);
    machine.resetModified(); // everything is loaded
    QObject::connect(
        &machine, &tools::HierarchicalDbObject::modifiedChanged, [&out](bool isModified) {
            out << (isModified ? "There is something to store" : "Everything is stored")
                << Qt::endl;
        });

    dose->setGrams(7.5); // modifiedChanged(true) of the dose, the grinder, the machine
    machine.commit();    // or revert(); then modifiedChanged(false) of all three
    //! [use]
}
