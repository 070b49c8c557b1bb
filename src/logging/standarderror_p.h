#pragma once

#include <cstddef>

/// Writes the bytes to standard error, behind what the host has left in the stream's buffer. The
/// reader of a pipe or socket may have gone: the bytes are lost then, and no SIGPIPE ends the
/// process. The signal set-up of the host stays as it is.
///
/// Guarding a pipe takes system calls of its own, a file or a terminal needs none. So what standard
/// error is gets looked up a hundred times a second at most.
void writeToStandardError(const char* data, size_t size);
