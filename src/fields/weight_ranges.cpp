#include "fields/weight_ranges.h"

#include <iterator>

namespace orvane {
namespace {

struct WeightRangeRow {
    const char* kilograms;
    const char* pounds;
};

// Indexed by the range digit. The pounds column deliberately jumps from 310 to 320.
constexpr WeightRangeRow kWeightRanges[] = {
    {"up to 31", "up to 70"},
    {"32-45", "71-100"},
    {"46-59", "101-130"},
    {"60-70", "131-160"},
    {"71-86", "161-190"},
    {"87-100", "191-220"},
    {"101-113", "221-250"},
    {"114-127", "251-280"},
    {"128-145", "281-310"},
    {"146+", "320+"},
};
static_assert(std::size(kWeightRanges) == 10);

const WeightRangeRow* rangeRow(int64_t digit) {
    if (digit < 0 || digit >= static_cast<int64_t>(std::size(kWeightRanges))) return nullptr;
    return &kWeightRanges[digit];
}

}  // namespace

const char* weightRangeKilograms(int64_t digit) {
    const WeightRangeRow* row = rangeRow(digit);
    return row != nullptr ? row->kilograms : nullptr;
}

const char* weightRangePounds(int64_t digit) {
    const WeightRangeRow* row = rangeRow(digit);
    return row != nullptr ? row->pounds : nullptr;
}

}  // namespace orvane
