#pragma once

#include "logging/ringfile_p.h"

/// The lines that the library itself adds to a ring: Warnings of the module Global for the general
/// file, standard error and the sinks.
namespace ringwarning
{

/// Adds the line that tells of a recovery.
void addRecovery(RingFile& ring, quint64 linesCount);
/// Adds the line about the losses since the last call. It gives the sums since the start of the
/// process, too: a line that a killed process has written twice does no harm. Returns false if the
/// ring does not take the line.
bool addLosses(RingFile& ring);

} // namespace ringwarning
