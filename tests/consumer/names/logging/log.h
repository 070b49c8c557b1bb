#pragma once

/// The host's own header below a path that the library has, too.
constexpr bool isHostLog = true;
