// JSON string output for the tool's own members, through the library's one writer.
#pragma once

#include <string>

#include "api/json.h"

namespace orvane_tools {

// Appends text as a JSON string (see orvane::writeJsonString).
inline void appendJsonString(std::string* out, const char* text) {
    orvane::writeJsonString(orvane::makeSpan(text), [out](char c) { out->push_back(c); });
}

}  // namespace orvane_tools
