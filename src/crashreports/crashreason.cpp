#include "crashreports/crashreason_p.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <initializer_list>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>
#include <unistd.h>

namespace zeltools
{

namespace
{

constexpr size_t s_longest_B = 500;
char s_text[s_longest_B + 1]; // The last byte always stays NUL.
std::atomic<pid_t> s_thread{0};
std::atomic_flag s_isWriting = ATOMIC_FLAG_INIT;

void noteParts(std::initializer_list<const char*> parts)
{
    if (s_isWriting.test_and_set())
        return;
    s_thread = 0;
    size_t size = 0;
    for (const char* part : parts) {
        const size_t count = std::min(std::strlen(part), s_longest_B - size);
        std::memcpy(s_text + size, part, count);
        size += count;
    }
    s_text[size] = '\0';
    s_thread = gettid();
    s_isWriting.clear();
}

} // namespace

void CrashReason::note(const char* text)
{
    noteParts({text});
}

void CrashReason::noteException()
{
    const std::type_info* const type = abi::__cxa_current_exception_type();
    if (type == nullptr)
        return note("std::terminate() without an exception");
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> readable(
        abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
    const char* const name = readable ? readable.get() : type->name();
    noteParts({name});
    try {
        throw;
    } catch (const std::exception& exception) {
        noteParts({name, ": ", exception.what()});
    } catch (...) { // has no text
    }
}

const char* CrashReason::of(pid_t thread)
{
    return s_thread == thread ? s_text : "";
}

} // namespace zeltools
