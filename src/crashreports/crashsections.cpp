#include "crashreports/crashsections_p.h"

#include "crashreports/crashreportwriter.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <iterator>
#include <mutex>

namespace zeltools
{

namespace
{

// A section is complete as soon as it has a name, since the handler may read it at any time.
struct Section
{
    std::atomic<const char*> name{nullptr};
    std::atomic<CrashReports::Section> write{nullptr};
};

Section s_sections[16];
std::mutex s_additions;

} // namespace

bool CrashSections::add(const char* name, CrashReports::Section write)
{
    const std::lock_guard lock(s_additions);
    Section* const place =
        std::find_if(std::begin(s_sections), std::end(s_sections), [name](const Section& section) {
            return section.name == nullptr || std::strcmp(section.name, name) == 0;
        });
    if (place == std::end(s_sections))
        return false;
    place->write = write;
    place->name = name;
    return true;
}

void CrashSections::write(CrashReportWriter& writer)
{
    for (const Section& section : s_sections) {
        const char* const name = section.name;
        if (name == nullptr)
            return;
        const bool isOfLibrary = std::strcmp(name, "threads") == 0;
        writer.beginHeading().text(isOfLibrary ? "" : "section ").text(name).endHeading();
        section.write.load()(writer);
        writer.flush();
    }
}

} // namespace zeltools
