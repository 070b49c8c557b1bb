#pragma once

#include "declarativestatemachine/scxmldocument_p.h"
#include "declarativestatemachine/scxmlelements_p.h"

namespace zeltools::declarativestatemachine
{

/// Reads the elements inside a state that are not states themselves. Each function begins at its
/// element and goes to the end of it.
class ScxmlParts
{
public:
    explicit ScxmlParts(ScxmlElements& elements);

    /// A transition of a history is its default one.
    ScxmlDocument::Transition readTransition(bool isDefault);
    void readEntry(ScxmlDocument::State& around);
    void readExit(ScxmlDocument::State& around);
    void readInitial(ScxmlDocument::State& around);
    void readData();

private:
    ScxmlElements& m_elements;
};

} // namespace zeltools::declarativestatemachine
