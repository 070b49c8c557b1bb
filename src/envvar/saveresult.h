#pragma once

#include <QString>

#include <optional>

namespace zeltools::envvar
{

/// The result of writing the environment file; after a failure the message gives the user the
/// reason.
struct SaveResult
{
    bool success = false;
    std::optional<QString> message;
};

} // namespace zeltools::envvar
