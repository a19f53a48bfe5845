// Helpers shared by the unit tests.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "engine/record.h"

namespace orvane::testing {

// A record attached to a work buffer of the given size.
struct RecordWithBuffer {
    explicit RecordWithBuffer(int32_t capacity = 8192) : buffer(static_cast<size_t>(capacity)) {
        std::memset(&record, 0, sizeof record);
        attachWorkBuffer(&record, buffer.data(), capacity);
    }
    std::vector<char> buffer;
    ParsedRecord record;
    ParsedRecord* get() { return &record; }
};

inline std::string text(TextSpan span) {
    if (span.data == nullptr || span.length < 1) return std::string();
    return std::string(span.data, static_cast<size_t>(span.length));
}

inline std::string slotText(const ParsedRecord& record, FieldId id) {
    return text(record.fields[id]);
}

inline TextSpan span(const std::string& s) {
    return TextSpan{s.data(), static_cast<int32_t>(s.size())};
}

}  // namespace orvane::testing
