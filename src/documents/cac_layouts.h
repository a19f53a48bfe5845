// The field layouts of the Common Access Card barcodes and the month abbreviations of
// their dates.
#pragma once

#include <cstdint>
#include <span>

#include "documents/fixed_field_engine.h"

namespace orvane {

// Layout A (formats 51 and 52), B (53), C (54) and D (55).
std::span<const FixedFieldLayout> cacLayoutA();
std::span<const FixedFieldLayout> cacLayoutB();
std::span<const FixedFieldLayout> cacLayoutC();
std::span<const FixedFieldLayout> cacLayoutD();

// Characters a layout covers from its first field to the end of its last.
constexpr int32_t layoutWidth(std::span<const FixedFieldLayout> layout) {
    int32_t total = 0;
    for (const FixedFieldLayout& row : layout) total += row.width;
    return total;
}

struct MonthAbbreviation {
    char letters[4];
    char number[3];
};

// The two-digit month of an upper-case abbreviation ("JAN" gives "01"), or null.
const char* monthNumberOfAbbreviation(TextSpan letters);
std::span<const MonthAbbreviation> monthAbbreviations();

}  // namespace orvane
