#pragma once

#include <zeltools/logging/loglevel.h>
#include <zeltools/logging/logmodules.h>

#include <QByteArray>

/// A finished line for a LogSink. The text is only valid during LogSink::write(): copy it with
/// QByteArray::append() or the like to keep it.
struct LogRecord
{
    LogLevel::Level level; ///< Decides the file together with the modules, see LogManager.
    LogModules modules;    ///< Only the modules with an id below 64, which are all predefined ones.
    qint64 time_ms;        ///< Since 1970, UTC.
    qint32 thread;         ///< The number that the kernel gives to the thread.
    /// The message in the local 8-bit encoding, without time, level and line feed. No NUL follows
    /// its last byte: use size(), not functions for C strings. The message of an Event line starts
    /// with a blank, its kind and "| ".
    QByteArray text;
};
