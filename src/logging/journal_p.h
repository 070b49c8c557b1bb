#pragma once

#include <QByteArray>
#include <QVector>

/// The journal of systemd. Where libsystemd is missing, and in a build without it
/// (ZELTOOLS_LIBSYSTEMD), there is no journal.
namespace journal
{

/// Whether the journal has its socket, and this process libsystemd.
bool isAvailable();

/// Loads libsystemd, unless the process has done so before. It may not be called under a lock,
/// since it waits for other threads that load a library, whose code may log.
void load();

/// Sends an entry of fields such as "MESSAGE=text". Returns false if the journal refuses it. The
/// caller has called load().
/// libsystemd reports success if there is no journal.
bool send(const QVector<QByteArray>& fields);

} // namespace journal
