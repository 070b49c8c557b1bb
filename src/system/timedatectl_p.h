#pragma once

#include <chrono>
#include <optional>

namespace zeltools::system
{

/// Whether `timedatectl status` reports that the time synchronisation is on. No value and an Error
/// line if the program cannot be run, prints too much or does not end within the time limit.
std::optional<bool> timeSyncState(std::chrono::milliseconds timeLimit);

/// Whether a time service keeps the kernel informed about the error of the clock, which
/// `timedatectl status` reports as "System clock synchronized". The function asks the kernel and
/// does not block.
bool isClockKept();

} // namespace zeltools::system
