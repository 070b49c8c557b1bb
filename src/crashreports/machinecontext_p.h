#pragma once

#include <QtGlobal>

#include <ucontext.h>

namespace zeltools
{

// The only place that depends on the processor, whose registers have no common names.

/// The address of the instruction that a signal has interrupted, or 0 on a processor that is not
/// known here.
inline quintptr programCounter(const ucontext_t& context)
{
#if defined(__x86_64__)
    return quintptr(context.uc_mcontext.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return quintptr(context.uc_mcontext.pc);
#else
    Q_UNUSED(context)
    return 0;
#endif
}

} // namespace zeltools
