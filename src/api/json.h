// JSON text for answers that are bytes, not necessarily UTF-8: the library's result
// object and the command-line tool write their strings through this one function.
#pragma once

#include <cstdint>

#include "engine/record.h"

namespace orvane {

// Writes text as a JSON string into the sink (which has put(char) and append(const char*,
// int32_t)): quotes and backslashes escaped, LF, CR and tab by their short escapes, and
// every other byte outside 0x20..0x7E as \u00XX, so any byte sequence gives valid JSON and
// a byte 0xE9 reads back as U+00E9 (Latin-1). Runs of plain bytes go in whole.
template <typename Sink>
void writeJsonString(TextSpan text, Sink& sink) {
    static constexpr char kHex[] = "0123456789abcdef";
    sink.put('"');
    int32_t run = 0;  // start of the plain bytes not yet written
    for (int32_t i = 0; i < text.length; ++i) {
        const unsigned char c = static_cast<unsigned char>(text.data[i]);
        if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') continue;
        sink.append(text.data + run, i - run);
        run = i + 1;
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
