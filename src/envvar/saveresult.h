#pragma once

#include <QString>

#include <optional>

namespace zeltools::envvar
{

/// The result of writing the environment file; after a failure the message gives the user the
/// reason.
struct SaveResult
{
    bool success = false;           ///< Whether the step may be followed by the next one.
    std::optional<QString> message; ///< The reason of a failure.
};

} // namespace zeltools::envvar
