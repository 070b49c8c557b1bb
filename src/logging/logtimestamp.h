#pragma once

#include <zeltools/zeltools_export.h>

#include <QLatin1String>

/// The current local time as "dd/MM/yyyy hh:mm:ss:zzz". The text is formed once per millisecond and
/// thread. A changed `TZ` shows at once, a replaced /etc/localtime from the next millisecond on.
/// Valid until the next call in this thread. Safe to call from any thread.
ZELTOOLS_EXPORT QLatin1String logTimestamp();

/// The same for a given moment, in milliseconds since 1970 (UTC).
ZELTOOLS_EXPORT QLatin1String logTimestamp(qint64 moment_ms);
