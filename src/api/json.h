// JSON text for answers that are bytes, not necessarily UTF-8: the library's result
// object and the command-line tool write their strings through this one function.
#pragma once

#include <cstdint>
#include <cstring>

#include "engine/record.h"

namespace orvane {

// Writes text as a JSON string into the sink (which has put(char) and append(const char*,
// int32_t)): quotes and backslashes escaped, LF, CR and tab by their short escapes, and
// every other byte outside 0x20..0x7E as \u00XX, so any byte sequence gives valid JSON and
// a byte 0xE9 reads back as U+00E9 (Latin-1). Runs of plain bytes go in whole.

// Whether any of eight bytes needs an escape, tested on them as one word: a byte below
// 0x20, from 0x7F up, a quote or a backslash.
inline bool wordNeedsEscape(uint64_t word) {
    constexpr uint64_t kOnes = 0x0101010101010101u;
    constexpr uint64_t kHighs = 0x8080808080808080u;
    const auto hasZeroByte = [](uint64_t v) { return ((v - kOnes) & ~v & kHighs) != 0; };
    const bool below = ((word - kOnes * 0x20) & ~word & kHighs) != 0;
    return below || (word & kHighs) != 0 || hasZeroByte(word ^ (kOnes * 0x7F)) || hasZeroByte(word ^ (kOnes * '"')) ||
           hasZeroByte(word ^ (kOnes * '\\'));
}

// The bytes that go into a JSON string as they are.
struct PlainJsonBytes {
    bool plain[256];
};
constexpr PlainJsonBytes makePlainJsonBytes() {
    PlainJsonBytes table{};
    for (int c = 0x20; c < 0x7F; ++c) table.plain[c] = c != '"' && c != '\\';
    return table;
}
inline constexpr PlainJsonBytes kPlainJsonBytes = makePlainJsonBytes();

template <typename Sink>
void writeJsonString(TextSpan text, Sink& sink) {
    static constexpr char kHex[] = "0123456789abcdef";
    sink.put('"');
    int32_t run = 0;  // start of the plain bytes not yet written
    int32_t i = 0;
    for (;;) {
        // Plain stretches are skipped eight bytes at a time, then byte by byte.
        while (i + 8 <= text.length) {
            uint64_t word = 0;
            std::memcpy(&word, text.data + i, sizeof word);
            if (wordNeedsEscape(word)) break;
            i += 8;
        }
        while (i < text.length && kPlainJsonBytes.plain[static_cast<unsigned char>(text.data[i])]) ++i;
        if (i >= text.length) break;
        const unsigned char c = static_cast<unsigned char>(text.data[i]);
        sink.append(text.data + run, i - run);
        run = ++i;
        if (c == '"' || c == '\\') {
            sink.put('\\');
            sink.put(static_cast<char>(c));
        } else if (c == '\n' || c == '\r' || c == '\t') {
            sink.put('\\');
            sink.put(c == '\n' ? 'n' : c == '\r' ? 'r' : 't');
        } else {
            const char escape[6] = {'\\', 'u', '0', '0', kHex[c >> 4], kHex[c & 15]};
            sink.append(escape, 6);
        }
    }
    sink.append(text.data + run, text.length - run);
    sink.put('"');
}

}  // namespace orvane
