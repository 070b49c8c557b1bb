#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>

namespace zeltools::simulationinterface
{

/// The endpoint that a raw address names (see SimulationInterfaceAddress), owned by the parent.
/// Null, after Error lines, for an address that leads nowhere.
ZELTOOLS_EXPORT SimulationInterface* createInterface(const QString& rawAddress, QObject* parent);

} // namespace zeltools::simulationinterface
