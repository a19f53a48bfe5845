// Eye and hair colour codes of the documents and the names they answer with.
#pragma once

#include <cstdint>
#include <span>

#include "engine/record.h"

namespace orvane {

struct ColorRow {
    const char* code;
    uint64_t codeLength;  // 2 or 3
    const char* name;
};

// The name of the first row whose code equals the text exactly (case-sensitive), or
// null for no match, a null text or a text shorter than 2.
const char* colorNameForCode(TextSpan code, std::span<const ColorRow> table);
const char* eyeColorName(TextSpan code);
const char* hairColorName(TextSpan code);

// The tables themselves, for integrity checks.
std::span<const ColorRow> eyeColorTable();
std::span<const ColorRow> hairColorTable();

}  // namespace orvane
