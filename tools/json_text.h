// JSON string output for the tool's own members, through the library's one writer.
#pragma once

#include <string>

#include "api/json.h"

namespace orvane_tools {

// Appends text as a JSON string (see orvane::writeJsonString).
inline void appendJsonString(std::string* out, const char* text) {
    struct StringSink {
        std::string* out;
        void put(char c) { out->push_back(c); }
        void append(const char* bytes, int32_t n) { out->append(bytes, static_cast<size_t>(n)); }
    } sink{out};
    orvane::writeJsonString(orvane::makeSpan(text), sink);
}

}  // namespace orvane_tools
