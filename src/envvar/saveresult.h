#pragma once

#include <QString>

#include <optional>

namespace zeltools::envvar
{

/// How writing the environment file went; the message tells the user why it failed.
struct SaveResult
{
    bool success = false;
    std::optional<QString> message;
};

} // namespace zeltools::envvar
