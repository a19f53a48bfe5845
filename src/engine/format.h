// What every format reader and framer looks like to the parse driver.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "engine/record.h"
#include "engine/status.h"
#include "fields/text.h"

namespace orvane {

// Local date and time read at the start of a parse; readers take the current year
// from it to expand two-digit years.
struct ParseClock {
    int32_t parseYear;
    int32_t parseMonth;   // 1..12
    int32_t parseDay;     // 1..31
    int32_t parseHour;    // 0..23
    int32_t parseMinute;  // 0..59
    int32_t parseSecond;
};

// Normalises the caller's bytes into out; returns 0 or a negative status.
using Framer = int32_t (*)(const char* input, int32_t inputLength, char* out, int32_t outCapacity,
                           int32_t* outLength);

// Reads framed text into the record: 0 when it recognised its document, else negative.
// The text is the driver's own copy and may be rewritten in place.
using FormatParser = int32_t (*)(char* text, int32_t length, ParsedRecord* record,
                                 const ParseClock* clock);

// What the driver learns of a reader's text once per parse, so that each reader can
// refuse a text it could never read for the price of a few comparisons.
struct TextFacts {
    const char* text;  // the text the reader would be given
    int32_t length;
    uint64_t bytes[4];  // bit c is set when byte c occurs in the text

    bool has(unsigned char c) const { return (bytes[c >> 6] >> (c & 63) & 1) != 0; }
    // The byte at index, or 0 outside the text.
    char at(int32_t index) const { return index >= 0 && index < length ? text[index] : '\0'; }
    bool startsWith(const char* prefix) const {
        const size_t n = std::strlen(prefix);
        return static_cast<size_t>(length) >= n && std::memcmp(text, prefix, n) == 0;
    }
    // Index of the first occurrence of needle, or -1; an empty needle is found at once.
    int32_t find(const char* needle) const {
        if (length < 1) return -1;
        if (needle[0] == '\0') return 0;
        return spanFind(TextSpan{text, length}, makeSpan(needle));
    }
};

// Fills the facts of text[0, length).
void gatherTextFacts(const char* text, int32_t length, TextFacts* facts);

// A necessary condition of a reader's acceptance: false only for a text the reader would
// refuse or read nothing from. It must stay true of everything the reader accepts.
using QuickCheck = bool (*)(const TextFacts& facts);

// Called for each raw element of a document, id and value; answering false stops the walk.
using ElementVisitor = bool (*)(void* context, TextSpan id, TextSpan value);

// Runs one step of a reader's engine: a step a variant left empty, or one that answers
// nothing, gives 0.
template <typename Step, typename... Args>
inline int32_t runStep(Step step, Args&&... args) {
    if (step == nullptr) return kOk;
    if constexpr (std::is_void_v<std::invoke_result_t<Step, Args...>>) {
        step(std::forward<Args>(args)...);
        return kOk;
    } else {
        return step(std::forward<Args>(args)...);
    }
}

}  // namespace orvane
