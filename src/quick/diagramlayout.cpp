#include "quick/diagramlayout_p.h"

#include "quick/diagramlayouter_p.h"

namespace zeltools::quick
{

std::optional<DiagramLayout> DiagramLayout::of(const Diagram& diagram, Diagram::Direction direction)
{
    using Order = DiagramLayouter::Order;
    const auto layout = DiagramLayouter(diagram, direction, Order::AsListed).layOut();
    return layout ? layout : DiagramLayouter(diagram, direction, Order::ByDistance).layOut();
}

} // namespace zeltools::quick
