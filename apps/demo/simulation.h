#pragma once

#include <QString>
#include <QTextStream>

/// Asks a simulated boiler for its temperature over a link. Returns false without an answer.
bool askBoiler(QTextStream& out);

/// Lets the simulator at the address (`zelctl clock`) set the clock, then sets the next day, as a
/// service screen does. Returns false if the simulator does not set it within ten seconds.
bool followClock(const QString& address, QTextStream& out);
