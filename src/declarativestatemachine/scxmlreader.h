#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

#include <optional>

namespace zeltools::declarativestatemachine
{

/// The signals and guards that the names in a document mean. A document is refused if a result has
/// no signal or no function, or if a member that it needs is not set.
struct ScxmlBindings
{
    /// The signal for the name of an event. The object must have it, and its text must outlive the
    /// description, as `SIGNAL(stopped())` does.
    std::function<ExpectedSignal(const QString& event)> signal = {};
    /// The guard for the condition of a transition, such as "guard1".
    std::function<std::function<bool()>(const QString& condition)> guard = {};
};

/// Reads a State Chart XML document of the W3C that says no more than a description can say;
/// docs/format-scxml.md lists the elements and attributes. For any other document the function
/// returns no value, and `error` holds the line and the reason. The states of the description have
/// no actions.
///
/// The initial state moves to the front of its list and the final state of the machine to the end,
/// where a description has them. A document in UTF-8 may have 16 MiB, 100,000 states and states in
/// 64 levels. Document types, and with them entities, are refused.
ZELTOOLS_EXPORT std::optional<StateMachineDescription>
fromScxml(const QByteArray& document, const ScxmlBindings& bindings, QString& error);

} // namespace zeltools::declarativestatemachine
