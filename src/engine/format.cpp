#include "engine/format.h"

#include <cstring>
#include <string_view>

namespace orvane {

bool TextFacts::startsWith(const char* prefix) const {
    const size_t n = std::strlen(prefix);
    return static_cast<size_t>(length) >= n && std::memcmp(text, prefix, n) == 0;
}

int32_t TextFacts::find(const char* needle) const {
    if (length < 1) return -1;
    const size_t at = std::string_view(text, static_cast<size_t>(length)).find(needle);
    return at == std::string_view::npos ? -1 : static_cast<int32_t>(at);
}

void gatherTextFacts(const char* text, int32_t length, TextFacts* facts) {
    facts->text = text;
    facts->length = length;
    uint64_t bytes[4] = {};
    const unsigned char* p = reinterpret_cast<const unsigned char*>(text);
    for (int32_t i = 0; i < length; ++i) bytes[p[i] >> 6] |= uint64_t{1} << (p[i] & 63);
    std::memcpy(facts->bytes, bytes, sizeof bytes);
}

}  // namespace orvane
