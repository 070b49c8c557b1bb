#pragma once

#include <cstddef>

/// Writes the bytes to standard error, after the bytes that the host has left in the stream's
/// buffer. If the reader of a pipe or socket has gone, the bytes are lost, but no SIGPIPE ends the
/// process. The signal settings of the host do not change.
///
/// A pipe needs further system calls for this, and a file or a terminal needs none. The kind of
/// standard error is looked up at most a hundred times a second.
void writeToStandardError(const char* data, size_t size);
