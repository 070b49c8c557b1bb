#pragma once

#include "command.h"
#include <zeltools/simulatorkit/linkreplayer.h>

/// The actions of `zelctl sim`, which run the event loop until they are done or stopped.

/// Runs a script at the address, until SIGINT or SIGTERM, or until the first connection has ended.
ExitStatus serveScript(const QString& path, const QString& address, bool isOnce, bool isJson);
/// Stands between a machine and a simulator and writes a recording, until SIGINT or SIGTERM.
ExitStatus recordLink(const QString& simulator, const QString& machine, const QString& path,
                      bool isJson);
/// Plays one side of a recording, until it is played or something else comes than was recorded.
ExitStatus replayRecording(const QString& path, const QString& address,
                           const zeltools::simulatorkit::LinkReplayer::Options& options,
                           bool isJson);

/// Prints the address on which an action listens, or to which it connects.
ExitStatus printAddress(bool isListening, const QString& address, bool isJson);
