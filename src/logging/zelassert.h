#pragma once

#include <zeltools/zeltools_export.h>

#include <QString>

/// The function that is called after a failed assertion has been logged. Failed assertions and
/// programmer warnings are log lines and do not end the machine's program: the default handler does
/// nothing, and the program continues after the failed check.
using ZelAssertionHandler = void (*)(const char* where, const char* what, const char* file,
                                     int line);

extern ZELTOOLS_EXPORT ZelAssertionHandler zelAssertionHandler;

ZELTOOLS_EXPORT void defaultZelAssertionHandler(const char* where, const char* what,
                                                const char* file, int line);

/// Installs the handler, which must not be null. Call it before other threads run.
ZELTOOLS_EXPORT void installZelAssertionHandler(ZelAssertionHandler handler);

/// Logs an Error line, then calls the handler, so that a handler that ends the process loses no
/// line. `where` is the text of the failed condition and `what` the message; null counts as empty.
ZELTOOLS_EXPORT void printAssertMsg(const char* where, const char* what, const char* file,
                                    int line);
ZELTOOLS_EXPORT void printAssertMsg(const char* where, const QString& what, const char* file,
                                    int line);

/// Does the same as printAssertMsg(), for checks that stay in release builds.
ZELTOOLS_EXPORT void printReleaseAssertMsg(const char* where, const char* what, const char* file,
                                           int line);
ZELTOOLS_EXPORT void printReleaseAssertMsg(const char* where, const QString& what, const char* file,
                                           int line);

/// Does the same as printReleaseAssertMsg(), and then lets a crash report be written
/// (zeltools::CrashReports). For checks after which the caller ends the process by exit().
ZELTOOLS_EXPORT void printFatalAssertMsg(const char* where, const char* what, const char* file,
                                         int line);

/// Logs a Warning line without calling the handler.
ZELTOOLS_EXPORT void printWarningMsg(const char* message, const char* file, int line);
