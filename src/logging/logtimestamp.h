#pragma once

#include <zeltools/zeltools_export.h>

#include <QLatin1String>

/// The current local time as "dd/MM/yyyy hh:mm:ss:zzz". The text is formatted once per millisecond
/// and thread. It follows a change of `TZ` from the next millisecond on, and a change of
/// /etc/localtime after a tenth of a second. It is valid until the next call in this thread. Any
/// thread may call the function, and so may the child process of a fork() while other threads call
/// it.
ZELTOOLS_EXPORT QLatin1String logTimestamp();

/// The text for a given moment, in milliseconds since 1970 (UTC). It follows a change of `TZ`
/// immediately.
ZELTOOLS_EXPORT QLatin1String logTimestamp(qint64 moment_ms);
