#pragma once

#include <zeltools/zeltools_export.h>

#include <QObject>
#include <QString>

/// Functions for signals as texts, with or without the code character "2" that `SIGNAL()` adds in
/// front.
namespace zeltools::signalutils
{

/// Whether the object has the signal, which must be normalized (`moved(int)`, without blanks).
/// False when either is null.
ZELTOOLS_EXPORT bool classContainsSignal(QObject* obj, const char* signal);

/// The text `Grinder::moved`, or `Grinder::moved(int)` with arguments; the signal alone when the
/// object is null.
ZELTOOLS_EXPORT QString classAndSignalName(QObject* obj, const char* signal, bool withArguments);

} // namespace zeltools::signalutils
