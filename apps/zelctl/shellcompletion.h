#pragma once

#include <QString>

/// The scripts by which a shell completes the command lines of zelctl. They do not run zelctl: the
/// names of switches and kinds of events are those of this build.
QString bashCompletion();
QString zshCompletion();
QString fishCompletion();
