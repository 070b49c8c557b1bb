#include "crashreports/alternatestack_p.h"

#include <sys/mman.h>

namespace zeltools
{

namespace
{

// Pages that nobody has written to take no memory.
constexpr size_t s_size_B = size_t(256) * 1024;
constexpr size_t s_guard_B = size_t(64) * 1024; // the largest size of a page

} // namespace

AlternateStack::AlternateStack()
    : m_memory(mmap(nullptr, s_guard_B + s_size_B, PROT_READ | PROT_WRITE,
                    MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0))
{
    if (m_memory == MAP_FAILED)
        return;
    mprotect(m_memory, s_guard_B, PROT_NONE);
    stack_t stack{};
    stack.ss_sp = static_cast<char*>(m_memory) + s_guard_B;
    stack.ss_size = s_size_B;
    sigaltstack(&stack, &m_before);
}

AlternateStack::~AlternateStack()
{
    if (m_memory == MAP_FAILED)
        return;
    // The kernel refuses it to a handler that runs on this stack and ends the process by exit().
    if (sigaltstack(&m_before, nullptr) == 0)
        munmap(m_memory, s_guard_B + s_size_B);
}

} // namespace zeltools
