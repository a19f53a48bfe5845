// The table of every input format the library knows, in the order the driver tries them.
#pragma once

#include <cstdint>
#include <span>

#include "engine/format.h"

namespace orvane {

// Families of the formatGroup column.
inline constexpr uint32_t kGroupAamva = 0;
inline constexpr uint32_t kGroupStripe = 1;
inline constexpr uint32_t kGroupRegional = 2;
inline constexpr uint32_t kGroupCommonAccessCard = 3;
inline constexpr uint32_t kGroupNational = 4;
inline constexpr uint32_t kGroupMrz = 5;

struct FormatDescriptor {
    uint32_t formatGroup;
    uint32_t formatId;
    Framer framer;
    FormatParser parser;
    const char* expectedCountry;       // alpha-3 the record must yield, or null
    const char* expectedJurisdiction;  // two-letter code the record must yield, or null
    QuickCheck mayRead = nullptr;      // false only for texts the reader would not read
    bool writesText = false;           // the reader rewrites its text in place
    // True only for texts the reader reads exactly as an earlier row does, one of the same
    // framing and expectations: the earlier row wins any tie, so this one is skipped.
    QuickCheck readsAsEarlierRow = nullptr;
};

inline constexpr bool kWritesText = true;
inline constexpr bool kReadsOnly = false;

// The rows in trial order: the first of equally scored rows wins.
std::span<const FormatDescriptor> formatRegistry();
// The same rows and, after them, the ones only the lenient parse tries (formats from 100).
std::span<const FormatDescriptor> lenientRegistry();
// The rows only the lenient parse tries.
std::span<const FormatDescriptor> lenientOnlyRows();

}  // namespace orvane
