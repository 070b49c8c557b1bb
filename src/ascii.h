#pragma once

#include <QtGlobal>

#include <cstring>

namespace zeltools
{

/// Whether all bytes are below 0x80, so that the text is the same in Latin-1 and in UTF-8. The
/// function reads eight bytes at a time, since every log line passes it.
inline bool isAscii(const char* text, size_t size_B)
{
    quint64 all = 0;
    for (; size_B >= sizeof all; text += sizeof all, size_B -= sizeof all) {
        quint64 word;
        std::memcpy(&word, text, sizeof word);
        all |= word;
    }
    for (; size_B > 0; ++text, --size_B)
        all |= static_cast<uchar>(*text);
    return (all & 0x8080808080808080) == 0;
}

} // namespace zeltools
