#include "logging/logtail.h"

#include <algorithm>
#include <cstring>

std::atomic<bool> LogTail::s_isEnabled{false};

namespace
{

constexpr int s_wordsCount = (LogTail::longestLine_B + 7) / 8;

// A line and its version, which tells whether a thread is writing the line, and which line it is.
// The words are atomic, so that a reader may copy them at any time.
struct Slot
{
    std::atomic<quint64> version{0};
    std::atomic<int> size{0};
    std::atomic<quint64> words[s_wordsCount]{}; // Constant values need no code at the start.
};

// The slots beyond the lines that are read keep writers away from the oldest of these.
constexpr quint64 s_slotsCount = 256;
static_assert(s_slotsCount > LogTail::mostLines);
Slot s_slots[s_slotsCount]; // clazy:exclude=non-pod-global-static
std::atomic<quint64> s_nextNumber{0};

quint64 writing(quint64 number)
{
    return 2 * number + 1;
}

quint64 written(quint64 number)
{
    return 2 * number + 2;
}

int cutSize(const char* line, int size)
{
    while (size > 0 && line[size - 1] == '\n')
        --size;
    if (size <= LogTail::longestLine_B)
        return size;
    size = LogTail::longestLine_B;
    const auto isInsideCharacter = [line](int place) { return (line[place] & 0xc0) == 0x80; };
    while (size > 0 && isInsideCharacter(size))
        --size;
    return size;
}

} // namespace

void LogTail::add(const char* line, int size)
{
    const quint64 number = s_nextNumber++;
    Slot& slot = s_slots[number % s_slotsCount];
    quint64 version = slot.version;
    // A thread that was interrupted here 256 lines ago keeps the slot.
    if (version % 2 != 0 || !slot.version.compare_exchange_strong(version, writing(number)))
        return;
    size = cutSize(line, size);
    slot.size.store(size, std::memory_order_release);
    constexpr int word_B = 8;
    for (int place = 0; place < size; place += word_B) {
        quint64 word = 0;
        std::memcpy(&word, line + place, size_t(std::min(word_B, size - place)));
        slot.words[place / word_B].store(word, std::memory_order_release);
    }
    slot.version.store(written(number), std::memory_order_release);
}

void LogTail::read(Reader reader, void* argument)
{
    const quint64 end = s_nextNumber;
    for (quint64 number = end - std::min<quint64>(end, mostLines); number < end; ++number) {
        const Slot& slot = s_slots[number % s_slotsCount];
        if (slot.version.load(std::memory_order_acquire) != written(number))
            continue;
        quint64 words[s_wordsCount];
        for (int i = 0; i < s_wordsCount; ++i)
            words[i] = slot.words[i].load(std::memory_order_acquire);
        const int size = slot.size.load(std::memory_order_acquire);
        if (slot.version == written(number))
            reader(argument, reinterpret_cast<const char*>(words), size);
    }
}
