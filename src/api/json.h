// JSON text for answers that are bytes, not necessarily UTF-8: the library's result
// object and the command-line tool write their strings through this one function.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// Writes text as a JSON string through put(char): quotes and backslashes escaped, LF, CR
// and tab by their short escapes, and every other byte outside 0x20..0x7E as \u00XX, so
// any byte sequence gives valid JSON and a byte 0xE9 reads back as U+00E9 (Latin-1).
template <typename Put>
void writeJsonString(TextSpan text, Put put) {
    static constexpr char kHex[] = "0123456789abcdef";
    put('"');
    for (int32_t i = 0; i < text.length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text.data[i]);
        if (c == '"' || c == '\\') {
            put('\\');
            put(static_cast<char>(c));
        } else if (c == '\n' || c == '\r' || c == '\t') {
            put('\\');
            put(c == '\n' ? 'n' : c == '\r' ? 'r' : 't');
        } else if (c < 0x20 || c >= 0x7F) {
            for (char e : {'\\', 'u', '0', '0'}) put(e);
            put(kHex[c >> 4]);
            put(kHex[c & 15]);
        } else {
            put(static_cast<char>(c));
        }
    }
    put('"');
}

}  // namespace orvane
