#include "crashreports/crashreport.h"

#include "crashreports/crashreportlines_p.h"

#include <algorithm>

namespace zeltools
{

using namespace crashreportlines;

namespace
{

bool skip(CrashReport& /*report*/, const QByteArray& /*line*/)
{
    return true;
}

/// A section, and the functions for its lines and its title. A section whose title is the name
/// alone has no function for it.
struct KnownSection
{
    const char* name;
    ReadLine readLine;
    ReadLine readTitle = nullptr;
};

constexpr KnownSection s_sections[]{{"process", readField},
                                    {"crash", readField},
                                    {"registers", readRegister},
                                    {"modules", readModule},
                                    {"stack", readCall, beginStack},
                                    {"threads", readMonitoredThread},
                                    {"log", readLogLine},
                                    {"section", readSectionLine, beginSection}};

/// Returns the function for the lines of a section; a null pointer if its title is damaged or the
/// section is one too many.
ReadLine begin(CrashReport& report, const QByteArray& title)
{
    const auto blank = title.indexOf(' ');
    const QByteArray name = blank < 0 ? title : title.left(blank);
    for (const KnownSection& section : s_sections) {
        if (name != section.name || (blank >= 0) != (section.readTitle != nullptr))
            continue;
        const bool isGood =
            section.readTitle == nullptr || section.readTitle(report, title.mid(blank + 1));
        return isGood ? section.readLine : nullptr;
    }
    return skip; // of a later version
}

/// Reads the lines after the first one. A half line at the end is left out. Returns whether the
/// report is complete.
bool readSections(CrashReport& report, const QByteArray& text)
{
    bool isGood = true;
    ReadLine readLine = skip;
    int start = text.indexOf('\n') + 1;
    for (int feed = 0; (feed = text.indexOf('\n', start)) >= 0; start = feed + 1) {
        const QByteArray line = text.mid(start, feed - start);
        if (line == "[end]")
            return isGood;
        if (line.startsWith('[') && line.endsWith(']')) {
            const ReadLine next = begin(report, line.mid(1, line.size() - 2));
            readLine = next != nullptr ? next : skip;
            isGood = isGood && next != nullptr;
        } else {
            isGood = readLine(report, line) && isGood;
        }
    }
    return false;
}

} // namespace

std::optional<CrashReport> CrashReport::parse(const QByteArray& text, QString& error)
{
    const QByteArray start = "ZelTools crash report ";
    if (text.size() > largest_B)
        error = QStringLiteral("it is too large for a crash report");
    else if (!text.startsWith(start))
        error = QStringLiteral("it is not a crash report");
    else if (!text.startsWith(start + "1\n"))
        error = QStringLiteral("it is a crash report of another version");
    else
        error.clear();
    if (!error.isEmpty())
        return std::nullopt;
    CrashReport report;
    // The room of the file is set aside before the crash. Zeros follow what was written.
    const auto end = text.indexOf('\0');
    report.isComplete = readSections(report, end < 0 ? text : text.left(end));
    return report;
}

const CrashReport::Module* CrashReport::moduleAt(quint64 place) const
{
    constexpr quint64 firstPage = 0x1000; // is never mapped; a fixed program has the base 0
    const Module* found = nullptr;
    for (const Module& module : modules) {
        if (place >= std::max(module.base, firstPage) && place < module.end &&
            (found == nullptr || module.base > found->base))
            found = &module;
    }
    return found;
}

} // namespace zeltools
