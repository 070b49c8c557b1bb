#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>

/// Failed assertions and programmer warnings are log lines, not the end of the machine. What
/// happens beyond the line is up to the assertion handler; the default one does nothing, and the
/// program goes on after the failed check.
using ZelAssertionHandler = void (*)(const char* where, const char* what, const char* file,
                                     int line);

extern ZELTOOLS_EXPORT ZelAssertionHandler zelAssertionHandler;

ZELTOOLS_EXPORT void defaultZelAssertionHandler(const char* where, const char* what,
                                                const char* file, int line);

/// The handler must not be null. Install it before other threads run.
ZELTOOLS_EXPORT void installZelAssertionHandler(ZelAssertionHandler handler);

/// Logs an Error line, then calls the handler: one that ends the process loses no line. `where` is
/// the text of the failed condition, `what` the message; null counts as empty.
ZELTOOLS_EXPORT void printAssertMsg(const char* where, const char* what, const char* file,
                                    int line);
ZELTOOLS_EXPORT void printAssertMsg(const char* where, const QString& what, const char* file,
                                    int line);

/// The same for checks that stay in release builds.
ZELTOOLS_EXPORT void printReleaseAssertMsg(const char* where, const char* what, const char* file,
                                           int line);
ZELTOOLS_EXPORT void printReleaseAssertMsg(const char* where, const QString& what, const char* file,
                                           int line);

/// Logs a Warning line; calls no handler.
ZELTOOLS_EXPORT void printWarningMsg(const char* message, const char* file, int line);
