#include "switches.h"

#include <zeltools/envvar/envvars.h>
#include <zeltools/envvar/envvarstore.h>
#include <zeltools/keyvaluefile.h>
#include <zeltools/path.h>

#include <QDir>
#include <QFileInfo>

#include <stdexcept>

using namespace zeltools;
using envvar::EnvVarStore;
namespace EnvVars = envvar::EnvVars;

void loadSwitches(const QString& environmentFile, QTextStream& out)
{
    try {
        if (!EnvVarStore::instance().load(environmentFile) && !environmentFile.isEmpty())
            out << "The environment file " << environmentFile << " cannot be read.\n";
    } catch (const std::invalid_argument& error) {
        QString reason = QString::fromUtf8(error.what());
        for (QChar& character : reason) // The content of the file must not control the terminal.
            character = character.isPrint() ? character : QLatin1Char('?');
        out << "The environment file " << environmentFile << " is wrong: " << reason
            << ". Starting with the switches that come before it in the order of their names.\n";
    }
    out.flush();
}

void linkSwitches()
{
    EnvVarStore& store = EnvVarStore::instance();
    store.printEnabledEnvVars();
    store.makeExclusive({&EnvVars::PaymentSimulation, &EnvVars::PaymentSimulationTcp});
    store.setVisibleIf(&EnvVars::CanBusInterfacePath, &EnvVars::CanBusSimulation);
}

bool changeAndSaveSwitches(QTextStream& out)
{
    EnvVars::PaymentSimulationTcp.set(true); // This switches the other payment simulation off.
    const QString file = Path::instance()->environmentFile;
    QDir().mkpath(QFileInfo(file).path());
    const envvar::SaveResult result = EnvVarStore::instance().save(file);
    if (!result.success) {
        out << "The switches were not saved: " << result.message.value_or(QString()) << '\n';
        return false;
    }
    const auto saved = keyvaluefile::load(file, true);
    if (!saved)
        return false;
    out << "\nSwitches saved:\n";
    for (auto pair = saved->cbegin(); pair != saved->cend(); ++pair)
        out << "  " << pair.key() << '=' << pair.value() << '\n';
    return saved->value(QStringLiteral("PAYMENT_SIMULATION_TCP")) == QLatin1String("1") &&
           !EnvVars::PaymentSimulation() && EnvVars::PaymentSimulationTcp();
}
