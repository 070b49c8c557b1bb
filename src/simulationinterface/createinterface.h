#pragma once

#include <zeltools/simulationinterface/simulationinterface.h>

namespace zeltools::simulationinterface
{

/// Creates the endpoint for a raw address (see SimulationInterfaceAddress), owned by the parent.
/// Returns null, after Error lines, for an invalid address.
ZELTOOLS_EXPORT SimulationInterface* createInterface(const QString& rawAddress, QObject* parent);

} // namespace zeltools::simulationinterface
