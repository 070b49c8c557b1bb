#pragma once

#include <QByteArray>
#include <QVector>

/// The journal of systemd. If the library is built without libsystemd (ZELTOOLS_LIBSYSTEMD), it
/// does not exist.
namespace journal
{

/// Whether the journal has its socket.
bool isAvailable();

/// Sends an entry of fields such as "MESSAGE=text". Returns false if the journal refuses it.
/// libsystemd reports success if there is no journal.
bool send(const QVector<QByteArray>& fields);

} // namespace journal
