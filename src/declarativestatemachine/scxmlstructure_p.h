#pragma once

#include "declarativestatemachine/scxmldocument_p.h"

#include <QHash>

namespace zeltools::declarativestatemachine
{

/// How the states of a document are arranged in the description that it becomes. States have the
/// numbers of the document.
struct ScxmlStructure
{
    QHash<QString, int> numbers; ///< by identifiers
    /// The children of each state in the order of the description: the initial state comes first,
    /// and the final state of the machine last.
    std::vector<std::vector<int>> children;
    /// The state to which transitions of a name lead.
    QHash<QString, int> lastOfName;

    /// Returns no value for a document whose states cannot be arranged so, with line and reason in
    /// `error`.
    static std::optional<ScxmlStructure> of(const ScxmlDocument& document, QString& error);
};

} // namespace zeltools::declarativestatemachine
