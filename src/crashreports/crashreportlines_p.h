#pragma once

#include "crashreports/crashreport.h"

/// The readers of the lines of a crash report. Each takes one line of a section; it returns false
/// if the line is damaged or one too many.
namespace zeltools::crashreportlines
{

using ReadLine = bool (*)(CrashReport& report, const QByteArray& line);

/// A line "key value" of the sections "process" and "crash".
bool readField(CrashReport& report, const QByteArray& line);
bool readRegister(CrashReport& report, const QByteArray& line);
bool readModule(CrashReport& report, const QByteArray& line);
bool readMonitoredThread(CrashReport& report, const QByteArray& line);
bool readLogLine(CrashReport& report, const QByteArray& line);

/// Begins the stack in a title such as "1237 Grinder crashed".
bool beginStack(CrashReport& report, const QByteArray& title);
/// A line of the last stack.
bool readCall(CrashReport& report, const QByteArray& line);

/// Begins the section of the application with that name.
bool beginSection(CrashReport& report, const QByteArray& name);
/// A line of the last section of the application.
bool readSectionLine(CrashReport& report, const QByteArray& line);

} // namespace zeltools::crashreportlines
