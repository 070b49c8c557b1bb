#pragma once

#include <QVariant>

namespace zeltools::declarativestatemachine
{

/// Is told what an InnerMachine does, while it does it. States and transitions are the numbers of
/// its DescriptionIndex. What happens is told before the actions that belong to it are called.
class MachineRecorder
{
public:
    /// The machine starts; its initial states are entered next.
    void started() {}
    /// The machine no longer runs. The states that were active are not left.
    void stopped() {}
    void guardChecked(int /*transition*/, bool /*accepted*/) {}
    void fired(int /*transition*/, const QVariantList& /*arguments*/) {}
    void entered(int /*state*/) {}
    void left(int /*state*/) {}
};

} // namespace zeltools::declarativestatemachine
