#pragma once

#include <QString>
#include <QTextStream>

/// Asks a simulated boiler for its temperature over a link of its own. False without an answer.
bool askBoiler(QTextStream& out);

/// Lets the clock be set by the simulator at that address (`zelctl clock`), then asks for the next
/// day, as a service screen would. False when nobody sets it in ten seconds.
bool followClock(const QString& address, QTextStream& out);
