#include "crashreports/crashreports.h"

#include "crashreports/alternatestack_p.h"
#include "crashreports/crashsections_p.h"

namespace zeltools
{

void CrashReports::prepareThread()
{
    static thread_local const AlternateStack stack;
    Q_UNUSED(stack)
}

bool CrashReports::addSection(const char* name, Section write)
{
    return CrashSections::add(name, write);
}

} // namespace zeltools
