#pragma once

#include "monitoredthreads/stalldetector_p.h"

namespace monitored_threads
{

/// Logs that a thread or item is late or has stalled, with a line for each call of its stack, or
/// that it has recovered.
void logStateChange(const StallDetector::Change& change, const QStringList& callStack);

} // namespace monitored_threads
