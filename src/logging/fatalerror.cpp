#include "logging/fatalerror.h"

#include <atomic>

namespace zeltools
{

namespace
{

std::atomic<FatalErrorHandler> s_handler{nullptr};

} // namespace

void setFatalErrorHandler(FatalErrorHandler handler)
{
    s_handler = handler;
}

void announceFatalError(const char* reason, FatalEnd end)
{
    if (const FatalErrorHandler handler = s_handler)
        handler(reason, end);
}

} // namespace zeltools
