#include "quick/viewedmachines.h"

#include "declarativestatemachine/declarativestatemachine.h"
#include "quick/displaytext_p.h"
#include "quick/machineregistry_p.h"
#include "statemachine/statemachine.h"

namespace zeltools::quick
{

void ViewedMachines::offer(const QString& name,
                           declarativestatemachine::DeclarativeStateMachine* machine,
                           const declarativestatemachine::StateMachineDescription& description)
{
    MachineRegistry::instance()->offer({DisplayText::name(name, maximumName), machine,
                                        std::make_shared<const MachineGraph>(description)});
}

void ViewedMachines::offer(const QString& name, StateMachine* machine)
{
    MachineRegistry::instance()->offer({DisplayText::name(name, maximumName), machine, nullptr});
}

void ViewedMachines::withdraw(QObject* machine)
{
    MachineRegistry::instance()->withdraw(machine);
}

} // namespace zeltools::quick
