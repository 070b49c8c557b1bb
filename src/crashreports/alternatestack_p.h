#pragma once

#include <QtGlobal>

#include <signal.h>

namespace zeltools
{

/// A stack for signal handlers of the thread that creates the object. The object must be destroyed
/// by the same thread, which then gets back the stack that it had before; only a thread that is on
/// the stack at that moment keeps it. The page below the stack
/// is not accessible, so that an overflow never writes to other memory.
class AlternateStack
{
public:
    AlternateStack();
    ~AlternateStack();
    Q_DISABLE_COPY(AlternateStack)

private:
    void* m_memory;
    stack_t m_before{};
};

} // namespace zeltools
