// JSON string output for answers that are bytes, not necessarily UTF-8.
#pragma once

#include <string>

namespace orvane_tools {

// Appends text as a JSON string: quotes and backslashes escaped, LF, CR and tab by
// their short escapes, and every other byte outside 0x20..0x7E as \u00XX, so that any
// byte sequence gives valid JSON (a byte 0xE9 reads back as U+00E9).
inline void appendJsonString(std::string* out, const char* text) {
    static const char kHex[] = "0123456789abcdef";
    out->push_back('"');
    for (const unsigned char* p = reinterpret_cast<const unsigned char*>(text); *p != 0; ++p) {
        const unsigned char c = *p;
        if (c == '"' || c == '\\') {
            out->push_back('\\');
            out->push_back(static_cast<char>(c));
        } else if (c == '\n') {
            out->append("\\n");
        } else if (c == '\r') {
            out->append("\\r");
        } else if (c == '\t') {
            out->append("\\t");
        } else if (c < 0x20 || c >= 0x7F) {
            out->append("\\u00");
            out->push_back(kHex[c >> 4]);
            out->push_back(kHex[c & 15]);
        } else {
            out->push_back(static_cast<char>(c));
        }
    }
    out->push_back('"');
}

}  // namespace orvane_tools
