#pragma once

#include "crashreports/ownmemory_p.h"

#include <QtGlobal>

#include <ucontext.h>

namespace zeltools
{

// The only place that depends on the processor, whose registers have no common names.

#if defined(__x86_64__) || defined(__aarch64__)
constexpr bool isProcessorKnown = true;
#else
constexpr bool isProcessorKnown = false;
#endif

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

/// The names of the registers, in the order of registerValue().
#if defined(__x86_64__)
constexpr const char* registerNames[]{"rip", "rsp", "rbp", "rax", "rbx", "rcx",
                                      "rdx", "rsi", "rdi", "r8",  "r9",  "r10",
                                      "r11", "r12", "r13", "r14", "r15", "eflags"};
#elif defined(__aarch64__)
constexpr const char* registerNames[]{
    "pc",  "sp",  "pstate", "x0",  "x1",  "x2",  "x3",  "x4",  "x5",  "x6",  "x7",  "x8",
    "x9",  "x10", "x11",    "x12", "x13", "x14", "x15", "x16", "x17", "x18", "x19", "x20",
    "x21", "x22", "x23",    "x24", "x25", "x26", "x27", "x28", "x29", "x30"};
#else
constexpr const char* registerNames[]{"pc"};
#endif

inline quint64 registerValue(const ucontext_t& context, size_t place)
{
#if defined(__x86_64__)
    constexpr int places[]{REG_RIP, REG_RSP, REG_RBP, REG_RAX, REG_RBX, REG_RCX,
                           REG_RDX, REG_RSI, REG_RDI, REG_R8,  REG_R9,  REG_R10,
                           REG_R11, REG_R12, REG_R13, REG_R14, REG_R15, REG_EFL};
    static_assert(sizeof places / sizeof *places == sizeof registerNames / sizeof *registerNames);
    return quint64(context.uc_mcontext.gregs[places[place]]);
#elif defined(__aarch64__)
    constexpr size_t first = 3; // of those that are numbered
    const auto& machine = context.uc_mcontext;
    const quint64 others[first]{machine.pc, machine.sp, machine.pstate};
    return place < first ? others[place] : machine.regs[place - first];
#else
    Q_UNUSED(place)
    return programCounter(context);
#endif
}

/// Changes the context as if the function that has just been called had returned. Returns false if
/// the return address cannot be read. Async-signal-safe.
inline bool returnFromCall(ucontext_t& context)
{
#if defined(__x86_64__)
    auto& registers = context.uc_mcontext.gregs;
    greg_t address = 0;
    if (!readOwnMemory(quintptr(registers[REG_RSP]), &address, sizeof address))
        return false;
    registers[REG_RIP] = address;
    registers[REG_RSP] += greg_t(sizeof address);
    return true;
#elif defined(__aarch64__)
    context.uc_mcontext.pc = context.uc_mcontext.regs[30];
    return true;
#else
    Q_UNUSED(context)
    return false;
#endif
}

} // namespace zeltools
